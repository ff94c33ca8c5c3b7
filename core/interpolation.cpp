#include "core/interpolation.h"

#include "core/assertion.h"
#include "core/exactnumber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace {

constexpr double SMALLEST_PIVOT = 1e-12;
constexpr double SMALLEST_STEP = 1e-6;

constexpr int X = 0;
constexpr int Y = 1;
constexpr int Z = 2;

// Linear equations

double* Row(double* matrix, int columns, int row)
{
    return matrix + static_cast<std::ptrdiff_t>(row) * columns;
}

/// Brings a row whose element in column `k` can serve as pivot to row `k`; false if there is none.
bool Find_Pivot(int rows, int columns, int k, double* matrix)
{
    const auto size = [=](int row) { return std::abs(Row(matrix, columns, row)[k]); };

    if (!(size(k) < SMALLEST_PIVOT)) {
        return true;
    }
    for (int row = k + 1; row < rows; ++row) {
        if (size(row) > SMALLEST_PIVOT) {
            double* const pivot_row = Row(matrix, columns, k);

            std::swap_ranges(pivot_row + k, pivot_row + columns, Row(matrix, columns, row) + k);
            return true;
        }
    }
    return false;
}

/// Makes column `k` that of the unit matrix.
void Eliminate(int rows, int columns, int k, double* matrix)
{
    double* const pivot_row = Row(matrix, columns, k);
    const double pivot = pivot_row[k];

    std::for_each(pivot_row + k, pivot_row + columns, [pivot](double& element) { element /= pivot; });
    for (int i = 0; i < rows; ++i) {
        if (i == k) {
            continue;
        }
        double* const row = Row(matrix, columns, i);
        const double factor = row[k];

        for (int column = 0; column < columns; ++column) {
            row[column] -= factor * pivot_row[column];
        }
    }
}

// Least squares

using TColumn = std::array<TExactNumber, 3>;

/// The sums that the normal equations of lines and parabolas are made of.
struct TSums
{
    std::array<TExactNumber, 5> x; ///< of x^i
    std::array<TExactNumber, 3> y; ///< of x^i * y
};

TSums Exact_Sums(const std::vector<TVector2>& points)
{
    TSums sums;

    for (const TVector2& point : points) {
        TExactNumber power = 1.0;

        for (std::size_t i = 0; i < sums.x.size(); ++i) {
            sums.x[i] += power;
            if (i < sums.y.size()) {
                sums.y[i] += power * point(Y);
            }
            power = power * point(X);
        }
    }
    return sums;
}

TExactNumber Determinant(const TColumn& u, const TColumn& v, const TColumn& w)
{
    return u[0] * (v[1] * w[2] - v[2] * w[1]) - u[1] * (v[0] * w[2] - v[2] * w[0]) + u[2] * (v[0] * w[1] - v[1] * w[0]);
}

/// The normal equations of a polynomial, as many as it has coefficients, in the form that Solve_Mat takes. Both sides
/// are negated, which leaves the solution as it is.
std::vector<double> Normal_Equations(const std::vector<TVector2>& points, std::size_t terms)
{
    const std::size_t columns = terms + 1;
    std::vector<double> matrix(terms * columns);

    for (const TVector2& point : points) {
        for (std::size_t i = 0; i < terms; ++i) {
            for (std::size_t j = 0; j < terms; ++j) {
                matrix[i * columns + j] -= std::pow(point(X), static_cast<double>(i + j));
            }
            matrix[i * columns + terms] -= point(Y) * std::pow(point(X), static_cast<double>(i));
        }
    }
    return matrix;
}

