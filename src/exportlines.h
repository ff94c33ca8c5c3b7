#pragma once

#include "core/vector2.h"
#include "src/reportwidget.h"

#include <vector>

/// The formatted lines of an export: of its records, its variables and the combined uncertainty `points` (x: length in
/// mm, y: mm), with the quadratic that fits the points as a formula.
TReportWidget::TExportLines Export_Lines(const std::vector<TReportWidget::TExportData>& records,
                                         const std::vector<TReportWidget::TExportVariableData>& variables,
                                         const std::vector<TVector2>& points);
