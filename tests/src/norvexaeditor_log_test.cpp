#include "tests/support/editorfixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace {

// Log lines

struct TLogLineRow
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

class TNorvexaEditorLogLine : public TEditorFixture, public ::testing::WithParamInterface<TLogLineRow>
{};

TEST_P(TNorvexaEditorLogLine, Stands_on_stops_of_20_characters)
{
    std::vector<QString> fields = GetParam().fields;
    fields.resize(8);

    d_editor.Write_Log_Text(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6], fields[7]);

    EXPECT_EQ(Log(), GetParam().line);
}

const TLogLineRow LOG_LINES[] = {
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
    {"Line_breaks_and_tabs_in_a_field_are_blanks",
     {"a\nb", "c\r\nd", "e\tf"},
     "a b" + Blanks(17) + "c  d" + Blanks(16) + "e f" + Blanks(17)},
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

// Its last line alone is wider than the view, so that the scroll bar comes after it.
TEST_F(TNorvexaEditorLog, The_last_line_is_whole_when_the_log_comes_to_the_front)
{
    auto* log = Find<QPlainTextEdit>("log");
    Click_Tool("action_log");

    for (int count = 20; count < 60; ++count) {
        Click_Tool("action_variables");
        log->clear();
        for (int line = 1; line < count; ++line) {
            d_editor.Write_Log_Text(QString::number(line));
        }
        d_editor.Write_Log_Text(Letters(300));
        Click_Tool("action_log");
        QCoreApplication::processEvents();

        EXPECT_GT(log->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum()) << count;
        EXPECT_LE(log->cursorRect().bottom(), log->viewport()->rect().bottom()) << count;
    }
}

TEST_F(TNorvexaEditorLog, The_last_line_stays_in_sight_when_the_window_becomes_lower)
{
    Click_Tool("action_log");
    const auto* log = Find<QPlainTextEdit>("log");
    for (int line = 0; line < 200; ++line) {
        d_editor.Write_Log_Text(QString::number(line));
    }
    const int height = log->height();

    d_editor.resize(d_editor.width(), d_editor.height() - 100);

    EXPECT_TRUE(QTest::qWaitFor([&] { return log->height() < height; }));
    EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum());
    EXPECT_LE(log->cursorRect().bottom(), log->viewport()->rect().bottom());
}

TEST_F(TNorvexaEditorLog, The_place_that_is_read_stays_when_the_window_becomes_lower)
{
    Click_Tool("action_log");
    const auto* log = Find<QPlainTextEdit>("log");
    for (int line = 0; line < 200; ++line) {
        d_editor.Write_Log_Text(QString::number(line));
    }
    log->verticalScrollBar()->setValue(50);
    const int height = log->height();

    d_editor.resize(d_editor.width(), d_editor.height() - 100);

    EXPECT_TRUE(QTest::qWaitFor([&] { return log->height() < height; }));
    EXPECT_EQ(log->verticalScrollBar()->value(), 50);
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

// Selecting and copying

class TNorvexaEditorLogCopy : public TEditorFixture
{
protected:
    TNorvexaEditorLogCopy()
    {
        Click_Tool("action_log");
        View()->setFocus();
        QApplication::clipboard()->setText("before");
    }

    // "Probe tip" stands at 0, "Linear" at 20, "0.003" at 40; an empty first field, "Wear = 1" at 20.
    void Write_Two_Lines()
    {
        d_editor.Write_Log_Text("Probe tip", "Linear", "0.003");
        d_editor.Write_Log_Text("", "Wear = 1");
    }

    QPlainTextEdit* View() const { return Find<QPlainTextEdit>("log"); }

    QPoint Place_Of(int line, int column) const
    {
        QTextCursor cursor(View()->document()->findBlockByNumber(line));
        cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
        return View()->cursorRect(cursor).center();
    }

    void Drag_Over(int first_line, int first_column, int last_line, int last_column)
    {
        QWidget* viewport = View()->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, Place_Of(first_line, first_column));
        // The platform sends no moves with a pressed button.
        QMouseEvent move(QEvent::MouseMove, Place_Of(last_line, last_column), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
        QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, Place_Of(last_line, last_column));
    }

    static QString Copied() { return QApplication::clipboard()->text(); }
};

TEST_F(TNorvexaEditorLogCopy, All_of_it_is_copied_by_keyboard)
{
    Write_Two_Lines();

    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "Probe tip\tLinear\t0.003\n\tWear = 1");
}

TEST_F(TNorvexaEditorLogCopy, Is_plain_text_alone)
{
    Write_Two_Lines();

    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList("text/plain"));
}

TEST_F(TNorvexaEditorLogCopy, A_part_is_selected_by_the_caret)
{
    Write_Two_Lines();

    Press(Qt::Key_Up);
    Press(Qt::Key_Home);
    for (int column = 0; column < 6; ++column) {
        Press(Qt::Key_Right);
    }
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_End, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "tip\tLinear\t0.003\n\tWear = 1");
}

TEST_F(TNorvexaEditorLogCopy, A_part_of_a_line_is_selected_by_the_mouse)
{
    Write_Two_Lines();

    Drag_Over(0, 6, 0, 23);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "tip\tLin");
}

TEST_F(TNorvexaEditorLogCopy, Lines_are_selected_by_the_mouse)
{
    Write_Two_Lines();

    Drag_Over(0, 20, 1, 24);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "Linear\t0.003\n\tWear");
}

TEST_F(TNorvexaEditorLogCopy, The_context_menu_copies)
{
    Write_Two_Lines();
    Press(Qt::Key_A, Qt::ControlModifier);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), View()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(View(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList entries;
    for (const QAction* action : menu->actions()) {
        entries << action->text().section('\t', 0, 0).remove('&');
    }
    ASSERT_EQ(entries.filter("Copy").value(0), "Copy");

    QAction* copy = menu->actions().at(entries.indexOf("Copy"));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(copy).center());

    EXPECT_EQ(Copied(), "Probe tip\tLinear\t0.003\n\tWear = 1");
}

TEST_F(TNorvexaEditorLogCopy, Nothing_selected_leaves_the_clipboard)
{
    Write_Two_Lines();

    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "before");
}

TEST_F(TNorvexaEditorLogCopy, Has_the_fields_of_lines_that_came_at_once)
{
    Open_Budget(Sample_Budget());
    Click_Tool("action_report");
    Choose_Entry(Find<QComboBox>("report_group"), "Length");
    Click_Tool("action_log");
    View()->setFocus();

    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);

    const QStringList copied = Copied().split('\n');
    EXPECT_EQ(copied.size(), Log().split('\n').size());
    EXPECT_EQ(copied.value(0), "Calculating data for group: Length");
    EXPECT_TRUE(copied.contains("Name\tUnit Type\tExpression Type\tValue\tSensitivity\tDistribution\tDivisor\tSource"));
    EXPECT_TRUE(copied.contains("\tLinear\tConstant\t0.003000\t1.000000\tNormal\t1.000000\tRepeatability"));
}

TEST_F(TNorvexaEditorLogCopy, Has_the_fields_of_the_lines_after_a_clearing)
{
    d_editor.Write_Log_Text("One", "Two");
    View()->clear();
    Write_Two_Lines();

    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(Copied(), "Probe tip\tLinear\t0.003\n\tWear = 1");
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
