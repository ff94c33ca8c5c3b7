#include "src/norvexa.h"

#include "core/assertion.h"

#include <QHash>

#include <cmath>

// The order of the operations below is part of the results: another one changes last digits.

namespace {

/// Lengths are in mm, values of length-dependent items per metre.
constexpr double MM_PER_METRE = 1000.0;

double Square(double value)
{
    return value * value;
}

bool Is_Length_Dependent(const TNorvexaData::TComponentItem& item)
{
    return item.expression_type >= TNorvexaData::LENGTH_DEPENDENT_LINEAR;
}

} // namespace

void TNorvexa::Reset_Expression_Variables()
{
    d_expression.Clear_Variables();
}

void TNorvexa::Add_Expression_Variable(const QString& name, const double& value)
{
    d_expression.Add_Variable(name, value);
}

double TNorvexa::Evaluate_Component_Item(const QString& component, const QString& item, const QString& identifier,
                                         const double& length, bool* valid) const
{
    NORVEXA_ASSERT(valid);

    return Evaluate(Bind_Item(component, item, identifier), length, valid);
}

double TNorvexa::Evaluate_Reportable_Component(const QString& reportable, const QString& identifier,
                                               const double& length, bool* valid) const
{
    NORVEXA_ASSERT(valid);

    return Evaluate(Bind_Reportable(reportable, identifier), length, valid);
}

// Names

TNorvexa::TBoundItem TNorvexa::Bind_Item(const QString& component, const QString& item, const QString& identifier) const
{
    const TComponent* const owner = Find_Component(component);
    const TComponentItem* const found = owner ? Find_Item(*owner, item) : nullptr;

    if (!found) {
        return {};
    }
    return {owner, found, &Applicable_Expression(*found, identifier), Applicable_Length(*owner, identifier)};
}

std::vector<TNorvexa::TListedItem> TNorvexa::Bind_Items(const QString& component, const QString& item,
                                                        const QString& identifier) const
{
    const TComponent* const owner = Find_Component(component);
    std::vector<TListedItem> listed;
    if (!owner) {
        return listed;
    }

    const double component_length = Applicable_Length(*owner, identifier);
    QHash<QString, TBoundItem> first_items;
    for (const TComponentItem& candidate : owner->items) {
        if (!item.isEmpty() && candidate.name != item) {
            continue;
        }
        TBoundItem& first = first_items[candidate.name];
        if (!first.item) {
            first = {owner, &candidate, &Applicable_Expression(candidate, identifier), component_length};
        }
        listed.push_back({&candidate, first});
    }
    return listed;
}

TNorvexa::TBoundReportable TNorvexa::Bind_Reportable(const QString& reportable, const QString& identifier) const
{
    TBoundReportable bound;
    QString component;
    QString item;
    if (!Convert_From_Reportable(reportable, &component, &item)) {
        return bound;
    }
    if (!item.isEmpty()) {
        bound.items = {Bind_Item(component, item, identifier)};
        return bound;
    }
    bound.is_sum = true;
    // Only the expression of a summand goes by its name.
    for (const TListedItem& listed : Bind_Items(component, QString(), identifier)) {
        bound.items.push_back(listed.evaluated);
        bound.items.back().item = listed.item;
    }
    return bound;
}

// Values

double TNorvexa::Evaluate(const TBoundItem& item, double length, bool* valid) const
{
    NORVEXA_ASSERT(valid);
    *valid = false;

    double uncertainty = 0.0;
    if (!item.item || !Evaluate_Item(item, &uncertainty)) {
        return 0.0;
    }

    *valid = true;
    if (!Is_Length_Dependent(*item.item)) {
        return uncertainty;
    }
    return uncertainty * Effective_Length(item, length) / MM_PER_METRE;
}

double TNorvexa::Evaluate(const TBoundReportable& reportable, double length, bool* valid) const
{
    NORVEXA_ASSERT(valid);
    *valid = false;

    if (reportable.items.empty()) {
        return 0.0;
    }
    if (!reportable.is_sum) {
        return Evaluate(reportable.items.front(), length, valid);
    }
    *valid = true;
    return Evaluate_Sum(reportable.items, length);
}

bool TNorvexa::Evaluate_Item(const TBoundItem& bound, double* uncertainty) const
{
    bool valid = false;
    const double value = d_expression.Evaluate(*bound.expression, &valid);

    *uncertainty = value * bound.item->sensitivity / Distribution_Divisor(bound.item->distribution);
    return valid;
}

double TNorvexa::Evaluate_Sum(const std::vector<TBoundItem>& items, double length) const
{
    const double metres = Effective_Length(items.front(), length) / MM_PER_METRE;
    double constant_sum = 0.0;
    double length_dependent_sum = 0.0;

    for (const TBoundItem& bound : items) {
        double uncertainty = 0.0;
        if (!Evaluate_Item(bound, &uncertainty)) {
            continue;
        }
        if (Is_Length_Dependent(*bound.item)) {
            length_dependent_sum += Square(metres * uncertainty);
        } else {
            constant_sum += Square(uncertainty);
        }
    }
    return std::sqrt(Square(std::sqrt(constant_sum)) + Square(std::sqrt(length_dependent_sum)));
}

double TNorvexa::Effective_Length(const TBoundItem& bound, double length)
{
    const bool is_limited = bound.component->limit_uncertainty_length && length > bound.component_length;

    return is_limited ? bound.component_length : length;
}
