#pragma once

#include "src/norvexa.h"

#include <QString>
#include <QStringList>

#include <vector>

/// A budget as large as a laboratory's: 20 components with 50 items and three identifiers each, and ten report groups.
struct TReportBudget
{
    TNorvexa document;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups; ///< the first has all components, the others two each
    TInputData input_data;      ///< a range of 120 lengths
};

/// The same budget each time. All its items are linear and evaluate at every length.
TReportBudget Report_Budget();

/// The expressions of all items, in the order of components and items.
QStringList Expressions(const TReportBudget& budget);

/// Writes the budget to a file that the window can open. Throws std::runtime_error when that fails.
void Save(const TReportBudget& budget, const QString& file_name);
