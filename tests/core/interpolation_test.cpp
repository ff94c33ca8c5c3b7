#include "core/interpolation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <csignal>
#include <fstream>
#include <functional>
#include <limits>
#include <sstream>
#include <string>

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::Gt;
using ::testing::KilledBySignal;
using ::testing::Pointwise;
using ::testing::Truly;

namespace {

using TPoints = std::vector<TVector2>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

/// Stands in every output beforehand.
constexpr double UNTOUCHED = -99.5;

/// What a function returns and leaves behind in its outputs.
struct TResult
{
    bool ok;
    std::vector<double> values;
};

bool operator==(const TResult& a, const TResult& b)
{
    return a.ok == b.ok && a.values == b.values;
}

void PrintTo(const TResult& result, std::ostream* stream)
{
    *stream << (result.ok ? "true " : "false ") << ::testing::PrintToString(result.values);
}

TPoints Points_On(const std::vector<double>& abscissas, const std::function<double(double)>& curve)
{
    TPoints points;

    for (const double x : abscissas) {
        points.emplace_back(x, curve(x));
    }
    return points;
}

TResult Line(const TPoints& points)
{
    double slope = UNTOUCHED;
    double intercept = UNTOUCHED;
    const bool ok = Regression::Fit_Line(points, &slope, &intercept);

    return {ok, {slope, intercept}};
}

TResult Endfit(const TPoints& points)
{
    double slope = UNTOUCHED;
    const bool ok = Regression::Get_Endfit_Slope(points, &slope);

    return {ok, {slope}};
}

TResult Through_Zero(const TPoints& points)
{
    double slope = UNTOUCHED;
    const bool ok = Regression::Get_Slope_Through_Zero(points, &slope);

    return {ok, {slope}};
}

/// The polynomial fit of 2nd, 3rd or 4th degree.
TResult Curve(int degree, const TPoints& points)
{
    std::vector<double> v(static_cast<std::size_t>(degree) + 1, UNTOUCHED);

    switch (degree) {
    case 2:
        return {LeastSquares::Fit_Curve(points, &v[0], &v[1], &v[2]), v};
    case 3:
        return {LeastSquares::Fit_Curve(points, &v[0], &v[1], &v[2], &v[3]), v};
    default:
        return {LeastSquares::Fit_Curve(points, &v[0], &v[1], &v[2], &v[3], &v[4]), v};
    }
}

} // namespace

// Linear equations

struct TSystemRow
{
    const char* name;
    int rows;
    std::vector<double> matrix;
    TResult result;
};

class Solve_Mat_Systems : public ::testing::TestWithParam<TSystemRow>
{};

