#include "core/vector2.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <csignal>
#include <limits>

using ::testing::Eq;
using ::testing::KilledBySignal;

namespace {

using TComponents = std::array<double, 2>;

constexpr double EPSILON = std::numeric_limits<double>::epsilon();

TComponents Components(const TVector2& vector)
{
    return {vector(0), vector(1)};
}

const TVector2 A(3.0, 5.0);
const TVector2 B(2.0, -8.0);

} // namespace

TEST(TVector2, Is_zero_unless_given)
{
    EXPECT_EQ(Components(TVector2()), (TComponents{0.0, 0.0}));
}

TEST(TVector2, Is_made_of_x_and_y)
{
    EXPECT_EQ(Components(TVector2(3.0, 5.0)), (TComponents{3.0, 5.0}));
}

TEST(TVector2, A_copy_is_a_vector_of_its_own)
{
    TVector2 copy = A;

    copy(0) = 7.0;
    copy(1) = 9.0;
    EXPECT_EQ(Components(copy), (TComponents{7.0, 9.0}));
    EXPECT_EQ(Components(A), (TComponents{3.0, 5.0}));
}

TEST(TVector2, An_index_out_of_range_is_a_programming_error)
{
    const auto failure = Eq("../core/vector2.cpp: operator(): false\n");
    TVector2 vector;

    EXPECT_EXIT(static_cast<void>(A(-1)), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(static_cast<void>(A(2)), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(vector(-1) = 1.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(vector(2) = 1.0, KilledBySignal(SIGABRT), failure);
}

TEST(TVector2, Normal_scales_to_the_length_1_and_returns_the_vector_itself)
{
    TVector2 vector(3.0, -4.0);

    EXPECT_EQ(&vector.Normal(), &vector);
    EXPECT_EQ(Components(vector), (TComponents{0.6, -0.8}));
}

TEST(TVector2, Normal_of_a_huge_vector_does_not_overflow)
{
    EXPECT_EQ(Components(TVector2(std::ldexp(3.0, 600), std::ldexp(4.0, 600)).Normal()), (TComponents{0.6, 0.8}));
}

TEST(TVector2, Normal_of_a_vector_without_length_is_a_programming_error)
{
    const auto failure = Eq("../core/vector2.cpp: Normal: Length > std::numeric_limits<double>::epsilon()\n");

    EXPECT_EXIT(TVector2().Normal(), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(TVector2(EPSILON, 0.0).Normal(), KilledBySignal(SIGABRT), failure);
}

TEST(TVector2, The_caret_is_the_dot_product)
{
    EXPECT_EQ(A ^ B, 3.0 * 2.0 - 5.0 * 8.0);
}

TEST(TVector2, Two_vectors_add_and_subtract_by_components)
{
    EXPECT_EQ(Components(A + B), (TComponents{5.0, -3.0}));
    EXPECT_EQ(Components(A - B), (TComponents{1.0, 13.0}));
}

TEST(TVector2, A_number_scales_from_either_side)
{
    EXPECT_EQ(Components(A * 2.0), (TComponents{6.0, 10.0}));
    EXPECT_EQ(Components(2.0 * A), (TComponents{6.0, 10.0}));
}

TEST(TVector2, A_number_is_added_to_every_component_from_either_side)
{
    EXPECT_EQ(Components(A + 1.0), (TComponents{4.0, 6.0}));
    EXPECT_EQ(Components(1.0 + A), (TComponents{4.0, 6.0}));
}

TEST(TVector2, A_number_is_subtracted_from_every_component_on_either_side)
{
    EXPECT_EQ(Components(A - 1.0), (TComponents{2.0, 4.0}));
    EXPECT_EQ(Components(1.0 - A), (TComponents{2.0, 4.0}));
}

TEST(TVector2, A_number_divides_every_component)
{
    EXPECT_EQ(Components(A / 2.0), (TComponents{1.5, 2.5}));
}

TEST(TVector2, Assigning_operators_change_the_vector_and_return_it)
{
    TVector2 vector = A;

    EXPECT_EQ(&(vector += B), &vector);
    EXPECT_EQ(&(vector -= TVector2(1.0, 1.0)), &vector);
    EXPECT_EQ(&(vector += 6.0), &vector);
    EXPECT_EQ(&(vector -= 2.0), &vector);
    EXPECT_EQ(&(vector *= 3.0), &vector);
    EXPECT_EQ(&(vector /= 2.0), &vector);
    EXPECT_EQ(Components(vector), (TComponents{12.0, 0.0}));
}

TEST(TVector2, A_divisor_that_is_not_positive_is_a_programming_error)
{
    const auto failure = Eq("../core/vector2.cpp: operator/=: d > std::numeric_limits<double>::epsilon()\n");

    EXPECT_EXIT(A / 0.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(A / -2.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(A / EPSILON, KilledBySignal(SIGABRT), failure);
}

struct TTriangleRow
{
    const char* name;
    TVector2 p;
    bool inside;
};

/// The triangle (0, 0), (4, 0), (0, 4), both ways round and from every corner.
class TVector2_Triangle : public ::testing::TestWithParam<TTriangleRow>
{};

TEST_P(TVector2_Triangle, Holds_the_point_or_not_whichever_way_round_it_stands)
{
    const TVector2 a(0.0, 0.0);
    const TVector2 b(4.0, 0.0);
    const TVector2 c(0.0, 4.0);
    const TVector2& p = GetParam().p;
    const bool inside = GetParam().inside;

    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, a, b, c), inside);
    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, b, c, a), inside);
    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, c, a, b), inside);
    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, c, b, a), inside);
    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, b, a, c), inside);
    EXPECT_EQ(TVector2::Is_Point_In_Triangle(p, a, c, b), inside);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TVector2_Triangle,
    ::testing::Values(TTriangleRow{"Inside", TVector2(1.0, 1.0), true},
                      TTriangleRow{"Just_inside", TVector2(1e-300, 1e-300), true},
                      TTriangleRow{"Beyond_the_left_edge", TVector2(-1.0, 1.0), false},
                      TTriangleRow{"Beyond_the_lower_edge", TVector2(1.0, -1.0), false},
                      TTriangleRow{"Beyond_the_long_edge", TVector2(3.0, 3.0), false},
                      TTriangleRow{"Beyond_a_corner", TVector2(5.0, -0.5), false},
                      TTriangleRow{"On_an_edge", TVector2(2.0, 2.0), false},
                      TTriangleRow{"Just_inside_the_long_edge", TVector2(2.0, 2.0 - EPSILON), true},
                      TTriangleRow{"On_a_corner", TVector2(4.0, 0.0), false},
                      TTriangleRow{"Not_a_number", TVector2(std::numeric_limits<double>::quiet_NaN(), 1.0), false}),
    [](const auto& row) { return row.param.name; });

TEST(TVector2, A_triangle_whose_area_no_double_holds_has_its_points)
{
    const TVector2 a(0.0, 0.0);
    const TVector2 b(4e-200, 0.0);
    const TVector2 c(0.0, 4e-200);

    EXPECT_TRUE(TVector2::Is_Point_In_Triangle(TVector2(1e-200, 1e-200), a, b, c));
    EXPECT_TRUE(TVector2::Is_Point_In_Triangle(TVector2(1e-200, 1e-200), c, b, a));
    EXPECT_FALSE(TVector2::Is_Point_In_Triangle(TVector2(3e-200, 3e-200), a, b, c));
}

TEST(TVector2, A_triangle_without_area_holds_no_point)
{
    const TVector2 a(0.1, 0.1);
    const TVector2 b(0.3, 0.3);
    const TVector2 c(0.7, 0.7);

    EXPECT_FALSE(TVector2::Is_Point_In_Triangle(TVector2(0.2, 0.2), a, b, c));
    EXPECT_FALSE(TVector2::Is_Point_In_Triangle(TVector2(0.2, 0.3), a, b, c));
    EXPECT_FALSE(TVector2::Is_Point_In_Triangle(a, a, a, a));
}
