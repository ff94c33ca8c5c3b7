#include "tests/support/modalanswer.h"

#include "core/messagebox.h"
#include "src/namedialog.h"
#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

int Ask(QWidget* parent = nullptr)
{
    TMessageBox box(parent);
    box.setText("Data Not Saved");
    box.setInformativeText("Current data will be lost.  Do you want to continue?");
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    box.setIcon(QMessageBox::Question);
    return box.exec();
}

TEST(TModalAnswer, Reports_what_a_message_box_showed)
{
    TModalAnswer answer;
    answer.Click(QMessageBox::No);

    EXPECT_EQ(Ask(), int(QMessageBox::No));

    const TModalAnswer::TSeen seen = answer.Seen(0);
    EXPECT_EQ(answer.Seen_Count(), 1);
    EXPECT_EQ(seen.text, "Data Not Saved");
    EXPECT_EQ(seen.informative_text, "Current data will be lost.  Do you want to continue?");
    EXPECT_EQ(seen.raw_text, R"(<span style="font-size:10pt; font-weight:600; color:#000000;" >Data Not Saved</span>)");
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(seen.default_button, QMessageBox::No);
    EXPECT_EQ(seen.icon, QMessageBox::Question);
}

TEST(TModalAnswer, Gives_several_answers_in_their_order)
{
    TModalAnswer answer;
    answer.Click(QMessageBox::Yes);
    answer.Type_Name("Probe");
    answer.Press(Qt::Key_Escape);

    EXPECT_EQ(Ask(), int(QMessageBox::Yes));
    TNameDialog dialog;
    dialog.Set_Name("Old");
    EXPECT_EQ(dialog.exec(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.Name(), "Probe");
    EXPECT_EQ(Ask(), int(QMessageBox::No));
    EXPECT_EQ(answer.Seen(1).text, "Old");
}

TEST(TModalAnswer, Closes_a_message_box)
{
    TModalAnswer answer;
    answer.Close_Message();

    EXPECT_EQ(Ask(), int(QMessageBox::No));
    EXPECT_EQ(answer.Seen_Count(), 1);
}

TEST(TModalAnswer, Pastes_a_name_that_no_key_types)
{
    TModalAnswer answer;
    answer.Paste_Name("a\u0001b\nc");
    TNameDialog dialog;

    EXPECT_EQ(dialog.exec(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.Name(), "ab\nc");
}

TEST(TModalAnswer, Gives_the_focus_back_to_the_window_behind)
{
    QLineEdit window;
    Show_Active(&window);
    TModalAnswer answer;
    answer.Click(QMessageBox::Yes);

    Ask(&window);

    EXPECT_EQ(QApplication::activeWindow(), &window);
    EXPECT_EQ(QApplication::focusWidget(), &window);
}

class TModalAnswerFile : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile file(Path("old.txt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QString Path(const QString& name) const { return d_folder.filePath(name); }

    QTemporaryDir d_folder;
};

TEST_F(TModalAnswerFile, Chooses_a_file_to_open)
{
    TModalAnswer answer;
    answer.Choose_File(Path("old.txt"));

    EXPECT_EQ(QFileDialog::getOpenFileName(nullptr, "Open it", d_folder.path(), "Texts (*.txt)"), Path("old.txt"));
    EXPECT_EQ(answer.Seen(0).title, "Open it");
    EXPECT_EQ(answer.Seen(0).directory, d_folder.path());
    EXPECT_EQ(answer.Seen(0).name_filters, QStringList("Texts (*.txt)"));
    EXPECT_FALSE(answer.Seen(0).saves);
}

TEST_F(TModalAnswerFile, Chooses_a_new_file_to_save)
{
    TModalAnswer answer;
    answer.Choose_File(Path("new \u00e4\u20ac.txt"));

    EXPECT_EQ(QFileDialog::getSaveFileName(nullptr, "Save it", Path("suggested.txt")), Path("new \u00e4\u20ac.txt"));
    EXPECT_EQ(answer.Seen(0).file_name, "suggested.txt");
    EXPECT_TRUE(answer.Seen(0).saves);
}

TEST_F(TModalAnswerFile, Answers_the_question_whether_to_overwrite)
{
    TModalAnswer answer;
    answer.Choose_File(Path("old.txt"));
    answer.Click(QMessageBox::Yes);

    EXPECT_EQ(QFileDialog::getSaveFileName(nullptr, "Save it", d_folder.path()), Path("old.txt"));
}

TEST_F(TModalAnswerFile, Answers_the_file_dialog_again_after_overwriting_was_refused)
{
    TModalAnswer answer;
    answer.Choose_File(Path("old.txt"));
    answer.Click(QMessageBox::No);
    answer.Choose_File(Path("new.txt"));

    EXPECT_EQ(QFileDialog::getSaveFileName(nullptr, "Save it", d_folder.path()), Path("new.txt"));
}

TEST_F(TModalAnswerFile, Cancels)
{
    TModalAnswer answer;
    answer.Cancel_File();

    EXPECT_EQ(QFileDialog::getOpenFileName(nullptr, "Open it", d_folder.path()), QString());
}

TEST_F(TModalAnswerFile, Chooses_a_folder)
{
    TModalAnswer answer;
    answer.Choose_File(d_folder.path());

    EXPECT_EQ(QFileDialog::getExistingDirectory(nullptr, "Folder", "/"), d_folder.path());
}

TEST(TModalAnswer, Fails_on_a_dialog_that_nobody_expected_and_rejects_it)
{
    int result = QMessageBox::Yes;

    EXPECT_NONFATAL_FAILURE(
        {
            const TModalAnswer watchdog;
            result = Ask();
        },
        "Nobody expected");
    EXPECT_NE(result, int(QMessageBox::Yes));
}

TEST(TModalAnswer, Fails_on_a_dialog_of_another_kind)
{
    ::testing::TestPartResultArray failures;
    {
        const ::testing::ScopedFakeTestPartResultReporter reporter(
            ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
        TModalAnswer answer;
        answer.Type_Name("Probe");
        Ask();
    }

    ASSERT_EQ(failures.size(), 2);
    EXPECT_NE(QString(failures.GetTestPartResult(0).message()).indexOf("Expected to type name Probe"), -1);
    EXPECT_NE(QString(failures.GetTestPartResult(1).message()).indexOf("No dialog opened for: type name Probe"), -1);
}

TEST(TModalAnswer, Fails_on_a_button_that_the_box_does_not_have)
{
    EXPECT_NONFATAL_FAILURE(
        {
            TModalAnswer answer;
            answer.Click(QMessageBox::Retry);
            Ask();
        },
        "Not found: button");
}

TEST(TModalAnswer, Fails_where_an_answer_is_left_over)
{
    EXPECT_NONFATAL_FAILURE(
        {
            TModalAnswer answer;
            answer.Click(QMessageBox::Yes);
        },
        "No dialog opened for: click button");
}

TEST(TModalAnswer, Is_in_charge_while_it_is_the_innermost)
{
    TModalAnswer outer;
    outer.Click(QMessageBox::No);
    {
        TModalAnswer inner;
        inner.Click(QMessageBox::Yes);
        EXPECT_EQ(Ask(), int(QMessageBox::Yes));
    }

    EXPECT_EQ(Ask(), int(QMessageBox::No));
    EXPECT_EQ(outer.Seen_Count(), 1);
}

} // namespace
