#include "core/vector3.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <csignal>
#include <limits>

using ::testing::Eq;
using ::testing::KilledBySignal;

namespace {

using TComponents = std::array<double, 3>;

constexpr double EPSILON = std::numeric_limits<double>::epsilon();

TComponents Components(const TVector3& vector)
{
    return {vector(0), vector(1), vector(2)};
}

const TVector3 A(3.0, 5.0, 7.0);
const TVector3 B(2.0, -8.0, 1.0);

} // namespace

TEST(TVector3, Is_zero_unless_given)
{
    EXPECT_EQ(Components(TVector3()), (TComponents{0.0, 0.0, 0.0}));
}

TEST(TVector3, Is_made_of_x_y_and_z)
{
    EXPECT_EQ(Components(TVector3(3.0, 5.0, 7.0)), (TComponents{3.0, 5.0, 7.0}));
}

TEST(TVector3, A_copy_is_a_vector_of_its_own)
{
    TVector3 copy = A;

    copy(0) = 1.0;
    copy(1) = 2.0;
    copy(2) = 4.0;
    EXPECT_EQ(Components(copy), (TComponents{1.0, 2.0, 4.0}));
    EXPECT_EQ(Components(A), (TComponents{3.0, 5.0, 7.0}));
}

TEST(TVector3, An_index_out_of_range_is_a_programming_error)
{
    const auto failure = Eq("../core/vector3.cpp: operator(): false\n");
    TVector3 vector;

    EXPECT_EXIT(static_cast<void>(A(-1)), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(static_cast<void>(A(3)), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(vector(-1) = 1.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(vector(3) = 1.0, KilledBySignal(SIGABRT), failure);
}

TEST(TVector3, Normal_scales_to_the_length_1_and_returns_the_vector_itself)
{
    TVector3 vector(2.0, -3.0, 6.0);

    EXPECT_EQ(&vector.Normal(), &vector);
    EXPECT_EQ(Components(vector), (TComponents{2.0 / 7.0, -3.0 / 7.0, 6.0 / 7.0}));
}

TEST(TVector3, Normal_of_a_huge_vector_does_not_overflow)
{
    TVector3 vector(std::ldexp(2.0, 600), std::ldexp(3.0, 600), std::ldexp(6.0, 600));

    EXPECT_EQ(Components(vector.Normal()), (TComponents{2.0 / 7.0, 3.0 / 7.0, 6.0 / 7.0}));
}

TEST(TVector3, Normal_of_a_vector_without_length_is_a_programming_error)
{
    const auto failure = Eq("../core/vector3.cpp: Normal: Length > std::numeric_limits<double>::epsilon()\n");

    EXPECT_EXIT(TVector3().Normal(), KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(TVector3(0.0, 0.0, EPSILON).Normal(), KilledBySignal(SIGABRT), failure);
}

TEST(TVector3, The_caret_is_the_dot_product)
{
    EXPECT_EQ(A ^ B, 3.0 * 2.0 - 5.0 * 8.0 + 7.0);
}

TEST(TVector3, The_star_is_the_cross_product)
{
    EXPECT_EQ(Components(TVector3(1.0, 0.0, 0.0) * TVector3(0.0, 1.0, 0.0)), (TComponents{0.0, 0.0, 1.0}));
    EXPECT_EQ(Components(A * B), (TComponents{61.0, 11.0, -34.0}));
    EXPECT_EQ(Components(B * A), (TComponents{-61.0, -11.0, 34.0}));
}

TEST(TVector3, The_assigning_cross_product_changes_the_vector_and_returns_it)
{
    TVector3 vector = A;

    EXPECT_EQ(&(vector *= B), &vector);
    EXPECT_EQ(Components(vector), (TComponents{61.0, 11.0, -34.0}));
}

TEST(TVector3, The_assigning_cross_product_with_the_very_object_leaves_it_unchanged)
{
    TVector3 vector = A;
    const TVector3& same = vector;

    vector *= same;
    EXPECT_EQ(Components(vector), (TComponents{3.0, 5.0, 7.0}));
}

TEST(TVector3, The_cross_product_with_an_equal_vector_is_zero)
{
    TVector3 vector = A;

    vector *= A;
    EXPECT_EQ(Components(vector), (TComponents{0.0, 0.0, 0.0}));
    EXPECT_EQ(Components(A * A), (TComponents{0.0, 0.0, 0.0}));
}

TEST(TVector3, Two_vectors_add_and_subtract_by_components)
{
    EXPECT_EQ(Components(A + B), (TComponents{5.0, -3.0, 8.0}));
    EXPECT_EQ(Components(A - B), (TComponents{1.0, 13.0, 6.0}));
}

TEST(TVector3, A_number_scales_from_either_side)
{
    EXPECT_EQ(Components(A * 2.0), (TComponents{6.0, 10.0, 14.0}));
    EXPECT_EQ(Components(2.0 * A), (TComponents{6.0, 10.0, 14.0}));
}

TEST(TVector3, A_number_is_added_to_every_component_from_either_side)
{
    EXPECT_EQ(Components(A + 1.0), (TComponents{4.0, 6.0, 8.0}));
    EXPECT_EQ(Components(1.0 + A), (TComponents{4.0, 6.0, 8.0}));
}

TEST(TVector3, A_number_is_subtracted_from_every_component_on_either_side)
{
    EXPECT_EQ(Components(A - 1.0), (TComponents{2.0, 4.0, 6.0}));
    EXPECT_EQ(Components(1.0 - A), (TComponents{2.0, 4.0, 6.0}));
}

TEST(TVector3, A_number_divides_every_component)
{
    EXPECT_EQ(Components(A / 2.0), (TComponents{1.5, 2.5, 3.5}));
}

TEST(TVector3, Assigning_operators_change_the_vector_and_return_it)
{
    TVector3 vector = A;

    EXPECT_EQ(&(vector += B), &vector);
    EXPECT_EQ(&(vector -= TVector3(1.0, 1.0, 1.0)), &vector);
    EXPECT_EQ(&(vector += 6.0), &vector);
    EXPECT_EQ(&(vector -= 2.0), &vector);
    EXPECT_EQ(&(vector *= 3.0), &vector);
    EXPECT_EQ(&(vector /= 2.0), &vector);
    EXPECT_EQ(Components(vector), (TComponents{12.0, 0.0, 16.5}));
}

TEST(TVector3, A_divisor_that_is_not_positive_is_a_programming_error)
{
    const auto failure = Eq("../core/vector3.cpp: operator/=: d > std::numeric_limits<double>::epsilon()\n");

    EXPECT_EXIT(A / 0.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(A / -2.0, KilledBySignal(SIGABRT), failure);
    EXPECT_EXIT(A / EPSILON, KilledBySignal(SIGABRT), failure);
}
