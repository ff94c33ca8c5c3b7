#pragma once

#include "tests/support/randombudget.h"
#include "tests/support/shownrecord.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <vector>

/// The records of a budget by their names.

/// The first of that name, null if there is none.
template <typename TRecords>
auto Named(const TRecords& records, const QString& name) -> decltype(records.data())
{
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const auto& record) { return record.name == name; });

    return found == records.end() ? nullptr : &*found;
}

/// In the order of the records.
template <typename TRecords>
QStringList Names_Of(const TRecords& records)
{
    QStringList names;
    for (const auto& record : records) {
        names << record.name;
    }
    return names;
}

/// The item of that record; null if there is none.
const TNorvexaData::TComponentItem* Held_Item(const TBudget& budget, const TShownRecord& record);

/// The number that a field shows for that record, in the unit of the field; not a number where the budget has none.
double Held_Number(const TBudget& budget, const TShownRecord& record, const QString& field);

/// What the item has of its own for an identifier; null if it has nothing, or for no identifier.
const TNorvexaData::TReplacementItem* Replacement(const TNorvexaData::TComponentItem& item, const QString& identifier);

/// The expression that counts for an identifier, or without one.
QString Applied_Expression(const TNorvexaData::TComponentItem& item, const QString& identifier);

/// What the type of the item's expression says.
bool Is_Length_Dependent(const TNorvexaData::TComponentItem& item);
bool Is_Temperature(const TNorvexaData::TComponentItem& item);
