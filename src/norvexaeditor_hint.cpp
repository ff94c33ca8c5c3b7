#include "src/norvexaeditor.h"

#include "core/expressionhint.h"
#include "core/expressionnames.h"
#include "core/xmltext.h"
#include "src/componentitemwidget.h"
#include "src/reportrows.h"
#include "src/variablewidget.h"

#include <cmath>

// Whether a report could evaluate the expression on the item page. A hint changes nothing but the look of the editor:
// no record, no expression variable of the document and no flag.

namespace {

// The uncertainty that a variable will stand for is unknown before the report; any number shows whether the rest of the
// expression is in order.
const double UNKNOWN_UNCERTAINTY = 1.0;

} // namespace

void TNorvexaEditor::Update_Expression_Hint()
{
    TExpressionHint hint;

    // Without an item the page is disabled and its editor shows nothing of importance. An expression too long to be
    // edited would take its time at every selection.
    if (d_component_item_widget->isEnabled() && d_component_item_widget->Can_Edit_Expression()) {
        const QString expression = Xml_Clean(d_component_item_widget->Expression());
        hint = Expression_Hint(expression, Report_Variables(Expression_Names(expression)));
    }
    d_component_item_widget->Set_Expression_Hint(hint);
}

std::vector<TExpression::TVariable> TNorvexaEditor::Report_Variables(const QStringList& names) const
{
    std::vector<TExpression::TVariable> variables;
    const int component = Current_Component();
    const TNorvexaData::TComponentInstance instance =
        component < 0 ? TNorvexaData::TComponentInstance() : Current_Instance(component);

    for (int index = 0; index < d_variable_widget->Variable_Count(); ++index) {
        const QString name = d_variable_widget->Variable_Name(index);
        bool is_built_in = false;
        const double value = d_variable_widget->Variable_Value(index, &is_built_in);
        if (is_built_in) {
            variables.push_back({name, Is_Record_Variable(name) ? Record_Variable_Value(name, instance) : value});
        }
    }
    for (const QString& name : names) {
        if (Stands_For_Component(name)) {
            variables.push_back({name, UNKNOWN_UNCERTAINTY});
        }
    }
    return variables;
}

double TNorvexaEditor::Record_Variable_Value(const QString& name,
                                             const TNorvexaData::TComponentInstance& instance) const
{
    const double coefficient = instance.expansion_coefficient;
    TReportRecord record;
    TVariable variable;

    record.length = instance.length;
    variable.name = name;
    variable.value =
        name == "CTEd" ? std::fabs(coefficient - d_variable_widget->Machine_Expansion_Coefficient()) : coefficient;
    return Local_Variable_Value(record, variable, d_variable_widget->End_Position());
}

bool TNorvexaEditor::Stands_For_Component(const QString& variable) const
{
    const QString description = d_variable_widget->Variable_Description(variable);
    QString component;
    QString item;

    return !description.isEmpty() && d_norvexa.Convert_From_Reportable(description, &component, &item);
}
