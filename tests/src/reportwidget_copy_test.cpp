#include "src/reportwidget.h"

#include "core/optioneditor.h"
#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using TItem = TReportWidget::TReportItemData;
using TRecord = TReportWidget::TReportData;

const char* const PROBE = "Probe\tSN 1\t\t\t\t\t";
const char* const TIP = "Tip\t\tConstant\tTd * 2\t1.000000\tNormal\t0.003000";
const char* const WEAR = "Wear and tear\t\tLength Dependent\tTr\t0.500000\tU\tERR";
const char* const SCALE = "Scale\t[Default]\t\t\t\t\t";
const char* const DRIFT = "Drift\t\tConstant\t0.1\t1.000000\tNormal\t0.100000";

TRecord Record(const QString& name, const std::vector<TItem>& items, const QString& identifier)
{
    TRecord record;
    record.name = name;
    record.identifier = identifier;
    record.identifiers = QStringList({"[Default]", "SN 1", "SN 2"});
    record.items = items;
    return record;
}

// The page with the rows PROBE, TIP, WEAR, SCALE and DRIFT.
class TReportWidgetCopy : public ::testing::Test
{
protected:
    TReportWidgetCopy()
    {
        d_page.resize(900, 500);
        d_page.Start_Report_Update();
        d_page.Add_Report_Data(
            Record("Probe",
                   {{"Tip", "Constant", "Td * 2", "1.000000", "Normal", "Type B", 1.0, "0.003000", 0.003},
                    {"Wear\tand\ntear", "Length Dependent", "Tr", "0.500000", "U", "Type A", 1.0, "ERR", 0.0}},
                   "SN 1"));
        d_page.Add_Report_Data(
            Record("Scale", {{"Drift", "Constant", "0.1", "1.000000", "Normal", "Type B", 1.0, "0.100000", 0.1}}, ""));
        d_page.End_Report_Update();
        Show_Active(&d_page);
        QApplication::clipboard()->setText("before");
    }

    QComboBox* Editor() const { return Open_Editor<QComboBox>(d_table); }

    QModelIndex Cell(int row, int column) const { return d_table->model()->index(row, column); }

    void Click(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Click_Entry(d_table, Cell(row, column), modifiers);
    }

    // In the widget that has the focus.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    static void Press_Copy() { Press(Qt::Key_C, Qt::ControlModifier); }

    static QString Copied() { return QApplication::clipboard()->text(); }

    static QString Rows(const QStringList& rows) { return rows.join('\n'); }

    TReportWidget d_page;
    TOptionEditorWidget* d_table = Child<TOptionEditorWidget>(&d_page, "report_table");
    QSignalSpy d_chosen{d_table, &TOptionEditorWidget::SelectionListItemChanged};
};

TEST_F(TReportWidgetCopy, A_row_is_copied_with_tabs_between_its_cells)
{
    Click(1, 0);

    Press_Copy();

    EXPECT_EQ(Copied(), TIP);
}

TEST_F(TReportWidgetCopy, Nothing_selected_leaves_the_clipboard)
{
    d_table->setFocus();
    d_table->clearSelection();

    Press_Copy();

    EXPECT_EQ(Copied(), "before");
}

TEST_F(TReportWidgetCopy, A_components_row_has_the_identifier_shown)
{
    Click(0, 0);

    Press_Copy();

    EXPECT_EQ(Copied(), PROBE);
}

TEST_F(TReportWidgetCopy, Tabs_and_line_breaks_in_a_cell_become_blanks)
{
    Click(2, 0);

    Press_Copy();

    EXPECT_EQ(Copied(), WEAR);
}

TEST_F(TReportWidgetCopy, All_rows_are_selected_by_keyboard)
{
    Click(1, 0);

    Press(Qt::Key_A, Qt::ControlModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({PROBE, TIP, WEAR, SCALE, DRIFT}));
}

TEST_F(TReportWidgetCopy, Rows_are_added_with_shift_and_the_arrows)
{
    Click(1, 0);

    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({TIP, WEAR, SCALE}));
}

