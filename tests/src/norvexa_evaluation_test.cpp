#include "src/norvexa.h"

#include "tests/support/budgettext.h"
#include "tests/support/qtprinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using ::testing::HasSubstr;

constexpr double ROOT_3 = 1.732050807568877;
constexpr double ROOT_6 = 2.449489742783178;
constexpr double ROOT_2 = 1.414213562373095;
constexpr double ROOT_12 = 3.46410161513775;

TNorvexaData::TComponentItem Item(const QString& name, const QString& expression,
                                  TNorvexaData::TExpressionType type = TNorvexaData::CONSTANT_LINEAR,
                                  TNorvexaData::TDistribution distribution = TNorvexaData::DISTRIBUTION_NORMAL,
                                  double sensitivity = 1.0)
{
    TNorvexaData::TComponentItem item;
    item.name = name;
    item.expression = expression;
    item.expression_type = type;
    item.distribution = distribution;
    item.sensitivity = sensitivity;
    return item;
}

TNorvexaData::TComponentInstance Instance(const QString& name, double length)
{
    return {name, "", "", length, 0.01};
}

TNorvexaData::TComponent Laser(const std::vector<TNorvexaData::TComponentItem>& items)
{
    TNorvexaData::TComponent laser;
    laser.name = "Laser";
    laser.length = 400.0;
    laser.items = items;
    laser.instances = {Instance("A", 300.0), Instance("B", 350.0)};
    return laser;
}

TNorvexa Budget(const TNorvexaData::TComponent& component)
{
    TNorvexa budget;
    budget.Add_Component(component.name);
    budget.Update_Component(component);
    return budget;
}

/// The value of an evaluation, with its flag.
struct TResult
{
    double value;
    bool valid;

    friend bool operator==(const TResult& a, const TResult& b) { return a.value == b.value && a.valid == b.valid; }
    friend void PrintTo(const TResult& result, std::ostream* stream)
    {
        *stream << Exact_Text(result.value).toStdString() << (result.valid ? ", valid" : ", not valid");
    }
};

TResult Item_At(const TNorvexa& budget, const QString& item, const QString& identifier, double length)
{
    // The flag starts as true, so that an evaluation that never clears it shows.
    TResult result = {-1.0, true};
    result.value = budget.Evaluate_Component_Item("Laser", item, identifier, length, &result.valid);
    return result;
}

TResult Component_At(const TNorvexa& budget, const QString& reportable, const QString& identifier, double length)
{
    TResult result = {-1.0, true};
    result.value = budget.Evaluate_Reportable_Component(reportable, identifier, length, &result.valid);
    return result;
}

template <typename TRow>
std::string Title(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.title;
}

} // namespace

// Names

TEST(TNorvexaEvaluation, Bound_items_are_all_of_the_component_in_their_order)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1"), Item("Drift", "2")}));

    const auto listed = budget.Bind_Items("Laser", "", "A");

    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(listed[0].item->name, "Noise");
    EXPECT_EQ(*listed[0].evaluated.expression, "1");
    EXPECT_EQ(listed[1].item->name, "Drift");
    EXPECT_EQ(*listed[1].evaluated.expression, "2");
    EXPECT_EQ(listed[1].evaluated.component_length, 300.0);
}

TEST(TNorvexaEvaluation, Bound_items_of_one_name_are_evaluated_as_the_first_of_them)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1"), Item("Drift", "2"), Item("Noise", "3")}));

    const auto listed = budget.Bind_Items("Laser", "Noise", "");

    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(listed[0].item->expression, "1");
    EXPECT_EQ(*listed[0].evaluated.expression, "1");
    EXPECT_EQ(listed[1].item->expression, "3");
    EXPECT_EQ(*listed[1].evaluated.expression, "1");
}

TEST(TNorvexaEvaluation, No_items_are_bound_of_a_component_or_an_item_that_does_not_exist)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1")}));

    EXPECT_EQ(budget.Bind_Items("Scale", "", "").size(), 0);
    EXPECT_EQ(budget.Bind_Items("Laser", "Drift", "").size(), 0);
}

// Variables

TEST(TNorvexaEvaluation, Expressions_use_the_variables_that_were_added)
{
    TNorvexa budget = Budget(Laser({Item("Noise", "X*3")}));
    budget.Add_Expression_Variable("X", 0.25);

    EXPECT_EQ(Item_At(budget, "Noise", "", 0.0), (TResult{0.75, true}));
}

