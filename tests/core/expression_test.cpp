#include "core/expression.h"
#include "tests/support/expressionvariables.h"
#include "tests/support/literalexpression.h"
#include "tests/support/qtprinters.h"
#include "tests/support/randomexpression.h"

#include <QLocale>
#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <future>
#include <limits>
#include <random>

using ::testing::Eq;
using ::testing::KilledBySignal;

namespace {

using TVariables = std::vector<TExpression::TVariable>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr TLiteralResult INVALID = {0.0, false};
constexpr int DEEP = 100000;

TLiteralResult Valid(double value)
{
    return {value, true};
}

/// The names with their values in the order of the list: "LX=3 L=2".
QString Listed(const TExpression& expression)
{
    QStringList entries;

    for (const TExpression::TVariable& variable : Variables_Of(expression)) {
        entries.append(QString("%1=%2").arg(variable.name, QString::number(variable.value)));
    }
    return entries.join(' ');
}

/// The flag is the opposite of what is expected beforehand, so that it must be written.
TLiteralResult Evaluated(const TExpression& expression, const QString& text, bool expected)
{
    TLiteralResult result = {-1.0, !expected};

    result.value = expression.Evaluate(text, &result.valid);
    return result;
}

TLiteralResult Processed(const QString& text, bool expected)
{
    TLiteralResult result = {-1.0, !expected};

    result.value = TExpression().Process_Expression(text, &result.valid);
    return result;
}

} // namespace

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.name;
}

/// A row of a table prints as its name.
template <typename TRow, typename = std::enable_if_t<std::is_same_v<decltype(TRow::name), const char*>>>
std::ostream& operator<<(std::ostream& stream, const TRow& row)
{
    return stream << row.name;
}

// Variables

TEST(TExpression, Is_without_variables_at_first)
{
    EXPECT_EQ(TExpression().Variable_Count(), 0);
}

TEST(TExpression, Lists_longer_names_first)
{
    TExpression expression;

    EXPECT_TRUE(expression.Add_Variable("L", 2.0));
    EXPECT_TRUE(expression.Add_Variable("LX", 3.0));
    EXPECT_EQ(Listed(expression), "LX=3 L=2");
    EXPECT_EQ(Evaluated(expression, "L*LX", true), Valid(6.0));
}

TEST(TExpression, Inserts_a_name_between_longer_and_shorter_ones)
{
    EXPECT_EQ(Listed(Expression_With({{"LLLL", 1.0}, {"L", 2.0}, {"LL", 3.0}, {"LLL", 4.0}})), "LLLL=1 LLL=4 LL=3 L=2");
}

TEST(TExpression, Lists_names_of_one_length_in_the_order_of_their_adding)
{
    EXPECT_EQ(Listed(Expression_With({{"B", 1.0}, {"A", 2.0}, {"LX", 3.0}, {"C", 4.0}, {"AX", 5.0}})),
              "LX=3 AX=5 B=1 A=2 C=4");
}

TEST(TExpression, Adding_a_name_again_replaces_its_value_in_place)
{
    TExpression expression = Expression_With({{"L", 2.0}, {"M", 3.0}, {"LX", 4.0}});

    EXPECT_TRUE(expression.Add_Variable("L", 5.0));
    EXPECT_EQ(Listed(expression), "LX=4 L=5 M=3");
    EXPECT_TRUE(expression.Add_Variable("LX", 6.0));
    EXPECT_EQ(Listed(expression), "LX=6 L=5 M=3");
}

TEST(TExpression, Refuses_an_empty_name)
{
    TExpression expression = Expression_With({{"L", 2.0}});

    EXPECT_FALSE(expression.Add_Variable("", 3.0));
    EXPECT_FALSE(expression.Add_Variable(QString(), 3.0));
    EXPECT_FALSE(expression.Add_Variable(TExpression::TVariable{"", 3.0}));
    EXPECT_EQ(Listed(expression), "L=2");
}

TEST(TExpression, Keeps_names_that_differ_in_case_apart)
{
    EXPECT_EQ(Listed(Expression_With({{"a", 1.0}, {"A", 2.0}})), "a=1 A=2");
}

TEST(TExpression, Of_names_that_differ_in_case_substitutes_the_one_added_first)
{
    EXPECT_EQ(Evaluated(Expression_With({{"a", 1.0}, {"A", 2.0}}), "A + a", true), Valid(2.0));
    EXPECT_EQ(Evaluated(Expression_With({{"A", 2.0}, {"a", 1.0}}), "A + a", true), Valid(4.0));
}

TEST(TExpression, Forgets_its_variables_when_cleared)
{
    TExpression expression = Expression_With({{"L", 2.0}, {"M", 3.0}});

    expression.Clear_Variables();
    EXPECT_EQ(expression.Variable_Count(), 0);
    EXPECT_EQ(Evaluated(expression, "L", false), INVALID);
    EXPECT_TRUE(expression.Add_Variable("N", 4.0));
    EXPECT_EQ(Listed(expression), "N=4");
}

TEST(TExpression, Hands_out_its_entries_by_index)
{
    const TExpression expression = Expression_With({{"L", 2.0}, {"Lx", 3.0}});

    EXPECT_EQ(expression.Variable_Count(), 2);
    EXPECT_EQ(expression.Variable(0).name, "Lx");
    EXPECT_EQ(expression.Variable(0).value, 3.0);
    EXPECT_EQ(expression.Variable_Name(1), "L");
    EXPECT_EQ(expression.Variable_Value(1), 2.0);
}

TEST(TExpression, Hands_out_entries_as_copies)
{
    const TExpression expression = Expression_With({{"L", 2.0}});
    TExpression::TVariable copy = expression.Variable(0);

    copy.name = "M";
    copy.value = 3.0;
    EXPECT_EQ(Listed(expression), "L=2");
}