/// The coefficients of the polynomial, that of the highest power first.
bool Fit_Polynomial(const std::vector<TVector2>& points, const std::vector<double*>& coefficients)
{
    const std::size_t terms = coefficients.size();
    const int rows = static_cast<int>(terms);
    std::vector<double> matrix = Normal_Equations(points, terms);
    std::vector<double> solution(terms, 0.0);
    const bool solved = points.size() >= terms && Solve_Mat(rows, rows + 1, matrix.data(), solution.data());

    for (std::size_t power = 0; power < terms; ++power) {
        *coefficients[terms - 1 - power] = solution[power];
    }
    return solved;
}

// Look-up

/// How far `position` lies on the way from one point to the other; 0 and 1 are the points themselves.
template <class TPoint>
double Way(const TPoint& from, const TPoint& to, int key, double position)
{
    return (position - from(key)) / (to(key) - from(key));
}

/// The point at `position` on the line through the two points.
template <class TPoint>
TPoint Point_On_Line(const TPoint& from, const TPoint& to, int key, double position)
{
    return from + (to - from) * Way(from, to, key, position);
}

template <class TPoint>
bool Encloses(const TPoint& from, const TPoint& to, int key, double position)
{
    if (!(std::abs(to(key) - from(key)) > SMALLEST_STEP)) {
        return false;
    }
    const double way = Way(from, to, key, position);

    return !(way < 0.0 || way > 1.0);
}

template <class TPoint>
std::optional<TPoint> Point_Between(const std::vector<TPoint>& points, int key, double position)
{
    const auto from =
        std::adjacent_find(points.begin(), points.end(), [key, position](const TPoint& first, const TPoint& second) {
            return Encloses(first, second, key, position);
        });

    return from == points.end() ? std::nullopt : std::optional(Point_On_Line(*from, *(from + 1), key, position));
}

template <class TPoint>
std::optional<TPoint> Find_Point(const std::vector<TPoint>& points, int key, double position)
{
    if (points.size() < 2 || std::abs(points.back()(key) - points.front()(key)) < SMALLEST_STEP) {
        return std::nullopt;
    }
    const double way = Way(points.front(), points.back(), key, position);

    if (way < 0.0) {
        return Point_On_Line(points[0], points[1], key, position);
    }
    if (way > 1.0) {
        return Point_On_Line(points.back(), points[points.size() - 2], key, position);
    }
    return Point_Between(points, key, position);
}

/// Writes two coordinates of the point at `position`; 0 both if there is none.
bool Get_Coordinates(const std::vector<TVector3>& points, int key, double position, const std::array<int, 2>& wanted,
                     const std::array<double*, 2>& values)
{
    const std::optional<TVector3> point = Find_Point(points, key, position);

    *values[0] = point ? (*point)(wanted[0]) : 0.0;
    *values[1] = point ? (*point)(wanted[1]) : 0.0;
    return point.has_value();
}

} // namespace

bool Solve_Mat(int rows, int columns, double* matrix, double* solution)
{
    NORVEXA_ASSERT(matrix);
    NORVEXA_ASSERT(solution);

    for (int k = 0; k < rows; ++k) {
        if (!Find_Pivot(rows, columns, k, matrix)) {
            return false;
        }
        Eliminate(rows, columns, k, matrix);
    }
    for (int row = 0; row < rows; ++row) {
        solution[row] = Row(matrix, columns, row)[rows];
    }
    return true;
}

