#include "src/exportprogress.h"
#include "tests/support/exportfixture.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QThread>
#include <QWindow>

#include <exception>
#include <functional>
#include <map>

namespace {

constexpr int LENGTHS = 120;

/// The sample at 120 lengths, with a variable in the expression of "Drift" and a group of the component "Scale" alone.
TBudgetFile Long_Budget()
{
    TBudgetFile budget = Sample_Budget();
    budget.document.Update_Component_Item("Scale", "Drift", QString(), "0.001+Sr", false);
    budget.groups.push_back({"Drift", {"Scale"}});
    budget.input_data.report_end = 1190.0;
    budget.input_data.report_increment = 10.0;
    return budget;
}

void Click_Cancel(TExportProgress* progress)
{
    QTest::mouseClick(Child<QPushButton>(progress, "cancel_button"), Qt::LeftButton);
}

/// Meets the progress of an export and acts on it.
class TProgressWatch : public QObject
{
public:
    using TAct = std::function<void(TExportProgress*)>;

    TProgressWatch() { qApp->installEventFilter(this); }
    ~TProgressWatch() override { EXPECT_TRUE(d_acts.empty()) << "The progress did not come so far."; }

    /// Has `act` stand first among the events that are taken when `done` lengths are done.
    void When_Done(int done, const TAct& act) { d_acts[done] = act; }

    /// How often it came up.
    int Count() const { return d_count; }

    /// What it said each time that it took events.
    QStringList Texts() const { return d_texts; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* progress = qobject_cast<TExportProgress*>(object);
        if (progress != nullptr && event->type() == QEvent::Show) {
            const auto* bar = Child<QProgressBar>(progress, "progress_bar");
            ++d_count;
            connect(bar, &QProgressBar::valueChanged, this, [=](int done) { Meet(progress, done); });
            Meet(progress, bar->value());
        }
        return false;
    }

private:
    void Meet(TExportProgress* progress, int done)
    {
        d_texts << Child<QLabel>(progress, "progress_label")->text();
        if (d_acts.count(done) == 0) {
            return;
        }
        QMetaObject::invokeMethod(
            progress, [act = d_acts[done], progress] { Act(act, progress); }, Qt::QueuedConnection);
        d_acts.erase(done);
    }

    static void Act(const TAct& act, TExportProgress* progress)
    {
        try {
            act(progress);
        } catch (const std::exception& error) { // must not pass through Qt's event loop
            ADD_FAILURE() << error.what();
        }
    }

    std::map<int, TAct> d_acts;
    int d_count = 0;
    QStringList d_texts;
};

/// Stands for a machine on which every export has run for half a second before its first length.
class TSlowMachine : public QObject
{
public:
    TSlowMachine() { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        const bool is_made = event->type() == QEvent::WindowTitleChange;

        if (is_made && qobject_cast<TExportProgress*>(object) != nullptr) {
            QThread::msleep(TExportProgress::PATIENCE_MS);
        }
        return false;
    }
};

class TNorvexaEditorProgress : public TExportFixture
{
protected:
    void Show(const TBudgetFile& budget)
    {
        Open_Budget(budget);
        Show_Report("Length");
    }

    void Write_File(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            Fail_Missing("file to write " + name);
        }
    }

    /// A click that the window system has for the main window.
    void Click_Through_Window(const QString& button)
    {
        const auto* widget = Find<QPushButton>(button);
        QTest::mouseClick(d_editor.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          widget->mapTo(&d_editor, widget->rect().center()));
    }

    QList<QAction*> Actions() const { return d_editor.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly); }

    QStringList Enabled_Actions() const
    {
        QStringList names;
        for (const QAction* action : Actions()) {
            if (action->isEnabled()) {
                names << action->objectName();
            }
        }
        return names;
    }

    QStringList Written_Lines(const QString& name) const { return QString::fromLatin1(Bytes(Path(name))).split('\n'); }

    QStringList Log_Lines() const { return Log().split('\n'); }

    TProgressWatch d_watch;
};

class TNorvexaEditorLongExport : public TNorvexaEditorProgress
{
protected:
    TNorvexaEditorLongExport() { Show(Long_Budget()); }

    TSlowMachine d_machine;
};

TEST_F(TNorvexaEditorProgress, Is_not_shown_by_a_quick_export)
{
    Show(Sample_Budget());

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(d_watch.Count(), 0);
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
}

