#include "tests/support/randombudget.h"

#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

QString Digits(double value)
{
    return QString::number(value, 'g', 17);
}

void Describe(const TNorvexaData::TComponentItem& item, QStringList* lines)
{
    *lines << "item " + item.name << item.expression << QString::number(item.distribution)
           << QString::number(item.expression_type) << QString::number(item.uc_type) << Digits(item.sensitivity);
    for (const TNorvexaData::TReplacementItem& replacement : item.replacement_items) {
        *lines << "replacement " + replacement.identifier << replacement.expression
               << (replacement.use_default_expression ? "default" : "own");
    }
}

void Describe(const TNorvexaData::TComponent& component, QStringList* lines)
{
    *lines << "component " + component.name << QString::number(component.mode) << Digits(component.length)
           << Digits(component.expansion_coefficient) << (component.export_equipment ? "export" : "no export")
           << (component.limit_uncertainty_length ? "limit" : "no limit");
    for (const TNorvexaData::TComponentInstance& instance : component.instances) {
        *lines << "identifier " + instance.name << instance.calibration_date << instance.calibration_due_date
               << Digits(instance.length) << Digits(instance.expansion_coefficient);
    }
    for (const TNorvexaData::TComponentItem& item : component.items) {
        Describe(item, lines);
    }
}

// Budgets at random

class TRandomText
{
public:
    explicit TRandomText(quint32 seed) : d_random(seed) {}

    int Below(int bound) { return d_random.bounded(bound); }
    bool Boolean() { return Below(2) == 1; }

    // Of any size and sign, up to 10^6 of the unit in which the file shows it.
    double Number(double scale)
    {
        const double number = (d_random.generateDouble() - 0.5) * std::pow(10.0, Below(13) - 6);
        return (Below(10) == 0 ? 0.0 : number) / scale;
    }

    // Never blank: the file would not load.
    QString Text()
    {
        QString text = Boolean() ? "x" : " x";
        for (int i = Below(12); i > 0; --i) {
            text = Boolean() ? text + Character() : Character() + text;
        }
        return text;
    }

    int Count()
    {
        constexpr int LONG_LIST = 40;
        return Below(20) == 0 ? LONG_LIST : Below(4);
    }

private:
    QString Character()
    {
        static const QStringList CHARACTERS =
            QString::fromUtf8("a|B|7| |  |\t|\n|\r|_|-|.|%1|%2|ä|Ö|ß|é|α|Ω|µ|ñ|Я|中|\u00A0|\u2028|😀|𝛼|𐀀|&|<|>|\"|'|"
                              "&amp;|&lt;|&#x41;|]]>|<!--|{|}|\\|/|,|;|=")
                .split('|');
        return CHARACTERS.at(Below(CHARACTERS.size()));
    }

    QRandomGenerator d_random;
};

TNorvexaData::TComponentInstance Random_Identifier(TRandomText* random)
{
    TNorvexaData::TComponentInstance instance;
    instance.name = random->Text();
    instance.calibration_date = random->Text();
    instance.calibration_due_date = random->Text();
    instance.length = random->Number(1.0);
    instance.expansion_coefficient = random->Number(1000.0);
    return instance;
}

TNorvexaData::TReplacementItem Random_Replacement(TRandomText* random)
{
    TNorvexaData::TReplacementItem replacement;
    replacement.identifier = random->Text();
    replacement.expression = random->Text();
    replacement.use_default_expression = random->Boolean();
    return replacement;
}

TNorvexaData::TComponentItem Random_Item(TRandomText* random)
{
    TNorvexaData::TComponentItem item;
    item.name = random->Text();
    item.expression = random->Text();
    item.distribution = static_cast<TNorvexaData::TDistribution>(random->Below(5));
    item.expression_type = static_cast<TNorvexaData::TExpressionType>(random->Below(4));
    item.uc_type = static_cast<TNorvexaData::TUCType>(random->Below(2));
    item.sensitivity = random->Number(1.0);
    for (int i = random->Count(); i > 0; --i) {
        item.replacement_items.push_back(Random_Replacement(random));
    }
    return item;
}

TNorvexaData::TComponent Random_Component(TRandomText* random)
{
    TNorvexaData::TComponent component;
    component.name = random->Text();
    component.mode = static_cast<TNorvexaData::TUCMode>(random->Below(2));
    component.length = random->Number(1.0);
    component.expansion_coefficient = random->Number(1000.0);
    component.export_equipment = random->Boolean();
    component.limit_uncertainty_length = random->Boolean();
    for (int i = random->Count(); i > 0; --i) {
        component.instances.push_back(Random_Identifier(random));
    }
    for (int i = random->Count(); i > 0; --i) {
        component.items.push_back(Random_Item(random));
    }
    return component;
}

TVariable Random_Variable(TRandomText* random)
{
    TVariable variable;
    variable.name = random->Text();
    variable.description = random->Boolean() ? random->Text() : QString();
    return variable;
}

TGroup Random_Group(TRandomText* random)
{
    TGroup group;
    group.name = random->Text();
    for (int i = random->Count(); i > 0; --i) {
        group.items.append(random->Text());
    }
    return group;
}

