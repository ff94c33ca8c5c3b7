#include "src/expressionedit.h"

#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QTextDocumentFragment>

#include <gtest/gtest.h>

namespace {

const char* const OWN_TOOL_TIP = "The uncertainty of the item";

class TExpressionEditTest : public ::testing::Test
{
protected:
    TExpressionEditTest()
    {
        d_edit.setToolTip(OWN_TOOL_TIP);
        d_edit.setText("2*Foo");
    }

    QString Tool_Tip_For(bool is_valid, const QStringList& undefined_names)
    {
        d_edit.Set_Hint({is_valid, undefined_names});
        return d_edit.toolTip();
    }

    bool Shows_Error() const { return d_edit.palette().color(QPalette::Base) == QColor(255, 224, 220); }

    TExpressionEdit d_edit;
};

TEST_F(TExpressionEditTest, A_good_expression_has_the_plain_look)
{
    EXPECT_EQ(Tool_Tip_For(true, {}), OWN_TOOL_TIP);
    EXPECT_FALSE(Shows_Error());
}

TEST_F(TExpressionEditTest, An_invalid_expression_says_so)
{
    EXPECT_EQ(Tool_Tip_For(false, {}), "The expression cannot be evaluated.");
    EXPECT_TRUE(Shows_Error());
}

TEST_F(TExpressionEditTest, Undefined_variables_are_named)
{
    EXPECT_EQ(Tool_Tip_For(false, {"Foo", "Bar"}),
              "The expression cannot be evaluated.\nNothing defines these variables: Foo, Bar");
    EXPECT_TRUE(Shows_Error());
}

TEST_F(TExpressionEditTest, Undefined_variables_are_an_error_in_a_valid_expression_too)
{
    EXPECT_EQ(Tool_Tip_For(true, {"Foo"}), "Nothing defines these variables: Foo");
    EXPECT_TRUE(Shows_Error());
}

TEST_F(TExpressionEditTest, An_empty_expression_is_told_apart)
{
    for (const char* text : {"", "  ", "\u00a0"}) {
        d_edit.setText(text);

        EXPECT_EQ(Tool_Tip_For(false, {}), "An empty expression is refused: the one before comes back.");
        EXPECT_TRUE(Shows_Error());
    }
}

TEST_F(TExpressionEditTest, An_empty_editor_without_complaint_has_the_plain_look)
{
    d_edit.clear();

    EXPECT_EQ(Tool_Tip_For(true, {}), OWN_TOOL_TIP);
    EXPECT_FALSE(Shows_Error());
}

TEST_F(TExpressionEditTest, The_plain_look_comes_back_after_several_errors)
{
    d_edit.Set_Hint({false, {"Foo"}});
    d_edit.Set_Hint({false, {}});

    EXPECT_EQ(Tool_Tip_For(true, {}), OWN_TOOL_TIP);
    EXPECT_EQ(d_edit.palette(), QApplication::palette(&d_edit));
}

TEST_F(TExpressionEditTest, Many_variables_are_counted)
{
    const QStringList ten = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"};

    EXPECT_EQ(Tool_Tip_For(true, ten), "Nothing defines these variables: A, B, C, D, E, F, G, H, I, J");
    EXPECT_EQ(Tool_Tip_For(true, ten + QStringList({"K", "L"})),
              "Nothing defines these variables: A, B, C, D, E, F, G, H, I, J and 2 more");
}

TEST_F(TExpressionEditTest, A_long_name_is_cut)
{
    EXPECT_EQ(Tool_Tip_For(true, {QString(40, 'a')}), "Nothing defines these variables: " + QString(40, 'a'));
    EXPECT_EQ(Tool_Tip_For(true, {QString(41, 'a')}), "Nothing defines these variables: " + QString(40, 'a') + "...");
}

TEST_F(TExpressionEditTest, A_name_is_neither_markup_nor_a_format)
{
    const QString markup = Tool_Tip_For(true, {"a<b>c</b>", "%1"});

    EXPECT_EQ(QTextDocumentFragment::fromHtml(markup).toPlainText(), "Nothing defines these variables: a<b>c</b>, %1");
}

TEST_F(TExpressionEditTest, A_hint_leaves_the_text_alone)
{
    d_edit.setModified(true);
    d_edit.setCursorPosition(1);

    d_edit.Set_Hint({false, {"Foo"}});

    EXPECT_EQ(d_edit.text(), "2*Foo");
    EXPECT_EQ(d_edit.cursorPosition(), 1);
    EXPECT_TRUE(d_edit.isModified());
}

} // namespace
