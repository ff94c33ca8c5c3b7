#pragma once

#include "src/norvexa.h"

#include <QString>
#include <QStringList>

#include <vector>

struct TReportBudget
{
    TNorvexa document;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups; ///< the first has all components
    TInputData input_data;
};

/// A budget as large as a laboratory's: 20 components with 50 items and three identifiers each, ten report groups, of
/// which all but the first have two components each, and a range of 120 lengths. It is the same each time, and all its
/// items are linear and evaluate at every length.
TReportBudget Report_Budget();

/// One component whose items are reported each on its own, all of them in the only group.
TReportBudget Individual_Budget(int items);

/// The expressions of all items, in the order of components and items.
QStringList Expressions(const TReportBudget& budget);

/// Writes the budget to a file that the window can open. Throws std::runtime_error when that fails.
void Save(const TReportBudget& budget, const QString& file_name);
