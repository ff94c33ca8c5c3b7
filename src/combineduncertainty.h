#pragma once

#include <QString>

#include <cmath>

/// The combined standard uncertainty of item values at one length: the root sum square of the constant values and that
/// of the length-dependent values, combined again by root sum square.
class TCombinedUncertainty
{
public:
    /// Every expression type but "Constant" counts as length dependent.
    void Add(const QString& expression_type, double value)
    {
        double& sum = expression_type == QLatin1String("Constant") ? d_constant_squares : d_length_dependent_squares;
        sum += value * value;
    }

    /// Rounded step by step, so that screen and export agree in the last digit.
    double Uc() const
    {
        const double constant = std::sqrt(d_constant_squares);
        const double length_dependent = std::sqrt(d_length_dependent_squares);
        return std::sqrt(constant * constant + length_dependent * length_dependent);
    }

private:
    double d_constant_squares = 0.0;
    double d_length_dependent_squares = 0.0;
};