TEST(TExpression, Finds_a_value_by_its_exact_name)
{
    const TExpression expression = Expression_With({{"L", 2.0}, {"l", 3.0}});
    bool ok = false;

    EXPECT_EQ(expression.Variable_Value("l", &ok), 3.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(expression.Variable_Value("L", nullptr), 2.0);
}

TEST(TExpression, Reports_a_name_that_it_does_not_have)
{
    const TExpression expression = Expression_With({{"Lx", 2.0}});
    bool ok = true;

    EXPECT_EQ(expression.Variable_Value("LX", &ok), 0.0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(expression.Variable_Value("", nullptr), 0.0);
}

// Assertions

TEST(TExpression, Asserts_the_index_of_a_variable)
{
    const TExpression expression = Expression_With({{"L", 2.0}});
    const std::string condition = ": static_cast<unsigned int>(index) < d_variables.size()\n";

    EXPECT_EXIT(expression.Variable(-1), KilledBySignal(SIGABRT), Eq("../core/expression.cpp: Variable" + condition));
    EXPECT_EXIT(expression.Variable(1), KilledBySignal(SIGABRT), Eq("../core/expression.cpp: Variable" + condition));
    EXPECT_EXIT(expression.Variable_Name(-1), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Variable_Name" + condition));
    EXPECT_EXIT(expression.Variable_Value(1), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Variable_Value" + condition));
}

TEST(TExpression, Asserts_the_results_of_a_function)
{
    int length = 0;
    bool valid = false;

    EXPECT_EXIT(TExpression().Process_Function("SQRT(4)", nullptr, &valid), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Process_Function: function_length\n"));
    EXPECT_EXIT(TExpression().Process_Function("SQRT(4)", &length, nullptr), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Process_Function: valid\n"));
}

TEST(TExpression, Asserts_the_entries_of_the_stacks)
{
    std::stack<double> numbers({2.0});
    std::stack<int> operators({'+'});

    EXPECT_EXIT(TExpression().Apply_Expression(&numbers, &operators), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Apply_Expression: number_stack->size() > 1\n"));

    numbers.push(3.0);
    operators.pop();
    EXPECT_EXIT(TExpression().Apply_Expression(&numbers, &operators), KilledBySignal(SIGABRT),
                Eq("../core/expression.cpp: Apply_Expression: oper_stack->size()\n"));
}

// Values of texts

struct TValueRow
{
    const char* name;
    QString text;
    TLiteralResult expected;
};

class TExpression_Values : public ::testing::TestWithParam<TValueRow>
{};

TEST_P(TExpression_Values, Are_as_tabled)
{
    const TValueRow& row = GetParam();

    EXPECT_EQ(Evaluated(TExpression(), row.text, row.expected.valid), row.expected);
}

TEST_P(TExpression_Values, Agree_with_the_literal_rules)
{
    EXPECT_EQ(Literal_Evaluate(GetParam().text, {}), GetParam().expected);
}

TEST_P(TExpression_Values, Need_no_flag)
{
    const TLiteralResult result = {TExpression().Evaluate(GetParam().text, nullptr), GetParam().expected.valid};

    EXPECT_EQ(result, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Operators, TExpression_Values,
                         ::testing::Values(TValueRow{"Product_before_sum", "2+3*4", Valid(14.0)},
                                           TValueRow{"Group_before_product", "(2+3)*4", Valid(20.0)},
                                           TValueRow{"Power_before_product", "2*3^2", Valid(18.0)},
                                           TValueRow{"Power_then_product", "2^3*2", Valid(16.0)},
                                           TValueRow{"All_precedences", "1+2*3^2-4/2", Valid(17.0)},
                                           TValueRow{"Powers_from_the_left", "2^3^2", Valid(64.0)},
                                           TValueRow{"Differences_from_the_left", "10-4-3", Valid(3.0)},
                                           TValueRow{"Quotients_from_the_left", "8/2/2", Valid(2.0)},
                                           TValueRow{"Quotient_then_product", "8/2*4", Valid(16.0)},
                                           TValueRow{"Difference_then_sum", "8-2+4", Valid(10.0)},
                                           TValueRow{"Doubles", "0.1+0.2", Valid(0.1 + 0.2)},
                                           TValueRow{"Fractional_power", "2^0.5", Valid(std::pow(2.0, 0.5))},
                                           TValueRow{"Zero_to_the_zero", "0^0", Valid(1.0)},
                                           TValueRow{"Last_operand_missing", "2+", INVALID},
                                           TValueRow{"Last_power_missing", "2^", INVALID},
                                           TValueRow{"Last_operand_of_group_missing", "2*(3-)", INVALID},
                                           TValueRow{"Two_operators", "2*/3", INVALID}),
                         Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(Infinities, TExpression_Values,
                         ::testing::Values(TValueRow{"One_by_zero", "1/0", Valid(INFINITE)},
                                           TValueRow{"Minus_one_by_zero", "-1/0", Valid(-INFINITE)},
                                           TValueRow{"One_by_minus_zero", "1/(-0)", Valid(-INFINITE)},
                                           TValueRow{"Zero_by_zero", "0/0", Valid(NOT_A_NUMBER)},
                                           TValueRow{"Overflow", "10^400", Valid(INFINITE)},
                                           TValueRow{"Root_of_negative", "SQRT(-4)", Valid(NOT_A_NUMBER)},
                                           TValueRow{"Power_of_negative", "(-8)^(1/3)", Valid(NOT_A_NUMBER)}),
                         Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(
    Signs, TExpression_Values,
    ::testing::Values(TValueRow{"Minus", "-5", Valid(-5.0)}, TValueRow{"Plus", "+5", Valid(5.0)},
                      TValueRow{"Minus_zero", "-0", Valid(-0.0)}, TValueRow{"Product_of_negative", "-3*2", Valid(-6.0)},
                      TValueRow{"Sign_before_power", "-3^2", Valid(9.0)},
                      TValueRow{"Sign_of_group_dropped", "-(2+3)", Valid(5.0)},
                      TValueRow{"Sign_of_function_dropped", "-SQRT(4)", Valid(2.0)},
                      TValueRow{"Any_operator_before_group_dropped", "*(2+3)", Valid(5.0)},
                      TValueRow{"Sign_after_product", "2*-3", INVALID}, TValueRow{"Sign_after_sum", "2+-3", INVALID},
                      TValueRow{"Sign_in_group", "2*(-3)", Valid(-6.0)},
                      TValueRow{"Signs_of_parts", "SUMSQ(-3,+4)", Valid(5.0)}, TValueRow{"Two_signs", "--5", INVALID},
                      TValueRow{"Minus_alone", "-", INVALID}, TValueRow{"Plus_alone", "+", INVALID},
                      TValueRow{"Leading_product", "*5", INVALID}, TValueRow{"Leading_quotient", "/5", INVALID},
                      TValueRow{"Leading_power", "^5", INVALID}),
    Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(
    Literals, TExpression_Values,
    ::testing::Values(TValueRow{"Point_at_the_end", "5.", Valid(5.0)},
                      TValueRow{"Point_at_the_beginning", ".5", Valid(0.5)},
                      TValueRow{"Leading_zeros", "007", Valid(7.0)}, TValueRow{"Point_alone", ".", INVALID},
                      TValueRow{"Two_points", "1.2.3", INVALID},
                      TValueRow{"Two_points_before_operator", "1.2.3+1", INVALID},
                      TValueRow{"Exponent", "1E3", INVALID}, TValueRow{"Negative_exponent", "1E-5", INVALID},
                      TValueRow{"Hexadecimal", "0x10", INVALID}, TValueRow{"Decimal_comma", "1,5", INVALID},
                      TValueRow{"Nan", "nan", INVALID}, TValueRow{"Inf", "inf", INVALID},
                      TValueRow{"Arabic_digits", QString::fromUtf8("٣"), INVALID},
                      TValueRow{"Many_digits", "3." + QString(1000, '3'), Valid(10.0 / 3.0)},
                      TValueRow{"Too_small", "0." + QString(400, '0') + "1", INVALID},
                      TValueRow{"Too_large", QString(400, '9'), INVALID},
                      TValueRow{"Too_large_before_operator", QString(400, '9') + "*2", INVALID}),
    Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(
    Texts, TExpression_Values,
    ::testing::Values(
        TValueRow{"Null", QString(), INVALID}, TValueRow{"Empty", "", INVALID}, TValueRow{"Blanks", "   ", INVALID},
        TValueRow{"Line_breaks", "\t\n\r", INVALID}, TValueRow{"Case_and_blanks", "sqrt(16) + sumsq(3,4)", Valid(9.0)},
        TValueRow{"Mixed_case", "sQrT(16)", Valid(4.0)}, TValueRow{"Tabs_and_breaks", "\t2 +\n3\r\n", Valid(5.0)},
        TValueRow{"No_break_space", QString::fromUtf8("2\u00a0+\u00a03"), Valid(5.0)},
        TValueRow{"Blanks_in_literal", "1 000.5", Valid(1000.5)},
        TValueRow{"Blanks_in_function", "s q r t (4)", Valid(2.0)}, TValueRow{"Unknown_name", "X", INVALID},
        TValueRow{"Unknown_function", "SIN(1)", INVALID}, TValueRow{"Unknown_name_after_group", "(2)X", INVALID},
        TValueRow{"Semicolon", "2;3", INVALID}, TValueRow{"Beyond_latin", QString::fromUtf8("2*Ж"), INVALID},
        TValueRow{"Low_byte_of_a_digit", QString(QChar(0x0135)), INVALID},
        TValueRow{"Beyond_the_plane", QString::fromUtf8("2*😀"), INVALID}),
    Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(
    Groups, TExpression_Values,
    ::testing::Values(TValueRow{"Number", "(2)", Valid(2.0)}, TValueRow{"Nested", "((2))", Valid(2.0)},
                      TValueRow{"Side_by_side", "(1+2)*(3+4)", Valid(21.0)},
                      TValueRow{"Group_replaces_literal", "2(3)", Valid(3.0)},
                      TValueRow{"Group_replaces_literal_before_operator", "2(3)+1", Valid(4.0)},
                      TValueRow{"Literal_after_group_is_lost", "(2)3+1", Valid(3.0)},
                      TValueRow{"Literal_after_last_group_is_lost", "(2)3", Valid(2.0)},
                      TValueRow{"Group_replaces_group", "(2)(3)", Valid(3.0)},
                      TValueRow{"Function_replaces_literal", "2SQRT(9)", Valid(3.0)},
                      TValueRow{"Malformed_literal_is_lost", "1.2.3(4)", Valid(4.0)},
                      TValueRow{"Empty_group", "()", INVALID}, TValueRow{"Empty_groups", "(())", INVALID},
                      TValueRow{"Comma_in_group", "(1,2)", INVALID}, TValueRow{"Closing_alone", ")", INVALID},
                      TValueRow{"Closing_after_number", "2)", INVALID}, TValueRow{"Closing_twice", "(2))", INVALID},
                      TValueRow{"Closing_before_operator", "2)+1", INVALID}, TValueRow{"Opening_alone", "(", INVALID},
                      TValueRow{"Opening_before_valid", "(1+2", INVALID},
                      TValueRow{"Opening_before_invalid", "(1+", INVALID}, TValueRow{"Opening_within", "1+(2", INVALID},
                      TValueRow{"Opening_after_group", "(1)*(2", INVALID}, TValueRow{"Opening_twice", "((1)", INVALID},
                      TValueRow{"Opening_last", "1+(", INVALID}),
    Row_Name<TValueRow>);

INSTANTIATE_TEST_SUITE_P(
    Functions, TExpression_Values,
    ::testing::Values(TValueRow{"Root", "SQRT(2)", Valid(std::sqrt(2.0))},
                      TValueRow{"Sum_of_one", "SUMSQ(-3)", Valid(3.0)},
                      TValueRow{"Sum_of_three", "SUMSQ(3,4,12)", Valid(13.0)},
                      TValueRow{"Expressions_as_parts", "SUMSQ(1+2,2*2)", Valid(5.0)},
                      TValueRow{"Groups_as_later_parts", "SUMSQ(3,(1+1)*2)", Valid(5.0)},
                      TValueRow{"Functions_as_parts", "SUMSQ(SQRT(9),SQRT(16))", Valid(5.0)},
                      TValueRow{"Functions_as_operands", "SQRT(4)+SUMSQ(3,4)*2^SQRT(9)", Valid(42.0)},
                      TValueRow{"Nested_roots", "SQRT(SQRT(SQRT(256)))", Valid(2.0)},
                      TValueRow{"Group_at_the_end", "SQRT(3*(1+2))", Valid(3.0)},
                      TValueRow{"Infinite_part", "SUMSQ(1/0,1)", Valid(INFINITE)},
                      TValueRow{"Invalid_first_part", "SUMSQ(X,3)", Valid(3.0)},
                      TValueRow{"Invalid_last_part", "SUMSQ(3,X)", INVALID},
                      TValueRow{"Empty_first_part", "SUMSQ(,3)", Valid(3.0)},
                      TValueRow{"Empty_last_part", "SUMSQ(3,)", INVALID}, TValueRow{"No_part", "SUMSQ()", INVALID},
                      TValueRow{"No_argument", "SQRT()", INVALID}, TValueRow{"Two_arguments", "SQRT(16,9)", INVALID},
                      TValueRow{"Invalid_argument", "SQRT(2*)", INVALID}, TValueRow{"No_parenthesis", "SQRT4", INVALID},
                      TValueRow{"Not_closed", "SQRT(4", INVALID}, TValueRow{"Name_alone", "SQRT(", INVALID},
                      TValueRow{"Closed_before_more", "SQRT(4)+SQRT(9", INVALID}),
    Row_Name<TValueRow>);

// A function's argument ends at the first closing parenthesis if it begins with an opening one, and commas part it
// whatever they stand in.
INSTANTIATE_TEST_SUITE_P(
    Arguments, TExpression_Values,
    ::testing::Values(TValueRow{"Root_of_leading_group", "SQRT((1+2)*3)", INVALID},
                      TValueRow{"Root_of_group_alone", "SQRT((4))", INVALID},
                      TValueRow{"Root_of_group_left_open", "SQRT((4)", INVALID},
                      TValueRow{"Sum_of_leading_group", "SUMSQ((3),4)", INVALID},
                      TValueRow{"Sum_of_signed_group", "SUMSQ(+(3),4)", Valid(5.0)},
                      TValueRow{"Sum_left_open_by_a_group", "SUMSQ(3,(1,4)", INVALID},
                      TValueRow{"Invalid_open_group_as_first_part", "SUMSQ((X,2)", Valid(2.0)},
                      TValueRow{"Invalid_group_parted_by_comma", "SUMSQ(3,(X,2),4)", Valid(5.0)},
                      TValueRow{"Sum_parted_by_comma", "SUMSQ(3,SUMSQ(1,2),4)", Valid(5.0)},
                      TValueRow{"Nested_sum_is_parted", "SUMSQ(SUMSQ(1,2),3)", Valid(3.0)},
                      TValueRow{"Nested_sum_of_one_part", "SUMSQ(SUMSQ(3),4)", Valid(5.0)},
                      TValueRow{"Nested_sum_as_last_part", "SUMSQ(3,SUMSQ(1,4))", INVALID},
                      TValueRow{"Invalid_part_with_open_operators", "SUMSQ(1+2*3^X,3)+1", Valid(4.0)},
                      TValueRow{"Invalid_part_deep_down", "2*SUMSQ(1+(2*(3^(X))),3)+1", Valid(7.0)}),
    Row_Name<TValueRow>);

// The rules would go round for ever: not even a sum whose last part is valid has a value.
INSTANTIATE_TEST_SUITE_P(Endless, TExpression_Values,
                         ::testing::Values(TValueRow{"First_part", "SUMSQ((1,2)", INVALID},
                                           TValueRow{"First_part_behind_operator", "SUMSQ(1+2*(3),(1,2),4)", INVALID},
                                           TValueRow{"Group_parted_by_comma", "SUMSQ(3,(1,2),4)", INVALID},
                                           TValueRow{"Group_that_closes_another", "SUMSQ((1+(2),3)", INVALID},
                                           TValueRow{"Sum_of_group_within_a_part", "SUMSQ(1+SUMSQ((4)),3)", INVALID},
                                           TValueRow{"Part_before_more", "1+SUMSQ((1,2)*3", INVALID},
                                           TValueRow{"Root_of_group_within_a_part", "SUMSQ(1+SQRT((4)),3)", INVALID},
                                           TValueRow{"Groups_within_an_open_one", "SUMSQ((((1,2)),3)", INVALID}),
                         Row_Name<TValueRow>);

// Substitution

struct TSubstitutionRow
{
    const char* name;
    TVariables variables;
    QString text;
    TLiteralResult expected;
};

class TExpression_Substitution : public ::testing::TestWithParam<TSubstitutionRow>
{};

TEST_P(TExpression_Substitution, Is_as_tabled)
{
    const TSubstitutionRow& row = GetParam();

    EXPECT_EQ(Evaluated(Expression_With(row.variables), row.text, row.expected.valid), row.expected);
}

TEST_P(TExpression_Substitution, Agrees_with_the_literal_rules)
{
    const TSubstitutionRow& row = GetParam();

    EXPECT_EQ(Literal_Evaluate(row.text, Variables_Of(Expression_With(row.variables))), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TExpression_Substitution,
    ::testing::Values(TSubstitutionRow{"Positive", {{"A", 2.5}}, "A*2", Valid(5.0)},
                      TSubstitutionRow{"Every_match", {{"A", 2.0}}, "A+A*A", Valid(6.0)},
                      TSubstitutionRow{"Negative_after_operator", {{"A", -0.5}}, "2*A", Valid(-1.0)},
                      TSubstitutionRow{"Negative_power", {{"A", -0.5}}, "A^2", Valid(0.25)},
                      TSubstitutionRow{"Sign_before_negative_is_lost", {{"A", -3.0}}, "-A", Valid(-3.0)},
                      TSubstitutionRow{"Negative_argument", {{"X", -1.5}}, "SQRT(X*2)", INVALID},
                      TSubstitutionRow{"Negative_later_in_argument", {{"X", -1.5}}, "SQRT(2*X)", Valid(NOT_A_NUMBER)},
                      TSubstitutionRow{"Negative_argument_within_a_sum", {{"X", -1.5}}, "SUMSQ(SQRT(X*2),3)", INVALID},
                      TSubstitutionRow{"Negative_first_part", {{"X", -3.0}}, "SUMSQ(X,4)", INVALID},
                      TSubstitutionRow{"Negative_last_part", {{"X", -3.0}}, "SUMSQ(4,X)", Valid(5.0)},
                      TSubstitutionRow{"Negative_only_part", {{"X", -3.0}}, "SUMSQ(X)", INVALID},
                      TSubstitutionRow{"Minus_zero_has_no_sign", {{"A", -0.0}}, "1/A", Valid(INFINITE)},
                      TSubstitutionRow{"Tiny_negative_becomes_minus_zero", {{"A", -1e-20}}, "1/A", Valid(-INFINITE)},
                      TSubstitutionRow{"Tiny_positive_becomes_zero", {{"A", 1e-17}}, "A", Valid(0.0)},
                      TSubstitutionRow{"Sixteen_decimals", {{"A", 1e-9 / 3.0}}, "A", Valid(0.0000000003333333)},
                      TSubstitutionRow{"Large", {{"A", 1e300}}, "A/10", Valid(1e299)},
                      TSubstitutionRow{"Largest",
                                       {{"A", std::numeric_limits<double>::max()}},
                                       "A",
                                       Valid(std::numeric_limits<double>::max())},
                      TSubstitutionRow{"Not_a_number", {{"A", NOT_A_NUMBER}}, "A", INVALID},
                      TSubstitutionRow{"Infinite", {{"A", INFINITE}}, "A", INVALID},
                      TSubstitutionRow{"Minus_infinite", {{"A", -INFINITE}}, "1+A", INVALID},
                      TSubstitutionRow{"Not_a_number_in_a_part", {{"A", NOT_A_NUMBER}}, "SUMSQ(A,2)", Valid(2.0)},
                      TSubstitutionRow{"Not_in_the_text", {{"A", 2.0}, {"B", 3.0}}, "B", Valid(3.0)}),
    Row_Name<TSubstitutionRow>);

INSTANTIATE_TEST_SUITE_P(
    Words, TExpression_Substitution,
    ::testing::Values(TSubstitutionRow{"Longer_names_first", {{"L", 2.0}, {"LX", 3.0}}, "L*LX", Valid(6.0)},
                      TSubstitutionRow{"Part_of_a_word", {{"A", 2.0}, {"B", -3.0}}, "AB", INVALID},
                      TSubstitutionRow{"End_of_a_word", {{"A", -3.0}, {"B", 2.0}}, "BA", INVALID},
                      TSubstitutionRow{"Before_underscore", {{"A", 2.0}, {"_", -4.0}}, "A_", INVALID},
                      TSubstitutionRow{"Behind_underscore", {{"A", -4.0}, {"_", 2.0}}, "_A", INVALID},
                      TSubstitutionRow{"Before_digit", {{"A", 2.0}}, "A1", INVALID},
                      TSubstitutionRow{"Behind_digit", {{"A", 2.0}}, "2A", INVALID},
                      TSubstitutionRow{"Before_letter_beyond_latin",
                                       {{"A", 2.0}, {QString::fromUtf8("Ж"), -3.0}},
                                       QString::fromUtf8("AЖ"),
                                       INVALID},
                      TSubstitutionRow{"Before_point", {{"A", 2.0}}, "A.5", INVALID},
                      TSubstitutionRow{"Before_group", {{"A", 2.0}}, "A(3)", Valid(3.0)},
                      TSubstitutionRow{"Blanks_join_words", {{"A", 2.0}}, "A A", INVALID},
                      TSubstitutionRow{"Name_with_digit_and_underscore", {{"a_1", 2.0}}, "3*A_1", Valid(6.0)},
                      TSubstitutionRow{"Name_with_blank_is_never_met", {{"A B", 2.0}}, "A B", INVALID},
                      TSubstitutionRow{"Name_of_a_function", {{"SQRT", 3.0}}, "SQRT(4)", Valid(4.0)},
                      TSubstitutionRow{"Number_as_a_name", {{"2", 7.0}}, "2*3", Valid(21.0)},
                      TSubstitutionRow{"Number_as_a_later_name", {{"A", 2.0}, {"2", 7.0}}, "A", INVALID},
                      TSubstitutionRow{"Number_as_an_earlier_name", {{"2", 7.0}, {"A", 2.0}}, "A*2", Valid(14.0)},
                      TSubstitutionRow{
                          "Zero_as_a_name_spares_decimals", {{"0", 7.0}, {"LX", 2.0}}, "LX*0", Valid(14.0)}),
    Row_Name<TSubstitutionRow>);

INSTANTIATE_TEST_SUITE_P(
    Case, TExpression_Substitution,
    ::testing::Values(
        TSubstitutionRow{"Lower_name", {{"lx", 2.0}}, "LX", Valid(2.0)},
        TSubstitutionRow{"Lower_text", {{"LX", 2.0}}, "lx", Valid(2.0)},
        TSubstitutionRow{"Umlaut", {{QString::fromUtf8("Ä"), 2.0}}, QString::fromUtf8("ä"), Valid(2.0)},
        TSubstitutionRow{"Sharp_s", {{QString::fromUtf8("maß"), 2.0}}, QString::fromUtf8("Maß"), Valid(2.0)},
        TSubstitutionRow{"Sharp_s_as_two", {{QString::fromUtf8("maß"), 2.0}}, "MASS", Valid(2.0)},
        TSubstitutionRow{"Greek", {{QString::fromUtf8("α"), 2.0}}, QString::fromUtf8("Α"), Valid(2.0)},
        TSubstitutionRow{"Final_sigma", {{QString::fromUtf8("ς"), 2.0}}, QString::fromUtf8("σ"), Valid(2.0)},
        TSubstitutionRow{"Micro_and_mu", {{QString::fromUtf8("\u00b5"), 2.0}}, QString::fromUtf8("\u03bc"), Valid(2.0)},
        TSubstitutionRow{"Long_s_in_a_function", {}, QString::fromUtf8("ſqrt(4)"), Valid(2.0)}),
    Row_Name<TSubstitutionRow>);

INSTANTIATE_TEST_SUITE_P(
    Regular_Expressions, TExpression_Substitution,
    ::testing::Values(
        TSubstitutionRow{"Any_character", {{"A.B", 2.0}}, "AxB", Valid(2.0)},
        TSubstitutionRow{"Repetition", {{"A+", 2.0}}, "AAA*3", Valid(6.0)},
        TSubstitutionRow{"Set", {{"[AB]", 2.0}}, "A+B", Valid(4.0)},
        TSubstitutionRow{"Alternatives", {{"A|B", 2.0}}, "A*B", Valid(4.0)},
        TSubstitutionRow{"Alternatives_bind_the_boundaries", {{"A|B", 2.0}}, "XB", INVALID},
        TSubstitutionRow{"Upper_case_class", {{"A\\d", 2.0}}, "AX", Valid(2.0)},
        TSubstitutionRow{"Unbalanced_name_is_never_met", {{"A(", 2.0}}, "A(3)", INVALID},
        TSubstitutionRow{"Empty_match", {{"^Y*|X", 2.5}}, "7*2", Valid(5.0)},
        TSubstitutionRow{"Empty_matches", {{"X*", 2.0}}, "3", INVALID},
        TSubstitutionRow{"Match_in_a_blank_text", {{"X|Y*|Z", 2.0}}, " ", Valid(2.0)},
        TSubstitutionRow{"No_match_in_an_empty_text", {{"X|Y*|Z", 2.0}}, "", INVALID},
        TSubstitutionRow{"Beginning_of_the_text", {{"^A|^B", 2.0}}, "A*B", INVALID},
        TSubstitutionRow{
            "Not_a_number_has_no_parentheses", {{"ABCDEF", NOT_A_NUMBER}, {"^...$", 5.0}}, "ABCDEF", Valid(5.0)},
        TSubstitutionRow{"Place_marker_in_a_name", {{"%1", 5.0}}, "3%1", Valid(35.0)},
        TSubstitutionRow{"Place_marker_between_letters", {{"A%1B", 5.0}}, "2*A%1B", Valid(10.0)},
        TSubstitutionRow{"Place_markers_in_order", {{"A%2%1B", -5.0}}, "2*A%2%1B", Valid(-10.0)},
        TSubstitutionRow{"Beyond_the_plane", {{QString::fromUtf8("A😀B"), 2.0}}, QString::fromUtf8("A😀B"), Valid(2.0)}),
    Row_Name<TSubstitutionRow>);

TEST(TExpression, Replaces_thousands_of_matches)
{
    const TExpression expression = Expression_With({{"A", 0.5}, {"B", -0.5}});

    EXPECT_EQ(Evaluated(expression, "0" + QString("+A-B").repeated(DEEP), true), Valid(DEEP));
}

TEST(TExpression, Never_meets_a_pattern_of_excessive_size)
{
    const QString nested = QString("(").repeated(DEEP) + "A" + QString(")").repeated(DEEP);

    EXPECT_EQ(Evaluated(Expression_With({{nested, 2.0}}), "A", false), INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{"((A{1,900}){900}){900,}", 2.0}}), "A", false), INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{"((A{0,900}){900}){900}", 2.0}}), "A", false), INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{"A{1,99}", 2.0}}), "AAA", true), Valid(2.0));
    EXPECT_EQ(Evaluated(Expression_With({{QString(DEEP, 'A'), 2.0}}), QString(DEEP, 'a'), true), Valid(2.0));
}

TEST(TExpression, Never_meets_a_pattern_that_looks_around_too_often)
{
    EXPECT_EQ(Evaluated(Expression_With({{QString("(?=").repeated(40), 2.0}}), "A", false), INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{QString("(?!B").repeated(5) + ")))))A", 2.0}}), "A", false), INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{"(?=A)(?=A)(?!B)(?!C)A", 2.0}}), "A", true), Valid(2.0));
    EXPECT_EQ(Evaluated(Expression_With({{R"((?:^|$|\b|\B))" + QString(R"((?:^|$|\b|\B))").repeated(30) + "X", 2.0}}),
                        "X", false),
              INVALID);
    EXPECT_EQ(Evaluated(Expression_With({{QString("^").repeated(32) + "X", 2.0}}), "X", true), Valid(2.0));
    EXPECT_EQ(Evaluated(Expression_With({{QString("^").repeated(33) + "X", 2.0}}), "X", false), INVALID);
    const QString looks_for_each = "(?:(?!(?:(?![X-]*[ZQ])[X-])*[ZQ])[X-])*[ZQ]|Y";
    EXPECT_EQ(Evaluated(Expression_With({{looks_for_each, 2.0}}), QString("X-").repeated(200) + "Y", false), INVALID);
}

