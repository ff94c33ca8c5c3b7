#include "core/expressionnames.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

namespace {

struct TNamesCase
{
    const char* name;
    QString expression;
    QStringList names;
};

void PrintTo(const TNamesCase& test, std::ostream* stream)
{
    *stream << test.name;
}

class ExpressionNames : public ::testing::TestWithParam<TNamesCase>
{};

TEST_P(ExpressionNames, Finds_the_variables_of_an_expression)
{
    EXPECT_EQ(Expression_Names(GetParam().expression), GetParam().names);
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, ExpressionNames,
    ::testing::Values(
        TNamesCase{
            "Words_that_begin_with_an_underscore_or_a_digit_are_dropped", "sqrt(sumsq(a1,b_2)*2)+_x+3y", {"a1", "b_2"}},
        TNamesCase{"Functions_are_recognised_in_any_case", "SQRT(a)+SumSq(b,c)", {"a", "b", "c"}},
        TNamesCase{"A_function_name_without_parenthesis_is_a_name", "sqrt*2", {"sqrt"}},
        TNamesCase{"The_end_of_a_word_is_a_function_too", "xsqrt(a)+ysumsq(b)", {"x", "a", "y", "b"}},
        TNamesCase{"Every_operator_separates", "a*b+c-d/e^f,g(h)", {"a", "b", "c", "d", "e", "f", "g", "h"}},
        TNamesCase{"The_first_of_equal_names_is_kept", "b+a+b+a", {"b", "a"}},
        TNamesCase{"Names_that_differ_in_case_are_different", "Var+var", {"Var", "var"}},
        TNamesCase{"Names_may_begin_with_any_letter",
                   QString::fromUtf8("\u00e4x*\u03b1+\u00d72"),
                   {QString::fromUtf8("\u00e4x"), QString::fromUtf8("\u03b1")}},
        TNamesCase{"A_letter_beyond_the_basic_plane_begins_a_name",
                   QString::fromUtf8("\U0001D6FC+1"),
                   {QString::fromUtf8("\U0001D6FC")}},
        TNamesCase{"A_leading_point_is_no_letter", ".5*.x", {}},
        TNamesCase{"White_space_separates", " a \t b ", {"a", "b"}},
        TNamesCase{"An_empty_expression_has_none", "", {}}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
