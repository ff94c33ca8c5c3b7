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

bool Needs_Value(const TReportWidget::TExportData& record, double length)
{
    return record.positions.empty() || record.positions.back() != length;
}

void Grow(TReportWidget::TExportData* record, double value, double length)
{
    record->values.push_back(value);
    record->positions.push_back(length);
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
    d_export_record_is_first.clear();
    d_next_export_record = 0;
    d_export_variable_positions.clear();
    d_uncertainty_points.clear();
    d_export_lines = TExportLines();
}

void TReportWidget::Add_Export_Data(const TReportData& record, const double& length)
{
    for (const TReportItemData& item : record.items) {
        TExportData* grown = Record_To_Grow(record.is_variable, {record.name, item.name}, length);
        if (grown == nullptr) {
            grown = Add_Export_Record({record.name, item, record.identifier, record.is_variable, {}, {}});
        }
        Grow(grown, item.value, length);
    }
}

void TReportWidget::Add_Export_Data(const TExportData& added, const double& length)
{
    TExportData* grown = Record_To_Grow(added.is_variable, {added.component, added.item.name}, length);
    if (grown == nullptr) {
        grown = Add_Export_Record(added);
    }
    Grow(grown, added.item.value, length);
}

/// An item that a group reports twice has two records, and both count, as they do in the report on screen. Null where
/// there is none for this length.
TReportWidget::TExportData* TReportWidget::Record_To_Grow(bool is_variable, const TNames& names, double length)
{
    if (Is_Next_To_Grow(is_variable, names, length)) {
        return &d_export_records[d_next_export_record++];
    }
    for (const std::size_t position : d_export_record_positions.value({is_variable, names})) {
        if (Needs_Value(d_export_records[position], length)) {
            d_next_export_record = position + 1;
            return &d_export_records[position];
        }
    }
    return nullptr;
}

/// Every length brings the records in the same order, so the one that is looked for mostly stands behind the former.
bool TReportWidget::Is_Next_To_Grow(bool is_variable, const TNames& names, double length)
{
    if (d_next_export_record >= d_export_records.size()) {
        d_next_export_record = 0;
    }
    if (d_export_records.empty() || !d_export_record_is_first[d_next_export_record]) {
        return false;
    }
    const TExportData& record = d_export_records[d_next_export_record];

    return record.is_variable == is_variable && record.item.name == names.second && record.component == names.first &&
           Needs_Value(record, length);
}

TReportWidget::TExportData* TReportWidget::Add_Export_Record(const TExportData& added)
{
    std::vector<std::size_t>& positions =
        d_export_record_positions[{added.is_variable, {added.component, added.item.name}}];

    d_export_record_is_first.push_back(positions.empty());
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
