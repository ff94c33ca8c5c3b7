#include "core/expressionwords.h"

#include "core/expression.h"
#include "core/number.h"
#include "tests/support/expressionvariables.h"
#include "tests/support/literalexpression.h"
#include "tests/support/qtprinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace {

constexpr int VALUE_DECIMALS = 16;

TLiteralResult Evaluated(const TExpression& expression, const QString& text)
{
    TLiteralResult result;

    result.value = expression.Evaluate(text, &result.valid);
    return result;
}

TLiteralResult Value_Of(double variable)
{
    TExpression expression;

    expression.Add_Variable("A", variable);
    return Evaluated(expression, "A");
}

/// The number that the text of the value reads as; of a negative one, which stands in parentheses, likewise.
TLiteralResult Read_Back(double variable)
{
    return {Fixed_Text(variable, VALUE_DECIMALS).toDouble(), true};
}

double Random_Number(std::mt19937_64* random)
{
    const quint64 bits = (*random)();
    double number = 0.0;

    std::memcpy(&number, &bits, sizeof number);
    return number;
}

} // namespace

// Values

class TExpressionWords_Values : public ::testing::TestWithParam<double>
{};

TEST_P(TExpressionWords_Values, Are_what_their_text_with_sixteen_decimals_reads_as)
{
    EXPECT_EQ(Value_Of(GetParam()), Read_Back(GetParam()));
    EXPECT_EQ(Value_Of(-GetParam()), Read_Back(-GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Everyday, TExpressionWords_Values,
                         ::testing::Values(0.0, 1.0, 0.1, 0.3, 11.5, 1.0 / 3.0, 0.5, 0.49999999999999994, 1e15, 2e16));
INSTANTIATE_TEST_SUITE_P(Ties, TExpressionWords_Values,
                         ::testing::Values(std::ldexp(1.0, -17), std::ldexp(3.0, -17), std::ldexp(1.0, -18) * 5.0,
                                           std::ldexp(1.0, -17) + 0.25));
INSTANTIATE_TEST_SUITE_P(Tiny, TExpressionWords_Values,
                         ::testing::Values(1e-15, 1e-16, 5.1e-17, 5e-17, 4.9e-17, 1e-20, 1e-40, 1e-300, 5e-324));
INSTANTIATE_TEST_SUITE_P(Huge, TExpressionWords_Values, ::testing::Values(1e17, 1.7976931348623157e308));

TEST(TExpressionWords, Take_random_values_as_their_texts_read)
{
    constexpr int count = 20000;
    std::mt19937_64 random(20261121);

    for (int index = 0; index < count; ++index) {
        const double fraction = std::ldexp(static_cast<double>(random() >> 11), -54 - index % 60);
        ASSERT_EQ(Value_Of(fraction), Read_Back(fraction)) << fraction;
    }
}

TEST(TExpressionWords, Take_values_of_any_size_as_their_texts_read)
{
    constexpr int count = 2000;
    std::mt19937_64 random(20261122);

    for (int index = 0; index < count; ++index) {
        const double value = Random_Number(&random);
        if (std::isfinite(value)) {
            ASSERT_EQ(Value_Of(value), Read_Back(value)) << value;
        }
    }
}

// Names

struct TNamesCase
{
    const char* name;
    QString text;
    std::vector<TExpression::TVariable> variables;
    TLiteralResult expected;
};

void PrintTo(const TNamesCase& row, std::ostream* stream)
{
    *stream << row.name;
}

class TExpressionWords_Names : public ::testing::TestWithParam<TNamesCase>
{};

TEST_P(TExpressionWords_Names, Are_met_as_tabled)
{
    EXPECT_EQ(Evaluated(Expression_With(GetParam().variables), GetParam().text), GetParam().expected);
}

TEST_P(TExpressionWords_Names, Are_met_as_by_the_literal_rules)
{
    const TExpression expression = Expression_With(GetParam().variables);

    EXPECT_EQ(Evaluated(expression, GetParam().text), Literal_Evaluate(GetParam().text, Variables_Of(expression)));
}

static std::string Case_Name(const ::testing::TestParamInfo<TNamesCase>& row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TExpressionWords_Names,
    ::testing::Values(
        TNamesCase{"in_any_case", "ctem*CTEM+cTeM", {{"CTEm", 3.0}}, {12.0, true}},
        TNamesCase{"whole_words", "L*LX+L_1", {{"L", 2.0}, {"LX", 3.0}, {"L_1", 5.0}}, {11.0, true}},
        TNamesCase{"not_in_longer_words", "L2", {{"L", 2.0}}, {0.0, false}},
        TNamesCase{"not_behind_digits", "2L", {{"L", 2.0}}, {0.0, false}},
        TNamesCase{"greek", "2*" + QString::fromUtf8("Δϑ"), {{QString::fromUtf8("δΘ"), 4.0}}, {8.0, true}},
        TNamesCase{"micro_sign", QString::fromUtf8("µ+1"), {{QString::fromUtf8("µ"), 4.0}}, {5.0, true}},
        TNamesCase{"sharp_s_as_two_letters", "GROSS", {{QString::fromUtf8("groß"), 4.0}}, {4.0, true}},
        TNamesCase{"sharp_s_behind_the_name_added_first",
                   QString::fromUtf8("groß"),
                   {{QString::fromUtf8("groß"), 4.0}, {"gross", 5.0}},
                   {5.0, true}},
        TNamesCase{"ascii_beside_greek", "A*B", {{"A", 2.0}, {QString::fromUtf8("Ω"), 7.0}, {"B", 3.0}}, {6.0, true}},
        TNamesCase{"digits_as_a_name", "A+2", {{"A", 2.0}, {"2", 7.0}}, {0.0, false}},
        TNamesCase{"pattern_beside_words", "A+B", {{"A", 2.0}, {"[B]", 7.0}}, {9.0, true}},
        TNamesCase{"name_of_a_function", "SQRT(4)+1", {{"sqrt", 2.5}}, {5.0, true}},
        TNamesCase{"white_space_within", "C T E m + L", {{"CTEm", 3.0}, {"L", 1.0}}, {4.0, true}},
        TNamesCase{"first_of_two_cases", "a", {{"A", 1.0}, {"a", 2.0}}, {1.0, true}},
        TNamesCase{"first_of_two_cases_beyond_ascii",
                   QString::fromUtf8("ä"),
                   {{QString::fromUtf8("Ä"), 1.0}, {QString::fromUtf8("ä"), 2.0}},
                   {1.0, true}},
        TNamesCase{"longer_in_capitals",
                   QString::fromUtf8("ßß+abc"),
                   {{"abc", 1.0}, {QString::fromUtf8("ßß"), 4.0}},
                   {5.0, true}},
        TNamesCase{"mark", QString("A") + QChar(0x301) + "+1", {{QString("a") + QChar(0x301), 4.0}}, {5.0, true}},
        TNamesCase{"superscript", QString::fromUtf8("X²*2"), {{QString::fromUtf8("x²"), 3.0}}, {6.0, true}},
        TNamesCase{"point_in_front_of_a_value", ".A", {{"A", 2.0}}, {0.0, false}},
        TNamesCase{"point_in_front_of_a_negative_value", ".A", {{"A", -2.0}}, {-2.0, true}},
        TNamesCase{"sign_in_front_of_a_value", "-A", {{"A", 2.0}}, {-2.0, true}},
        TNamesCase{"sign_in_front_of_a_negative_value", "-A", {{"A", -2.0}}, {-2.0, true}},
        TNamesCase{"negative_value_first_in_a_function", "SQRT(A*2)", {{"A", -2.0}}, {0.0, false}},
        TNamesCase{"negative_value_later_in_a_function", "SQRT(2*A)", {{"A", -8.0}}, {std::sqrt(-16.0), true}},
        TNamesCase{"infinite_value", "A", {{"A", HUGE_VAL}}, {0.0, false}},
        TNamesCase{"negative_infinite_value_in_a_sum", "SUMSQ(1*A,3)", {{"A", -HUGE_VAL}}, {3.0, true}},
        TNamesCase{"no_number_in_a_sum", "SUMSQ(A,3)", {{"A", std::nan("")}}, {3.0, true}}),
    Case_Name);

namespace {

constexpr int LONGEST_NAME = 13;

QString With_Character(int size, int position, QChar character)
{
    return QString(size, 'A').replace(position, 1, character);
}

} // namespace

TEST(TExpressionWords, An_empty_name_is_none)
{
    const std::vector<TExpression::TVariable> variables = {{"A", 1.0}, {"", 2.0}};

    EXPECT_FALSE(TExpressionWords(variables).Are_Words());
}

TEST(TExpressionWords, Tell_a_pattern_by_its_sign_wherever_it_stands)
{
    for (int size = 1; size <= LONGEST_NAME; ++size) {
        for (int position = 0; position < size; ++position) {
            const TExpression expression = Expression_With({{With_Character(size, position, '.'), 5.0}});

            EXPECT_EQ(Evaluated(expression, With_Character(size, position, 'B')), (TLiteralResult{5.0, true}))
                << size << " characters, the point at " << position;
        }
    }
}

TEST(TExpressionWords, Hold_digits_and_underscores_anywhere_behind_the_first_letter)
{
    for (const QChar character : {'0', '9', '_', 'z'}) {
        for (int size = 2; size <= LONGEST_NAME; ++size) {
            for (int position = 1; position < size; ++position) {
                const QString name = With_Character(size, position, character);

                EXPECT_EQ(Evaluated(Expression_With({{name, 5.0}, {"B", 2.0}}), name.toLower() + "*b"),
                          (TLiteralResult{10.0, true}))
                    << name.toStdString();
            }
        }
    }
}

TEST(TExpressionWords, Are_met_with_a_digit_in_front_too)
{
    for (int size = 1; size <= LONGEST_NAME; ++size) {
        const QString name = With_Character(size, 0, '7');

        EXPECT_EQ(Evaluated(Expression_With({{name, -3.0}}), name), (TLiteralResult{-3.0, true})) << name.toStdString();
    }
}