TEST(TNorvexaEvaluation, Adding_a_variable_again_replaces_its_value)
{
    TNorvexa budget = Budget(Laser({Item("Noise", "X*3")}));
    budget.Add_Expression_Variable("X", 0.25);
    budget.Add_Expression_Variable("X", 0.5);

    EXPECT_EQ(Item_At(budget, "Noise", "", 0.0), (TResult{1.5, true}));
}

TEST(TNorvexaEvaluation, Reset_removes_all_variables)
{
    TNorvexa budget = Budget(Laser({Item("Noise", "X*3")}));
    budget.Add_Expression_Variable("X", 0.25);
    budget.Reset_Expression_Variables();

    EXPECT_EQ(Item_At(budget, "Noise", "", 0.0), (TResult{0.0, false}));
}

TEST(TNorvexaEvaluation, The_document_defines_no_variable_itself)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "L"), Item("Count", "Lc"), Item("Expansion", "CTEm")}));

    EXPECT_EQ(Item_At(budget, "Noise", "", 100.0), (TResult{0.0, false}));
    EXPECT_EQ(Item_At(budget, "Count", "", 100.0), (TResult{0.0, false}));
    EXPECT_EQ(Item_At(budget, "Expansion", "", 100.0), (TResult{0.0, false}));
}

TEST(TNorvexaEvaluation, A_copy_of_the_document_carries_the_variables)
{
    TNorvexa budget = Budget(Laser({Item("Noise", "X*3")}));
    budget.Add_Expression_Variable("X", 0.25);
    const TNorvexa copy = budget;
    budget.Reset_Expression_Variables();

    EXPECT_EQ(Item_At(copy, "Noise", "", 0.0), (TResult{0.75, true}));
}

// Items

namespace {

struct TItemRow
{
    const char* title;
    const char* expression;
    TNorvexaData::TExpressionType type;
    TNorvexaData::TDistribution distribution;
    double sensitivity;
    double length;
    TResult result;
};

class TItemAtALength : public ::testing::TestWithParam<TItemRow>
{};

constexpr auto NORMAL = TNorvexaData::DISTRIBUTION_NORMAL;
constexpr auto RECTANGULAR = TNorvexaData::DISTRIBUTION_RECTANGULAR;
constexpr auto CONSTANT = TNorvexaData::CONSTANT_LINEAR;
constexpr auto CONSTANT_T = TNorvexaData::CONSTANT_TEMPERATURE;
constexpr auto LENGTH = TNorvexaData::LENGTH_DEPENDENT_LINEAR;
constexpr auto LENGTH_T = TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;

} // namespace