TEST(TExpression, Never_meets_an_unlimited_pattern_in_a_long_text)
{
    const TExpression expression = Expression_With({{"B.*C", 2.0}, {"A", 1.0}});

    EXPECT_EQ(Evaluated(expression, "0" + QString("+A").repeated(DEEP) + "+BXC", false), INVALID);
    EXPECT_EQ(Evaluated(expression, "0" + QString("+A").repeated(2000) + "+BXC", true), Valid(2002.0));
}

struct TNameRow
{
    const char* name;
    QString variable;
    QString met; ///< a text that the variable stands for
};

class TExpression_Long_Texts : public ::testing::TestWithParam<TNameRow>
{};

TEST_P(TExpression_Long_Texts, Meet_the_names_that_people_use)
{
    constexpr int LENGTH = 50000;
    const TExpression expression = Expression_With({{GetParam().variable, -2.0}, {"L", 1.0}});
    const int others = (LENGTH - GetParam().met.size()) / 2;
    const QString text = QString("L+").repeated(others) + GetParam().met;

    EXPECT_EQ(Evaluated(expression, text, true), Valid(others - 2.0));
}

INSTANTIATE_TEST_SUITE_P(
    Names, TExpression_Long_Texts,
    ::testing::Values(TNameRow{"Word", "Temp", "TEMP"}, TNameRow{"Dash", "a-b", "A-B"},
                      TNameRow{"Long_with_dashes", QString("a-b_").repeated(600), QString("A-B_").repeated(600)},
                      TNameRow{"Comma_before_digits", "a,3000", "A,3000"}, TNameRow{"Point", "a.b", "A.B"},
                      TNameRow{"Long_with_points", QString("Abc.").repeated(40), QString("ABC.").repeated(39) + "ABC1"},
                      TNameRow{"Count", "x{2}", "XX"}, TNameRow{"Counts", "x{1,3}", "XX"}, TNameRow{"Plus", "T+", "TT"},
                      TNameRow{"Sum", "a+b", "AAB"}, TNameRow{"Product", "M*a", "MMA"},
                      TNameRow{"Alternatives", "a|b", "B"}, TNameRow{"Parentheses", "u(x)", "UX"}),
    Row_Name<TNameRow>);