TEST_F(TReportWidgetCopy, Rows_are_added_upwards_and_copied_downwards)
{
    Click(2, 0);

    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({TIP, WEAR}));
}

TEST_F(TReportWidgetCopy, Rows_are_added_with_shift_and_the_mouse)
{
    Click(1, 0);

    Click(4, 2, Qt::ShiftModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({TIP, WEAR, SCALE, DRIFT}));
}

TEST_F(TReportWidgetCopy, Single_rows_are_added_with_control_and_the_mouse_and_copied_in_their_order)
{
    Click(4, 0);

    Click(2, 0, Qt::ControlModifier);
    Click(0, 0, Qt::ControlModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({PROBE, WEAR, DRIFT}));
}

TEST_F(TReportWidgetCopy, Rows_are_selected_by_dragging)
{
    QWidget* viewport = d_table->viewport();
    const QPoint first = d_table->visualRect(Cell(1, 0)).center();
    const QPoint last = d_table->visualRect(Cell(3, 1)).center();

    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, first);
    for (const QPoint& place : {first + QPoint(0, 15), last}) {
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    }
    EXPECT_EQ(Editor(), nullptr);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, last);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({TIP, WEAR, SCALE}));
}

TEST_F(TReportWidgetCopy, Cells_stand_in_the_order_of_the_columns_shown)
{
    d_table->header()->moveSection(6, 0);
    d_table->setColumnHidden(3, true);
    Click(1, 0);

    Press_Copy();

    EXPECT_EQ(Copied(), "0.003000\tTip\t\tConstant\t1.000000\tNormal");
}

TEST_F(TReportWidgetCopy, The_context_menu_copies)
{
    Click(1, 0);
    const QPoint place = d_table->visualRect(Cell(1, 0)).center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, d_table->viewport()->mapToGlobal(place));

    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions().first()->text(), "Copy");
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QApplication::sendEvent(d_table->viewport(), &event);

    EXPECT_EQ(Copied(), TIP);
}

// In-place editing

TEST_F(TReportWidgetCopy, Works_while_an_identifiers_editor_is_open)
{
    Click(0, 1);
    ASSERT_NE(Editor(), nullptr);

    Press_Copy();

    EXPECT_EQ(Copied(), PROBE);
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(TReportWidgetCopy, A_click_on_an_identifier_still_opens_its_editor)
{
    Click(1, 0);
    Click(4, 0, Qt::ShiftModifier);

    Click(3, 1);

    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->currentText(), "[Default]");
}

TEST_F(TReportWidgetCopy, The_arrow_keys_still_open_an_identifiers_editor)
{
    Click(0, 0);

    Press(Qt::Key_Right);

    EXPECT_NE(Editor(), nullptr);
}

TEST_F(TReportWidgetCopy, Extending_the_selection_over_an_identifier_opens_no_editor)
{
    Click(2, 1);

    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press_Copy();

    EXPECT_EQ(Copied(), Rows({WEAR, SCALE, DRIFT}));
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_EQ(d_chosen.count(), 0);
}

TEST_F(TReportWidgetCopy, Adding_a_row_by_its_identifier_opens_no_editor)
{
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier}) {
        Click(2, 0);

        Click(3, 1, modifier);

        EXPECT_EQ(Editor(), nullptr);
        Press_Copy();
        EXPECT_EQ(Copied(), Rows({WEAR, SCALE}));
    }
}

TEST_F(TReportWidgetCopy, A_key_opens_the_editor_of_an_identifier_that_was_added)
{
    Click(2, 0);
    Click(3, 1, Qt::ControlModifier);

    Press(Qt::Key_F2);

    EXPECT_NE(Editor(), nullptr);
}

TEST_F(TReportWidgetCopy, A_capital_letter_still_opens_an_identifiers_editor)
{
    Click(3, 1);
    Press(Qt::Key_Escape);
    ASSERT_EQ(Editor(), nullptr);

    Press(Qt::Key_X, Qt::ShiftModifier); // the first letter of no identifier

    EXPECT_NE(Editor(), nullptr);
}

} // namespace
