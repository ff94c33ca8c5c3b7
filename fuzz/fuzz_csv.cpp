// Splits comma-separated lines and formats the lines of an export. The input is a list of texts that are parted by
// zero bytes.

#include "core/number.h"
#include "fuzz/require.h"
#include "src/csvcells.h"
#include "src/exportlines.h"
#include "src/reportrows.h"

#include <cstddef>
#include <cstdint>

namespace {

using TLines = std::vector<QString>;

constexpr int TEXTS_PER_RECORD = 5;
constexpr int DEFINITION_CELLS = 8;
constexpr int NAME_CELL = 2;

/// Texts are taken one after the other, again from the first one after the last.
class TTexts
{
public:
    explicit TTexts(const QStringList& texts) : d_texts(texts) {}

    QString Next() { return d_texts.at(d_next++ % d_texts.size()); }
    double Number() { return Next().toDouble(); }
    std::vector<double> Numbers(int count);
    int Size() const { return d_texts.size(); }

private:
    QStringList d_texts;
    int d_next = 0;
};

std::vector<double> TTexts::Numbers(int count)
{
    std::vector<double> numbers;

    for (; count > 0; --count) {
        numbers.push_back(Number());
    }
    return numbers;
}

struct TExport
{
    std::vector<TReportWidget::TExportData> records;
    std::vector<TReportWidget::TExportVariableData> variables;
    std::vector<TVector2> points;
};

TReportWidget::TExportData Record(TTexts* texts, int length_count)
{
    TReportWidget::TExportData record;

    record.component = texts->Next();
    record.identifier = texts->Next();
    record.item.name = texts->Next();
    record.item.expression = texts->Next();
    record.item.distribution = texts->Next();
    record.item.divisor = texts->Number();
    record.is_variable = record.identifier.size() % 2 == 1;
    record.values = texts->Numbers(length_count);
    record.positions = texts->Numbers(length_count);
    return record;
}

TExport Export(const QStringList& list)
{
    TTexts texts(list);
    TExport data;
    const int length_count = list.size() % 5;

    for (int count = list.size() / TEXTS_PER_RECORD; count > 0; --count) {
        data.records.push_back(Record(&texts, length_count));
        data.variables.push_back({texts.Next(), texts.Next(), texts.Numbers(length_count)});
    }
    for (int count = length_count; count > 0; --count) {
        data.points.emplace_back(texts.Number(), texts.Number());
    }
    return data;
}

// Cells

QString Line(const QStringList& texts, QString (*cell)(const QString&))
{
    QStringList cells;

    for (const QString& text : texts) {
        cells.append(cell(text));
    }
    return cells.join(',');
}

void Check_Cells(const QStringList& texts)
{
    for (const auto cell : {CSV_Cell, Enclosed_CSV_Cell}) {
        const QString line = Line(texts, cell);
        Require(CSV_Texts(line) == texts, "The cells differ: " + line);
    }
}

/// Any line splits into cells, and these split out of a line of their own again.
void Check_Split(const QString& line)
{
    const QStringList texts = CSV_Texts(line);

    Require(!texts.isEmpty(), "No cell: " + line);
    Check_Cells(texts);
}

// Formatted lines

void Require_Cells(const QString& line, int count, int name_cell, const QString& name)
{
    const QStringList texts = CSV_Texts(line);

    Require(texts.size() == count && texts.value(name_cell) == name, "Not as it was formatted: " + line);
}

bool Contains_Row(const TLines& lines, int count, int name_cell, const QString& name)
{
    return std::any_of(lines.begin(), lines.end(), [=](const QString& line) {
        const QStringList texts = CSV_Texts(line);
        return texts.size() == count && texts.value(name_cell) == name;
    });
}

void Check_Definition(const TLines& lines, const TExport& data)
{
    for (const TReportWidget::TExportData& record : data.records) {
        Require(Contains_Row(lines, DEFINITION_CELLS, 1, record.item.name), "No definition of " + record.item.name);
        Require(Contains_Row(lines, DEFINITION_CELLS, 3, record.item.expression), "Lost: " + record.item.expression);
    }
}

void Check_Variables(const TLines& lines, const TExport& data)
{
    std::size_t line = 0;

    for (const TReportWidget::TExportVariableData& variable : data.variables) {
        if (!Is_Record_Variable(variable.name)) {
            Require_Cells(lines.at(line++), 3, 1, variable.name);
        }
    }
    Require(lines.size() == line + 1 && lines.back().isEmpty(), "More global variables than there are.");
}

void Check_Data(const TLines& lines, const TExport& data)
{
    const int length_count = static_cast<int>(data.points.size());
    const int positions = data.records.empty() ? 0 : length_count;

    Require_Cells(lines.front(), NAME_CELL + 1 + positions, NAME_CELL, "Position (mm)");
    Require_Cells(lines.back(), NAME_CELL + 1 + length_count, NAME_CELL, "Combined");
    for (const TReportWidget::TExportData& record : data.records) {
        Require(Contains_Row(lines, NAME_CELL + 1 + length_count, NAME_CELL, record.item.name),
                "No data of " + record.item.name);
    }
}

/// Both copies of the lines have the same cells but for the decimals of their numbers.
void Check_Copies(const TReportWidget::TFormattedLines& lines)
{
    Require(lines.csv.size() == lines.pdf.size(), "The copies differ in their lines.");
    for (std::size_t line = 0; line < lines.csv.size(); ++line) {
        Require(CSV_Texts(lines.csv[line]).size() == CSV_Texts(lines.pdf[line]).size(),
                "The copies differ: " + lines.csv[line]);
    }
}

void Check_Export(const TExport& data)
{
    const TReportWidget::TExportLines lines = Export_Lines(data.records, data.variables, data.points);

    Check_Definition(lines.budget_definition.csv, data);
    Check_Variables(lines.global_variables.csv, data);
    Check_Data(lines.budget_data.csv, data);
    Require(lines.formula.csv.size() == 2, "No two formulas.");
    for (const auto& section : {lines.budget_definition, lines.global_variables, lines.budget_data, lines.formula}) {
        Check_Copies(section);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QStringList texts = input.split(QChar(0));

    Check_Split(input);
    Check_Cells(texts);
    Check_Export(Export(texts));
    return 0;
}
