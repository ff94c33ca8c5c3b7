#pragma once

#include "share/norvexadata.h"
#include "tests/support/qtprinters.h"

#include <QStringList>

/// Whole budgets as lines of text, one for each record with all its fields, so that two of them compare in one
/// expectation and a difference is readable.

inline QString Exact_Text(double value)
{
    return QString::number(value, 'g', 17);
}

inline QString Record_Text(const TNorvexaData::TReplacementItem& replacement)
{
    return QStringLiteral("    replacement <%1> <%2> default=%3")
        .arg(replacement.identifier, replacement.expression, QString::number(int(replacement.use_default_expression)));
}

inline QString Record_Text(const TNorvexaData::TComponentInstance& instance)
{
    return QStringLiteral("  identifier <%1> <%2> <%3> length=%4 expansion=%5")
        .arg(instance.name, instance.calibration_date, instance.calibration_due_date, Exact_Text(instance.length),
             Exact_Text(instance.expansion_coefficient));
}

inline QStringList Record_Text(const TNorvexaData::TComponentItem& item)
{
    QStringList lines(QStringLiteral("  item <%1> <%2> distribution=%3 expression=%4 type=%5 sensitivity=%6")
                          .arg(item.name, item.expression, QString::number(int(item.distribution)),
                               QString::number(int(item.expression_type)), QString::number(int(item.uc_type)),
                               Exact_Text(item.sensitivity)));
    for (const TNorvexaData::TReplacementItem& replacement : item.replacement_items) {
        lines.append(Record_Text(replacement));
    }
    return lines;
}

inline QStringList Record_Text(const TNorvexaData::TComponent& component)
{
    QStringList lines(QStringLiteral("component <%1> mode=%2 length=%3 expansion=%4 equipment=%5 limit=%6")
                          .arg(component.name, QString::number(int(component.mode)), Exact_Text(component.length),
                               Exact_Text(component.expansion_coefficient),
                               QString::number(int(component.export_equipment)),
                               QString::number(int(component.limit_uncertainty_length))));
    for (const TNorvexaData::TComponentItem& item : component.items) {
        lines.append(Record_Text(item));
    }
    for (const TNorvexaData::TComponentInstance& instance : component.instances) {
        lines.append(Record_Text(instance));
    }
    return lines;
}

inline QStringList Budget_Text(const TNorvexaData& budget)
{
    QStringList lines;
    for (int index = 0; index < budget.Component_Count(); ++index) {
        lines.append(Record_Text(budget.Component(index)));
    }
    return lines;
}
