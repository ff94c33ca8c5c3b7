#include "src/norvexa.h"

#include "core/assertion.h"

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
    *valid = false;

    const TComponent* const owner = Find_Component(component);
    const TComponentItem* const found = owner ? Find_Item(*owner, item) : nullptr;
    double uncertainty = 0.0;
    if (!found || !Evaluate_Item(*found, identifier, &uncertainty)) {
        return 0.0;
    }

    *valid = true;
    if (!Is_Length_Dependent(*found)) {
        return uncertainty;
    }
    return uncertainty * Effective_Length(*owner, identifier, length) / MM_PER_METRE;
}

double TNorvexa::Evaluate_Reportable_Component(const QString& reportable, const QString& identifier,
                                               const double& length, bool* valid) const
{
    NORVEXA_ASSERT(valid);
    *valid = false;

    QString component;
    QString item;
    if (!Convert_From_Reportable(reportable, &component, &item)) {
        return 0.0;
    }
    if (!item.isEmpty()) {
        return Evaluate_Component_Item(component, item, identifier, length, valid);
    }

    const TComponent* const found = Find_Component(component);
    if (!found || found->items.empty()) {
        return 0.0;
    }
    *valid = true;
    return Evaluate_Sum(*found, identifier, length);
}

bool TNorvexa::Evaluate_Item(const TComponentItem& item, const QString& identifier, double* uncertainty) const
{
    bool valid = false;
    const double value = d_expression.Evaluate(Applicable_Expression(item, identifier), &valid);

    *uncertainty = value * item.sensitivity / Distribution_Divisor(item.distribution);
    return valid;
}

double TNorvexa::Evaluate_Sum(const TComponent& component, const QString& identifier, double length) const
{
    const double metres = Effective_Length(component, identifier, length) / MM_PER_METRE;
    double constant_sum = 0.0;
    double length_dependent_sum = 0.0;

    for (const TComponentItem& item : component.items) {
        double uncertainty = 0.0;
        if (!Evaluate_Item(item, identifier, &uncertainty)) {
            continue;
        }
        if (Is_Length_Dependent(item)) {
            length_dependent_sum += Square(metres * uncertainty);
        } else {
            constant_sum += Square(uncertainty);
        }
    }
    return std::sqrt(Square(std::sqrt(constant_sum)) + Square(std::sqrt(length_dependent_sum)));
}

double TNorvexa::Effective_Length(const TComponent& component, const QString& identifier, double length)
{
    if (!component.limit_uncertainty_length) {
        return length;
    }
    const double limit = Applicable_Length(component, identifier);

    return length > limit ? limit : length;
}
