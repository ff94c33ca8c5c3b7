#pragma once

#include <array>

/// A point or a direction in the plane; components 0 and 1 are x and y. (0, 0) unless given.
class TVector2
{
public:
    TVector2() = default;
    TVector2(const double& x, const double& y);

    double operator()(int i) const;
    double& operator()(int i);

    TVector2& operator+=(const TVector2& b);
    TVector2& operator-=(const TVector2& b);
    TVector2& operator+=(double d);
    TVector2& operator-=(double d);
    TVector2& operator*=(double d);
    /// Only for divisors above std::numeric_limits<double>::epsilon(): a negative one is refused like zero.
    TVector2& operator/=(double d);

    /// Scales the vector to the length 1 and returns it. Only for vectors longer than the epsilon of double.
    TVector2& Normal();

    /// Whether `p` lies inside the triangle of the corners `a`, `b` and `c`, whichever way round they stand. Points on
    /// an edge are outside, and so is every point of a triangle without area. The answer knows no rounding.
    static bool Is_Point_In_Triangle(const TVector2& p, const TVector2& a, const TVector2& b, const TVector2& c);

private:
    std::array<double, 2> d_components = {};
};

/// Dot product.
double operator^(const TVector2& a, const TVector2& b);

TVector2 operator+(TVector2 a, const TVector2& b);
TVector2 operator-(TVector2 a, const TVector2& b);
TVector2 operator*(TVector2 a, double d);
TVector2 operator*(double d, const TVector2& a);
TVector2 operator/(TVector2 a, double d);

/// The number is added to, or subtracted from, every component.
TVector2 operator+(TVector2 a, double d);
TVector2 operator+(double d, const TVector2& a);
TVector2 operator-(TVector2 a, double d);
/// Component minus number, exactly as with the number second: 1 - (3, 5) is (2, 4). The order is meant.
TVector2 operator-(double d, const TVector2& a);