TEST(TExpression, Is_invalid_where_patterns_outgrow_the_memory)
{
    TExpression expression;
    for (char letter = 'A'; letter <= 'H'; ++letter) {
        expression.Add_Variable(QChar(letter) + QString("||"), 2.5);
    }

    EXPECT_EQ(Evaluated(expression, "A||+B||+C||", false), INVALID);
}

TEST(TExpression, Writes_and_reads_numbers_with_a_point_under_every_locale)
{
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German));
    const TLiteralResult result = Evaluated(Expression_With({{"A", 1234.5}}), "A*2.5", true);
    QLocale::setDefault(previous);

    EXPECT_EQ(result, Valid(3086.25));
}

TEST(TExpression, Keeps_its_variables_and_nothing_else_between_evaluations)
{
    const TExpression expression = Expression_With({{"A", 2.0}});

    EXPECT_EQ(Evaluated(expression, "A+(", false), INVALID);
    EXPECT_EQ(Evaluated(expression, "A+1", true), Valid(3.0));
    EXPECT_EQ(Evaluated(expression, "A+1", true), Valid(3.0));
    EXPECT_EQ(Listed(expression), "A=2");
}

TEST(TExpression, Serves_evaluations_side_by_side)
{
    const TExpression expression = Expression_With({{"A", 2.0}, {"B+", -3.0}});
    const auto sum = [&expression](const QString& text) {
        double total = 0.0;
        for (int count = 0; count < 2000; ++count) {
            total += expression.Evaluate(text, nullptr);
        }
        return total;
    };
    std::future<double> other = std::async(std::launch::async, sum, "A*BB+SUMSQ(A+1,4)");

    EXPECT_EQ(sum("A+SQRT(A*2)"), 8000.0);
    EXPECT_EQ(other.get(), -2000.0);
}

