#pragma once

#include <array>

/// A point or a direction in space; components 0, 1 and 2 are x, y and z. (0, 0, 0) unless given.
class TVector3
{
public:
    TVector3() = default;
    TVector3(const double& x, const double& y, const double& z);

    double operator()(int i) const;
    double& operator()(int i);

    TVector3& operator+=(const TVector3& b);
    TVector3& operator-=(const TVector3& b);
    TVector3& operator+=(double d);
    TVector3& operator-=(double d);
    TVector3& operator*=(double d);
    /// Only for divisors above std::numeric_limits<double>::epsilon(): a negative one is refused like zero.
    TVector3& operator/=(double d);

    /// Becomes the cross product of this and `b`; stays as it is if `b` is this very object.
    TVector3& operator*=(const TVector3& b);

    /// Scales the vector to the length 1 and returns it. Only for vectors longer than the epsilon of double.
    TVector3& Normal();

private:
    std::array<double, 3> d_components = {};
};

/// Dot product.
double operator^(const TVector3& a, const TVector3& b);

/// Cross product.
TVector3 operator*(TVector3 a, const TVector3& b);

TVector3 operator+(TVector3 a, const TVector3& b);
TVector3 operator-(TVector3 a, const TVector3& b);
TVector3 operator*(TVector3 a, double d);
TVector3 operator*(double d, const TVector3& a);
TVector3 operator/(TVector3 a, double d);

/// The number is added to, or subtracted from, every component.
TVector3 operator+(TVector3 a, double d);
TVector3 operator+(double d, const TVector3& a);
TVector3 operator-(TVector3 a, double d);
/// Component minus number, exactly as with the number second: 1 - (3, 5, 7) is (2, 4, 6). The order is meant.
TVector3 operator-(double d, const TVector3& a);
