#include "src/exportprogress.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace {

class TExportProgressTest : public ::testing::Test
{
protected:
    QPushButton* Cancel() { return Child<QPushButton>(&d_progress, "cancel_button"); }
    QProgressBar* Bar() { return Child<QProgressBar>(&d_progress, "progress_bar"); }
    QString Text() { return Child<QLabel>(&d_progress, "progress_label")->text(); }

    /// Comes up in front of the fourth length of 120.
    void Show()
    {
        d_elapsed = TExportProgress::PATIENCE_MS;
        EXPECT_TRUE(d_progress.Go_On(3));
        Show_Active(&d_progress);
    }

    /// Has `act` wait among the events.
    void Post(const std::function<void()>& act) { QMetaObject::invokeMethod(&d_progress, act, Qt::QueuedConnection); }

    qint64 d_elapsed = 0; // ms
    TExportProgress d_progress{120, nullptr, [this] { return d_elapsed; }};
};

TEST_F(TExportProgressTest, Shows_nothing_in_the_first_half_second)
{
    EXPECT_TRUE(d_progress.Go_On(0));
    d_elapsed = 499;
    EXPECT_TRUE(d_progress.Go_On(1));

    EXPECT_FALSE(d_progress.isVisible());
}

TEST_F(TExportProgressTest, Comes_up_as_a_modal_dialog_after_half_a_second)
{
    d_elapsed = 500;

    EXPECT_TRUE(d_progress.Go_On(1));

    EXPECT_TRUE(d_progress.isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), &d_progress);
    EXPECT_EQ(d_progress.windowTitle(), "Export");
}

TEST_F(TExportProgressTest, Lets_events_wait_until_it_is_shown)
{
    bool has_come = false;
    Post([&has_come] { has_come = true; });

    d_progress.Go_On(0);
    EXPECT_FALSE(has_come);

    d_elapsed = TExportProgress::PATIENCE_MS;
    d_progress.Go_On(1);
    EXPECT_TRUE(has_come);
}

TEST_F(TExportProgressTest, Says_which_length_comes_next_and_how_many_are_done)
{
    Show();
    EXPECT_EQ(Text(), "Length 4 of 120");
    EXPECT_EQ(Bar()->value(), 3);

    EXPECT_TRUE(d_progress.Go_On(119));

    EXPECT_EQ(Text(), "Length 120 of 120");
    EXPECT_EQ(Bar()->value(), 119);
    EXPECT_EQ(Bar()->minimum(), 0);
    EXPECT_EQ(Bar()->maximum(), 120);
}

TEST_F(TExportProgressTest, Looks_once_more_after_the_last_length)
{
    Show();

    EXPECT_TRUE(d_progress.Go_On(120));

    EXPECT_EQ(Text(), "Length 120 of 120");
    EXPECT_EQ(Bar()->value(), 120);
}

TEST_F(TExportProgressTest, Does_not_come_up_when_no_length_is_to_come)
{
    bool has_come = false;
    Post([&has_come] { has_come = true; });
    d_elapsed = TExportProgress::PATIENCE_MS;

    EXPECT_TRUE(d_progress.Go_On(120));

    EXPECT_FALSE(d_progress.isVisible());
    EXPECT_FALSE(has_come);
}

TEST_F(TExportProgressTest, Cancels_after_the_last_length)
{
    Show();
    Post([this] { QTest::mouseClick(Cancel(), Qt::LeftButton); });

    EXPECT_FALSE(d_progress.Go_On(120));
}

TEST_F(TExportProgressTest, Is_hidden_when_all_events_are_taken_that_came_with_the_cancelling)
{
    Show();
    bool was_visible = false;
    Post([this] { QTest::mouseClick(Cancel(), Qt::LeftButton); });
    Post([&] { was_visible = QApplication::activeModalWidget() == &d_progress; });

    EXPECT_FALSE(d_progress.Go_On(4));

    EXPECT_TRUE(was_visible);
    EXPECT_FALSE(d_progress.isVisible());
}

TEST_F(TExportProgressTest, Is_not_cancelled_by_Return)
{
    Show();
    QTest::keyClick(&d_progress, Qt::Key_Return);

    EXPECT_TRUE(d_progress.Go_On(4));
    EXPECT_TRUE(d_progress.isVisible());
}

TEST_F(TExportProgressTest, Has_the_focus_on_Cancel)
{
    Show();

    EXPECT_TRUE(QTest::qWaitFor([this] { return Cancel()->hasFocus(); }));
    EXPECT_EQ(Cancel()->text(), "Cancel");
}

TEST_F(TExportProgressTest, Starts_its_clock_when_it_is_made)
{
    const TExportProgress::TClock clock = TExportProgress::Started_Clock();
    const qint64 first = clock();

    EXPECT_GE(first, 0);
    EXPECT_LT(first, TExportProgress::PATIENCE_MS);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clock() > first; }));
}

// Ways to cancel

struct TWay
{
    const char* name;
    std::function<void(TExportProgress*)> act;
};

class TWayToCancel : public TExportProgressTest, public ::testing::WithParamInterface<TWay>
{};

TEST_P(TWayToCancel, Ends_the_export_and_hides_the_dialog_at_the_next_look)
{
    Show();

    GetParam().act(&d_progress);

    EXPECT_TRUE(d_progress.isVisible());
    EXPECT_FALSE(d_progress.Go_On(4));
    EXPECT_FALSE(d_progress.isVisible());
}

INSTANTIATE_TEST_SUITE_P(
    TExportProgress, TWayToCancel,
    ::testing::Values(TWay{"Click",
                           [](TExportProgress* progress) {
                               QTest::mouseClick(Child<QPushButton>(progress, "cancel_button"), Qt::LeftButton);
                           }},
                      TWay{"Space",
                           [](TExportProgress* progress) {
                               QTest::keyClick(Child<QPushButton>(progress, "cancel_button"), Qt::Key_Space);
                           }},
                      TWay{"Escape", [](TExportProgress* progress) { QTest::keyClick(progress, Qt::Key_Escape); }},
                      TWay{"Close", [](TExportProgress* progress) { progress->close(); }}),
    [](const auto& row) { return row.param.name; });

} // namespace
