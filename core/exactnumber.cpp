#include "core/exactnumber.h"

#include <cstddef>
#include <limits>

namespace {

/// The part of `value` that fits in half of its bits, so that products of halves are exact.
template <class TPart>
TPart Upper_Half(TPart value)
{
    constexpr TPart SPLITTER = TPart(1ULL << 57U) + 1;
    const TPart scaled = SPLITTER * value;

    return scaled - (scaled - value);
}

/// Infinite or not a number.
template <class TPart>
bool Is_Lost(TPart value)
{
    return !(value - value == 0);
}

/// What rounding took from `sum`, the rounded a + b.
template <class TPart>
TPart Error_Of_Sum(TPart a, TPart b, TPart sum)
{
    const TPart b_taken = sum - a;
    const TPart a_taken = sum - b_taken;

    return (a - a_taken) + (b - b_taken);
}

/// What rounding took from `product`, the rounded a * b.
template <class TPart>
TPart Error_Of_Product(TPart a, TPart b, TPart product)
{
    const TPart a_upper = Upper_Half(a);
    const TPart b_upper = Upper_Half(b);
    const TPart a_lower = a - a_upper;
    const TPart b_lower = b - b_upper;

    return a_lower * b_lower - (((product - a_upper * b_upper) - a_lower * b_upper) - a_upper * b_lower);
}

} // namespace

TExactNumber::TExactNumber(double value)
{
    Add(value);
}

TExactNumber& TExactNumber::operator+=(const TExactNumber& b)
{
    const std::vector<TPart> parts = b.d_parts; // b may be this very number

    for (const TPart part : parts) {
        Add(part);
    }
    return *this;
}

TExactNumber& TExactNumber::operator-=(const TExactNumber& b)
{
    return *this += b * -1.0;
}

double TExactNumber::Sign() const
{
    const TPart sum = Sum();

    return sum == sum ? static_cast<double>((sum > 0) - (sum < 0)) : std::numeric_limits<double>::quiet_NaN();
}

TExactNumber operator*(const TExactNumber& a, const TExactNumber& b)
{
    const TExactNumber::TPart estimate = a.Sum() * b.Sum();
    TExactNumber product;

    if (Is_Lost(estimate)) {
        product.Add(estimate);
        return product;
    }
    for (const TExactNumber::TPart a_part : a.d_parts) {
        for (const TExactNumber::TPart b_part : b.d_parts) {
            product.Add_Product(a_part, b_part);
        }
    }
    return product;
}

double Ratio(const TExactNumber& a, const TExactNumber& b)
{
    return static_cast<double>(a.Sum() / b.Sum());
}

/// Carries the part through the others, from the smallest on; what each sum loses to rounding stays behind, at or
/// before the place of the part that was read.
void TExactNumber::Add(TPart part)
{
    std::size_t kept = 0;

    for (const TPart other : d_parts) {
        const TPart sum = part + other;
        const TPart error = Error_Of_Sum(part, other, sum);

        if (error != 0) {
            d_parts[kept++] = error;
        }
        part = sum;
    }
    d_parts.resize(Is_Lost(part) ? 0 : kept);
    if (part != 0) {
        d_parts.push_back(part);
    }
}

void TExactNumber::Add_Product(TPart a, TPart b)
{
    const TPart product = a * b;

    Add(Error_Of_Product(a, b, product));
    Add(product);
}

TExactNumber::TPart TExactNumber::Sum() const
{
    TPart sum = 0;

    for (const TPart part : d_parts) {
        sum += part;
    }
    return sum;
}

TExactNumber operator+(TExactNumber a, const TExactNumber& b)
{
    a += b;
    return a;
}

TExactNumber operator-(TExactNumber a, const TExactNumber& b)
{
    a -= b;
    return a;
}
