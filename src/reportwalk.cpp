#include "src/reportwalk.h"

#include <cmath>
#include <utility>

namespace {

// A length that is an exact multiple n of the component length still needs n - 1 joints.
const double LENGTH_COUNT_MARGIN = 1.001;

bool Is_Temperature(TNorvexaData::TExpressionType type)
{
    return type == TNorvexaData::CONSTANT_TEMPERATURE || type == TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
}

// What of a row is the same at every length.
TReportRow Row(const TNorvexa& document, const TNorvexaData::TComponentItem& item, const QString& expression)
{
    TReportRow row;
    row.name = item.name;
    row.unit_kind = Is_Temperature(item.expression_type) ? "Temperature" : "Linear";
    row.expression_type =
        item.expression_type < TNorvexaData::LENGTH_DEPENDENT_LINEAR ? "Constant" : "Length Dependent";
    row.expression = expression;
    row.sensitivity = item.sensitivity;
    row.distribution = document.Distribution_Type(item.distribution);
    row.uc_type = document.UCType(item.uc_type);
    row.divisor = document.Distribution_Divisor(item.distribution);
    return row;
}

} // namespace

// Names

TReportWalk::TReportWalk(TNorvexa* document, const std::vector<TReportRecord>& variable_records,
                         const std::vector<TReportRecord>& group_records)
    : d_document(document)
{
    for (const TReportRecord& record : variable_records) {
        TRecord bound = Bound_Record(record);
        for (const TVariable& variable : record.local_variables) {
            bound.data_variables.push_back(document->Bind_Reportable(variable.description, record.identifier));
        }
        d_variable_records.push_back(std::move(bound));
    }
    for (const TReportRecord& record : group_records) {
        d_group_records.push_back(Bound_Record(record));
    }
}

TReportWalk::TRecord TReportWalk::Bound_Record(const TReportRecord& record) const
{
    TRecord bound;
    bound.record = &record;
    for (const TNorvexa::TListedItem& listed :
         d_document->Bind_Items(record.component, record.item, record.identifier)) {
        bound.items.push_back(listed.evaluated);
        bound.rows.push_back(Row(*d_document, *listed.item, *listed.evaluated.expression));
    }
    return bound;
}

// Values

bool TReportWalk::Evaluate(double length, TReportListener* listener)
{
    for (TRecord& bound : d_variable_records) {
        listener->Record_Started(*bound.record);
        Set_Data_Variables(bound, length, listener);
        Evaluate_Items(&bound, true, length, listener);
    }
    for (TRecord& bound : d_group_records) {
        listener->Record_Started(*bound.record);
        Set_Local_Variables(bound, length, listener);
        if (!Evaluate_Items(&bound, false, length, listener)) {
            return false;
        }
    }
    return true;
}

void TReportWalk::Set_Data_Variables(const TRecord& bound, double length, TReportListener* listener) const
{
    const TReportRecord& record = *bound.record;

    for (std::size_t index = 0; index < bound.data_variables.size(); ++index) {
        const QString& name = record.local_variables[index].name;
        bool ok = false;
        const double value = d_document->Evaluate(bound.data_variables[index], length, &ok);

        if (ok) {
            d_document->Add_Expression_Variable(name, value);
            listener->Data_Variable_Set(record, name, value);
        } else {
            listener->Data_Variable_Failed(record, name);
        }
    }
}

void TReportWalk::Set_Local_Variables(const TRecord& bound, double length, TReportListener* listener) const
{
    for (const TVariable& variable : bound.record->local_variables) {
        const double value = Local_Variable_Value(*bound.record, variable, length);
        d_document->Add_Expression_Variable(variable.name, value);
        listener->Local_Variable_Set(*bound.record, variable.name, value);
    }
}

bool TReportWalk::Evaluate_Items(TRecord* bound, bool is_variable, double length, TReportListener* listener)
{
    for (std::size_t index = 0; index < bound->items.size(); ++index) {
        TReportRow& row = bound->rows[index];
        if (!is_variable && !Fits_Units(row)) {
            listener->Units_Mixed();
            return false;
        }
        row.value = d_document->Evaluate(bound->items[index], length, &row.is_valid);
        listener->Item_Evaluated(*bound->record, row);
    }
    listener->Record_Finished(*bound->record, is_variable, bound->rows);
    return true;
}

// The first item of the group decides which kind of unit all the others must have.
bool TReportWalk::Fits_Units(const TReportRow& row)
{
    if (d_unit_kind.isEmpty()) {
        d_unit_kind = row.unit_kind;
    }
    return row.unit_kind == d_unit_kind;
}

bool Walk_Report(TNorvexa* document, const std::vector<TReportRecord>& variable_records,
                 const std::vector<TReportRecord>& group_records, double length, TReportListener* listener)
{
    return TReportWalk(document, variable_records, group_records).Evaluate(length, listener);
}

double Local_Variable_Value(const TReportRecord& record, const TVariable& variable, double length)
{
    if (variable.name == "L") {
        return length;
    }
    if (variable.name == "Lc") {
        // The sum makes the negative zero that a short way to the left of 0 leaves an ordinary one.
        return record.length > 0.0 ? std::trunc(length / (record.length * LENGTH_COUNT_MARGIN)) + 0.0 : 0.0;
    }
    return variable.value;
}