TEST_P(Solve_Mat_Systems, Are_solved_or_found_singular)
{
    const int rows = GetParam().rows;
    std::vector<double> matrix = GetParam().matrix;
    std::vector<double> solution(static_cast<std::size_t>(rows), UNTOUCHED);
    const bool ok = Solve_Mat(rows, rows + 1, matrix.data(), solution.data());

    EXPECT_EQ((TResult{ok, solution}), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Solve_Mat_Systems,
    ::testing::Values(TSystemRow{"One_equation", 1, {4, 10}, {true, {2.5}}},
                      TSystemRow{"Zero_pivot_swaps_the_rows", 2, {0, 1, 2, 1, 0, 3}, {true, {3, 2}}},
                      TSystemRow{"Three_equations", 3, {2, 1, -1, 8, -3, -1, 2, -11, -2, 1, 2, -3}, {true, {2, 3, -1}}},
                      TSystemRow{"Later_zero_pivot", 3, {1, 1, 1, 6, 1, 1, 2, 9, 1, 2, 1, 8}, {true, {1, 2, 3}}},
                      TSystemRow{"Zero_matrix", 2, {0, 0, 1, 0, 0, 1}, {false, {UNTOUCHED, UNTOUCHED}}},
                      TSystemRow{"Dependent_rows", 2, {1, 2, 3, 2, 4, 6}, {false, {UNTOUCHED, UNTOUCHED}}},
                      TSystemRow{"Contradicting_rows", 2, {1, 2, 3, 2, 4, 7}, {false, {UNTOUCHED, UNTOUCHED}}},
                      TSystemRow{"Pivot_at_the_limit", 1, {1e-12, 2e-12}, {true, {2}}},
                      TSystemRow{"Negative_pivot_at_the_limit", 1, {-1e-12, 2e-12}, {true, {-2}}},
                      TSystemRow{"Pivot_below_the_limit", 1, {0.9e-12, 2e-12}, {false, {UNTOUCHED}}},
                      TSystemRow{"Row_below_at_the_limit", 2, {0, 1, 1, 1e-12, 0, 1}, {false, {UNTOUCHED, UNTOUCHED}}},
                      TSystemRow{"Row_below_above_the_limit", 2, {0, 1, 3, -2e-12, 0, 4e-12}, {true, {-2, 3}}}),
    [](const auto& row) { return row.param.name; });

TEST(Solve_Mat, The_first_usable_row_becomes_the_pivot_and_not_the_largest)
{
    std::vector<double> matrix = {0, 0, 2, 14, 1, 0, 2, 3, 5, 0, 10, 11};
    std::array<double, 3> solution = {};

    EXPECT_FALSE(Solve_Mat(3, 4, matrix.data(), solution.data()));
    EXPECT_THAT(matrix, ElementsAre(1, 0, 2, 3, 0, 0, 2, 14, 0, 0, 0, -4));
}

TEST(Solve_Mat, The_matrix_is_reduced_in_place)
{
    std::vector<double> matrix = {0, 1, 2, 1, 0, 3};
    std::array<double, 2> solution = {};

    EXPECT_TRUE(Solve_Mat(2, 3, matrix.data(), solution.data()));
    EXPECT_THAT(matrix, ElementsAre(1, 0, 3, 0, 1, 2));
}

// Straight lines

struct TLineRow
{
    const char* name;
    TResult (*fit)(const TPoints&);
    TPoints points;
    TResult result;
};

class Regression_Slopes : public ::testing::TestWithParam<TLineRow>
{};

TEST_P(Regression_Slopes, Are_found_or_refused)
{
    EXPECT_EQ(GetParam().fit(GetParam().points), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Fit_Line, Regression_Slopes,
    ::testing::Values(TLineRow{"Points_on_a_line", Line, {{0, 1}, {1, 3}, {2, 5}}, {true, {2, 1}}},
                      TLineRow{"Two_points", Line, {{1, 1}, {3, 0}}, {true, {-0.5, 1.5}}},
                      TLineRow{"Points_off_the_line", Line, {{0, 1}, {1, 2}, {2, 6}}, {true, {2.5, 0.5}}},
                      TLineRow{"One_point", Line, {{0, 1}}, {false, {UNTOUCHED, UNTOUCHED}}},
                      TLineRow{"No_point", Line, {}, {false, {UNTOUCHED, UNTOUCHED}}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Get_Endfit_Slope, Regression_Slopes,
    ::testing::Values(TLineRow{"From_the_first_to_the_last", Endfit, {{1, 1}, {2, 50}, {3, 5}}, {true, {2}}},
                      TLineRow{"Descending", Endfit, {{3, 5}, {1, 1}}, {true, {2}}},
                      TLineRow{"Just_far_enough", Endfit, {{0, 0}, {1.5e-6, 3e-6}}, {true, {2}}},
                      TLineRow{"At_the_limit", Endfit, {{0, 0}, {1e-6, 1}}, {false, {0}}},
                      TLineRow{"Equal_x", Endfit, {{1, 1}, {2, 2}, {1, 5}}, {false, {0}}},
                      TLineRow{"One_point", Endfit, {{1, 1}}, {false, {0}}},
                      TLineRow{"No_point", Endfit, {}, {false, {0}}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Get_Slope_Through_Zero, Regression_Slopes,
    ::testing::Values(
        TLineRow{"Negative_x_is_turned_round", Through_Zero, {{1, 0.5}, {-2, -1}}, {true, {0.5}}},
        TLineRow{"Steep_falls_back_to_the_line", Through_Zero, {{1, 3}, {2, 6}}, {true, {3}}},
        TLineRow{"Steep_line_need_not_meet_zero", Through_Zero, {{1, 10}, {2, 12}}, {true, {2}}},
        TLineRow{"Flat_line_need_not_either", Through_Zero, {{10, 1}, {20, 5}}, {true, {0.2}}},
        TLineRow{"Slope_of_1", Through_Zero, {{10, 12}, {20, 18}}, {true, {1}}},
        TLineRow{"Slope_of_minus_1", Through_Zero, {{10, -12}, {20, -18}}, {true, {-1}}},
        TLineRow{"Steeper_downwards", Through_Zero, {{10, -12}, {20, -19}}, {true, {-0.7}}},
        TLineRow{"Zero_x_counts_as_negative", Through_Zero, {{0, 1}, {4, 2}}, {true, {0.25}}},
        TLineRow{"One_point", Through_Zero, {{4, 2}}, {true, {0.5}}},
        TLineRow{"Mean_x_at_the_limit", Through_Zero, {{1e-6, 0}, {1e-6, 0}}, {true, {0}}},
        TLineRow{"All_x_near_zero_fall_back_to_the_line", Through_Zero, {{1e-7, 0}, {3e-7, 1e-7}}, {true, {0.5}}},
        TLineRow{"Mean_and_not_sum_of_x_near_zero", Through_Zero, {{0x1p-21, 0}, {0x1p-20, 0x1p-22}}, {true, {0.5}}},
        TLineRow{"One_point_near_zero", Through_Zero, {{1e-7, 0}}, {false, {0}}},
        TLineRow{"One_steep_point", Through_Zero, {{1, 3}}, {false, {0}}},
        TLineRow{"No_point", Through_Zero, {}, {false, {0}}}),
    [](const auto& row) { return row.param.name; });

TEST(Regression, Fit_Line_works_without_intercept)
{
    double slope = UNTOUCHED;

    EXPECT_TRUE(Regression::Fit_Line({{0, 1}, {1, 3}}, &slope, nullptr));
    EXPECT_EQ(slope, 2.0);
}

TEST(Regression, Fit_Line_counts_the_points_before_it_looks_at_the_slope)
{
    EXPECT_FALSE(Regression::Fit_Line({{0, 1}}, nullptr, nullptr));
}

TEST(Regression, Fit_Line_of_equal_x_is_no_number_and_still_true)
{
    const TResult result = Line({{0.1, 1}, {0.1, 2}, {0.1, 5}});

    EXPECT_TRUE(result.ok);
    EXPECT_TRUE(std::isnan(result.values[0]));
    EXPECT_TRUE(std::isnan(result.values[1]));
}

TEST(Regression, Get_Slope_Through_Zero_of_x_0_only_is_no_number_and_still_true)
{
    const TResult result = Through_Zero({{0, 1}, {0, 2}});

    EXPECT_TRUE(result.ok);
    EXPECT_TRUE(std::isnan(result.values[0]));
}

// Polynomials

struct TCurveRow
{
    const char* name;
    int degree;
    TPoints points;
    TResult result;
};

class LeastSquares_Curves : public ::testing::TestWithParam<TCurveRow>
{};

TEST_P(LeastSquares_Curves, Are_found_or_refused)
{
    const TResult result = Curve(GetParam().degree, GetParam().points);

    EXPECT_EQ(result.ok, GetParam().result.ok);
    EXPECT_THAT(result.values, Pointwise(DoubleNear(1e-9), GetParam().result.values));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LeastSquares_Curves,
    ::testing::Values(
        TCurveRow{"Square", 2, {{0, 1}, {1, 2}, {2, 5}}, {true, {1, 0, 1}}},
        TCurveRow{"Square_off_the_curve", 2, {{-1, 1}, {-1, 3}, {0, 0}, {1, 5}, {1, 1}}, {true, {2.5, 0.5, 0}}},
        TCurveRow{"Square_needs_three_points", 2, {{0, 1}, {1, 2}}, {false, {UNTOUCHED, UNTOUCHED, UNTOUCHED}}},
        TCurveRow{"Square_of_no_point", 2, {}, {false, {UNTOUCHED, UNTOUCHED, UNTOUCHED}}},
        TCurveRow{"Cube",
                  3,
                  Points_On({-2, -1, 0, 1, 2, 3}, [](double x) { return 2 * x * x * x - 3 * x * x + 5 * x - 7; }),
                  {true, {2, -3, 5, -7}}},
        TCurveRow{
            "Cube_off_the_curve", 3, {{-1, 0}, {-1, 2}, {0, 3}, {1, 4}, {2, 9}, {2, 11}}, {true, {1, -0.5, 0.5, 3}}},
        TCurveRow{"Cube_needs_four_points", 3, {{0, 1}, {1, 2}, {2, 5}}, {false, {0, 0, 0, 0}}},
        TCurveRow{"Cube_of_equal_x", 3, {{0, 1}, {0, 2}, {0, 5}, {0, 6}}, {false, {0, 0, 0, 0}}},
        TCurveRow{"Cube_of_three_x", 3, {{0, 1}, {1, 2}, {2, 5}, {2, 6}}, {false, {0, 0, 0, 0}}},
        TCurveRow{"Fourth_power",
                  4,
                  Points_On({-2, -1, 0, 1, 2, 3},
                            [](double x) { return x * x * x * x - 2 * x * x * x + 3 * x * x - 4 * x + 5; }),
                  {true, {1, -2, 3, -4, 5}}},
        TCurveRow{"Fourth_power_off_the_curve",
                  4,
                  {{-2, 56}, {-2, 58}, {-1, 15}, {0, 4}, {0, 6}, {1, 3}, {2, 8}, {2, 10}},
                  {true, {1, -2, 3, -4, 5}}},
        TCurveRow{"Fourth_power_needs_five_points", 4, {{0, 1}, {1, 2}, {2, 5}, {3, 4}}, {false, {0, 0, 0, 0, 0}}},
        TCurveRow{"Fourth_power_of_three_x", 4, {{0, 1}, {1, 2}, {-1, 5}, {1, 6}, {0, 2}}, {false, {0, 0, 0, 0, 0}}},
        TCurveRow{"Fourth_power_of_equal_x", 4, {{0, 1}, {0, 2}, {0, 5}, {0, 6}, {0, 7}}, {false, {0, 0, 0, 0, 0}}}),
    [](const auto& row) { return row.param.name; });

class LeastSquares_Degenerate : public ::testing::TestWithParam<TCurveRow>
{};

TEST_P(LeastSquares_Degenerate, Points_give_a_square_of_no_numbers_and_still_true)
{
    const TResult result = Curve(GetParam().degree, GetParam().points);

    EXPECT_TRUE(result.ok);
    EXPECT_THAT(result.values, Each(Truly([](double value) { return std::isnan(value); })));
}

INSTANTIATE_TEST_SUITE_P(Rows, LeastSquares_Degenerate,
                         ::testing::Values(TCurveRow{"Equal_x", 2, {{0.1, 1}, {0.1, 2}, {0.1, 5}}, {}},
                                           TCurveRow{
                                               "Two_different_x", 2, {{0.1, 1}, {0.7, 2}, {0.7, 5}, {0.1, 2}}, {}},
                                           TCurveRow{"Infinite_y", 2, {{0, INFINITE}, {1, 2}, {2, 5}, {3, 6}}, {}},
                                           TCurveRow{"Not_a_number", 2, {{-1, 2}, {0, NOT_A_NUMBER}, {1, 5}}, {}}),
                         [](const auto& row) { return row.param.name; });

/// A set of points with the parabola that fits it.
struct TFit
{
    std::string name;
    std::vector<double> coefficients;
    TPoints points;
};

/// Reads the lines "fit <name> <a> <b> <c>", each followed by its lines "point <x> <y>".
std::vector<TFit> Read_Fits(const std::string& file)
{
    std::ifstream stream(NORVEXA_TEST_DATA "/" + file);
    std::vector<TFit> fits;

    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string kind;
        std::string name;
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;

        if (words >> kind && kind == "fit" && words >> name >> a >> b >> c) {
            fits.push_back({name, {a, b, c}, {}});
        } else if (kind == "point" && words >> a >> b) {
            fits.back().points.emplace_back(a, b);
        }
    }
    return fits;
}

/// The leading decimal digits in which a number agrees with the true one.
double Correct_Digits(double value, double truth)
{
    return value == truth ? 17.0 : -std::log10(std::abs((value - truth) / truth));
}

TEST(LeastSquares, A_square_reaches_the_certified_values_of_Pontius)
{
    const std::vector<TFit> fits = Read_Fits("nist_pontius.txt");

    ASSERT_EQ(fits.size(), 1U);
    ASSERT_EQ(fits[0].points.size(), 40U);

    const TResult result = Curve(2, fits[0].points);

    EXPECT_TRUE(result.ok);
    for (std::size_t i = 0; i < 3; ++i) {
        // The observations' own rounding to doubles leaves 13.5 digits of the smallest coefficient.
        EXPECT_THAT(Correct_Digits(result.values[i], fits[0].coefficients[i]), Gt(13.5)) << i;
    }
}

TEST(LeastSquares, A_square_of_uncertainties_over_length_is_right_to_the_last_bit)
{
    const std::vector<TFit> fits = Read_Fits("quadratic_fits.txt");

    ASSERT_EQ(fits.size(), 12U);
    for (const TFit& fit : fits) {
        ASSERT_GE(fit.points.size(), 11U);
        EXPECT_EQ(Curve(2, fit.points), (TResult{true, fit.coefficients})) << fit.name;
    }
}

// Look-up

struct TLookUpRow
{
    const char* name;
    TPoints points;
    double x;
    TResult result;
};

class Extrapolation_Values : public ::testing::TestWithParam<TLookUpRow>
{};

TEST_P(Extrapolation_Values, Are_found_or_refused)
{
    double value = UNTOUCHED;
    const bool ok = Extrapolation::Get_Value(GetParam().points, GetParam().x, &value);

    EXPECT_EQ((TResult{ok, {value}}), GetParam().result);
}

namespace {

const TPoints DIAGONAL = {{0, 0}, {10, 10}};
const TPoints BENT = {{0, 0}, {1, 10}, {3, 30}, {7, 10}, {8, 0}};
const TPoints DESCENDING = {{8, 0}, {7, 10}, {3, 30}, {1, 10}, {0, 0}};
const TPoints STEP = {{0, 1}, {2, 5}, {2, 9}, {4, 13}};
const TPoints FLAT_ENDS = {{0, 1}, {0, 2}, {4, 5}, {4, 4}};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Rows, Extrapolation_Values,
    ::testing::Values(
        TLookUpRow{"Beyond_the_last", DIAGONAL, 15, {true, {15}}},
        TLookUpRow{"Before_the_first", DIAGONAL, -5, {true, {-5}}}, TLookUpRow{"Between_two", DIAGONAL, 4, {true, {4}}},
        TLookUpRow{"At_the_first", DIAGONAL, 0, {true, {0}}}, TLookUpRow{"At_the_last", DIAGONAL, 10, {true, {10}}},
        TLookUpRow{"In_a_later_pair", BENT, 5, {true, {20}}}, TLookUpRow{"At_an_inner_point", BENT, 3, {true, {30}}},
        TLookUpRow{"Before_on_the_first_pair", BENT, -2, {true, {-20}}},
        TLookUpRow{"Beyond_on_the_last_pair", BENT, 10, {true, {-20}}},
        TLookUpRow{"Descending_between", DESCENDING, 5, {true, {20}}},
        TLookUpRow{"Descending_before", DESCENDING, 10, {true, {-20}}},
        TLookUpRow{"Descending_beyond", DESCENDING, -2, {true, {-20}}},
        TLookUpRow{"At_a_step_the_first_pair_counts", STEP, 2, {true, {5}}},
        TLookUpRow{"Behind_a_step", STEP, 3, {true, {11}}},
        TLookUpRow{"Before_a_first_pair_of_equal_x", FLAT_ENDS, -1, {true, {-INFINITE}}},
        TLookUpRow{"Beyond_a_last_pair_of_equal_x", FLAT_ENDS, 5, {true, {INFINITE}}},
        TLookUpRow{"Between_ends_of_equal_x", FLAT_ENDS, 2, {true, {3.5}}},
        TLookUpRow{"Past_a_pair_that_leads_away", {{0, 0}, {-2, 6}, {10, 18}}, 4, {true, {12}}},
        TLookUpRow{"No_pair_encloses_it", {{0, 1}, {5e-7, 2}, {1.2e-6, 3}}, 3e-7, {false, {0}}},
        TLookUpRow{"Pairs_at_the_limit_are_skipped", {{0, 1}, {1e-6, 2}, {1.9e-6, 3}}, 5e-7, {false, {0}}},
        TLookUpRow{"Ends_at_the_limit", {{0, 1}, {1e-6, 2}}, 2e-6, {true, {3}}},
        TLookUpRow{"Ends_nearer_than_the_limit", {{0, 1}, {0.9e-6, 2}}, 2e-6, {false, {0}}},
        TLookUpRow{"Two_points_of_equal_x", {{1, 1}, {1, 2}}, 1, {false, {0}}},
        TLookUpRow{"One_point", {{1, 1}}, 1, {false, {0}}}, TLookUpRow{"No_point", {}, 1, {false, {0}}}),
    [](const auto& row) { return row.param.name; });

TEST(Extrapolation, The_position_may_be_the_very_variable_of_the_value)
{
    double value = 4.0;

    EXPECT_TRUE(Extrapolation::Get_Value({{0, 0}, {10, 20}}, value, &value));
    EXPECT_EQ(value, 8.0);
}

TEST(Extrapolation, A_position_that_is_no_number_has_a_value_that_is_none)
{
    double value = UNTOUCHED;

    EXPECT_TRUE(Extrapolation::Get_Value({{0, 0}, {10, 20}}, NOT_A_NUMBER, &value));
    EXPECT_TRUE(std::isnan(value));
}

TEST(Extrapolation, A_key_that_no_pair_encloses_leaves_0_in_both_coordinates)
{
    double x = UNTOUCHED;
    double y = UNTOUCHED;

    EXPECT_FALSE(Extrapolation::Get_Value_XY({{1, 2, 0}, {3, 4, 5e-7}, {5, 6, 1.2e-6}}, 3e-7, &x, &y));
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
}

using TSpatialLookUp = bool (*)(const std::vector<TVector3>&, const double&, double*, double*);

struct TSpatialRow
{
    const char* name;
    TSpatialLookUp look_up;
    double key;
    TResult result;
};

class Extrapolation_Coordinates : public ::testing::TestWithParam<TSpatialRow>
{
protected:
    TResult Look_Up(const std::vector<TVector3>& points) const
    {
        double first = UNTOUCHED;
        double second = UNTOUCHED;
        const bool ok = GetParam().look_up(points, GetParam().key, &first, &second);

        return {ok, {first, second}};
    }
};

TEST_P(Extrapolation_Coordinates, Are_the_two_others_at_the_key)
{
    EXPECT_EQ(Look_Up({{0, 10, 100}, {1, 30, 400}, {3, 40, 500}}), GetParam().result);
}

TEST_P(Extrapolation_Coordinates, Are_the_same_in_descending_order)
{
    EXPECT_EQ(Look_Up({{3, 40, 500}, {1, 30, 400}, {0, 10, 100}}), GetParam().result);
}

TEST_P(Extrapolation_Coordinates, Need_two_points)
{
    EXPECT_EQ(Look_Up({{0, 10, 100}}), (TResult{false, {0, 0}}));
}

TEST_P(Extrapolation_Coordinates, Need_ends_with_different_keys)
{
    EXPECT_EQ(Look_Up({{0, 10, 100}, {1, 30, 400}, {0, 10, 100}}), (TResult{false, {0, 0}}));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Extrapolation_Coordinates,
    ::testing::Values(TSpatialRow{"XY_between", Extrapolation::Get_Value_XY, 250, {true, {0.5, 20}}},
                      TSpatialRow{"XY_before", Extrapolation::Get_Value_XY, -200, {true, {-1, -10}}},
                      TSpatialRow{"XY_beyond", Extrapolation::Get_Value_XY, 600, {true, {5, 50}}},
                      TSpatialRow{"YZ_between", Extrapolation::Get_Value_YZ, 2, {true, {35, 450}}},
                      TSpatialRow{"YZ_before", Extrapolation::Get_Value_YZ, -1, {true, {-10, -200}}},
                      TSpatialRow{"YZ_beyond", Extrapolation::Get_Value_YZ, 5, {true, {50, 600}}},
                      TSpatialRow{"ZX_between", Extrapolation::Get_Value_ZX, 35, {true, {2, 450}}},
                      TSpatialRow{"ZX_before", Extrapolation::Get_Value_ZX, -10, {true, {-1, -200}}},
                      TSpatialRow{"ZX_beyond", Extrapolation::Get_Value_ZX, 50, {true, {5, 600}}}),
    [](const auto& row) { return row.param.name; });

// Null pointers

struct TNullRow
{
    const char* name;
    const char* function;
    const char* condition;
    std::function<void(double*)> act;
};

class Interpolation_Null_Pointers : public ::testing::TestWithParam<TNullRow>
{};

TEST_P(Interpolation_Null_Pointers, Are_programming_errors)
{
    const std::string failure =
        std::string("../core/interpolation.cpp: ") + GetParam().function + ": " + GetParam().condition + "\n";
    double value = 0.0;

    EXPECT_EXIT(GetParam().act(&value), KilledBySignal(SIGABRT), Eq(failure));
}

namespace {

const TPoints PAIR = {{0, 1}, {1, 3}};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Rows, Interpolation_Null_Pointers,
    ::testing::Values(
        TNullRow{"Matrix", "Solve_Mat", "matrix", [](double* v) { Solve_Mat(1, 2, nullptr, v); }},
        TNullRow{"Solution", "Solve_Mat", "solution", [](double* v) { Solve_Mat(1, 2, v, nullptr); }},
        TNullRow{"Line_slope", "Fit_Line", "slope", [](double* v) { Regression::Fit_Line(PAIR, nullptr, v); }},
        TNullRow{"Endfit_slope", "Get_Endfit_Slope", "slope",
                 [](double*) { Regression::Get_Endfit_Slope({}, nullptr); }},
        TNullRow{"Slope_through_zero", "Get_Slope_Through_Zero", "slope",
                 [](double*) { Regression::Get_Slope_Through_Zero({}, nullptr); }},
        TNullRow{"Square_a", "Fit_Curve", "a", [](double* v) { LeastSquares::Fit_Curve({}, nullptr, v, v); }},
        TNullRow{"Square_b", "Fit_Curve", "b", [](double* v) { LeastSquares::Fit_Curve({}, v, nullptr, v); }},
        TNullRow{"Square_c", "Fit_Curve", "c", [](double* v) { LeastSquares::Fit_Curve({}, v, v, nullptr); }},
        TNullRow{"Cube_a", "Fit_Curve", "a", [](double* v) { LeastSquares::Fit_Curve({}, nullptr, v, v, v); }},
        TNullRow{"Cube_b", "Fit_Curve", "b", [](double* v) { LeastSquares::Fit_Curve({}, v, nullptr, v, v); }},
        TNullRow{"Cube_c", "Fit_Curve", "c", [](double* v) { LeastSquares::Fit_Curve({}, v, v, nullptr, v); }},
        TNullRow{"Cube_d", "Fit_Curve", "d", [](double* v) { LeastSquares::Fit_Curve({}, v, v, v, nullptr); }},
        TNullRow{"Fourth_a", "Fit_Curve", "a", [](double* v) { LeastSquares::Fit_Curve({}, nullptr, v, v, v, v); }},
        TNullRow{"Fourth_b", "Fit_Curve", "b", [](double* v) { LeastSquares::Fit_Curve({}, v, nullptr, v, v, v); }},
        TNullRow{"Fourth_c", "Fit_Curve", "c", [](double* v) { LeastSquares::Fit_Curve({}, v, v, nullptr, v, v); }},
        TNullRow{"Fourth_d", "Fit_Curve", "d", [](double* v) { LeastSquares::Fit_Curve({}, v, v, v, nullptr, v); }},
        TNullRow{"Fourth_e", "Fit_Curve", "e", [](double* v) { LeastSquares::Fit_Curve({}, v, v, v, v, nullptr); }},
        TNullRow{"Value", "Get_Value", "value", [](double*) { Extrapolation::Get_Value({}, 0.0, nullptr); }},
        TNullRow{"XY_x", "Get_Value_XY", "x_value", [](double* v) { Extrapolation::Get_Value_XY({}, 0, nullptr, v); }},
        TNullRow{"XY_y", "Get_Value_XY", "y_value", [](double* v) { Extrapolation::Get_Value_XY({}, 0, v, nullptr); }},
        TNullRow{"YZ_y", "Get_Value_YZ", "y_value", [](double* v) { Extrapolation::Get_Value_YZ({}, 0, nullptr, v); }},
        TNullRow{"YZ_z", "Get_Value_YZ", "z_value", [](double* v) { Extrapolation::Get_Value_YZ({}, 0, v, nullptr); }},
        TNullRow{"ZX_x", "Get_Value_ZX", "x_value", [](double* v) { Extrapolation::Get_Value_ZX({}, 0, nullptr, v); }},
        TNullRow{"ZX_z", "Get_Value_ZX", "z_value", [](double* v) { Extrapolation::Get_Value_ZX({}, 0, v, nullptr); }}),
    [](const auto& row) { return row.param.name; });
