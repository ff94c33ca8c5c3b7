#include "src/norvexa.h"

#include "core/assertion.h"

#include <QLatin1String>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace {

// The texts of the enumerations, in files and on screen, in the order of the values.

constexpr std::array<const char*, 5> DISTRIBUTION_TEXTS = {"Normal", "Rectangular", "Triangular", "U", "Step"};
constexpr std::array<const char*, 2> UC_TYPE_TEXTS = {"Type A", "Type B"};
constexpr std::array<const char*, 2> UC_MODE_TEXTS = {"Sum", "Individual"};
constexpr std::array<const char*, 4> EXPRESSION_TYPE_TEXTS = {
    "Constant Linear", "Constant Temperature", "Length Dependent Linear", "Length Dependent Temperature"};
constexpr std::array<const char*, 2> BOOLEAN_TEXTS = {"No", "Yes"};

// From the rectangular distribution on: the roots of 3, 6, 2 and 12. Budgets are calculated with exactly these digits,
// which are not everywhere those of a calculated root.
constexpr std::array<double, 4> DIVISORS = {1.732050807568877, 2.449489742783178, 1.414213562373095, 3.46410161513775};

template <std::size_t count>
QString Text_Of(const std::array<const char*, count>& texts, int value)
{
    const bool known = value >= 0 && value < static_cast<int>(count);

    return QLatin1String(texts[known ? static_cast<std::size_t>(value) : 0]);
}

template <typename TEnumeration, std::size_t count>
TEnumeration Value_Of(const std::array<const char*, count>& texts, const QString& text)
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&](const char* known) { return text == QLatin1String(known); });

    return found == texts.end() ? TEnumeration() : static_cast<TEnumeration>(found - texts.begin());
}

template <std::size_t count>
QStringList Text_List(const std::array<const char*, count>& texts)
{
    QStringList list;
    std::copy(texts.begin(), texts.end(), std::back_inserter(list));
    return list;
}

template <typename TRecord>
QStringList Names_Of(const std::vector<TRecord>& records)
{
    QStringList names;
    for (const TRecord& record : records) {
        names.append(record.name);
    }
    return names;
}

const QLatin1String NAME_SEPARATOR(" - ");

QString Reportable_Name(const QString& component, const QString& item)
{
    return component + NAME_SEPARATOR + item;
}

// Without making the name: many are compared to find one.
bool Is_Reportable_Name(const QString& reportable, const QString& component, const QString& item)
{
    return reportable.size() == component.size() + NAME_SEPARATOR.size() + item.size() && reportable.endsWith(item) &&
           reportable.startsWith(component) &&
           reportable.midRef(component.size(), NAME_SEPARATOR.size()) == NAME_SEPARATOR;
}

} // namespace

// Texts of the enumerations

QString TNorvexa::Distribution_Type(TDistribution distribution) const
{
    return Text_Of(DISTRIBUTION_TEXTS, distribution);
}

TNorvexa::TDistribution TNorvexa::Distribution_Type(const QString& text) const
{
    return Value_Of<TDistribution>(DISTRIBUTION_TEXTS, text);
}

QString TNorvexa::UCType(TUCType type) const
{
    return Text_Of(UC_TYPE_TEXTS, type);
}

TNorvexa::TUCType TNorvexa::UCType(const QString& text) const
{
    return Value_Of<TUCType>(UC_TYPE_TEXTS, text);
}

QString TNorvexa::UCMode(TUCMode mode) const
{
    return Text_Of(UC_MODE_TEXTS, mode);
}

TNorvexa::TUCMode TNorvexa::UCMode(const QString& text) const
{
    return Value_Of<TUCMode>(UC_MODE_TEXTS, text);
}

QString TNorvexa::Expression_Type(TExpressionType type) const
{
    return Text_Of(EXPRESSION_TYPE_TEXTS, type);
}

TNorvexa::TExpressionType TNorvexa::Expression_Type(const QString& text) const
{
    return Value_Of<TExpressionType>(EXPRESSION_TYPE_TEXTS, text);
}

QString TNorvexa::Boolean_Type(bool value) const
{
    return Text_Of(BOOLEAN_TEXTS, value);
}

bool TNorvexa::Boolean_Type(const QString& text) const
{
    return Value_Of<bool>(BOOLEAN_TEXTS, text);
}

QStringList TNorvexa::Distribution_Type_List() const
{
    return Text_List(DISTRIBUTION_TEXTS);
}

QStringList TNorvexa::Uncertainty_Type_List() const
{
    return Text_List(UC_TYPE_TEXTS);
}

double TNorvexa::Distribution_Divisor(TDistribution distribution) const
{
    if (distribution < DISTRIBUTION_RECTANGULAR || distribution > DISTRIBUTION_STEP) {
        return 1.0;
    }
    return DIVISORS[static_cast<std::size_t>(distribution - DISTRIBUTION_RECTANGULAR)];
}

// Names

