#include "src/reportwidget.h"

#include "src/combineduncertainty.h"
#include "src/exportlines.h"

#include <utility>

namespace {

/// The value at the length of that index; nothing where the record has none.
double Value_At(const TReportWidget::TExportData& record, std::size_t index)
{
    return index < record.values.size() ? record.values[index] : 0.0;
}

double Uc_At(const std::vector<TReportWidget::TExportData>& records, std::size_t index)
{
    TCombinedUncertainty uncertainty;
    for (const TReportWidget::TExportData& record : records) {
        if (!record.is_variable) {
            uncertainty.Add(record.item.expression_type, Value_At(record, index));
        }
    }
    return uncertainty.Uc();
}

} // namespace

void TReportWidget::Clear_Export()
{
    d_export_records.clear();
    d_export_variables.clear();
    d_export_record_positions.clear();
    d_export_variable_positions.clear();
    d_uncertainty_points.clear();
    d_export_lines = TExportLines();
}

void TReportWidget::Add_Export_Data(const TReportData& record, const double& length)
{
    for (const TReportItemData& item : record.items) {
        Add_Export_Data({record.name, item, record.identifier, record.is_variable, {}, {}}, length);
    }
}

void TReportWidget::Add_Export_Data(const TExportData& added, const double& length)
{
    TExportData* const record = Record_To_Grow(added, length);
    record->values.push_back(added.item.value);
    record->positions.push_back(length);
}

/// An item that a group reports twice has two records, and both count, as they do in the report on screen.
TReportWidget::TExportData* TReportWidget::Record_To_Grow(const TExportData& added, double length)
{
    std::vector<std::size_t>& positions =
        d_export_record_positions[{added.is_variable, {added.component, added.item.name}}];

    for (const std::size_t position : positions) {
        TExportData& record = d_export_records[position];
        if (record.positions.empty() || record.positions.back() != length) {
            return &record;
        }
    }
    positions.push_back(d_export_records.size());
    d_export_records.push_back(added);
    return &d_export_records.back();
}

void TReportWidget::Add_Export_Variable_Data(const TExportVariableData& added)
{
    const TNames names(added.source, added.name);
    const auto found = d_export_variable_positions.constFind(names);

    if (found == d_export_variable_positions.constEnd()) {
        d_export_variable_positions.insert(names, d_export_variables.size());
        d_export_variables.push_back(added);
        return;
    }
    std::vector<double>& values = d_export_variables[*found].values;
    values.insert(values.end(), added.values.begin(), added.values.end());
}

void TReportWidget::Update_Export_Uncertainty_Data()
{
    d_uncertainty_points.clear();
    if (d_export_records.empty()) {
        return;
    }
    const std::vector<double>& lengths = d_export_records.front().positions;
    for (std::size_t index = 0; index < lengths.size(); ++index) {
        d_uncertainty_points.emplace_back(lengths[index], Uc_At(d_export_records, index));
    }
}

void TReportWidget::Format_Export_Data()
{
    d_export_lines = Export_Lines(d_export_records, d_export_variables, d_uncertainty_points);
}

QString TReportWidget::Last_Error() const
{
    return d_last_error;
}
