#include "tests/support/editorfixture.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace {

// Log lines

struct TLogLine
{
    const char* name;
    std::vector<QString> fields; // the first ones; the others are empty
    QString line;
};

QString Blanks(int count)
{
    return QString(count, ' ');
}

QString Letters(int count)
{
    return QString(count, 'x');
}

class TNorvexaEditorLogLine : public TEditorFixture, public ::testing::WithParamInterface<TLogLine>
{};

TEST_P(TNorvexaEditorLogLine, Stands_on_stops_of_20_characters)
{
    std::vector<QString> fields = GetParam().fields;
    fields.resize(8);

    d_editor.Write_Log_Text(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6], fields[7]);

    EXPECT_EQ(Log(), GetParam().line);
}

const TLogLine LOG_LINES[] = {
    {"The_first_field_alone", {"Variable"}, "Variable            "},
    {"An_empty_first_field", {""}, Blanks(20)},
    {"All_fields_empty", {"", "", "", "", "", "", "", ""}, Blanks(20)},
    {"An_empty_first_and_a_second_field", {"", "Td = 1.000000"}, Blanks(20) + "Td = 1.000000       "},
    {"Three_columns", {"Variable", "CTEm", "0.011500"}, "Variable            CTEm                0.011500            "},
    {"Eight_columns",
     {"1", "2", "3", "4", "5", "6", "7", "8"},
     "1                   2                   3                   4                   "
     "5                   6                   7                   8                   "},
    {"Empty_fields_leave_no_column",
     {"A", "", "C", "", "", "F", "", "H"},
     "A                   C                   F                   H                   "},
    {"Only_the_last_field", {"", "", "", "", "", "", "", "H"}, Blanks(20) + "H                   "},
    {"A_field_as_wide_as_its_column", {Letters(20), "B"}, Letters(20) + "B                   "},
    {"One_character_too_many", {Letters(21), "B", "C"}, Letters(21) + "B" + Blanks(18) + "C" + Blanks(19)},
    {"A_first_field_of_25_leaves_15_for_the_second",
     {Letters(25), "B", "C"},
     Letters(25) + "B" + Blanks(14) + "C" + Blanks(19)},
    {"An_empty_field_keeps_the_overflow_for_the_next",
     {Letters(25), "", "C", "D"},
     Letters(25) + "C" + Blanks(14) + "D" + Blanks(19)},
    {"An_overflow_in_the_middle",
     {"A", Letters(23), "C", "D"},
     "A" + Blanks(19) + Letters(23) + "C" + Blanks(16) + "D" + Blanks(19)},
    {"A_column_that_fills_its_rest_exactly",
     {Letters(25), Letters(15), "C"},
     Letters(25) + Letters(15) + "C" + Blanks(19)},
    // The overflow is that of the column itself, not of the line.
    {"A_column_longer_than_its_rest_but_not_than_20",
     {Letters(25), Letters(18), "C"},
     Letters(25) + Letters(18) + "C" + Blanks(19)},
    {"Two_overflows_in_a_row", {Letters(25), Letters(22), "C"}, Letters(25) + Letters(22) + "C" + Blanks(17)},
    {"An_overflow_of_19_leaves_one_character", {Letters(39), "B", "C"}, Letters(39) + "B" + "C" + Blanks(19)},
    {"An_overflow_of_20_pads_nothing", {Letters(40), "B", "C"}, Letters(40) + "B" + "C" + Blanks(19)},
    {"An_overflow_of_25_pads_nothing_for_an_entry_of_5",
     {Letters(45), "12345", "C"},
     Letters(45) + "12345" + "C" + Blanks(19)},
    {"A_greater_overflow_is_a_width_to_the_right",
     {Letters(45), "B", "C"},
     Letters(45) + Blanks(4) + "B" + "C" + Blanks(19)},
    {"A_field_is_no_format", {"%1 %2", "%1", "%L1"}, "%1 %2               %1                  %L1                 "},
    {"A_field_is_no_markup", {"<b>1</b>", "&amp;"}, "<b>1</b>            &amp;               "},
};

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorLogLine, ::testing::ValuesIn(LOG_LINES),
                         [](const auto& row) { return std::string(row.param.name); });

class TNorvexaEditorLog : public TEditorFixture
{};

