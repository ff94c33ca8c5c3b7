#include "core/errorlook.h"

#include "tests/support/qtprinters.h"

#include <QLineEdit>
#include <QTextDocumentFragment>

#include <gtest/gtest.h>

namespace {

QString Read_As_Markup(const QString& text)
{
    return QTextDocumentFragment::fromHtml(text).toPlainText();
}

class TErrorLookTest : public ::testing::Test
{
protected:
    TErrorLookTest() { d_editor.setToolTip("What goes here"); }

    bool Shows_Error() const { return d_editor.palette() != QLineEdit().palette(); }

    QLineEdit d_editor;
    TErrorLook d_look{&d_editor};
};

TEST_F(TErrorLookTest, Shows_the_reason_and_the_colours_of_an_error)
{
    d_look.Show("Not a number");

    EXPECT_TRUE(Shows_Error());
    EXPECT_EQ(d_editor.toolTip(), "Not a number");
}

TEST_F(TErrorLookTest, Shows_the_latest_reason)
{
    d_look.Show("Not a number");
    d_look.Show("Not a date");

    EXPECT_EQ(d_editor.toolTip(), "Not a date");
}

TEST_F(TErrorLookTest, An_empty_reason_brings_back_tool_tip_and_colours)
{
    d_look.Show("Not a number");
    d_look.Show("Not a date");
    d_look.Show(QString());

    EXPECT_FALSE(Shows_Error());
    EXPECT_EQ(d_editor.toolTip(), "What goes here");
}

TEST_F(TErrorLookTest, Without_an_error_nothing_changes)
{
    d_look.Show(QString());

    EXPECT_FALSE(Shows_Error());
    EXPECT_EQ(d_editor.toolTip(), "What goes here");
}

TEST_F(TErrorLookTest, A_reason_that_looks_like_markup_reads_as_it_is_written)
{
    d_look.Show("No variable <b>x</b>");

    EXPECT_EQ(Read_As_Markup(d_editor.toolTip()), "No variable <b>x</b>");
}

} // namespace