TEST_P(TItemAtALength, Has_exactly_this_value)
{
    const TItemRow& row = GetParam();
    const TNorvexa budget = Budget(Laser({Item("Noise", row.expression, row.type, row.distribution, row.sensitivity)}));

    EXPECT_EQ(Item_At(budget, "Noise", "", row.length), row.result);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TItemAtALength,
    ::testing::Values(
        TItemRow{"Normal", "0.7", CONSTANT, NORMAL, 1.0, 500.0, {0.7, true}},
        TItemRow{"Rectangular", "0.7", CONSTANT, RECTANGULAR, 1.0, 500.0, {0.7 / ROOT_3, true}},
        TItemRow{
            "Triangular", "0.7", CONSTANT, TNorvexaData::DISTRIBUTION_TRIANGULAR, 1.0, 500.0, {0.7 / ROOT_6, true}},
        TItemRow{"U", "1.0", CONSTANT, TNorvexaData::DISTRIBUTION_U, 1.0, 500.0, {1 / 1.414213562373095, true}},
        TItemRow{"Step", "0.7", CONSTANT, TNorvexaData::DISTRIBUTION_STEP, 1.0, 500.0, {0.7 / ROOT_12, true}},
        TItemRow{"Unknown_distribution",
                 "0.7",
                 CONSTANT,
                 static_cast<TNorvexaData::TDistribution>(5),
                 1.0,
                 500.0,
                 {0.7, true}},
        TItemRow{"Sensitivity_before_divisor", "0.7", CONSTANT, RECTANGULAR, 0.3, 500.0, {(0.7 * 0.3) / ROOT_3, true}},
        TItemRow{"Keeps_its_sign", "-0.7", CONSTANT, NORMAL, 1.0, 500.0, {-0.7, true}},
        TItemRow{"Negative_sensitivity", "0.7", CONSTANT, NORMAL, -2.0, 500.0, {-1.4, true}},
        TItemRow{"Zero_sensitivity", "0.7", CONSTANT, NORMAL, 0.0, 500.0, {0.0, true}},
        TItemRow{"Constant_temperature", "0.7", CONSTANT_T, NORMAL, 1.0, 500.0, {0.7, true}},
        TItemRow{"Type_below_the_known_ones",
                 "0.7",
                 static_cast<TNorvexaData::TExpressionType>(-1),
                 NORMAL,
                 1.0,
                 500.0,
                 {0.7, true}},
        TItemRow{"Length_dependent",
                 "0.7",
                 LENGTH,
                 RECTANGULAR,
                 0.3,
                 333.0,
                 {(((0.7 * 0.3) / ROOT_3) * 333.0) / 1000.0, true}},
        TItemRow{"Length_dependent_temperature",
                 "0.7",
                 LENGTH_T,
                 RECTANGULAR,
                 0.3,
                 333.0,
                 {(((0.7 * 0.3) / ROOT_3) * 333.0) / 1000.0, true}},
        TItemRow{"Type_above_the_known_ones",
                 "0.7",
                 static_cast<TNorvexaData::TExpressionType>(4),
                 NORMAL,
                 1.0,
                 500.0,
                 {(0.7 * 500.0) / 1000.0, true}},
        TItemRow{"Length_0", "0.7", LENGTH, NORMAL, 1.0, 0.0, {0.0, true}},
        TItemRow{"Beyond_the_component_without_limit", "0.7", LENGTH, NORMAL, 1.0, 5000.0, {3.5, true}},
        TItemRow{"Infinite", "1/0", CONSTANT, NORMAL, 1.0, 500.0, {std::numeric_limits<double>::infinity(), true}},
        TItemRow{"Not_an_expression", "0.7*", CONSTANT, NORMAL, 1.0, 500.0, {0.0, false}},
        TItemRow{"Empty_expression", "", LENGTH, NORMAL, 1.0, 500.0, {0.0, false}},
        TItemRow{"Unknown_variable", "X", LENGTH, NORMAL, 1.0, 500.0, {0.0, false}}),
    Title<TItemRow>);

TEST(TNorvexaEvaluation, The_order_of_operations_of_an_item_is_multiply_then_divide)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "0.1", TNorvexaData::LENGTH_DEPENDENT_LINEAR)}));

    // With these numbers the order shows in the last digit.
    ASSERT_NE((0.1 * 70.0) / 1000.0, 0.1 * (70.0 / 1000.0));
    EXPECT_EQ(Item_At(budget, "Noise", "", 70.0), (TResult{(0.1 * 70.0) / 1000.0, true}));
}

TEST(TNorvexaEvaluation, An_item_that_does_not_exist_is_not_valid)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1")}));
    bool valid = true;

    EXPECT_EQ(Item_At(budget, "Unknown", "", 500.0), (TResult{0.0, false}));
    EXPECT_EQ(budget.Evaluate_Component_Item("Unknown", "Noise", "", 500.0, &valid), 0.0);
    EXPECT_FALSE(valid);
}

TEST(TNorvexaEvaluation, An_item_uses_the_expression_of_the_identifier)
{
    TNorvexaData::TComponentItem item = Item("Noise", "0.25");
    item.replacement_items = {{"A", "0.5", false}, {"B", "0.75", true}};
    const TNorvexa budget = Budget(Laser({item}));

    EXPECT_EQ(Item_At(budget, "Noise", "A", 500.0), (TResult{0.5, true}));
    EXPECT_EQ(Item_At(budget, "Noise", "B", 500.0), (TResult{0.25, true}));
    EXPECT_EQ(Item_At(budget, "Noise", "", 500.0), (TResult{0.25, true}));
    EXPECT_EQ(Item_At(budget, "Noise", "[Default]", 500.0), (TResult{0.25, true}));
    EXPECT_EQ(Item_At(budget, "Noise", "Z", 500.0), (TResult{0.25, true}));
}

