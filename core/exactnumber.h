#pragma once

#include <vector>

/// A number that sums, differences and products of doubles make without any rounding: for determinants, whose terms
/// agree in nearly all of their digits. Rounding happens once, where a ratio becomes a double again.
///
/// What is infinite or not a number spreads as in plain arithmetic. A product of numbers that hold terms of many orders
/// of magnitude costs accordingly; terms of like magnitude cost microseconds.
class TExactNumber
{
public:
    TExactNumber() = default;
    /// Meant to convert, so that formulas read as such.
    TExactNumber(double value);

    TExactNumber& operator+=(const TExactNumber& b);
    TExactNumber& operator-=(const TExactNumber& b);

    /// -1, 0 or 1, however near to 0 the number is; not a number if the number is none.
    double Sign() const;

    friend TExactNumber operator*(const TExactNumber& a, const TExactNumber& b);
    friend double Ratio(const TExactNumber& a, const TExactNumber& b);

private:
    /// 113 bits, and exponents that no product of a dozen doubles exceeds.
    __extension__ typedef __float128 TPart;

    void Add(TPart part);
    void Add_Product(TPart a, TPart b);
    TPart Sum() const;

    /// The number is their sum. They grow in magnitude, do not overlap, and none is zero.
    std::vector<TPart> d_parts;
};

TExactNumber operator+(TExactNumber a, const TExactNumber& b);
TExactNumber operator-(TExactNumber a, const TExactNumber& b);
TExactNumber operator*(const TExactNumber& a, const TExactNumber& b);

/// The double next to a / b, by the rules of IEEE: 1/0 is infinite, 0/0 is not a number. Where a / b lies in the middle
/// between two doubles to within 2^-59 of their distance, it may be either.
double Ratio(const TExactNumber& a, const TExactNumber& b);
