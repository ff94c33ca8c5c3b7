#pragma once

#include "src/norvexa.h"

#include <QString>
#include <QStringList>

#include <vector>

/// All that a budget file holds.
struct TBudget
{
    std::vector<TNorvexaData::TComponent> components;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;
};

/// Every field of the budget, one per line, numbers with all their digits. Two budgets are equal if these are.
QStringList Description(const TBudget& budget);

/// The components as the document holds them.
std::vector<TNorvexaData::TComponent> Components_Of(const TNorvexa& document);

/// What a fresh document loads; `error` is its error text, empty on success.
TBudget Loaded_Budget(const QString& file_name, QString* error);

/// Returns the error text, empty on success.
QString Save_Budget(const TBudget& budget, const QString& file_name);

/// The same budget for the same seed: names of all kinds of characters, every enumeration value, empty and long lists.
TBudget Random_Budget(quint32 seed);

/// The budget as it comes back from a file: texts escaped once, numbers rounded to the decimals of the file.
TBudget As_Saved(const TBudget& budget);
