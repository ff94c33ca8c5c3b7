#include "core/vector3.h"

#include "core/assertion.h"

#include <cmath>
#include <limits>

TVector3::TVector3(const double& x, const double& y, const double& z) : d_components{x, y, z} {}

double TVector3::operator()(int i) const
{
    NORVEXA_ASSERT_TEXT(i >= 0 && i < 3, "false");
    return d_components[static_cast<std::size_t>(i)];
}

double& TVector3::operator()(int i)
{
    NORVEXA_ASSERT_TEXT(i >= 0 && i < 3, "false");
    return d_components[static_cast<std::size_t>(i)];
}

TVector3& TVector3::operator+=(const TVector3& b)
{
    for (std::size_t i = 0; i < d_components.size(); ++i) {
        d_components[i] += b.d_components[i];
    }
    return *this;
}

TVector3& TVector3::operator-=(const TVector3& b)
{
    for (std::size_t i = 0; i < d_components.size(); ++i) {
        d_components[i] -= b.d_components[i];
    }
    return *this;
}

TVector3& TVector3::operator+=(double d)
{
    return *this += TVector3(d, d, d);
}

TVector3& TVector3::operator-=(double d)
{
    return *this -= TVector3(d, d, d);
}

TVector3& TVector3::operator*=(double d)
{
    for (double& component : d_components) {
        component *= d;
    }
    return *this;
}

TVector3& TVector3::operator/=(double d)
{
    NORVEXA_ASSERT(d > std::numeric_limits<double>::epsilon());

    for (double& component : d_components) {
        component /= d;
    }
    return *this;
}

TVector3& TVector3::operator*=(const TVector3& b)
{
    if (&b == this) { // meant: the very object stays, only an equal one makes it zero
        return *this;
    }
    const auto& [ax, ay, az] = d_components;
    const auto& [bx, by, bz] = b.d_components;

    d_components = {ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx};
    return *this;
}

TVector3& TVector3::Normal()
{
    const double length = std::hypot(d_components[0], d_components[1], d_components[2]);

    NORVEXA_ASSERT_TEXT(length > std::numeric_limits<double>::epsilon(),
                        "Length > std::numeric_limits<double>::epsilon()");
    return *this /= length;
}

double operator^(const TVector3& a, const TVector3& b)
{
    return a(0) * b(0) + a(1) * b(1) + a(2) * b(2);
}

TVector3 operator*(TVector3 a, const TVector3& b)
{
    return a *= b;
}

TVector3 operator+(TVector3 a, const TVector3& b)
{
    return a += b;
}

TVector3 operator-(TVector3 a, const TVector3& b)
{
    return a -= b;
}

TVector3 operator*(TVector3 a, double d)
{
    return a *= d;
}

TVector3 operator*(double d, const TVector3& a)
{
    return a * d;
}

TVector3 operator/(TVector3 a, double d)
{
    return a /= d;
}

TVector3 operator+(TVector3 a, double d)
{
    return a += d;
}

TVector3 operator+(double d, const TVector3& a)
{
    return a + d;
}

TVector3 operator-(TVector3 a, double d)
{
    return a -= d;
}

TVector3 operator-(double d, const TVector3& a)
{
    return a - d;
}
