#include "tests/support/pdftext.h"

#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <stdexcept>

namespace {

/// Words of one row have the same top, whatever their letters; in points.
constexpr double ROW_TOLERANCE = 2.0;

/// Boxes may touch; in points.
constexpr double BOX_TOLERANCE = 0.05;

constexpr double MARGIN_PER_WIDTH = 0.03;

QByteArray Output_Of(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        throw std::runtime_error((program + " failed: " + process.readAllStandardError()).toStdString());
    }
    return process.readAllStandardOutput();
}

double Number(const QXmlStreamReader& reader, const QString& attribute)
{
    return reader.attributes().value(attribute).toDouble();
}

TPrintedWord Word(QXmlStreamReader* reader)
{
    const QPointF top_left(Number(*reader, "xMin"), Number(*reader, "yMin"));
    const QPointF bottom_right(Number(*reader, "xMax"), Number(*reader, "yMax"));
    return {reader->readElementText(), QRectF(top_left, bottom_right)};
}

bool Stands_Before(const TPrintedWord& left, const TPrintedWord& right)
{
    if (std::abs(left.box.top() - right.box.top()) > ROW_TOLERANCE) {
        return left.box.top() < right.box.top();
    }
    return left.box.left() < right.box.left();
}

QRectF Without_Edges(const QRectF& box)
{
    return box.adjusted(BOX_TOLERANCE, BOX_TOLERANCE, -BOX_TOLERANCE, -BOX_TOLERANCE);
}

} // namespace

QStringList TPrintedPage::Rows() const
{
    std::vector<TPrintedWord> sorted = words;
    std::sort(sorted.begin(), sorted.end(), Stands_Before);
    QStringList rows;
    double top = -1.0;

    for (const TPrintedWord& word : sorted) {
        if (rows.isEmpty() || word.box.top() - top > ROW_TOLERANCE) {
            rows << word.text;
            top = word.box.top();
        } else {
            rows.last() += ' ' + word.text;
        }
    }
    return rows;
}

QStringList TPrintedPage::Misplaced_Words() const
{
    const double margin = size.width() * MARGIN_PER_WIDTH - 0.5;
    const QRectF room(margin, 0.0, size.width() - 2 * margin, size.height());
    QStringList misplaced;

    for (std::size_t index = 0; index < words.size(); ++index) {
        const QRectF box = Without_Edges(words[index].box);
        const bool overlaps = std::any_of(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(index),
                                          [&box](const TPrintedWord& other) { return other.box.intersects(box); });
        if (overlaps || !room.contains(box)) {
            misplaced << words[index].text;
        }
    }
    return misplaced;
}

std::vector<TPrintedPage> Printed_Pages(const QString& file)
{
    std::vector<TPrintedPage> pages;
    QXmlStreamReader reader(Output_Of("pdftotext", {"-bbox", file, "-"}));

    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == "page") {
            pages.push_back({QSizeF(Number(reader, "width"), Number(reader, "height")), {}});
        } else if (reader.isStartElement() && reader.name() == "word") {
            pages.back().words.push_back(Word(&reader));
        }
    }
    if (reader.hasError()) {
        throw std::runtime_error(reader.errorString().toStdString());
    }
    return pages;
}

QMap<QString, QString> Pdf_Properties(const QString& file)
{
    QMap<QString, QString> properties;
    for (const QString& line : QString::fromUtf8(Output_Of("pdfinfo", {file})).split('\n')) {
        properties.insert(line.section(':', 0, 0), line.section(':', 1).trimmed());
    }
    return properties;
}

// The table has two lines of heads, and its columns end in "emb sub uni object ID".
QStringList Pdf_Fonts(const QString& file)
{
    static const QRegularExpression ROW("^(\\S+) .* (yes|no) +(?:yes|no) +(?:yes|no) +\\d+ +\\d+$");
    QStringList fonts;

    for (const QString& line : QString::fromUtf8(Output_Of("pdffonts", {file})).split('\n').mid(2)) {
        const QRegularExpressionMatch row = ROW.match(line);
        if (row.hasMatch()) {
            fonts << row.captured(1) + (row.captured(2) == "yes" ? ": embedded" : ": not embedded");
        }
    }
    fonts.sort();
    return fonts;
}

QImage Pdf_Picture(const QString& file, int page, int dots_per_inch)
{
    const QString number = QString::number(page);
    const QByteArray bytes = Output_Of("pdftoppm", {"-r", QString::number(dots_per_inch), "-f", number, "-l", number,
                                                    "-aa", "no", "-aaVector", "no", "-png", file});
    return QImage::fromData(bytes, "PNG");
}