namespace {

struct TLimitRow
{
    const char* title;
    const char* identifier;
    double length;
    double effective_length;
};

class TLimitedLength : public ::testing::TestWithParam<TLimitRow>
{
protected:
    static TNorvexa Limited(const std::vector<TNorvexaData::TComponentItem>& items)
    {
        TNorvexaData::TComponent laser = Laser(items);
        laser.limit_uncertainty_length = true;
        return Budget(laser);
    }
};

} // namespace

TEST_P(TLimitedLength, Bounds_a_length_dependent_item)
{
    const TNorvexa budget = Limited({Item("Noise", "0.7", TNorvexaData::LENGTH_DEPENDENT_LINEAR)});

    EXPECT_EQ(Item_At(budget, "Noise", GetParam().identifier, GetParam().length),
              (TResult{(0.7 * GetParam().effective_length) / 1000.0, true}));
}

TEST_P(TLimitedLength, Leaves_a_constant_item_alone)
{
    const TNorvexa budget = Limited({Item("Noise", "0.7")});

    EXPECT_EQ(Item_At(budget, "Noise", GetParam().identifier, GetParam().length), (TResult{0.7, true}));
}

TEST_P(TLimitedLength, Leaves_a_constant_item_of_a_sum_component_alone)
{
    const TNorvexa budget = Limited({Item("Noise", "0.5")});

    EXPECT_EQ(Component_At(budget, "Laser", GetParam().identifier, GetParam().length), (TResult{0.5, true}));
}

TEST_P(TLimitedLength, Bounds_a_sum_component)
{
    const TNorvexa budget = Limited({Item("Noise", "0.7", TNorvexaData::LENGTH_DEPENDENT_LINEAR)});
    const double term = (GetParam().effective_length / 1000.0) * 0.7;
    const double partial = std::sqrt(term * term);

    EXPECT_EQ(Component_At(budget, "Laser", GetParam().identifier, GetParam().length),
              (TResult{std::sqrt(0.0 + partial * partial), true}));
}

INSTANTIATE_TEST_SUITE_P(TNorvexa, TLimitedLength,
                         ::testing::Values(TLimitRow{"Identifier_beyond", "A", 500.0, 300.0},
                                           TLimitRow{"Identifier_at", "A", 300.0, 300.0},
                                           TLimitRow{"Identifier_below", "A", 200.0, 200.0},
                                           TLimitRow{"Other_identifier_beyond", "B", 500.0, 350.0},
                                           TLimitRow{"Component_beyond", "", 500.0, 400.0},
                                           TLimitRow{"Component_at", "", 400.0, 400.0},
                                           TLimitRow{"Component_below", "", 399.0, 399.0},
                                           TLimitRow{"Default_beyond", "[Default]", 500.0, 400.0},
                                           TLimitRow{"Unknown_beyond", "Z", 500.0, 400.0}),
                         Title<TLimitRow>);

TEST(TNorvexaEvaluation, An_identifier_of_300_mm_limits_2_mm_per_metre_to_0_6_mm)
{
    TNorvexaData::TComponent laser = Laser({Item("Noise", "2.0", TNorvexaData::LENGTH_DEPENDENT_LINEAR)});
    laser.limit_uncertainty_length = true;
    const TNorvexa budget = Budget(laser);

    EXPECT_EQ(Item_At(budget, "Noise", "A", 500.0), (TResult{0.6, true}));
    EXPECT_EQ(Item_At(budget, "Noise", "A", 200.0), (TResult{0.4, true}));
}

// Reportable components

namespace {

double Combined(double constant_sum, double length_dependent_sum)
{
    const double constant = std::sqrt(constant_sum);
    const double length_dependent = std::sqrt(length_dependent_sum);

    return std::sqrt(constant * constant + length_dependent * length_dependent);
}

} // namespace

TEST(TNorvexaEvaluation, A_sum_component_combines_constant_and_length_dependent_items)
{
    const TNorvexa budget =
        Budget(Laser({Item("Noise", "0.3", TNorvexaData::CONSTANT_LINEAR, TNorvexaData::DISTRIBUTION_RECTANGULAR, 0.7),
                      Item("Drift", "-0.9", TNorvexaData::LENGTH_DEPENDENT_LINEAR, TNorvexaData::DISTRIBUTION_U, 1.1),
                      Item("Offset", "0.2", TNorvexaData::CONSTANT_TEMPERATURE),
                      Item("Scale", "1.7", TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE)}));

    const double noise = 0.3 * 0.7 / ROOT_3;
    const double drift = (777.0 / 1000.0) * (-0.9 * 1.1 / ROOT_2);
    const double scale = (777.0 / 1000.0) * 1.7;
    const double expected = Combined(noise * noise + 0.2 * 0.2, drift * drift + scale * scale);
    EXPECT_EQ(Component_At(budget, "Laser", "", 777.0), (TResult{expected, true}));
}