TEST_F(TNorvexaEditorLog, Lines_are_appended)
{
    d_editor.Write_Log_Text("First");
    d_editor.Write_Log_Text("Second", "2");

    EXPECT_EQ(Log(), "First               \nSecond              2                   ");
}

TEST_F(TNorvexaEditorLog, The_fields_after_the_first_may_be_left_out)
{
    d_editor.Write_Log_Text("A", "B", "C", "D");

    EXPECT_EQ(Log(), "A                   B                   C                   D                   ");
}

TEST_F(TNorvexaEditorLog, The_last_line_is_in_sight_from_its_first_column)
{
    Click_Tool("action_log");
    const auto* log = Find<QPlainTextEdit>("log");

    for (int line = 0; line < 200; ++line) {
        d_editor.Write_Log_Text(QString::number(line), Letters(300));
    }

    EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum());
    EXPECT_GT(log->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(log->horizontalScrollBar()->value(), 0);
}

TEST_F(TNorvexaEditorLog, The_log_cannot_be_typed_in)
{
    Click_Tool("action_log");
    d_editor.Write_Log_Text("Line");
    auto* log = Find<QPlainTextEdit>("log");
    QTest::mouseClick(log->viewport(), Qt::LeftButton);

    QTest::keyClicks(log, "abc");

    EXPECT_EQ(Log(), "Line                ");
}

TEST_F(TNorvexaEditorLog, A_report_writes_its_lines_once_and_in_their_order)
{
    Open_Budget(Sample_Budget());
    Click_Tool("action_report");

    Choose_Entry(Find<QComboBox>("report_group"), "Length");

    const QStringList lines = Log().split('\n');
    EXPECT_EQ(lines.value(0), "Calculating data for group: Length");
    EXPECT_EQ(lines.value(1), "Global variables    ");
    EXPECT_EQ(lines.filter("Generating report").size(), 1);
    EXPECT_LT(lines.indexOf("Global variables    "), lines.indexOf("Generating report   "));
    EXPECT_EQ(lines.filter("Drift").size(), 1);
    EXPECT_LT(lines.indexOf("Generating report   "), lines.indexOf(lines.filter("Drift").value(0)));
}

TEST_F(TNorvexaEditorLog, A_line_after_a_report_follows_the_report_at_once)
{
    Open_Budget(Sample_Budget());
    Click_Tool("action_report");
    Choose_Entry(Find<QComboBox>("report_group"), "Length");

    d_editor.Write_Log_Text("Afterwards");

    EXPECT_EQ(Log().split('\n').last(), "Afterwards          ");
}

// Pages

struct TPage
{
    const char* label;
    const char* action;
    Qt::Key key; // with Alt
    const char* entry;
    void (TNorvexaEditor::*view)();
};

const TPage PAGES[] = {
    {"Budget Components", "action_components", Qt::Key_C, "Budget Components", &TNorvexaEditor::View_Budget_Data},
    {"Variables", "action_variables", Qt::Key_V, "Variables", &TNorvexaEditor::View_Variables},
    {"Report Groups", "action_groups", Qt::Key_G, "Groups", &TNorvexaEditor::View_Groups},
    {"Report", "action_report", Qt::Key_R, "Report", &TNorvexaEditor::View_Report},
    {"Log", "action_log", Qt::Key_L, "Log", &TNorvexaEditor::View_Log},
};

std::string Page_Name(const ::testing::TestParamInfo<TPage>& row)
{
    return QString(row.param.entry).remove(' ').toStdString();
}

class TNorvexaEditorPage : public TEditorFixture, public ::testing::WithParamInterface<TPage>
{
protected:
    // Another page than the one of the row is in front at first.
    void SetUp() override
    {
        const bool is_log = QString(GetParam().label) == "Log";
        Find<QTabWidget>("pages")->setCurrentIndex(is_log ? 0 : 4);
        ASSERT_NE(Page(), GetParam().label);
    }

    void Expect_Page()
    {
        EXPECT_EQ(Page(), GetParam().label);
        EXPECT_EQ(Checked_Pages(), QStringList(GetParam().entry));
    }
};