// Steps of the evaluation

TEST(TExpression, Processes_a_text_as_it_stands)
{
    EXPECT_EQ(Processed("1+2", true), Valid(3.0));
    EXPECT_EQ(Processed("sqrt(4)+SumSq(3,4)", true), Valid(7.0));
    EXPECT_EQ(Processed(QString::fromUtf8("ſQrt(4)"), true), Valid(2.0));
    EXPECT_EQ(Processed("1 + 2", false), INVALID);
    EXPECT_EQ(Processed("", false), INVALID);
}

TEST(TExpression, Processes_a_text_without_a_flag)
{
    EXPECT_EQ(TExpression().Process_Expression("2*(1+2)", nullptr), 6.0);
    EXPECT_EQ(TExpression().Process_Expression("2*(1+2", nullptr), 0.0);
}

struct TFunctionRow
{
    const char* name;
    const char* text;
    TLiteralResult expected;
    int length;
};

class TExpression_Functions : public ::testing::TestWithParam<TFunctionRow>
{};

constexpr int UNTOUCHED = 77;

TEST_P(TExpression_Functions, Are_as_tabled)
{
    const TFunctionRow& row = GetParam();
    TLiteralResult result = {-1.0, !row.expected.valid};
    int length = UNTOUCHED;

    result.value = TExpression().Process_Function(row.text, &length, &result.valid);
    EXPECT_EQ(result, row.expected);
    EXPECT_EQ(length, row.length);
}

