#include "src/exportprogress.h"
#include "tests/support/exportfixture.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

/// So many items that no machine evaluates them at 120 lengths within half a second.
TBudgetFile Long_Budget()
{
    constexpr int COMPONENTS = 20;
    constexpr int ITEMS = 250;
    TBudgetFile budget;
    budget.groups = {{"Length", {}}};
    budget.input_data.report_end = 1190.0;
    budget.input_data.report_increment = 10.0;

    TNorvexaData::TComponent component;
    for (int index = 0; index < ITEMS; ++index) {
        component.items.emplace_back();
        component.items.back().name = QString("Ball %1").arg(index);
    }
    for (int index = 0; index < COMPONENTS; ++index) {
        component.name = QString("Probe %1").arg(index);
        budget.document.Add_Component(component.name);
        budget.document.Update_Component(component);
        budget.groups.front().items << component.name;
    }
    return budget;
}

/// Counts how often the progress of an export comes up.
class TProgressWatch : public QObject
{
public:
    TProgressWatch() { qApp->installEventFilter(this); }

    int Count() const { return d_count; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<TExportProgress*>(object) != nullptr) {
            ++d_count;
        }
        return false;
    }

private:
    int d_count = 0;
};

class TNorvexaEditorProgress : public TExportFixture
{
protected:
    void Show(const TBudgetFile& budget)
    {
        Open_Budget(budget);
        Show_Report("Length");
    }

    QString Last_Log_Line() const { return Log().section('\n', -1); }
};

TEST_F(TNorvexaEditorProgress, Is_not_shown_by_a_quick_export)
{
    TProgressWatch watch;
    Show(Sample_Budget());

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(watch.Count(), 0);
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
}

TEST_F(TNorvexaEditorProgress, Is_shown_once_by_a_long_export_and_counts_its_lengths)
{
    TProgressWatch watch;
    Show(Long_Budget());
    d_answer.Choose_File(Path("export.csv"));
    d_answer.Cancel_Export();

    Click_Export_CSV();

    EXPECT_EQ(watch.Count(), 1);
    EXPECT_THAT(d_answer.Seen(1).text.toStdString(), ::testing::MatchesRegex("Length [0-9]+ of 120"));
}

TEST_F(TNorvexaEditorProgress, Keeps_everything_else_out_of_reach)
{
    Show(Long_Budget());
    d_answer.Choose_File(Path("export.csv"));
    bool was_dropped = true;
    d_answer.Act_On_Export("use the window behind", [&](TExportProgress* progress) {
        QWindow* window = d_editor.windowHandle();
        const QPushButton* button = Find<QPushButton>("export_csv");
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, button->mapTo(&d_editor, button->rect().center()));
        QTest::keyClick(window, Qt::Key_N, Qt::ControlModifier);
        was_dropped = Drop_Files({Path("budget.norvexa")});
        window->close();
        QTest::keyClick(progress, Qt::Key_Escape);
    });

    Click_Export_CSV();

    EXPECT_EQ(d_answer.Seen_Count(), 2); // no dialog of a second export
    EXPECT_FALSE(was_dropped);
    EXPECT_TRUE(d_editor.isVisible());
    EXPECT_TRUE(Tree_Text().startsWith("Norvexa Data(Probe 0("));
}

// Ways to cancel

struct TWay
{
    const char* name;
    std::function<void(TModalAnswer*)> arm;
};

class TWayToCancelExport : public TNorvexaEditorProgress, public ::testing::WithParamInterface<TWay>
{};

TEST_P(TWayToCancelExport, Leaves_an_existing_file_and_says_so_in_the_log)
{
    Show(Long_Budget());
    QFile file(Path("export.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("what was there");
    file.close();
    d_answer.Choose_File(Path("export.csv"));
    d_answer.Click(QMessageBox::Yes); // replace it
    GetParam().arm(&d_answer);

    Click_Export_CSV();

    EXPECT_EQ(Last_Log_Line().trimmed(), "Export cancelled.");
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
    EXPECT_EQ(Bytes(Path("export.csv")), "what was there");
    EXPECT_EQ(Page(), "Report");
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditor, TWayToCancelExport,
                         ::testing::Values(TWay{"Click", [](TModalAnswer* answer) { answer->Cancel_Export(); }},
                                           TWay{"Escape",
                                                [](TModalAnswer* answer) { answer->Press_In_Export(Qt::Key_Escape); }},
                                           TWay{"Close", [](TModalAnswer* answer) { answer->Close_Export(); }}),
                         [](const auto& row) { return row.param.name; });

TEST_F(TNorvexaEditorProgress, Leaves_no_file_after_a_cancelled_export_as_PDF)
{
    Show(Long_Budget());
    d_answer.Choose_File(Path("export.pdf"));
    d_answer.Cancel_Export();

    Click_Export_PDF();

    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
    EXPECT_EQ(Last_Log_Line().trimmed(), "Export cancelled.");
}

} // namespace
