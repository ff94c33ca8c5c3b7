#include "core/vector2.h"

#include "core/assertion.h"
#include "core/exactnumber.h"

#include <cmath>
#include <limits>

namespace {

/// Twice the area of the triangle a, b, c; negative if they run clockwise.
TExactNumber Doubled_Area(const TVector2& a, const TVector2& b, const TVector2& c)
{
    const TExactNumber ab_x = TExactNumber(b(0)) - a(0);
    const TExactNumber ab_y = TExactNumber(b(1)) - a(1);
    const TExactNumber ac_x = TExactNumber(c(0)) - a(0);
    const TExactNumber ac_y = TExactNumber(c(1)) - a(1);

    return ab_x * ac_y - ab_y * ac_x;
}

} // namespace

TVector2::TVector2(const double& x, const double& y) : d_components{x, y} {}

double TVector2::operator()(int i) const
{
    NORVEXA_ASSERT_TEXT(i >= 0 && i < 2, "false");
    return d_components[static_cast<std::size_t>(i)];
}

double& TVector2::operator()(int i)
{
    NORVEXA_ASSERT_TEXT(i >= 0 && i < 2, "false");
    return d_components[static_cast<std::size_t>(i)];
}

TVector2& TVector2::operator+=(const TVector2& b)
{
    d_components = {d_components[0] + b.d_components[0], d_components[1] + b.d_components[1]};
    return *this;
}

TVector2& TVector2::operator-=(const TVector2& b)
{
    d_components = {d_components[0] - b.d_components[0], d_components[1] - b.d_components[1]};
    return *this;
}

TVector2& TVector2::operator+=(double d)
{
    return *this += TVector2(d, d);
}

TVector2& TVector2::operator-=(double d)
{
    return *this -= TVector2(d, d);
}

TVector2& TVector2::operator*=(double d)
{
    d_components = {d_components[0] * d, d_components[1] * d};
    return *this;
}

TVector2& TVector2::operator/=(double d)
{
    NORVEXA_ASSERT(d > std::numeric_limits<double>::epsilon());

    d_components = {d_components[0] / d, d_components[1] / d};
    return *this;
}

TVector2& TVector2::Normal()
{
    const double length = std::hypot(d_components[0], d_components[1]);

    NORVEXA_ASSERT_TEXT(length > std::numeric_limits<double>::epsilon(),
                        "Length > std::numeric_limits<double>::epsilon()");
    return *this /= length;
}

bool TVector2::Is_Point_In_Triangle(const TVector2& p, const TVector2& a, const TVector2& b, const TVector2& c)
{
    const TExactNumber area = Doubled_Area(a, b, c);
    const double orientation = area.Sign() < 0.0 ? -1.0 : 1.0;
    const TExactNumber ab = Doubled_Area(a, b, p) * orientation;
    const TExactNumber bc = Doubled_Area(b, c, p) * orientation;
    const TExactNumber ca = Doubled_Area(c, a, p) * orientation;
    const TExactNumber excess = ab + bc + ca - area * orientation;

    return ab.Sign() > 0.0 && bc.Sign() > 0.0 && ca.Sign() > 0.0 && excess.Sign() <= 0.0;
}

double operator^(const TVector2& a, const TVector2& b)
{
    return a(0) * b(0) + a(1) * b(1);
}

TVector2 operator+(TVector2 a, const TVector2& b)
{
    return a += b;
}

TVector2 operator-(TVector2 a, const TVector2& b)
{
    return a -= b;
}

TVector2 operator*(TVector2 a, double d)
{
    return a *= d;
}

TVector2 operator*(double d, const TVector2& a)
{
    return a * d;
}

TVector2 operator/(TVector2 a, double d)
{
    return a /= d;
}

TVector2 operator+(TVector2 a, double d)
{
    return a += d;
}

TVector2 operator+(double d, const TVector2& a)
{
    return a + d;
}

TVector2 operator-(TVector2 a, double d)
{
    return a -= d;
}

TVector2 operator-(double d, const TVector2& a)
{
    return a - d;
}
