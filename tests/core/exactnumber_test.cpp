#include "core/exactnumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double LARGEST = std::numeric_limits<double>::max();
constexpr double SMALLEST = std::numeric_limits<double>::denorm_min();
constexpr double EPSILON = std::numeric_limits<double>::epsilon();

TExactNumber Power(double value, int exponent)
{
    TExactNumber power = 1.0;

    for (int i = 0; i < exponent; ++i) {
        power = power * value;
    }
    return power;
}

double Rounded(const TExactNumber& number)
{
    return Ratio(number, 1.0);
}

} // namespace

TEST(TExactNumber, Is_zero_unless_given)
{
    EXPECT_EQ(Rounded(TExactNumber()), 0.0);
    EXPECT_EQ(Rounded(TExactNumber(0.1)), 0.1);
}

TEST(TExactNumber, A_small_term_survives_a_large_one)
{
    EXPECT_EQ(Rounded(TExactNumber(1e300) + SMALLEST - 1e300), SMALLEST);
}

TEST(TExactNumber, Equal_terms_leave_zero)
{
    TExactNumber number = TExactNumber(1e300) + 1.0 + 1e-300;
    const TExactNumber& same = number;

    number -= same;
    EXPECT_EQ(Rounded(number), 0.0);
}

TEST(TExactNumber, A_number_can_be_added_to_itself)
{
    TExactNumber number = TExactNumber(1e300) + SMALLEST;
    const TExactNumber& same = number;

    number += same;
    EXPECT_EQ(Rounded(number - 2e300), 2.0 * SMALLEST);
}

TEST(TExactNumber, Products_keep_their_last_digit)
{
    const TExactNumber number = 1.0 + EPSILON;

    EXPECT_EQ(Rounded(number * number - 1.0 - 2.0 * EPSILON), EPSILON * EPSILON);
}

TEST(TExactNumber, High_powers_keep_their_last_digit)
{
    // (1 + e)^7 - (1 + e)^6 - e (1 + e)^6 is zero, at 371 bits.
    const double value = 1.0 + EPSILON;

    EXPECT_EQ(Rounded(Power(value, 7) - Power(value, 6) - Power(value, 6) * EPSILON), 0.0);
    EXPECT_EQ(Rounded(Power(value, 7) - Power(value, 6) * value + Power(EPSILON, 14)), std::pow(EPSILON, 14));
}

TEST(TExactNumber, Powers_beyond_the_range_of_doubles_come_back)
{
    EXPECT_EQ(Ratio(Power(LARGEST, 7), Power(LARGEST, 6)), LARGEST);
    EXPECT_EQ(Ratio(Power(SMALLEST, 7), Power(SMALLEST, 6)), SMALLEST);
}

TEST(TExactNumber, The_sign_survives_below_the_range_of_doubles)
{
    EXPECT_EQ(Rounded(Power(SMALLEST, 7)), 0.0);
    EXPECT_EQ(Power(SMALLEST, 7).Sign(), 1.0);
    EXPECT_EQ((TExactNumber() - Power(SMALLEST, 7)).Sign(), -1.0);
}

TEST(TExactNumber, The_sign_is_that_of_the_sum)
{
    EXPECT_EQ(TExactNumber().Sign(), 0.0);
    EXPECT_EQ((TExactNumber(1e300) - SMALLEST - 1e300).Sign(), -1.0);
    EXPECT_EQ(TExactNumber(-INFINITE).Sign(), -1.0);
    EXPECT_TRUE(std::isnan(TExactNumber(std::nan("")).Sign()));
}

TEST(TExactNumber, Ratios_are_rounded_once)
{
    EXPECT_EQ(Ratio(1.0, 3.0), 1.0 / 3.0);
    EXPECT_EQ(Ratio(TExactNumber(1e300) + 1.0 - 1e300, TExactNumber(1e300) + 3.0 - 1e300), 1.0 / 3.0);
}

TEST(TExactNumber, Ratios_to_zero_follow_ieee)
{
    EXPECT_EQ(Ratio(1.0, TExactNumber()), INFINITE);
    EXPECT_EQ(Ratio(-1.0, TExactNumber()), -INFINITE);
    EXPECT_TRUE(std::isnan(Ratio(TExactNumber(), TExactNumber())));
}

TEST(TExactNumber, Infinity_spreads_as_in_plain_arithmetic)
{
    EXPECT_EQ(Rounded(TExactNumber(INFINITE) + 1.0), INFINITE);
    EXPECT_EQ(Rounded(TExactNumber(1.0) - INFINITE), -INFINITE);
    EXPECT_EQ(Rounded(TExactNumber(INFINITE) * -2.0), -INFINITE);
    EXPECT_TRUE(std::isnan(Rounded(TExactNumber(INFINITE) - INFINITE)));
    EXPECT_TRUE(std::isnan(Rounded(TExactNumber(INFINITE) * 0.0)));
    EXPECT_TRUE(std::isnan(Rounded(TExactNumber() * std::nan(""))));
}