INSTANTIATE_TEST_SUITE_P(Rows, TExpression_Functions,
                         ::testing::Values(TFunctionRow{"Root", "SQRT(16)", Valid(4.0), 7},
                                           TFunctionRow{"Root_before_more", "SQRT(16)+1)", Valid(4.0), 7},
                                           TFunctionRow{"Sum", "SUMSQ(3,4)*2", Valid(5.0), 9},
                                           TFunctionRow{"Lower_case_root", "sqrt(16)", Valid(4.0), 7},
                                           TFunctionRow{"Lower_case_sum", "sumsq(3,4)", Valid(5.0), 9},
                                           TFunctionRow{"Nested", "SQRT(2*(1+1))-1", Valid(2.0), 12},
                                           TFunctionRow{"Leading_group", "SQRT((1+2)*3)", INVALID, 9},
                                           TFunctionRow{"Empty_root", "SQRT()", INVALID, 5},
                                           TFunctionRow{"Empty_sum", "SUMSQ()", INVALID, 6},
                                           TFunctionRow{"Invalid_argument", "SQRT(X)", INVALID, 6},
                                           TFunctionRow{"Invalid_first_part", "SUMSQ(X,3)", Valid(3.0), 9},
                                           TFunctionRow{"Invalid_last_part", "SUMSQ(3,X)", {3.0, false}, 9},
                                           TFunctionRow{"Endless_first_part", "SUMSQ((1,2)", INVALID, 10},
                                           TFunctionRow{"Not_closed", "SQRT(4", INVALID, UNTOUCHED},
                                           TFunctionRow{"Opened_only", "SUMSQ(", INVALID, UNTOUCHED},
                                           TFunctionRow{"Leading_group_not_closed", "SQRT((4", INVALID, UNTOUCHED},
                                           TFunctionRow{"Not_at_the_beginning", "1+SQRT(4)", INVALID, UNTOUCHED},
                                           TFunctionRow{"Other_function", "SIN(4)", INVALID, UNTOUCHED},
                                           TFunctionRow{"Comma", ",3", INVALID, UNTOUCHED},
                                           TFunctionRow{"Empty", "", INVALID, UNTOUCHED}),
                         Row_Name<TFunctionRow>);

