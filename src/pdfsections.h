#pragma once

#include "src/pdfpages.h"
#include "src/reportwidget.h"

#include <QString>

#include <vector>

/// What the layout has to know of the fonts and the paper of a printer.
struct TPdfMetrics
{
    TPdfGeometry geometry;
    TTextWidth cell_width;
    TTextWidth heading_width;
    TTextWidth title_width;
    int title_height = 0; ///< of one line
    int gap = 0;          ///< the least distance of texts that stand side by side
};

/// The PDF copies of the formatted lines as three sections of rows: budget definition, global variables, and budget
/// data with the formula below it. The budget data stand in groups of eleven lengths, one below the other, each with
/// all rows and their labels.
std::vector<TPdfSection> Pdf_Sections(const TReportWidget::TExportLines& lines, const QString& group,
                                      const TPdfMetrics& metrics);