TEST(TNorvexaEvaluation, Items_of_3_and_4_sum_to_5)
{
    const TNorvexa constant = Budget(Laser({Item("Noise", "3"), Item("Drift", "-4")}));
    const TNorvexa mixed = Budget(Laser({Item("Noise", "3"), Item("Drift", "8", LENGTH)}));

    EXPECT_EQ(Component_At(constant, "Laser", "", 500.0), (TResult{5.0, true}));
    EXPECT_EQ(Component_At(mixed, "Laser", "", 500.0), (TResult{5.0, true}));
}

TEST(TNorvexaEvaluation, The_partial_roots_are_taken_before_they_are_combined)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "0.6"), Item("Drift", "0.3"), Item("Scale", "0.4", LENGTH)}));
    const double constant_sum = 0.6 * 0.6 + 0.3 * 0.3;
    const double length_dependent_sum = 0.4 * 0.4;

    // With these numbers the intermediate roots show in the last digit.
    ASSERT_NE(Combined(constant_sum, length_dependent_sum), std::sqrt(constant_sum + length_dependent_sum));
    EXPECT_EQ(Component_At(budget, "Laser", "", 1000.0), (TResult{Combined(constant_sum, length_dependent_sum), true}));
}

TEST(TNorvexaEvaluation, The_order_of_operations_of_a_sum_is_divide_then_multiply)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "0.1", LENGTH)}));
    const double term = (70.0 / 1000.0) * 0.1;
    const double other_term = (70.0 * 0.1) / 1000.0;

    // With these numbers the order shows in the last digit.
    ASSERT_NE(Combined(0.0, term * term), Combined(0.0, other_term * other_term));
    EXPECT_EQ(Component_At(budget, "Laser", "", 70.0), (TResult{Combined(0.0, term * term), true}));
}

TEST(TNorvexaEvaluation, Items_that_cannot_be_evaluated_are_left_out_of_a_sum)
{
    const TNorvexa budget =
        Budget(Laser({Item("Noise", "3"), Item("Broken", "2*"), Item("Drift", "4"), Item("Unknown", "X", LENGTH)}));

    EXPECT_EQ(Component_At(budget, "Laser", "", 500.0), (TResult{5.0, true}));
}

TEST(TNorvexaEvaluation, A_sum_component_whose_items_all_fail_is_0_and_valid)
{
    const TNorvexa budget = Budget(Laser({Item("Broken", "2*"), Item("Unknown", "X", LENGTH)}));

    EXPECT_EQ(Component_At(budget, "Laser", "", 500.0), (TResult{0.0, true}));
}

TEST(TNorvexaEvaluation, A_sum_component_without_items_is_0_and_not_valid)
{
    EXPECT_EQ(Component_At(Budget(Laser({})), "Laser", "", 500.0), (TResult{0.0, false}));
}

