#include "src/reportwidget.h"

#include "src/pdfsections.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>

namespace {

const QColor TEXT_COLOUR(0, 0, 0, 255);
const QColor RULE_COLOUR(164, 164, 164, 255);

/// Of the row height: as fine as a hair, and still seen on paper.
constexpr int RULES_PER_ROW_HEIGHT = 24;

/// The width of the publisher line in columns.
constexpr int PUBLISHER_COLUMNS = 10;

/// The widest number that is expected sets the row height.
const char* const WIDEST_NUMBER = "10000.0000j";

/// The letter spacing is the ordinary one, but as long as one is set Qt joins no letters: who searches the document for
/// "Definition" finds it.
QFont Report_Font(int point_size, int weight)
{
    QFont font("verdana", point_size, weight);
    font.setStyleHint(QFont::SansSerif);
    font.setLetterSpacing(QFont::PercentageSpacing, 100.0);
    return font;
}

const char* Publisher()
{
    return NORVEXA_PUBLISHER;
}

/// Draws the pages on a printer that has begun to print.
class TReportPainter
{
public:
    TReportPainter(QPrinter* printer, QPainter* painter) : d_printer(printer), d_painter(painter) {}

    TPdfMetrics Metrics() const
    {
        return {Geometry(),
                Text_Width(d_cell_font),
                Text_Width(d_heading_font),
                Text_Width(d_title_font),
                Font_Metrics(d_title_font).height(),
                Font_Metrics(d_cell_font).horizontalAdvance("  ")};
    }

    void Draw(const std::vector<TPdfPage>& pages)
    {
        int number = 1;
        for (const TPdfPage& page : pages) {
            if (number > 1) {
                d_printer->newPage();
            }
            d_geometry = Geometry();
            Draw_Frame(page.title, number++);
            for (const TPdfPageLine& line : page.lines) {
                Draw_Line(line);
            }
        }
    }

private:
    QFontMetrics Font_Metrics(const QFont& font) const { return {font, d_printer}; }

    TTextWidth Text_Width(const QFont& font) const
    {
        const QFontMetrics metrics = Font_Metrics(font);
        return [metrics](const QString& text) { return metrics.horizontalAdvance(text); };
    }

    TPdfGeometry Geometry() const
    {
        return {d_printer->pageLayout().paintRectPixels(d_printer->resolution()),
                Font_Metrics(d_cell_font).boundingRect(WIDEST_NUMBER).height() + 1};
    }

    void Draw_Frame(const QStringList& title, int number)
    {
        const int width = d_geometry.right + 1 - d_geometry.left;
        const int publisher_width = PUBLISHER_COLUMNS * d_geometry.column_step;

        d_painter->setPen(TEXT_COLOUR);
        d_painter->setFont(d_title_font);
        d_painter->drawText(QRect(d_geometry.left, d_geometry.top, width, d_geometry.row_height),
                            Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, title.join('\n'));
        d_painter->setFont(d_foot_font);
        d_painter->drawText(QRect(d_geometry.left, d_geometry.Foot_Top(), publisher_width, d_geometry.row_height),
                            Qt::AlignLeft | Qt::AlignTop, Publisher());
        d_painter->drawText(QRect(d_geometry.left, d_geometry.Foot_Top(), width, d_geometry.row_height),
                            Qt::AlignRight | Qt::AlignTop, QString("Page %1").arg(number));
    }

    void Draw_Line(const TPdfPageLine& line)
    {
        const int top = d_geometry.Row_Top(line.row);

        d_painter->setFont(line.is_heading ? d_heading_font : d_cell_font);
        const int ascent = d_painter->fontMetrics().ascent();
        for (const TPdfText& cell : line.texts) {
            d_painter->drawText(cell.x, top + ascent, cell.text);
        }
        if (line.has_rule) {
            Draw_Rule(top + d_geometry.row_height);
        }
    }

    void Draw_Rule(int y)
    {
        QPen pen(RULE_COLOUR);
        pen.setWidth(d_geometry.row_height / RULES_PER_ROW_HEIGHT);
        d_painter->setPen(pen);
        d_painter->drawLine(d_geometry.left, y, d_geometry.right, y);
        d_painter->setPen(TEXT_COLOUR);
    }

    QPrinter* d_printer;
    QPainter* d_painter;

    QFont d_cell_font = Report_Font(8, QFont::Normal);
    QFont d_title_font = Report_Font(10, QFont::Bold);
    QFont d_heading_font = Report_Font(8, QFont::Bold);
    QFont d_foot_font = Report_Font(6, QFont::Normal);

    TPdfGeometry d_geometry = Geometry();
};

void Set_Up(QPrinter* printer, const QString& file, const QString& title)
{
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(file);
    printer->setDocName(title);
    printer->setCreator(Publisher());
    printer->setPageOrientation(QPageLayout::Landscape);
    printer->setFullPage(true);
    printer->setPageMargins(QMarginsF(0.0, 0.0, 0.0, 0.0), QPageLayout::Millimeter);
}

} // namespace

// The layout has margins of its own, so the page has none.
void TReportWidget::Write_Export_PDF_Data(const QString& file) const
{
    const QString group = d_group_box->currentText();
    QPrinter printer(QPrinter::HighResolution);
    QPainter painter;

    Set_Up(&printer, file, group);
    if (!painter.begin(&printer)) {
        return;
    }
    TReportPainter report(&printer, &painter);
    const TPdfMetrics metrics = report.Metrics();
    report.Draw(Pdf_Pages(Pdf_Sections(d_export_lines, group, metrics), metrics.geometry.Row_Slots()));
}
