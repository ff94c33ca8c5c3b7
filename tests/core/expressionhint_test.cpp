#include "core/expressionhint.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct THint
{
    const char* name;
    QString expression;
    bool is_valid;
    QStringList undefined_names;
};

void PrintTo(const THint& hint, std::ostream* stream)
{
    *stream << hint.expression.toStdString();
}

class TExpressionHintTable : public ::testing::TestWithParam<THint>
{};

// With the variables L = 2, Td = 0.5, Loss = -1 and W.r = 1.
TEST_P(TExpressionHintTable, Tells_whether_it_evaluates_and_what_is_undefined)
{
    const TExpressionHint hint =
        Expression_Hint(GetParam().expression, {{"L", 2.0}, {"Td", 0.5}, {"Loss", -1.0}, {"W.r", 1.0}});

    EXPECT_EQ(hint.is_valid, GetParam().is_valid);
    EXPECT_EQ(hint.undefined_names, GetParam().undefined_names);
}

const THint HINTS[] = {
    {"A_number", "0.003", true, {}},
    {"Known_variables", "sqrt(L)*Td + SUMSQ(1, L)", true, {}},
    {"Known_variables_in_another_case", "l*TD*w.R", true, {}},
    {"An_unknown_variable", "2*Foo", false, {"Foo"}},
    {"Several_in_their_order", "Zeta+L*Alpha", false, {"Zeta", "Alpha"}},
    {"One_in_several_spellings_once", "Foo+FOO*foo", false, {"Foo"}},
    {"A_name_that_begins_with_a_known_one", "Lx", false, {"Lx"}},
    {"A_name_in_a_part_that_counts_as_0", "SUMSQ(Foo, 3)", true, {"Foo"}},
    {"A_name_in_the_last_part", "SUMSQ(3, Foo)", false, {"Foo"}},
    {"An_open_parenthesis", "(1+2", false, {}},
    {"An_open_parenthesis_and_an_unknown_variable", "(Foo+2", false, {"Foo"}},
    {"An_operator_without_its_operand", "2+", false, {}},
    {"An_exponent_is_no_name", "1E3", false, {}},
    {"A_word_that_begins_with_a_digit_is_no_name", "3L", false, {}},
    {"A_word_that_begins_with_an_underscore_is_no_name", "_x", false, {}},
    {"A_function_begun", "sqr", false, {"sqr"}},
    {"A_function_without_its_parenthesis_is_no_variable", "SQRT", false, {}},
    {"A_function_parted_from_its_parenthesis", "sqrt (4) + sumsq (3)", true, {}},
    {"A_negative_value_behind_an_operator", "2*Loss", true, {}},
    {"A_negative_value_first_in_a_function", "sqrt(Loss*2)", false, {}},
    {"A_result_that_is_no_number", "sqrt(0-4)", true, {}},
    {"A_division_by_zero", "1/0", true, {}},
    {"Nothing", "", false, {}},
    {"Blanks", "   ", false, {}},
    {"A_name_beyond_ASCII", "2*\u00c4x", false, {"\u00c4x"}},
};

INSTANTIATE_TEST_SUITE_P(TExpressionHint, TExpressionHintTable, ::testing::ValuesIn(HINTS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TExpressionHint, Is_without_complaint_at_first)
{
    EXPECT_TRUE(TExpressionHint().is_valid);
    EXPECT_EQ(TExpressionHint().undefined_names, QStringList());
}

TEST(TExpressionHint, Without_variables_every_name_is_undefined)
{
    EXPECT_EQ(Expression_Hint("L*Td", {}).undefined_names, QStringList({"L", "Td"}));
}

TEST(TExpressionHint, Ends_for_the_longest_text_that_a_line_editor_takes)
{
    EXPECT_FALSE(Expression_Hint(QString(32767, '('), {{"L", 1.0}}).is_valid);
    EXPECT_EQ(Expression_Hint(QString("L+").repeated(16383) + "x", {{"L", 1.0}}).undefined_names, QStringList("x"));
}

} // namespace