TEST(TNorvexaEvaluation, A_sum_component_uses_the_expressions_of_the_identifier)
{
    TNorvexaData::TComponentItem noise = Item("Noise", "3");
    TNorvexaData::TComponentItem drift = Item("Drift", "4");
    noise.replacement_items = {{"A", "5", false}, {"B", "7", true}};
    drift.replacement_items = {{"A", "12", false}, {"B", "7", true}};
    const TNorvexa budget = Budget(Laser({noise, drift}));

    EXPECT_EQ(Component_At(budget, "Laser", "A", 500.0), (TResult{13.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser", "B", 500.0), (TResult{5.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser", "", 500.0), (TResult{5.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser", "[Default]", 500.0), (TResult{5.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser", "Z", 500.0), (TResult{5.0, true}));
}

TEST(TNorvexaEvaluation, Items_of_one_name_have_the_expression_of_the_first_in_a_sum)
{
    TNorvexaData::TComponentItem first = Item("Noise", "3");
    TNorvexaData::TComponentItem second = Item("Noise", "4");
    first.replacement_items = {{"A", "5", false}};
    second.replacement_items = {{"A", "7", false}};
    const TNorvexa budget = Budget(Laser({first, second}));

    EXPECT_EQ(Component_At(budget, "Laser", "", 500.0), (TResult{Combined(3.0 * 3.0 + 3.0 * 3.0, 0.0), true}));
    EXPECT_EQ(Component_At(budget, "Laser", "A", 500.0), (TResult{Combined(5.0 * 5.0 + 5.0 * 5.0, 0.0), true}));
}

TEST(TNorvexaEvaluation, Items_of_one_name_keep_all_but_the_expression_in_a_sum)
{
    const TNorvexa budget =
        Budget(Laser({Item("Noise", "0.3", CONSTANT, RECTANGULAR, 0.7), Item("Noise", "0.9", LENGTH, NORMAL, 1.1)}));

    const double constant = 0.3 * 0.7 / ROOT_3;
    const double length_dependent = (777.0 / 1000.0) * (0.3 * 1.1);
    const double expected = Combined(constant * constant, length_dependent * length_dependent);
    EXPECT_EQ(Component_At(budget, "Laser", "", 777.0), (TResult{expected, true}));
}

TEST(TNorvexaEvaluation, An_individual_item_is_reported_like_the_item_itself)
{
    TNorvexaData::TComponent laser = Laser({Item("Noise", "-0.1", LENGTH), Item("Broken", "2*")});
    laser.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    laser.limit_uncertainty_length = true;
    const TNorvexa budget = Budget(laser);

    EXPECT_EQ(Component_At(budget, "Laser - Noise", "", 70.0), (TResult{(-0.1 * 70.0) / 1000.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser - Noise", "A", 500.0), (TResult{(300.0 * -0.1) / 1000.0, true}));
    EXPECT_EQ(Component_At(budget, "Laser - Broken", "", 70.0), (TResult{0.0, false}));
}

TEST(TNorvexaEvaluation, A_name_that_is_not_reportable_is_not_valid)
{
    TNorvexaData::TComponent laser = Laser({Item("Noise", "1")});
    const TNorvexa sum = Budget(laser);
    laser.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    const TNorvexa individual = Budget(laser);

    EXPECT_EQ(Component_At(sum, "Unknown", "", 500.0), (TResult{0.0, false}));
    EXPECT_EQ(Component_At(sum, "Laser - Noise", "", 500.0), (TResult{0.0, false}));
    EXPECT_EQ(Component_At(individual, "Laser", "", 500.0), (TResult{0.0, false}));
}

TEST(TNorvexaEvaluation, Names_with_percent_signs_are_evaluated)
{
    TNorvexaData::TComponent laser = Laser({Item("%1", "0.5"), Item("%2", "0.75")});
    laser.name = "%2";
    laser.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    const TNorvexa budget = Budget(laser);

    EXPECT_EQ(Component_At(budget, "%2 - %1", "", 500.0), (TResult{0.5, true}));
    EXPECT_EQ(Component_At(budget, "%2 - %2", "", 500.0), (TResult{0.75, true}));
}

TEST(TNorvexaEvaluation, Evaluation_changes_nothing)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "3"), Item("Drift", "8", LENGTH)}));
    const QStringList before = Budget_Text(budget);
    Component_At(budget, "Laser", "A", 500.0);
    Item_At(budget, "Drift", "B", 500.0);

    EXPECT_EQ(Budget_Text(budget), before);
}

// Null pointers

TEST(TNorvexaEvaluationDeathTest, Evaluate_Component_Item_needs_a_flag)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1")}));

    EXPECT_DEATH(budget.Evaluate_Component_Item("Laser", "Noise", "", 500.0, nullptr),
                 HasSubstr("../src/norvexa.cpp: Evaluate_Component_Item: valid\n"));
}

TEST(TNorvexaEvaluationDeathTest, Evaluate_Reportable_Component_needs_a_flag)
{
    const TNorvexa budget = Budget(Laser({Item("Noise", "1")}));

    EXPECT_DEATH(budget.Evaluate_Reportable_Component("Laser", "", 500.0, nullptr),
                 HasSubstr("../src/norvexa.cpp: Evaluate_Reportable_Component: valid\n"));
}