QStringList TNorvexa::Enum_Components() const
{
    return Names_Of(d_components);
}

QStringList TNorvexa::Enum_Component_Items(const QString& component) const
{
    const TComponent* const found = Find_Component(component);

    return found ? Names_Of(found->items) : QStringList();
}

QStringList TNorvexa::Enum_Component_Identifiers(const QString& component) const
{
    const TComponent* const found = Find_Component(component);

    return found ? Names_Of(found->instances) : QStringList();
}

QStringList TNorvexa::Enum_Reportable_Components() const
{
    QStringList names;
    for (const TComponent& component : d_components) {
        if (component.mode == UC_MODE_SUM) {
            names.append(component.name);
            continue;
        }
        for (const TComponentItem& item : component.items) {
            names.append(Reportable_Name(component.name, item.name));
        }
    }
    return names;
}

bool TNorvexa::Convert_From_Reportable(const QString& reportable, QString* component_name,
                                       QString* component_item_name) const
{
    NORVEXA_ASSERT(component_name);
    NORVEXA_ASSERT(component_item_name);

    const auto take = [&](const QString& component, const QString& item) {
        *component_name = component;
        *component_item_name = item;
        return true;
    };

    for (const TComponent& component : d_components) {
        if (component.mode == UC_MODE_SUM) {
            if (component.name == reportable) {
                return take(component.name, QString());
            }
            continue;
        }
        for (const TComponentItem& item : component.items) {
            if (Is_Reportable_Name(reportable, component.name, item.name)) {
                return take(component.name, item.name);
            }
        }
    }
    return false;
}

// Expressions, lengths and expansion coefficients that apply to an identifier

bool TNorvexa::Component_Item_Default_Expression(const QString& component, const QString& item,
                                                 QString* default_expression) const
{
    NORVEXA_ASSERT(default_expression);

    const TComponentItem* const found = Find_Component_Item(component, item);
    if (!found) {
        return false;
    }

    *default_expression = found->expression;
    return true;
}

bool TNorvexa::Component_Item_Expression(const QString& component, const QString& item, const QString& identifier,
                                         bool* use_default, QString* replacement_expression) const
{
    NORVEXA_ASSERT(use_default);
    NORVEXA_ASSERT(replacement_expression);

    const TComponentItem* const found = Find_Component_Item(component, item);
    if (!found) {
        return false;
    }

    const TReplacementItem* const replacement = Find_Replacement(*found, identifier);
    *use_default = replacement && replacement->use_default_expression;
    *replacement_expression = replacement ? replacement->expression : found->expression;
    return true;
}

QString TNorvexa::Component_Item_Expression(const QString& component, const QString& item, const QString& identifier,
                                            bool* valid) const
{
    const TComponentItem* const found = Find_Component_Item(component, item);
    if (valid) {
        *valid = found != nullptr;
    }
    return found ? Applicable_Expression(*found, identifier) : QString();
}

double TNorvexa::Component_Length(const QString& component, const QString& identifier) const
{
    return Applicable_Length(Existing_Component(component), identifier);
}

double TNorvexa::Component_Expansion_Coefficient(const QString& component, const QString& identifier) const
{
    const TComponent& found = Existing_Component(component);
    const TComponentInstance* const instance = Find_Instance(found, identifier);

    return instance ? instance->expansion_coefficient : found.expansion_coefficient;
}

bool TNorvexa::Update_Component_Item(const QString& component, const QString& item, const QString& identifier,
                                     const QString& expression, bool use_default)
{
    const int index = Component_Index(component);
    const TComponentItem* const found = index < 0 ? nullptr : Find_Item(d_components[index], item);
    if (!found) {
        return false;
    }

    TComponentItem changed = *found;
    if (TReplacementItem* const replacement = Find_Replacement(changed, identifier)) {
        replacement->expression = expression;
        replacement->use_default_expression = use_default;
    } else {
        changed.expression = expression;
    }
    Update_Component_Item(index, changed);
    return true;
}

const TNorvexa::TComponentItem* TNorvexa::Find_Component_Item(const QString& component, const QString& item) const
{
    const TComponent* const found = Find_Component(component);

    return found ? Find_Item(*found, item) : nullptr;
}

const TNorvexa::TComponent& TNorvexa::Existing_Component(const QString& component) const
{
    const int index = Component_Index(component);
    if (index < 0) {
        Component(index); // aborts: GCOVR_EXCL_LINE
    }
    return d_components[static_cast<std::size_t>(index)];
}

const QString& TNorvexa::Applicable_Expression(const TComponentItem& item, const QString& identifier)
{
    const TReplacementItem* const replacement = Find_Replacement(item, identifier);

    return replacement && !replacement->use_default_expression ? replacement->expression : item.expression;
}

double TNorvexa::Applicable_Length(const TComponent& component, const QString& identifier)
{
    const TComponentInstance* const instance = Find_Instance(component, identifier);

    return instance ? instance->length : component.length;
}
