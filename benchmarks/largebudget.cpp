#include "benchmarks/largebudget.h"

namespace {

constexpr int VARIABLES = 20;
constexpr int GROUPS = 10;

template <typename TRecord, typename TMake>
std::vector<TRecord> Records(int count, TMake make)
{
    std::vector<TRecord> records;
    records.reserve(static_cast<std::size_t>(count));
    for (int number = 1; number <= count; ++number) {
        records.push_back(make(number));
    }
    return records;
}

QString Component_Name(int number)
{
    return QString("Machine & probe %1").arg(number);
}

TNorvexa::TComponentInstance New_Identifier(int number)
{
    TNorvexa::TComponentInstance identifier;
    identifier.name = QString("Serial number %1").arg(number);
    identifier.calibration_date = "Nov 15 2026";
    identifier.calibration_due_date = "Nov 15 2027";
    identifier.length = 500.0 + number;
    identifier.expansion_coefficient = 0.0115;
    return identifier;
}

TNorvexa::TReplacementItem New_Replacement(int number)
{
    TNorvexa::TReplacementItem replacement;
    replacement.identifier = QString("Serial number %1").arg(number);
    replacement.expression = QString("0.000%1 * SQRT(Length / 1000)").arg(number);
    replacement.use_default_expression = number % 2 == 0;
    return replacement;
}

TNorvexa::TComponentItem New_Item(int number)
{
    TNorvexa::TComponentItem item;
    item.name = QString("Contribution %1").arg(number);
    item.expression = QString("(Repeatability + 0.000%1) / 2 * Temperature_Max").arg(number);
    item.distribution = static_cast<TNorvexa::TDistribution>(number % 5);
    item.expression_type = static_cast<TNorvexa::TExpressionType>(number % 4);
    item.uc_type = static_cast<TNorvexa::TUCType>(number % 2);
    item.sensitivity = 1.0 + 0.125 * number;
    item.replacement_items = Records<TNorvexa::TReplacementItem>(TLargeBudget::IDENTIFIERS, New_Replacement);
    return item;
}

TNorvexa::TComponent New_Component(int number, int items)
{
    TNorvexa::TComponent component;
    component.name = Component_Name(number);
    component.length = 1000.0;
    component.instances = Records<TNorvexa::TComponentInstance>(TLargeBudget::IDENTIFIERS, New_Identifier);
    component.items = Records<TNorvexa::TComponentItem>(items, New_Item);
    return component;
}

TVariable New_Variable(int number)
{
    TVariable variable;
    variable.name = QString("Variable_%1").arg(number);
    variable.description = Component_Name(number);
    return variable;
}

TGroup New_Group(int number)
{
    return {QString("Measurement %1").arg(number), {Component_Name(number), Component_Name(number + 1)}};
}

} // namespace

TLargeBudget::TLargeBudget(int components, int items)
    : variables(Records<TVariable>(VARIABLES, New_Variable)), groups(Records<TGroup>(GROUPS, New_Group))
{
    d_components = Records<TComponent>(components, [items](int number) { return New_Component(number, items); });
}
