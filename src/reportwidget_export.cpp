#include "src/reportwidget.h"

#include "src/combineduncertainty.h"
#include "src/exportlines.h"

#include <algorithm>

namespace {

/// The value at the length of that index; nothing where the record has none.
double Value_At(const TReportWidget::TExportData& record, std::size_t index)
{
    return index < record.values.size() ? record.values[index] : 0.0;
}

bool Is_Of(const TReportWidget::TExportData& record, bool is_variable, const QPair<QString, QString>& names)
{
    return record.is_variable == is_variable && record.item.name == names.second && record.component == names.first;
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
    d_grown_export_records = 0;
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

/// An item that comes twice at one length has two records: both count where the group reports it twice, as they do in
/// the report on screen, and both are shown where two report data variables stand for its component. Null where there
/// is none for this length.
TReportWidget::TExportData* TReportWidget::Record_To_Grow(bool is_variable, const TNames& names, double length)
{
    Pass_Grown_Records(length);
    if (d_grown_export_records >= d_export_records.size()) {
        return nullptr;
    }
    // Every length brings the items in the same order, so this mostly is the one.
    TExportData& first_to_grow = d_export_records[d_grown_export_records];
    if (Is_Of(first_to_grow, is_variable, names)) {
        return &first_to_grow;
    }
    const auto found = d_export_record_positions.constFind({is_variable, names});
    if (found == d_export_record_positions.constEnd()) {
        return nullptr;
    }
    const auto position = std::find_if(found->begin(), found->end(), [this, length](std::size_t candidate) {
        return Needs_Value(d_export_records[candidate], length);
    });
    return position != found->end() ? &d_export_records[*position] : nullptr;
}

void TReportWidget::Pass_Grown_Records(double length)
{
    if (d_growing_length != length) {
        d_growing_length = length;
        d_grown_export_records = 0;
    }
    while (d_grown_export_records < d_export_records.size() &&
           !Needs_Value(d_export_records[d_grown_export_records], length)) {
        ++d_grown_export_records;
    }
}

TReportWidget::TExportData* TReportWidget::Add_Export_Record(const TExportData& added)
{
    d_export_record_positions[{added.is_variable, {added.component, added.item.name}}].push_back(
        d_export_records.size());
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
