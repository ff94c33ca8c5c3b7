#include "tests/support/heldrecords.h"

#include <limits>
#include <optional>

namespace {

const double MICROMETRES = 1000.0;

std::optional<double> Input_Number(const TInputData& input, const QString& field)
{
    if (field == "machine_expansion_coefficient") {
        return input.machine_expansion_coefficient;
    }
    if (field == "machine_scale") {
        return input.machine_scale;
    }
    if (field == "temperature_minimum") {
        return input.temperature_minimum;
    }
    if (field == "temperature_maximum") {
        return input.temperature_maximum;
    }
    if (field == "temperature_gradient") {
        return input.temperature_gradient;
    }
    if (field == "increment") {
        return input.report_increment;
    }
    return field == "end_position" ? std::optional<double>(input.report_end) : std::nullopt;
}

// An identifier that the component lacks means the component itself.
std::optional<double> Component_Number(const TNorvexaData::TComponent& component, const QString& identifier,
                                       const QString& field)
{
    const TNorvexaData::TComponentInstance* instance = Named(component.instances, identifier);

    if (field == "component_length") {
        return instance == nullptr ? component.length : instance->length;
    }
    if (field == "component_expansion_coefficient") {
        return MICROMETRES * (instance == nullptr ? component.expansion_coefficient : instance->expansion_coefficient);
    }
    return std::nullopt;
}

} // namespace

const TNorvexaData::TComponentItem* Held_Item(const TBudget& budget, const TShownRecord& record)
{
    const TNorvexaData::TComponent* component = Named(budget.components, record.component);

    return component == nullptr || record.item.isEmpty() ? nullptr : Named(component->items, record.item);
}

double Held_Number(const TBudget& budget, const TShownRecord& record, const QString& field)
{
    const TNorvexaData::TComponent* component = Named(budget.components, record.component);
    const TNorvexaData::TComponentItem* item = Held_Item(budget, record);
    std::optional<double> number = Input_Number(budget.input_data, field);

    if (!number.has_value() && component != nullptr) {
        number = Component_Number(*component, record.identifier, field);
    }
    if (!number.has_value() && item != nullptr) {
        number = item->sensitivity;
    }
    return number.value_or(std::numeric_limits<double>::quiet_NaN());
}

const TNorvexaData::TReplacementItem* Replacement(const TNorvexaData::TComponentItem& item, const QString& identifier)
{
    const auto& replacements = item.replacement_items;
    const auto found = std::find_if(replacements.begin(), replacements.end(),
                                    [&](const auto& candidate) { return candidate.identifier == identifier; });

    return found == replacements.end() || identifier.isEmpty() ? nullptr : &*found;
}

QString Applied_Expression(const TNorvexaData::TComponentItem& item, const QString& identifier)
{
    const TNorvexaData::TReplacementItem* replacement = Replacement(item, identifier);

    return replacement == nullptr || replacement->use_default_expression ? item.expression : replacement->expression;
}

bool Is_Length_Dependent(const TNorvexaData::TComponentItem& item)
{
    return item.expression_type >= TNorvexaData::LENGTH_DEPENDENT_LINEAR;
}

bool Is_Temperature(const TNorvexaData::TComponentItem& item)
{
    return item.expression_type == TNorvexaData::CONSTANT_TEMPERATURE ||
           item.expression_type == TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
}
