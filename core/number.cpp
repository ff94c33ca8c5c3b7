#include "core/number.h"

#include <cmath>
#include <optional>

namespace {

std::optional<double> Read_Number(const QString& text)
{
    bool ok = false;
    const double value = text.toDouble(&ok); // the point, whatever the locale

    return ok && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

} // namespace

double Finite_Number(const QString& text)
{
    return Read_Number(text).value_or(0.0);
}

bool Is_Finite_Number(const QString& text)
{
    return Read_Number(text).has_value();
}

QString Fixed_Text(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}
