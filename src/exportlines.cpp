#include "src/exportlines.h"

#include "core/interpolation.h"
#include "core/number.h"
#include "src/csvcells.h"
#include "src/reportrows.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <functional>

// Titles stand in the first cell of a line, everything else is indented by one cell. Names of any content go into the
// lines by concatenation, so that "%1" in a name stays what it is.

namespace {

using TExportData = TReportWidget::TExportData;
using TExportVariableData = TReportWidget::TExportVariableData;
using TFormattedLines = TReportWidget::TFormattedLines;
using TNumberFormat = std::function<QString(double)>;

/// Of each source, in their order.
using TSourceVariables = QHash<QString, std::vector<const TExportVariableData*>>;

/// The number formats of one copy of the lines.
struct TNumberFormats
{
    TNumberFormat position;
    TNumberFormat value;
    TNumberFormat uncertainty;
    TNumberFormat coefficient;
};

TNumberFormat Decimals(int decimals)
{
    return [decimals](double value) { return Fixed_Text(value, decimals); };
}

// As many decimals as a column of a page has room for.
QString Narrow_Text(double value)
{
    const double magnitude = std::fabs(value);

    if (magnitude < 10.0) {
        return Fixed_Text(value, 5);
    }
    if (magnitude < 100.0) {
        return Fixed_Text(value, 4);
    }
    return Fixed_Text(value, magnitude < 1000.0 ? 3 : 2);
}

TNumberFormats CSV_Formats()
{
    return {Decimals(3), Decimals(9), Decimals(9), Decimals(6)};
}

TNumberFormats PDF_Formats()
{
    return {Decimals(1), Narrow_Text, Decimals(5), Decimals(5)};
}

TFormattedLines Both(const std::vector<QString>& lines)
{
    return {lines, lines};
}

QString Title(const TExportData& record)
{
    return CSV_Cell(record.component + " Component " + record.identifier + (record.is_variable ? " Variable" : ""));
}

QString Number_Cells(const std::vector<double>& values, const TNumberFormat& format)
{
    QString cells;
    for (const double value : values) {
        cells += ',';
        cells += format(value);
    }
    return cells;
}

// Budget definition

QString Definition_Row(const TExportData& record)
{
    const TReportWidget::TReportItemData& item = record.item;

    return ',' + QStringList({CSV_Cell(item.name), CSV_Cell(item.expression_type), Enclosed_CSV_Cell(item.expression),
                              CSV_Cell(item.uc_type), CSV_Cell(item.sensitivity), CSV_Cell(item.distribution),
                              Value_Text(item.divisor)})
                     .join(',');
}

std::vector<QString> Definition_Lines(const std::vector<TExportData>& records)
{
    std::vector<QString> lines;
    QString former_title;

    for (const TExportData& record : records) {
        const QString title = Title(record);
        if (title != former_title) {
            if (!lines.empty()) {
                lines.emplace_back();
            }
            lines.push_back(title);
            lines.emplace_back(",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor");
        }
        lines.push_back(Definition_Row(record));
        former_title = title;
    }
    if (!lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

// Global variables

std::vector<QString> Global_Variable_Lines(const std::vector<TExportVariableData>& variables)
{
    std::vector<QString> lines;

    for (const TExportVariableData& variable : variables) {
        if (!Is_Record_Variable(variable.name)) {
            const QString value = variable.values.empty() ? QString() : Value_Text(variable.values.front());
            lines.push_back(',' + CSV_Cell(variable.name) + ',' + value);
        }
    }
    lines.emplace_back();
    return lines;
}

// Budget data: in every row the name stands in the third cell and the values from the fourth on, so that they line up
// under the positions.

QString Data_Row(const QString& heading, const QString& name, const std::vector<double>& values,
                 const TNumberFormat& format)
{
    return ',' + heading + ',' + CSV_Cell(name) + Number_Cells(values, format);
}

TSourceVariables Variables_By_Source(const std::vector<TExportVariableData>& variables)
{
    TSourceVariables by_source;
    for (const TExportVariableData& variable : variables) {
        by_source[variable.source].push_back(&variable);
    }
    return by_source;
}

void Append_Variable_Rows(const TExportData& record, const TSourceVariables& variables, const TNumberFormat& format,
                          std::vector<QString>* lines)
{
    const auto found = variables.constFind(record.component);
    if (found == variables.constEnd()) {
        return;
    }
    QString heading = record.is_variable ? "Export Variables" : "Local Variables";
    for (const TExportVariableData* variable : *found) {
        lines->push_back(Data_Row(heading, variable->name, variable->values, format));
        heading.clear();
    }
}

// A block goes on as long as the component is the same, whatever its identifiers.
void Append_Component_Blocks(const std::vector<TExportData>& records, const TSourceVariables& variables,
                             const TNumberFormat& format, std::vector<QString>* lines)
{
    const TExportData* previous = nullptr;

    for (const TExportData& record : records) {
        const bool starts_block = previous == nullptr || record.component != previous->component;
        if (starts_block) {
            lines->emplace_back();
            lines->push_back(Title(record));
            Append_Variable_Rows(record, variables, format, lines);
        }
        lines->push_back(Data_Row(starts_block ? "Source" : QString(), record.item.name, record.values, format));
        previous = &record;
    }
}

std::vector<double> Uncertainties(const std::vector<TVector2>& points)
{
    std::vector<double> uncertainties(points.size());
    std::transform(points.begin(), points.end(), uncertainties.begin(), [](const TVector2& point) { return point(1); });
    return uncertainties;
}

std::vector<QString> Data_Lines(const std::vector<TExportData>& records, const TSourceVariables& variables,
                                const std::vector<TVector2>& points, const TNumberFormats& formats)
{
    const std::vector<double> positions = records.empty() ? std::vector<double>() : records.front().positions;
    std::vector<QString> lines;

    lines.push_back(Data_Row(QString(), "Position (mm)", positions, formats.position));
    Append_Component_Blocks(records, variables, formats.value, &lines);
    lines.emplace_back();
    lines.emplace_back("Uncertainty");
    lines.push_back(Data_Row(QString(), "Combined", Uncertainties(points), formats.uncertainty));
    return lines;
}

// Formula

/// Uc = a * x^2 + b * x + c with x and Uc in mm.
struct TQuadratic
{
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
};

bool Fit(const std::vector<TVector2>& points, TQuadratic* quadratic)
{
    return LeastSquares::Fit_Curve(points, &quadratic->a, &quadratic->b, &quadratic->c) &&
           std::isfinite(quadratic->a) && std::isfinite(quadratic->b) && std::isfinite(quadratic->c);
}

// A number that is added to others: the minus sign is its own.
QString Term(double value, const TNumberFormat& format)
{
    return value >= 0.0 ? '+' + format(std::fabs(value)) : format(value);
}

QString Formula_Heading(int coverage_factor)
{
    return QStringLiteral("Uc(K=%1):").arg(coverage_factor);
}

// With L in metres each power of the length brings a factor of 1000.
QString Formula_Line(const TQuadratic& quadratic, int coverage_factor, const TNumberFormat& format)
{
    const double per_metre = coverage_factor * 1000.0;
    const double per_square_metre = coverage_factor * 1000000.0;

    return ",," + Formula_Heading(coverage_factor) + ',' + format(coverage_factor * quadratic.c) +
           Term(per_metre * quadratic.b, format) + 'L' + Term(per_square_metre * quadratic.a, format) +
           "L^2 mm  (L is length in meters)";
}

std::vector<QString> Formula_Lines(const TQuadratic& quadratic, const TNumberFormat& format)
{
    return {Formula_Line(quadratic, 1, format), Formula_Line(quadratic, 2, format)};
}

// One cell further to the right than a formula, and with a blank before ERR: both are meant.
std::vector<QString> Formula_Error_Lines()
{
    return {",,," + Formula_Heading(1) + ", ERR", ",,," + Formula_Heading(2) + ", ERR"};
}

TFormattedLines Formula(const std::vector<TVector2>& points)
{
    TQuadratic quadratic;

    if (!Fit(points, &quadratic)) {
        return Both(Formula_Error_Lines());
    }
    return {Formula_Lines(quadratic, CSV_Formats().coefficient), Formula_Lines(quadratic, PDF_Formats().coefficient)};
}

} // namespace

TReportWidget::TExportLines Export_Lines(const std::vector<TExportData>& records,
                                         const std::vector<TExportVariableData>& variables,
                                         const std::vector<TVector2>& points)
{
    const TSourceVariables by_source = Variables_By_Source(variables);
    TReportWidget::TExportLines lines;

    lines.budget_definition = Both(Definition_Lines(records));
    lines.global_variables = Both(Global_Variable_Lines(variables));
    lines.budget_data = {Data_Lines(records, by_source, points, CSV_Formats()),
                         Data_Lines(records, by_source, points, PDF_Formats())};
    lines.formula = Formula(points);
    return lines;
}