TEST_P(TNorvexaEditorPage, Is_reached_by_its_tab)
{
    Select_Tab(Find<QTabWidget>("pages"), GetParam().label);

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Is_reached_by_its_tool_button)
{
    Click_Tool(GetParam().action);

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Is_reached_by_its_shortcut)
{
    Press(GetParam().key, Qt::AltModifier);

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Is_reached_by_the_menu)
{
    Choose_In_Menu("View", GetParam().entry);

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Is_reached_by_its_slot)
{
    (d_editor.*GetParam().view)();

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Keeps_its_action_checked_when_it_is_clicked_again)
{
    Click_Tool(GetParam().action);
    Click_Tool(GetParam().action);

    Expect_Page();
}

TEST_P(TNorvexaEditorPage, Keeps_its_action_checked_when_its_shortcut_is_pressed_again)
{
    Press(GetParam().key, Qt::AltModifier);
    Press(GetParam().key, Qt::AltModifier);

    Expect_Page();
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorPage, ::testing::ValuesIn(PAGES), Page_Name);

class TNorvexaEditorTabs : public TEditorFixture
{
protected:
    // Chooses the group "Length" of the sample on the report page, for a report that ends at 500 mm.
    void Choose_Group()
    {
        Open_Budget(Sample_Budget());
        Click_Tool("action_report");
        Choose_Entry(Find<QComboBox>("report_group"), "Length");
        ASSERT_EQ(Status(), "Uc at length 500.000 mm: 0.0050 mm");
    }

    QString Status() const { return Find<QLabel>("report_status")->text(); }
};

TEST_F(TNorvexaEditorTabs, An_index_from_0_to_4_checks_the_action_of_that_page_alone)
{
    for (int index = 4; index >= 0; --index) {
        d_editor.Tab_Selection_Changed(index);
        EXPECT_EQ(Checked_Pages(), QStringList(PAGES[index].entry));
    }
}

TEST_F(TNorvexaEditorTabs, Index_5_unchecks_all)
{
    d_editor.Tab_Selection_Changed(5);

    EXPECT_EQ(Checked_Pages(), QStringList());
}

TEST_F(TNorvexaEditorTabs, Any_other_index_is_ignored)
{
    Click_Tool("action_groups");

    for (const int index : {-1, 6, 100, -100}) {
        d_editor.Tab_Selection_Changed(index);
        EXPECT_EQ(Checked_Pages(), QStringList("Groups")) << index;
    }
}

TEST_F(TNorvexaEditorTabs, The_report_is_made_anew_when_its_page_comes_to_the_front)
{
    Choose_Group();
    Click_Tool("action_variables");
    Replace_Text(Find<QLineEdit>("end_position"), "750");
    EXPECT_EQ(Status(), "Uc at length 500.000 mm: 0.0050 mm");

    Press(Qt::Key_R, Qt::AltModifier);

    EXPECT_EQ(Status(), "Uc at length 750.000 mm: 0.0050 mm");
}

TEST_F(TNorvexaEditorTabs, The_report_is_made_anew_by_index_3_alone)
{
    Choose_Group();
    Click_Tool("action_variables");
    Replace_Text(Find<QLineEdit>("end_position"), "750");

    for (const int index : {0, 1, 2, 4, 5, 6}) {
        d_editor.Tab_Selection_Changed(index);
        EXPECT_EQ(Status(), "Uc at length 500.000 mm: 0.0050 mm") << index;
    }
    d_editor.Tab_Selection_Changed(3);
    EXPECT_EQ(Status(), "Uc at length 750.000 mm: 0.0050 mm");
}

TEST_F(TNorvexaEditorTabs, An_expression_typed_before_the_shortcut_of_the_report_counts)
{
    Choose_Group();
    Click_Tool("action_components");
    Select_Entry("Repeatability");
    Replace_Text(Find<QLineEdit>("expression"), "0.030");

    Press(Qt::Key_R, Qt::AltModifier);

    EXPECT_EQ(Status(), "Uc at length 500.000 mm: 0.0303 mm");
}

TEST_F(TNorvexaEditorTabs, Without_a_group_the_report_page_stays_empty)
{
    Open_Budget(Sample_Budget());

    Click_Tool("action_report");

    EXPECT_EQ(Find<QTreeWidget>("report_table")->topLevelItemCount(), 0);
    EXPECT_EQ(Log(), "");
}

} // namespace