TEST_F(TNorvexaEditorLongExport, Shows_its_progress_once_and_counts_its_lengths)
{
    QStringList expected;
    for (int length = 1; length <= LENGTHS; ++length) {
        expected << QString("Length %1 of 120").arg(length);
    }
    expected << expected.last(); // which is done by then

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(d_watch.Count(), 1);
    EXPECT_EQ(d_watch.Texts(), expected);
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
}

// The window behind

TEST_F(TNorvexaEditorLongExport, Keeps_the_window_out_of_reach)
{
    bool was_dropped = true;
    d_watch.When_Done(1, [&](TExportProgress*) {
        Click_Through_Window("export_csv");
        QTest::keyClick(d_editor.windowHandle(), Qt::Key_N, Qt::ControlModifier);
        was_dropped = Drop_Files({Path("budget.norvexa")});
        d_editor.windowHandle()->close();
    });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(d_answer.Seen_Count(), 1); // no dialog of a second export
    EXPECT_FALSE(was_dropped);
    EXPECT_TRUE(d_editor.isVisible());
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))");
}

// Keys that were pressed before the progress came up arrive while the window is still the active one.
TEST_F(TNorvexaEditorLongExport, Has_no_shortcut_of_the_window_act)
{
    Export_CSV(Path("undisturbed.csv"));
    int pressed = 0;
    d_watch.When_Done(0, [&](TExportProgress*) {
        for (const QAction* action : Actions()) {
            if (action->shortcut().isEmpty()) {
                continue;
            }
            const int key = action->shortcut()[0];
            ASSERT_EQ(QApplication::activeWindow(), &d_editor);
            qt_handleKeyEvent(d_editor.windowHandle(), QEvent::KeyPress, key & ~Qt::KeyboardModifierMask,
                              Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));
            ++pressed;
        }
    });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(pressed, 9);
    EXPECT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Checked_Pages(), QStringList("Report"));
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))");
    EXPECT_EQ(Written_Lines("export.csv"), Written_Lines("undisturbed.csv"));
}

TEST_F(TNorvexaEditorLongExport, Has_the_actions_of_the_window_wait)
{
    Add_Component("Wire"); // enables Save
    Show_Page("Report");
    const QStringList before = Enabled_Actions();
    QStringList meanwhile = before;
    d_watch.When_Done(60, [&](TExportProgress*) { meanwhile = Enabled_Actions(); });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(meanwhile, QStringList());
    EXPECT_EQ(Enabled_Actions(), before);
    EXPECT_TRUE(before.contains("action_save"));
}

TEST_F(TNorvexaEditorLongExport, Enables_no_action_that_was_disabled)
{
    const QStringList before = Enabled_Actions();
    ASSERT_FALSE(before.contains("action_save"));

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Enabled_Actions(), before);
}

TEST_F(TNorvexaEditorLongExport, Has_the_actions_act_again_when_it_was_cancelled)
{
    d_watch.When_Done(60, Click_Cancel);
    Export_CSV(Path("export.csv"));

    Press(Qt::Key_V, Qt::AltModifier);

    EXPECT_EQ(Page(), "Variables");
}

// A screen reader presses controls past any dialog.

TEST_F(TNorvexaEditorLongExport, Is_not_started_again_by_a_screen_reader)
{
    d_watch.When_Done(60, [this](TExportProgress*) { Find<QPushButton>("export_pdf")->click(); });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_EQ(Written_Lines("export.csv").first(), "Budget Definition - Length");
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
}

TEST_F(TNorvexaEditorLongExport, Has_no_action_act_for_a_screen_reader)
{
    const QString tree = Tree_Text();
    d_watch.When_Done(60, [this](TExportProgress*) {
        QMenu* menu = d_editor.menuBar()->actions().first()->menu();
        QAccessibleInterface* entry = QAccessible::queryAccessibleInterface(menu)->child(0);
        ASSERT_EQ(entry->text(QAccessible::Name), "New...");
        entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Tree_Text(), tree);
}

struct TPressed
{
    const char* name;
    std::function<void(TNorvexaEditor*)> act;
};

class TPressedByScreenReader : public TNorvexaEditorLongExport, public ::testing::WithParamInterface<TPressed>
{};

TEST_P(TPressedByScreenReader, Changes_nothing_that_is_exported)
{
    Show_Page("Budget Components");
    Select_Entry("Repeatability");
    Show_Page("Report");
    Export_CSV(Path("undisturbed.csv"));
    const QStringList undisturbed = Log_Lines().filter(" mm ");
    d_watch.When_Done(60, [this](TExportProgress*) { GetParam().act(&d_editor); });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Written_Lines("export.csv"), Written_Lines("undisturbed.csv"));
    EXPECT_EQ(Log_Lines().filter(" mm "), undisturbed);
}

