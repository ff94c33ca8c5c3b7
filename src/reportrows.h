#pragma once

#include "src/reportwalk.h"
#include "src/reportwidget.h"

#include <QString>

#include <vector>

/// What a walk yields, in the form in which the report page takes it.

/// A number in a report or in its log, with 6 decimals.
QString Value_Text(double value);

/// Whether the variable depends on component and length, so that the records supply its values.
bool Is_Record_Variable(const QString& name);

TReportWidget::TReportItemData Page_Item(const TReportRow& row);

/// The record with its rows and without the identifiers to choose from.
TReportWidget::TReportData Page_Record(const TReportRecord& record, bool is_variable,
                                       const std::vector<TReportRow>& rows);