struct TOperatorRow
{
    const char* name;
    int code;
    int precedence;
    double seven_and_two;
};

class TExpression_Operators : public ::testing::TestWithParam<TOperatorRow>
{};

TEST_P(TExpression_Operators, Have_their_precedence)
{
    EXPECT_EQ(TExpression().Operator_Precidence(GetParam().code), GetParam().precedence);
}

TEST_P(TExpression_Operators, Take_their_operands_from_the_stacks)
{
    std::stack<double> numbers({1.0, 7.0, 2.0});
    std::stack<int> operators({'-', GetParam().code});

    EXPECT_EQ(TExpression().Apply_Expression(&numbers, &operators), GetParam().seven_and_two);
    EXPECT_EQ(numbers, std::stack<double>({1.0}));
    EXPECT_EQ(operators, std::stack<int>({'-'}));
}

INSTANTIATE_TEST_SUITE_P(Rows, TExpression_Operators,
                         ::testing::Values(TOperatorRow{"Plus", 43, 1, 9.0}, TOperatorRow{"Minus", 45, 1, 5.0},
                                           TOperatorRow{"Times", 42, 2, 14.0}, TOperatorRow{"By", 47, 2, 3.5},
                                           TOperatorRow{"Power", 94, 3, 49.0}, TOperatorRow{"Percent", '%', 0, 0.0},
                                           TOperatorRow{"Zero", 0, 0, 0.0},
                                           TOperatorRow{"Plus_in_the_low_byte", 43 + 256, 0, 0.0}),
                         Row_Name<TOperatorRow>);

struct TBraceRow
{
    const char* name;
    QString text;
    int start;
    int closing;
};

class TExpression_Closing_Brace : public ::testing::TestWithParam<TBraceRow>
{};

TEST_P(TExpression_Closing_Brace, Is_found)
{
    EXPECT_EQ(TExpression().Find_Closing_Brace(GetParam().text, GetParam().start), GetParam().closing);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TExpression_Closing_Brace,
    ::testing::Values(TBraceRow{"Partner", "(1+2)", 0, 4}, TBraceRow{"Outer_partner", "((1))", 0, 4},
                      TBraceRow{"Inner_partner", "((1))", 1, 3}, TBraceRow{"Second_group", "(1)*(2)", 4, 6},
                      TBraceRow{"Behind_the_opening", "SQRT(4)", 5, 6}, TBraceRow{"Over_a_group", "1+(2)*3)", 0, 7},
                      TBraceRow{"Opening_at_the_start", "SQRT((1+2)*3)", 5, 9}, TBraceRow{"At_the_start", ")", 0, 0},
                      TBraceRow{"Not_closed", "(1", 0, -1}, TBraceRow{"Closed_too_rarely", "((1)", 0, -1},
                      TBraceRow{"Nothing_to_close", "1+2", 0, -1}, TBraceRow{"Closed_before", "(1)+2", 3, -1},
                      TBraceRow{"Empty", "", 0, -1}, TBraceRow{"At_the_end", "()", 2, -1},
                      TBraceRow{"Behind_the_end", "(1)", 5, -1}, TBraceRow{"Before_the_beginning", "(1)", -1, -1},
                      TBraceRow{"Parentheses_in_the_low_byte",
                                QString("(") + QChar(0x0128) + QChar(0x0129) + QChar(0x0129) + ")", 0, 4}),
    Row_Name<TBraceRow>);

// Depth and length

/// The text is made of a head, something many times, a middle, something as many times, and a tail.
struct TDeepRow
{
    const char* name;
    const char* head;
    const char* many;
    const char* middle;
    const char* as_many;
    const char* tail;
    TLiteralResult expected;
};

class TExpression_Depth : public ::testing::TestWithParam<TDeepRow>
{};

