#include "src/pdffile.h"
#include "src/reportwidget.h"

#include <benchmark/benchmark.h>

#include <QComboBox>
#include <QFontMetrics>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int COMPONENTS = 20;
constexpr int ITEMS = 50;
constexpr int LENGTHS = 120;
constexpr double INCREMENT = 10.0; // mm

// A page of the report has room for a number of lengths. Each row has its labels and a value for each of them; the rows
// of the budget definition have no values.
constexpr int LENGTHS_SIDE_BY_SIDE = 11;
constexpr int COLUMNS = 18;

double Value(int component, int item, double length)
{
    return 0.0001 * std::sqrt(component + 1.0) + 0.000001 * item + length * 1e-6 / (item + 3.0);
}

TReportWidget::TReportData Record(int component, double length)
{
    TReportWidget::TReportData record;

    record.name = QString("Component %1").arg(component);
    record.identifier = QString("SN %1").arg(1000 + component);
    for (int item = 0; item < ITEMS; ++item) {
        record.items.push_back({QString("Contributor %1").arg(item), "Length Dependent", "CTEd*L*Td/1000+Sr/2",
                                "1.000000", "Rectangular", "Type B", std::sqrt(3.0), QString(),
                                Value(component, item, length)});
    }
    return record;
}

/// Fills the page like an export does.
void Fill(TReportWidget* page)
{
    page->Update_Report_Groups({"Length"});
    page->findChild<QComboBox*>("report_group")->setCurrentText("Length");
    for (int length = 0; length < LENGTHS; ++length) {
        for (int component = 0; component < COMPONENTS; ++component) {
            page->Add_Export_Data(Record(component, length * INCREMENT), length * INCREMENT);
        }
    }
    page->Update_Export_Uncertainty_Data();
    page->Format_Export_Data();
}

void Report(benchmark::State& state)
{
    const QTemporaryDir folder;
    TReportWidget page;
    QString reason;

    Fill(&page);
    while (state.KeepRunning()) {
        if (!Write_PDF_File(page, folder.filePath("report.pdf"), &reason)) {
            state.SkipWithError(qPrintable(reason));
            break;
        }
    }
}

/// The texts of the report's rows, row by row, without its headings.
std::vector<QStringList> Rows()
{
    std::vector<QStringList> rows;

    for (int component = 0; component < COMPONENTS; ++component) {
        for (int item = 0; item < ITEMS; ++item) {
            rows.push_back({QString("Contributor %1").arg(item), "CTEd*L*Td/1000+Sr/2", "Length Dependent", "1.000000",
                            "Rectangular", "Type B", "1.732051"});
        }
    }
    for (int first = 0; first < LENGTHS; first += LENGTHS_SIDE_BY_SIDE) {
        for (int component = 0; component < COMPONENTS; ++component) {
            for (int item = 0; item < ITEMS; ++item) {
                QStringList row = {"Value", QString("Contributor %1").arg(item)};
                for (int length = first; length < std::min(first + LENGTHS_SIDE_BY_SIDE, LENGTHS); ++length) {
                    row << QString::number(Value(component, item, length * INCREMENT), 'f', 6);
                }
                rows.push_back(row);
            }
        }
    }
    return rows;
}

/// Draws each text with a rectangle around it, in the font of the report.
void Draw(const std::vector<QStringList>& rows, QPrinter* printer)
{
    QPainter painter(printer);
    QFont font("verdana", 8);
    font.setLetterSpacing(QFont::PercentageSpacing, 100.0);
    painter.setFont(font);

    const QRect paper = printer->pageLayout().paintRectPixels(printer->resolution());
    const int width = paper.width() / COLUMNS;
    const int height = painter.fontMetrics().height();
    int top = 0;
    for (const QStringList& row : rows) {
        if (top + height > paper.height()) {
            printer->newPage();
            top = 0;
        }
        for (int cell = 0; cell < row.size(); ++cell) {
            const QRect box(cell * width, top, width, height);
            painter.drawRect(box);
            painter.drawText(box, Qt::AlignLeft | Qt::AlignTop, row.at(cell));
        }
        top += height;
    }
}

void Bare_Cells(benchmark::State& state)
{
    const QTemporaryDir folder;
    const std::vector<QStringList> rows = Rows();

    while (state.KeepRunning()) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath("cells.pdf"));
        printer.setPageOrientation(QPageLayout::Landscape);
        Draw(rows, &printer);
    }
}

BENCHMARK(Report)->Name("Pdf/1000_items/program")->Unit(benchmark::kMillisecond);
BENCHMARK(Bare_Cells)->Name("Pdf/1000_items/bare")->Unit(benchmark::kMillisecond);

} // namespace