namespace Regression {

bool Fit_Line(const std::vector<TVector2>& points, double* slope, double* intercept)
{
    if (points.size() < 2) {
        return false;
    }
    NORVEXA_ASSERT(slope);

    const auto [x, y] = Exact_Sums(points);

    *slope = Ratio(x[0] * y[1] - x[1] * y[0], x[0] * x[2] - x[1] * x[1]);
    if (intercept) {
        *intercept = Ratio(y[0] - x[1] * *slope, x[0]);
    }
    return true;
}

bool Get_Endfit_Slope(const std::vector<TVector2>& points, double* slope)
{
    NORVEXA_ASSERT(slope);

    *slope = 0.0;
    if (points.size() < 2) {
        return false;
    }
    const TVector2 step = points.back() - points.front();

    if (!(std::abs(step(X)) > SMALLEST_STEP)) {
        return false;
    }
    *slope = step(Y) / step(X);
    return true;
}

bool Get_Slope_Through_Zero(const std::vector<TVector2>& points, double* slope)
{
    NORVEXA_ASSERT(slope);

    *slope = 0.0;
    if (points.empty()) {
        return false;
    }
    TVector2 sum;

    for (const TVector2& point : points) {
        sum += point(X) > 0.0 ? point : point * -1.0;
    }
    const TVector2 mean = sum / static_cast<double>(points.size());

    // Up to a slope of 1 the origin is trusted; the threshold is meant.
    if (std::abs(mean(Y)) <= std::abs(mean(X)) && std::abs(mean(X)) >= SMALLEST_STEP) {
        *slope = mean(Y) / mean(X);
        return true;
    }
    return Fit_Line(points, slope, nullptr);
}

} // namespace Regression

namespace LeastSquares {

bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c)
{
    NORVEXA_ASSERT(a);
    NORVEXA_ASSERT(b);
    NORVEXA_ASSERT(c);

    if (points.size() < 3) {
        return false;
    }
    // Cramer's rule. Over 9000 to 10000 mm the determinants lose nearly all digits of plain doubles.
    const TSums sums = Exact_Sums(points);
    const TColumn square = {sums.x[4], sums.x[3], sums.x[2]};
    const TColumn linear = {sums.x[3], sums.x[2], sums.x[1]};
    const TColumn constant = {sums.x[2], sums.x[1], sums.x[0]};
    const TColumn right = {sums.y[2], sums.y[1], sums.y[0]};
    const TExactNumber determinant = Determinant(square, linear, constant);

    *a = Ratio(Determinant(right, linear, constant), determinant);
    *b = Ratio(Determinant(square, right, constant), determinant);
    *c = Ratio(Determinant(square, linear, right), determinant);
    return true;
}

bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c, double* d)
{
    NORVEXA_ASSERT(a);
    NORVEXA_ASSERT(b);
    NORVEXA_ASSERT(c);
    NORVEXA_ASSERT(d);

    return Fit_Polynomial(points, {a, b, c, d});
}

bool Fit_Curve(const std::vector<TVector2>& points, double* a, double* b, double* c, double* d, double* e)
{
    NORVEXA_ASSERT(a);
    NORVEXA_ASSERT(b);
    NORVEXA_ASSERT(c);
    NORVEXA_ASSERT(d);
    NORVEXA_ASSERT(e);

    return Fit_Polynomial(points, {a, b, c, d, e});
}

} // namespace LeastSquares

namespace Extrapolation {

bool Get_Value(const std::vector<TVector2>& points, const double& x, double* value)
{
    NORVEXA_ASSERT(value);

    const std::optional<TVector2> point = Find_Point(points, X, x);

    *value = point ? (*point)(Y) : 0.0;
    return point.has_value();
}

bool Get_Value_XY(const std::vector<TVector3>& points, const double& z, double* x_value, double* y_value)
{
    NORVEXA_ASSERT(x_value);
    NORVEXA_ASSERT(y_value);

    return Get_Coordinates(points, Z, z, {X, Y}, {x_value, y_value});
}

bool Get_Value_YZ(const std::vector<TVector3>& points, const double& x, double* y_value, double* z_value)
{
    NORVEXA_ASSERT(y_value);
    NORVEXA_ASSERT(z_value);

    return Get_Coordinates(points, X, x, {Y, Z}, {y_value, z_value});
}

bool Get_Value_ZX(const std::vector<TVector3>& points, const double& y, double* x_value, double* z_value)
{
    NORVEXA_ASSERT(x_value);
    NORVEXA_ASSERT(z_value);

    return Get_Coordinates(points, Y, y, {X, Z}, {x_value, z_value});
}

} // namespace Extrapolation
