#include "tests/support/numberfields.h"

#include "core/number.h"

#include <QHash>

#include <cmath>

namespace {

const QHash<QString, int>& All_Decimals()
{
    static const QHash<QString, int> DECIMALS = {{"component_length", 5},    {"component_expansion_coefficient", 2},
                                                 {"sensitivity", 6},         {"machine_expansion_coefficient", 2},
                                                 {"machine_scale", 6},       {"temperature_minimum", 2},
                                                 {"temperature_maximum", 2}, {"temperature_gradient", 2},
                                                 {"increment", 3},           {"end_position", 3}};
    return DECIMALS;
}

} // namespace

QStringList Number_Fields::Of_Records()
{
    return {"component_length", "component_expansion_coefficient", "sensitivity"};
}

QStringList Number_Fields::Of_Inputs()
{
    return {"machine_expansion_coefficient", "machine_scale", "temperature_minimum", "temperature_maximum",
            "temperature_gradient",          "increment",     "end_position"};
}

int Number_Fields::Decimals(const QString& field)
{
    return All_Decimals().value(field, -1);
}

bool Number_Fields::Agree(const QString& field, const QString& text, double held)
{
    return std::fabs(Finite_Number(text) - held) <= std::pow(10.0, -Decimals(field)) + std::fabs(held) * 1e-12;
}

bool Number_Fields::Is_Too_Fine(const QString& field, const QString& text)
{
    const int decimals = Decimals(field);
    const double number = Finite_Number(text);

    return decimals >= 0 && Finite_Number(Fixed_Text(number, decimals)) != number;
}
