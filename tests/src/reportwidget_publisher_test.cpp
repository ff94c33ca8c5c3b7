#include "src/reportwidget.h"

#include "tests/support/pdftext.h"

#include <QComboBox>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int DOTS_PER_INCH = 300;
constexpr double POINTS_PER_DOT = 72.0 / DOTS_PER_INCH;

/// Columns of A4 paper, in points.
constexpr double LEFT_MARGIN = 420.0 * 72 / 1200;
constexpr double COLUMN_STEP = 733.0 * 72 / 1200;

/// The right edge of the ink in a row of the picture, left of `end`.
int Ink_End(const QImage& picture, int y, int end)
{
    while (end > 0 && picture.pixelColor(end - 1, y) == QColor(Qt::white)) {
        --end;
    }
    return end;
}

} // namespace

TEST(TReportWidgetPublisher, Ends_with_its_tenth_column_however_long_it_is)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("report.pdf");
    TReportWidget page;
    page.Update_Report_Groups({"Length"});
    page.findChild<QComboBox*>("report_group")->setCurrentText("Length");
    page.Format_Export_Data();
    page.Write_Export_PDF_Data(file);

    // The publisher is one long line, under all other ink of the page: that of the page number is right of column 17.
    const QImage picture = Pdf_Picture(file, 1, DOTS_PER_INCH);
    const int last_column = static_cast<int>((LEFT_MARGIN + 17 * COLUMN_STEP) / POINTS_PER_DOT);
    int ink_end = 0;
    for (int y = picture.height() * 9 / 10; y < picture.height(); ++y) {
        ink_end = std::max(ink_end, Ink_End(picture, y, last_column));
    }
    EXPECT_NEAR(ink_end * POINTS_PER_DOT, LEFT_MARGIN + 10 * COLUMN_STEP, 0.5);
}
