#include "src/reportwalk.h"

#include "src/norvexa.h"

#include <cmath>

namespace {

// A length that is an exact multiple n of the component length still needs n - 1 joints.
const double LENGTH_COUNT_MARGIN = 1.001;

bool Is_Temperature(TNorvexaData::TExpressionType type)
{
    return type == TNorvexaData::CONSTANT_TEMPERATURE || type == TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
}

class TWalk
{
public:
    TWalk(TNorvexa* document, double length, TReportListener* listener)
        : d_document(document), d_length(length), d_listener(listener)
    {}

    void Evaluate_Variable_Record(const TReportRecord& record)
    {
        d_listener->Record_Started(record);
        for (const TVariable& variable : record.local_variables) {
            Set_Data_Variable(record, variable);
        }
        Evaluate_Items(record, true);
    }

    bool Evaluate_Group_Record(const TReportRecord& record)
    {
        d_listener->Record_Started(record);
        for (const TVariable& variable : record.local_variables) {
            const double value = Local_Variable_Value(record, variable, d_length);
            d_document->Add_Expression_Variable(variable.name, value);
            d_listener->Local_Variable_Set(record, variable.name, value);
        }
        return Evaluate_Items(record, false);
    }

private:
    void Set_Data_Variable(const TReportRecord& record, const TVariable& variable)
    {
        bool ok = false;
        const double value =
            d_document->Evaluate_Reportable_Component(variable.description, record.identifier, d_length, &ok);

        if (ok) {
            d_document->Add_Expression_Variable(variable.name, value);
            d_listener->Data_Variable_Set(record, variable.name, value);
        } else {
            d_listener->Data_Variable_Failed(record, variable.name);
        }
    }

    bool Evaluate_Items(const TReportRecord& record, bool is_variable)
    {
        std::vector<TReportRow> rows;
        const int component = d_document->Component_Index(record.component);
        const int count = component < 0 ? 0 : d_document->Component_Item_Count(component);

        for (int index = 0; index < count; ++index) {
            const TNorvexaData::TComponentItem item = d_document->Component_Item(component, index);
            if (!record.item.isEmpty() && record.item != item.name) {
                continue;
            }
            if (!is_variable && !Fits_Units(item.expression_type)) {
                d_listener->Units_Mixed();
                return false;
            }
            rows.push_back(Evaluated_Row(record, item));
            d_listener->Item_Evaluated(record, rows.back());
        }
        d_listener->Record_Finished(record, is_variable, rows);
        return true;
    }

    // The first item of the group decides which kind of unit all the others must have.
    bool Fits_Units(TNorvexaData::TExpressionType type)
    {
        const bool is_temperature = Is_Temperature(type);

        if (!d_units_known) {
            d_units_known = true;
            d_units_are_temperature = is_temperature;
        }
        return is_temperature == d_units_are_temperature;
    }

    TReportRow Evaluated_Row(const TReportRecord& record, const TNorvexaData::TComponentItem& item) const
    {
        TReportRow row;
        row.name = item.name;
        row.unit_kind = Is_Temperature(item.expression_type) ? "Temperature" : "Linear";
        row.expression_type =
            item.expression_type < TNorvexaData::LENGTH_DEPENDENT_LINEAR ? "Constant" : "Length Dependent";
        row.expression = d_document->Component_Item_Expression(record.component, item.name, record.identifier, nullptr);
        row.sensitivity = item.sensitivity;
        row.distribution = d_document->Distribution_Type(item.distribution);
        row.uc_type = d_document->UCType(item.uc_type);
        row.divisor = d_document->Distribution_Divisor(item.distribution);

        const double value = d_document->Evaluate_Component_Item(record.component, item.name, record.identifier,
                                                                 d_length, &row.is_valid);
        row.value = row.is_valid ? value : 0.0;
        return row;
    }

    TNorvexa* d_document;
    double d_length;
    TReportListener* d_listener;
    bool d_units_known = false;
    bool d_units_are_temperature = false;
};

} // namespace

bool Walk_Report(TNorvexa* document, const std::vector<TReportRecord>& variable_records,
                 const std::vector<TReportRecord>& group_records, double length, TReportListener* listener)
{
    TWalk walk(document, length, listener);

    for (const TReportRecord& record : variable_records) {
        walk.Evaluate_Variable_Record(record);
    }
    for (const TReportRecord& record : group_records) {
        if (!walk.Evaluate_Group_Record(record)) {
            return false;
        }
    }
    return true;
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
