#include "src/namedialog.h"

#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class TNameDialogTest : public ::testing::Test
{
protected:
    void Show() { Show_Active(&d_dialog); }

    QLineEdit* Edit() const { return Child<QLineEdit>(&d_dialog, "name_edit"); }
    QPushButton* Ok() const { return Child<QPushButton>(&d_dialog, "ok_button"); }
    QPushButton* Cancel() const { return Child<QPushButton>(&d_dialog, "cancel_button"); }

    TNameDialog d_dialog;
};

TEST_F(TNameDialogTest, Belongs_to_its_parent_and_takes_its_window_flags)
{
    QWidget parent;
    const TNameDialog dialog(&parent, Qt::WindowStaysOnTopHint);

    EXPECT_EQ(dialog.parentWidget(), &parent);
    EXPECT_TRUE(dialog.isWindow());
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(TNameDialogTest, Is_315_by_100_pixels)
{
    EXPECT_EQ(d_dialog.size(), QSize(315, 100));
}

TEST_F(TNameDialogTest, Has_the_label_and_the_line_edit_in_the_first_row_and_the_buttons_below)
{
    const auto* grid = qobject_cast<QGridLayout*>(d_dialog.layout());
    ASSERT_NE(grid, nullptr);

    const auto* label = qobject_cast<QLabel*>(grid->itemAtPosition(0, 0)->widget());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Name");
    EXPECT_EQ(label->buddy(), Edit());
    EXPECT_EQ(grid->itemAtPosition(0, 1)->widget(), Edit());

    const QLayout* buttons = grid->itemAtPosition(1, 0)->layout();
    EXPECT_EQ(grid->itemAtPosition(1, 1)->layout(), buttons);
    ASSERT_EQ(buttons->count(), 3);
    EXPECT_EQ(buttons->itemAt(0)->expandingDirections(), Qt::Horizontal);
    EXPECT_EQ(buttons->itemAt(1)->widget(), Cancel());
    EXPECT_EQ(buttons->itemAt(2)->widget(), Ok());
}

TEST_F(TNameDialogTest, Has_the_buttons_Cancel_and_Ok_of_which_Ok_is_the_default)
{
    EXPECT_EQ(Cancel()->text(), "Cancel");
    EXPECT_FALSE(Cancel()->autoDefault());
    EXPECT_FALSE(Cancel()->isDefault());
    EXPECT_TRUE(Cancel()->isEnabled());

    EXPECT_EQ(Ok()->text(), "Ok");
    EXPECT_FALSE(Ok()->autoDefault());
    EXPECT_TRUE(Ok()->isDefault());
    EXPECT_FALSE(Ok()->isEnabled());
}

TEST_F(TNameDialogTest, Set_Title_sets_the_window_title)
{
    d_dialog.Set_Title("New Variable");

    EXPECT_EQ(d_dialog.windowTitle(), "New Variable");
}

TEST_F(TNameDialogTest, Opens_with_the_focus_in_the_line_edit)
{
    Show();

    EXPECT_EQ(QApplication::focusWidget(), Edit());
}

TEST_F(TNameDialogTest, Typing_one_character_enables_Ok_and_deleting_it_disables_Ok_again)
{
    Show();
    EXPECT_FALSE(Ok()->isEnabled());

    QTest::keyClick(Edit(), Qt::Key_A);
    EXPECT_TRUE(Ok()->isEnabled());

    QTest::keyClick(Edit(), Qt::Key_Backspace);
    EXPECT_FALSE(Ok()->isEnabled());
}

TEST_F(TNameDialogTest, Set_Name_with_a_text_enables_Ok)
{
    d_dialog.Set_Name("Probe");

    EXPECT_EQ(Edit()->text(), "Probe");
    EXPECT_TRUE(Ok()->isEnabled());
}

TEST_F(TNameDialogTest, Set_Name_with_an_empty_text_disables_Ok)
{
    d_dialog.Set_Name("Probe");
    d_dialog.Set_Name("");

    EXPECT_FALSE(Ok()->isEnabled());
}

TEST_F(TNameDialogTest, Text_Changed_takes_blanks_for_a_text)
{
    d_dialog.Text_Changed(" ");
    EXPECT_TRUE(Ok()->isEnabled());

    d_dialog.Text_Changed("");
    EXPECT_FALSE(Ok()->isEnabled());
}

TEST_F(TNameDialogTest, Typing_replaces_the_name_that_was_set)
{
    d_dialog.Set_Name("Probe");
    Show();

    Type_Text(QApplication::focusWidget(), "Scale");

    EXPECT_EQ(d_dialog.Name(), "Scale");
}

TEST_F(TNameDialogTest, Return_in_the_line_edit_with_a_text_accepts)
{
    Show();
    Type_Text(Edit(), "Probe");

    QTest::keyClick(Edit(), Qt::Key_Return);

    EXPECT_FALSE(d_dialog.isVisible());
    EXPECT_EQ(d_dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(d_dialog.Name(), "Probe");
}

TEST_F(TNameDialogTest, Return_in_an_empty_line_edit_does_nothing)
{
    Show();

    QTest::keyClick(Edit(), Qt::Key_Return);

    EXPECT_TRUE(d_dialog.isVisible());
    EXPECT_EQ(d_dialog.result(), int(QDialog::Rejected));
}

TEST_F(TNameDialogTest, Escape_rejects)
{
    Show();
    Type_Text(Edit(), "Probe");

    QTest::keyClick(Edit(), Qt::Key_Escape);

    EXPECT_FALSE(d_dialog.isVisible());
    EXPECT_EQ(d_dialog.result(), int(QDialog::Rejected));
}

TEST_F(TNameDialogTest, Tab_goes_from_the_line_edit_to_Cancel_to_Ok)
{
    d_dialog.Set_Name("Probe");
    Show();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), Cancel());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), Ok());
}

