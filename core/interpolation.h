#pragma once

#include "core/vector2.h"
#include "core/vector3.h"

#include <vector>

/// Curve fitting and look-up. All functions are free of state; failure is returned as false. Output pointers must not
/// be null unless stated.
///
/// In lists of TVector2, x is the abscissa and y the ordinate.

/// Solves a system of linear equations by Gauss-Jordan elimination. `matrix` holds `rows` equations of `columns`
/// numbers each, row by row, the right-hand side last (columns = rows + 1); it is destroyed. `solution` takes `rows`
/// numbers and is left untouched if the matrix is singular, which returns false.
bool Solve_Mat(int rows, int columns, double* matrix, double* solution);

/// Straight lines: y = slope * x + intercept.
namespace Regression {

/// The line of least squares. False, and nothing written, for fewer than 2 points. Points of one x only have no such
/// line: the results are then infinite or not a number, and the function still returns true. `intercept` may be null.
bool Fit_Line(const std::vector<TVector2>& points, double* slope, double* intercept);

/// The slope from the first to the last point. False, and a slope of 0, for fewer than 2 points and if the two are no
/// more than 1e-6 apart in x.
bool Get_Endfit_Slope(const std::vector<TVector2>& points, double* slope);

/// The slope from the origin to the mean of the points, all of them turned to the side of positive x. Where that is
/// steeper than 1, or all points are near x = 0, the slope of Fit_Line. False, and a slope of 0, for no point at all
/// and for a single one where Fit_Line would be needed.
bool Get_Slope_Through_Zero(const std::vector<TVector2>& points, double* slope);

} // namespace Regression

/// Polynomials of least squares.
namespace LeastSquares {

/// y = a*x^2 + b*x + c. False, and nothing written, for fewer than 3 points. Each coefficient is the double next to the
/// one that the points define, however narrow and far from 0 their range is. Points of fewer than three different x
/// define none: the results are then infinite or not a number, and the function still returns true.
bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c);

/// y = a*x^3 + b*x^2 + c*x + d. False, and coefficients of 0, for fewer than 4 points or a system found singular.
bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c, double* d);

/// y = a*x^4 + b*x^3 + c*x^2 + d*x + e. False, and coefficients of 0, for fewer than 5 points or a system found
/// singular.
bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c, double* d, double* e);

} // namespace LeastSquares

/// Look-up in a list of points by one of their coordinates, the key, in whose order (ascending or descending) they
/// stand: linear between two points, and beyond the ends on the line through the two outermost points.
///
/// False, and values of 0, for fewer than 2 points, if the keys of the first and the last are less than 1e-6 apart, and
/// if no pair of points encloses the key.
namespace Extrapolation {

/// The y at `x`.
bool Get_Value(const std::vector<TVector2>& points, const double& x, double* value);

/// The x and the y at `z`.
bool Get_Value_XY(const std::vector<TVector3>& points, const double& z, double* x_value, double* y_value);

/// The y and the z at `x`.
bool Get_Value_YZ(const std::vector<TVector3>& points, const double& x, double* y_value, double* z_value);

/// The x and the z at `y`.
bool Get_Value_ZX(const std::vector<TVector3>& points, const double& y, double* x_value, double* z_value);

} // namespace Extrapolation