const TPressed PRESSED[] = {
    {"The_tab_of_the_report",
     [](TNorvexaEditor* editor) {
         auto* pages = Child<QTabWidget>(editor, "pages");
         pages->setCurrentIndex(1);
         pages->setCurrentIndex(3);
     }},
    {"The_report_of_another_group", [](TNorvexaEditor* editor) { editor->Update_Report_View("Drift"); }},
    {"A_digit_in_a_variable_and_the_report",
     [](TNorvexaEditor* editor) {
         Type_Text(Child<QLineEdit>(editor, "machine_scale"), "5");
         editor->Update_Report_View("Length");
     }},
    {"A_digit_in_an_expression",
     [](TNorvexaEditor* editor) {
         auto* expression = Child<QLineEdit>(editor, "expression");
         Type_Text(expression, "5");
         QTest::keyClick(expression, Qt::Key_Return);
     }},
};

INSTANTIATE_TEST_SUITE_P(TNorvexaEditor, TPressedByScreenReader, ::testing::ValuesIn(PRESSED),
                         [](const auto& row) { return row.param.name; });

// Ways to cancel

struct TWay
{
    const char* name;
    int done;
    TProgressWatch::TAct act;
};

class TWayToCancelExport : public TNorvexaEditorLongExport, public ::testing::WithParamInterface<TWay>
{};

TEST_P(TWayToCancelExport, Leaves_an_existing_file_and_says_so_in_the_log)
{
    Write_File("export.csv", "what was there");
    d_answer.Choose_File(Path("export.csv"));
    d_answer.Click(QMessageBox::Yes); // replace it
    d_watch.When_Done(GetParam().done, GetParam().act);

    Click_Export_CSV();

    EXPECT_EQ(d_watch.Texts().size(), GetParam().done + 1);
    EXPECT_EQ(Log_Lines().last().trimmed(), "Export cancelled.");
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
    EXPECT_EQ(Bytes(Path("export.csv")), "what was there");
    EXPECT_EQ(Page(), "Report");
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditor, TWayToCancelExport,
    ::testing::Values(TWay{"Click", 3, Click_Cancel}, TWay{"Click_at_the_first_length", 0, Click_Cancel},
                      TWay{"Click_at_the_last_length", LENGTHS, Click_Cancel},
                      TWay{"Escape", 3, [](TExportProgress* progress) { QTest::keyClick(progress, Qt::Key_Escape); }},
                      TWay{"Close", 3, [](TExportProgress* progress) { progress->close(); }}),
    [](const auto& row) { return row.param.name; });

TEST_F(TNorvexaEditorLongExport, Leaves_no_file_when_it_is_cancelled_as_PDF)
{
    d_watch.When_Done(3, Click_Cancel);
    d_answer.Choose_File(Path("export.pdf"));

    Click_Export_PDF();

    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
    EXPECT_EQ(Log_Lines().last().trimmed(), "Export cancelled.");
}

TEST_F(TNorvexaEditorLongExport, Keeps_the_log_of_the_lengths_that_were_done_when_it_is_cancelled)
{
    Export_CSV(Path("whole.csv"));
    const QStringList whole = Log_Lines();
    d_watch.When_Done(3, Click_Cancel);

    Export_CSV(Path("export.csv"));

    QStringList lines = Log_Lines();
    EXPECT_EQ(lines.takeLast().trimmed(), "Export cancelled.");
    EXPECT_EQ(lines.value(0), "Calculating data for group: Length");
    EXPECT_EQ(lines, whole.mid(0, lines.size()));
    EXPECT_EQ(lines.filter("20.000 mm").size(), 3); // the items at the third length
    EXPECT_EQ(lines.filter("30.000 mm").size(), 0);
}

TEST_F(TNorvexaEditorLongExport, Takes_no_click_for_the_window_that_came_with_the_cancelling)
{
    d_watch.When_Done(3, [this](TExportProgress* progress) {
        Click_Cancel(progress);
        Click_Through_Window("export_csv");
    });

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(d_answer.Seen_Count(), 1); // no dialog of a second export
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
    EXPECT_EQ(Log_Lines().last().trimmed(), "Export cancelled.");
}

} // namespace