TEST(TNameDialogExec, Clicking_Ok_accepts)
{
    TModalAnswer answer;
    answer.Type_Name_And_Click_Ok("Probe");
    TNameDialog dialog;
    dialog.Set_Title("New Budget Item");

    EXPECT_EQ(dialog.exec(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.Name(), "Probe");
    EXPECT_EQ(answer.Seen(0).title, "New Budget Item");
}

TEST(TNameDialogExec, Clicking_Cancel_rejects)
{
    TModalAnswer answer;
    answer.Type_Name_And_Cancel("Probe");
    TNameDialog dialog;

    EXPECT_EQ(dialog.exec(), int(QDialog::Rejected));
}

struct TNameCase
{
    const char* case_name;
    QString typed;
    QString name;
};

void PrintTo(const TNameCase& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class TNameDialogName : public ::testing::TestWithParam<TNameCase>
{};

TEST_P(TNameDialogName, Is_what_was_typed_trimmed_and_fit_for_a_file)
{
    TNameDialog dialog;
    Show_Active(&dialog);
    Paste_Text(Child<QLineEdit>(&dialog, "name_edit"), GetParam().typed);

    QTest::mouseClick(Child<QPushButton>(&dialog, "ok_button"), Qt::LeftButton);

    EXPECT_EQ(dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.Name(), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    , TNameDialogName,
    ::testing::Values(TNameCase{"Plain", "Probe", "Probe"}, TNameCase{"Blanks_at_the_ends", "  Probe \t", "Probe"},
                      TNameCase{"Blanks_inside_stay", " Probe  tip ", "Probe  tip"},
                      TNameCase{"Only_blanks_give_an_empty_name", "   ", ""},
                      TNameCase{"No_break_space_is_white_space", QString(QChar(0xA0)) + "Probe", "Probe"},
                      TNameCase{"Control_characters_are_taken_out", QString("Pr") + QChar(0x01) + "obe", "Probe"},
                      TNameCase{"Blanks_behind_control_characters", QString(QChar(0x02)) + "  Probe", "Probe"},
                      TNameCase{"Only_control_characters", QString(QChar(0x01)), ""},
                      TNameCase{"Lone_surrogate_is_taken_out", QString("A") + QChar(0xD800) + "B", "AB"},
                      TNameCase{"Beyond_the_basic_plane", QString::fromUtf8("\xF0\x9F\x93\x8F"),
                                QString::fromUtf8("\xF0\x9F\x93\x8F")},
                      TNameCase{"Markup_is_plain_text", "<b>&amp;", "<b>&amp;"}),
    [](const auto& test) { return test.param.case_name; });

} // namespace
