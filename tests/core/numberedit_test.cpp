#include "core/numberedit.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QLocale>
#include <QTest>

#include <gtest/gtest.h>

namespace {

const char* const COMMA_HINT = "Not a number, counts as 0: use a point as decimal separator, not a comma.";
const char* const PLAIN_HINT = "Not a number, counts as 0: write digits with a point as decimal separator.";

class TNumberEditTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        d_edit.setToolTip("The scale's resolution");
        d_edit.Set_Value(0.001, 6);
        Show_Active(&d_edit);
    }

    bool Shows_Error() const { return d_edit.palette().color(QPalette::Base) == QColor(255, 224, 220); }

    TNumberEdit d_edit;
};

TEST_F(TNumberEditTest, Set_Value_shows_the_number_with_the_decimals_asked_for)
{
    EXPECT_EQ(d_edit.text(), "0.001000");
    EXPECT_EQ(d_edit.Value(), 0.001);
    EXPECT_FALSE(Shows_Error());
}

TEST_F(TNumberEditTest, Value_is_the_number_typed)
{
    Replace_Text(&d_edit, "-12.5");

    EXPECT_EQ(d_edit.Value(), -12.5);
    EXPECT_FALSE(Shows_Error());
    EXPECT_EQ(d_edit.toolTip(), "The scale's resolution");
}

TEST_F(TNumberEditTest, A_comma_counts_as_0_and_the_tool_tip_says_to_use_a_point)
{
    Replace_Text(&d_edit, "12,5");

    EXPECT_EQ(d_edit.Value(), 0.0);
    EXPECT_TRUE(Shows_Error());
    EXPECT_EQ(d_edit.toolTip(), COMMA_HINT);
}

TEST_F(TNumberEditTest, A_text_that_is_no_number_counts_as_0_and_is_shown_as_an_error)
{
    for (const char* text : {"ten", "1e999", "nan", "-"}) {
        Replace_Text(&d_edit, text);

        EXPECT_EQ(d_edit.Value(), 0.0) << text;
        EXPECT_TRUE(Shows_Error()) << text;
        EXPECT_EQ(d_edit.toolTip(), PLAIN_HINT) << text;
    }
}

TEST_F(TNumberEditTest, An_emptied_field_counts_as_0_and_is_shown_as_an_error)
{
    Replace_Text(&d_edit, "");

    EXPECT_EQ(d_edit.Value(), 0.0);
    EXPECT_TRUE(Shows_Error());
}

TEST_F(TNumberEditTest, The_error_goes_with_its_cause)
{
    Replace_Text(&d_edit, "1,5");
    QTest::keyClick(&d_edit, Qt::Key_Home);
    QTest::keyClick(&d_edit, Qt::Key_Right);
    QTest::keyClick(&d_edit, Qt::Key_Delete);
    Type_Text(&d_edit, ".");

    EXPECT_EQ(d_edit.Value(), 1.5);
    EXPECT_FALSE(Shows_Error());
    EXPECT_EQ(d_edit.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));
    EXPECT_EQ(d_edit.toolTip(), "The scale's resolution");
}

TEST_F(TNumberEditTest, The_error_goes_when_the_program_shows_a_number)
{
    Replace_Text(&d_edit, "1,5");

    d_edit.Set_Value(1.5, 2);

    EXPECT_EQ(d_edit.text(), "1.50");
    EXPECT_FALSE(Shows_Error());
    EXPECT_EQ(d_edit.toolTip(), "The scale's resolution");
}

TEST_F(TNumberEditTest, The_point_is_the_separator_under_a_locale_with_a_comma)
{
    QLocale::setDefault(QLocale(QLocale::German));
    TNumberEdit edit;
    edit.Set_Value(1234.5, 2);
    const QString shown = edit.text();
    edit.setText("12,5");
    const double comma = edit.Value();
    edit.setText("12.5");
    const double point = edit.Value();
    QLocale::setDefault(QLocale::c());

    EXPECT_EQ(shown, "1234.50");
    EXPECT_EQ(comma, 0.0);
    EXPECT_EQ(point, 12.5);
}

TEST_F(TNumberEditTest, The_hint_follows_the_text_from_one_error_to_the_next)
{
    Replace_Text(&d_edit, "1,5");
    Replace_Text(&d_edit, "x");
    EXPECT_EQ(d_edit.toolTip(), PLAIN_HINT);

    Replace_Text(&d_edit, "2");
    EXPECT_EQ(d_edit.toolTip(), "The scale's resolution");
}

TEST_F(TNumberEditTest, Error_text_is_dark_on_light_in_a_dark_theme_too)
{
    const QPalette plain = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40), QColor(30, 30, 30)));

    Replace_Text(&d_edit, "x");

    EXPECT_EQ(d_edit.palette().color(QPalette::Text), QColor(139, 0, 0));
    EXPECT_EQ(d_edit.palette().color(QPalette::Base), QColor(255, 224, 220));
    QApplication::setPalette(plain);
}

} // namespace