TInputData Random_Input_Data(TRandomText* random)
{
    TInputData input_data;
    for (double* value : {&input_data.machine_expansion_coefficient, &input_data.machine_scale,
                          &input_data.temperature_minimum, &input_data.temperature_maximum,
                          &input_data.temperature_gradient, &input_data.report_increment, &input_data.report_end}) {
        *value = random->Number(1.0);
    }
    return input_data;
}

// What a file makes of a budget

void Escape(QString* text)
{
    text->replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;").replace('"', "&quot;");
}

void Round(double* value, int decimals, double scale = 1.0)
{
    char text[512];
    std::snprintf(text, sizeof(text), "%.*f", decimals, *value * scale);
    *value = std::strtod(text, nullptr) / scale;
}

void Escape_And_Round(TNorvexaData::TComponentItem* item)
{
    Escape(&item->name);
    Escape(&item->expression);
    Round(&item->sensitivity, 6);
    for (TNorvexaData::TReplacementItem& replacement : item->replacement_items) {
        Escape(&replacement.identifier);
        Escape(&replacement.expression);
    }
}

void Escape_And_Round(TNorvexaData::TComponentInstance* instance)
{
    Escape(&instance->name);
    Escape(&instance->calibration_date);
    Escape(&instance->calibration_due_date);
    Round(&instance->length, 6);
    Round(&instance->expansion_coefficient, 2, 1000.0);
}

void Escape_And_Round(TNorvexaData::TComponent* component)
{
    Escape(&component->name);
    Round(&component->length, 6);
    Round(&component->expansion_coefficient, 2, 1000.0);
    for (TNorvexaData::TComponentInstance& instance : component->instances) {
        Escape_And_Round(&instance);
    }
    for (TNorvexaData::TComponentItem& item : component->items) {
        Escape_And_Round(&item);
    }
}

void Round(TInputData* input_data)
{
    Round(&input_data->machine_expansion_coefficient, 2);
    Round(&input_data->machine_scale, 6);
    Round(&input_data->temperature_minimum, 2);
    Round(&input_data->temperature_maximum, 2);
    Round(&input_data->temperature_gradient, 2);
    Round(&input_data->report_increment, 3);
    Round(&input_data->report_end, 3);
}

// A document whose components are set as they are, in whatever state.
class TFilledNorvexa : public TNorvexa
{
public:
    explicit TFilledNorvexa(const std::vector<TComponent>& components) { d_components = components; }
};

} // namespace

QStringList Description(const TBudget& budget)
{
    QStringList lines;

    for (const TNorvexaData::TComponent& component : budget.components) {
        Describe(component, &lines);
    }
    for (const TVariable& variable : budget.variables) {
        lines << "variable " + variable.name << variable.description << QString::number(variable.index);
    }
    for (const TGroup& group : budget.groups) {
        lines << "group " + group.name << QString::number(group.items.size()) << group.items;
    }
    const TInputData& input_data = budget.input_data;
    lines << "input" << Digits(input_data.machine_expansion_coefficient) << Digits(input_data.machine_scale)
          << Digits(input_data.temperature_minimum) << Digits(input_data.temperature_maximum)
          << Digits(input_data.temperature_gradient) << Digits(input_data.report_increment)
          << Digits(input_data.report_end);
    return lines;
}

std::vector<TNorvexaData::TComponent> Components_Of(const TNorvexa& document)
{
    std::vector<TNorvexaData::TComponent> components;

    components.reserve(static_cast<std::size_t>(document.Component_Count()));
    for (int i = 0; i < document.Component_Count(); ++i) {
        components.push_back(document.Component(i));
    }
    return components;
}

TBudget Loaded_Budget(const QString& file_name, QString* error)
{
    TBudget budget;
    TNorvexa document;

    *error = document.Load(file_name, &budget.variables, &budget.groups, &budget.input_data) ? QString()
                                                                                             : document.Last_Error();
    budget.components = Components_Of(document);
    return budget;
}

QString Save_Budget(const TBudget& budget, const QString& file_name)
{
    const TFilledNorvexa document(budget.components);

    return document.Save(file_name, budget.variables, budget.groups, budget.input_data) ? QString()
                                                                                        : document.Last_Error();
}

TBudget Random_Budget(quint32 seed)
{
    TRandomText random(seed);
    TBudget budget;

    for (int i = random.Below(4); i > 0; --i) {
        budget.components.push_back(Random_Component(&random));
    }
    for (int i = random.Count(); i > 0; --i) {
        budget.variables.push_back(Random_Variable(&random));
    }
    for (int i = random.Count(); i > 0; --i) {
        budget.groups.push_back(Random_Group(&random));
    }
    budget.input_data = Random_Input_Data(&random);
    return budget;
}

TBudget As_Saved(const TBudget& budget)
{
    TBudget saved = budget;

    for (TNorvexaData::TComponent& component : saved.components) {
        Escape_And_Round(&component);
    }
    for (TVariable& variable : saved.variables) {
        Escape(&variable.name);
        Escape(&variable.description);
    }
    for (TGroup& group : saved.groups) {
        Escape(&group.name);
        for (QString& item : group.items) {
            Escape(&item);
        }
    }
    Round(&saved.input_data);
    return saved;
}