TEST_P(TExpression_Depth, Ends)
{
    const TDeepRow& row = GetParam();
    const QString text =
        row.head + QString(row.many).repeated(DEEP) + row.middle + QString(row.as_many).repeated(DEEP) + row.tail;

    EXPECT_EQ(Evaluated(TExpression(), text, row.expected.valid), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Nested, TExpression_Depth,
    ::testing::Values(TDeepRow{"Groups", "", "(", "2", ")", "", Valid(2.0)},
                      TDeepRow{"Groups_behind_operators", "", "1+(", "1", ")", "", Valid(DEEP + 1.0)},
                      TDeepRow{"Groups_before_operators", "", "0+(", "1", "+1)", "", Valid(DEEP + 1.0)},
                      TDeepRow{"Roots", "", "SQRT(", "1", ")", "", Valid(1.0)},
                      TDeepRow{"Sums", "", "SUMSQ(", "-3", ")", "", Valid(3.0)},
                      TDeepRow{"Mixed", "", "SUMSQ(0+(SQRT(1*", "1", ")))", "", Valid(1.0)},
                      TDeepRow{"Invalid_innermost", "", "(", "X", ")", "", INVALID},
                      TDeepRow{"Invalid_innermost_of_a_first_part", "SUMSQ(0+", "(", "X", ")", ",3)", Valid(3.0)},
                      TDeepRow{"Sums_parted_by_a_comma", "", "SUMSQ(", "1,2", ")", "", INVALID},
                      TDeepRow{"Empty_groups", "", "(", "", ")", "", INVALID}),
    Row_Name<TDeepRow>);

INSTANTIATE_TEST_SUITE_P(
    Unbalanced, TExpression_Depth,
    ::testing::Values(TDeepRow{"Opening", "", "(", "", "", "", INVALID},
                      TDeepRow{"Opening_before_a_number", "", "(", "1", "", "", INVALID},
                      TDeepRow{"Opening_behind_operators", "", "1+(", "1", "", "", INVALID},
                      TDeepRow{"One_closing_too_few", "(", "(", "1", ")", "", INVALID},
                      TDeepRow{"One_closing_too_many", "", "(", "1", ")", ")", INVALID},
                      TDeepRow{"Closing", "", ")", "", "", "", INVALID},
                      TDeepRow{"Roots", "", "SQRT(", "", "", "", INVALID},
                      TDeepRow{"Sums", "", "SUMSQ(", "", "", "", INVALID},
                      TDeepRow{"Sums_of_groups", "", "SUMSQ((", "", "", "", INVALID},
                      TDeepRow{"Roots_of_groups", "", "SQRT((", "1", "))", "", INVALID},
                      TDeepRow{"Groups_before_an_open_one", "", "(1)+", "(1", "", "", INVALID},
                      TDeepRow{"Endless_parts", "SUMSQ(", "0+(1,", "2", ")", ",3)", INVALID},
                      TDeepRow{"Invalid_open_parts", "SUMSQ(", "0+(X,", "2", ")", ",3)", Valid(3.0)},
                      TDeepRow{"Invalid_open_groups_in_a_part", "SUMSQ(0+", "(", "X,3", ")", ",4)", Valid(4.0)},
                      TDeepRow{"Sums_of_endless_groups", "SUMSQ(", "((((1,", "2", "))))", ",3)", INVALID}),
    Row_Name<TDeepRow>);

INSTANTIATE_TEST_SUITE_P(Long, TExpression_Depth,
                         ::testing::Values(TDeepRow{"Sum", "1", "+1", "", "", "", Valid(DEEP + 1.0)},
                                           TDeepRow{"Powers", "1", "^1", "", "", "", Valid(1.0)},
                                           TDeepRow{"Rising_precedences", "0", "+1*1^1", "", "", "", Valid(DEEP)},
                                           TDeepRow{"Functions", "0", "+SQRT(1)", "", "", "", Valid(DEEP)},
                                           TDeepRow{"Groups_that_replace_each_other", "", "(1)", "", "", "",
                                                    Valid(1.0)},
                                           TDeepRow{"Parts", "SUMSQ(2", ",0", ")", "", "", Valid(2.0)},
                                           TDeepRow{"Empty_parts", "SUMSQ(", ",", "2)", "", "", Valid(2.0)},
                                           TDeepRow{"Digits", "", "0", "7", "", "", Valid(7.0)},
                                           TDeepRow{"Letters", "", "A", "", "", "", INVALID}),
                         Row_Name<TDeepRow>);

TEST(TExpression, Evaluates_a_hundred_thousand_nested_groups)
{
    const QString text = QString("1+(").repeated(DEEP) + "1" + QString(")").repeated(DEEP);

    EXPECT_EQ(Evaluated(TExpression(), text, true), Valid(DEEP + 1.0));
}

// Comparison with the literal rules

namespace {

struct TRandomTexts
{
    const char* name;
    std::vector<TExpression::TVariable> variables;
};

void PrintTo(const TRandomTexts& row, std::ostream* stream)
{
    *stream << row.name;
}

/// The same result from both, and the number of valid ones added up.
void Compare(const TExpression& expression, const TVariables& variables, const QString& text, int* valid_count)
{
    const TLiteralResult expected = Literal_Evaluate(text, variables);

    EXPECT_EQ(Evaluated(expression, text, expected.valid), expected) << text.toStdString();
    EXPECT_EQ(Processed(text, Literal_Process_Expression(text).valid), Literal_Process_Expression(text))
        << text.toStdString();
    *valid_count += expected.valid ? 1 : 0;
}

} // namespace

class TExpression_Random_Texts : public ::testing::TestWithParam<TRandomTexts>
{
protected:
    const TExpression d_expression = Expression_With(GetParam().variables);
    const TVariables d_variables = Variables_Of(d_expression);
};

TEST_P(TExpression_Random_Texts, Agree_with_the_literal_rules_as_expressions)
{
    TRandomExpression maker(20010203);
    int valid_count = 0;

    for (int count = 0; count < 6000 && !HasFailure(); ++count) {
        Compare(d_expression, d_variables, maker.Text(), &valid_count);
    }
    EXPECT_GT(valid_count, 2000);
    EXPECT_LT(valid_count, 5000);
}

TEST_P(TExpression_Random_Texts, Agree_with_the_literal_rules_as_jumbles)
{
    TRandomExpression maker(20040506);
    int valid_count = 0;

    for (int count = 0; count < 6000 && !HasFailure(); ++count) {
        Compare(d_expression, d_variables, maker.Jumble(), &valid_count);
    }
    EXPECT_GT(valid_count, 100);
}

TEST_P(TExpression_Random_Texts, Agree_with_the_literal_rules_with_any_character_of_ascii_anywhere)
{
    const QString text = "sqrt(l*(X+2.5))";
    int valid_count = 0;

    for (ushort code = 0; code < 128; ++code) {
        for (int position = 0; position <= text.size() && !HasFailure(); ++position) {
            Compare(d_expression, d_variables, QString(text).insert(position, QChar(code)), &valid_count);
        }
    }
    EXPECT_GT(valid_count, 100);
}

INSTANTIATE_TEST_SUITE_P(
    Names, TExpression_Random_Texts,
    ::testing::Values(TRandomTexts{"That_are_words",
                                   {{"X", -1.5}, {"L", 2.0}, {"lx", 3.0}, {"A_1", 0.25}, {"B", -0.0}, {"_", -4.0}}},
                      TRandomTexts{"With_a_pattern",
                                   {{"X", -1.5}, {"L", 2.0}, {"lx", 3.0}, {"A_1", 0.25}, {"B+", -0.0}, {"_", -4.0}}}),
    Row_Name<TRandomTexts>);

TEST(TExpression, Reads_digits_as_their_text_reads_however_many_there_are)
{
    constexpr int most_digits = 20;
    std::mt19937 random(20131415);

    for (int count = 0; count < 20000 && !HasFailure(); ++count) {
        QString text;
        while (text.size() < 1 + count % most_digits) {
            text += QChar('0' + static_cast<int>(random() % 10));
        }
        text.insert(static_cast<int>(random() % static_cast<unsigned>(text.size() + 1)), '.');
        bool is_number = false;
        const double number = text.toDouble(&is_number);

        EXPECT_EQ(Evaluated(TExpression(), text, is_number), (TLiteralResult{is_number ? number : 0.0, is_number}))
            << text.toStdString();
    }
}

TEST(TExpression, Agrees_with_the_literal_rules_on_random_functions)
{
    const QStringList openings = {"SQRT(", "SUMSQ(", "sumsq((", ""};
    TRandomExpression maker(20070809);

    for (int count = 0; count < 3000 && !HasFailure(); ++count) {
        const QString text = openings.at(maker.Below(4)) + maker.Text() + "," + maker.Text() + ")" + maker.Jumble();
        int expected_length = UNTOUCHED;
        int length = UNTOUCHED;
        const TLiteralResult expected = Literal_Process_Function(text, &expected_length);
        TLiteralResult result = {-1.0, !expected.valid};

        result.value = TExpression().Process_Function(text, &length, &result.valid);
        EXPECT_EQ(result, expected) << text.toStdString();
        EXPECT_EQ(length, expected_length) << text.toStdString();
    }
}

TEST(TExpression, Agrees_with_the_literal_rules_on_closing_parentheses)
{
    TRandomExpression maker(20101112);

    for (int count = 0; count < 500 && !HasFailure(); ++count) {
        const QString text = maker.Jumble() + maker.Text();

        for (int start = 0; start <= text.length(); ++start) {
            EXPECT_EQ(TExpression().Find_Closing_Brace(text, start), Literal_Find_Closing_Brace(text, start))
                << text.toStdString() << " from " << start;
        }
    }
}
