#include "src/reportwidget.h"

#include "core/optioneditor.h"
#include "src/combineduncertainty.h"
#include "tests/support/qtprinters.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidgetItem>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <tuple>

namespace {

using TItem = TReportWidget::TReportItemData;
using TRecord = TReportWidget::TReportData;
using TRecords = std::vector<TRecord>;

const QColor RED(255, 0, 0, 255);
const QStringList IDENTIFIERS = {"[Default]", "Scale 1", "Scale 2"};

TItem Item(const QString& name, const QString& type, double value)
{
    return {name, type, "a + b", "1.500000", "Rectangular", "Type B", 1.732051, QString::number(value, 'f', 6), value};
}

TItem Failed_Item(const QString& name)
{
    TItem item = Item(name, "Constant", 0.0);
    item.value_text = "ERR";
    return item;
}

TRecord Record(const QString& name, const std::vector<TItem>& items, const QString& identifier = QString())
{
    TRecord record;
    record.name = name;
    record.identifier = identifier;
    record.identifiers = IDENTIFIERS;
    record.items = items;
    return record;
}

TRecord Variable_Record(const QString& name, const std::vector<TItem>& items)
{
    TRecord record = Record(name, items);
    record.is_variable = true;
    return record;
}

/// The shown page with what a user sees of it.
class TPage
{
public:
    TPage()
    {
        widget.resize(900, 500);
        widget.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget));
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    }

    void Fill(const TRecords& records)
    {
        widget.Clear_Report();
        widget.Start_Report_Update();
        for (const TRecord& record : records) {
            widget.Add_Report_Data(record);
        }
        widget.End_Report_Update();
    }

    void Offer_And_Choose(const QString& group)
    {
        widget.Update_Report_Groups({group});
        group_box->setCurrentText(group);
    }

    bool Exports_Enabled() const
    {
        EXPECT_EQ(pdf->isEnabled(), csv->isEnabled());
        return pdf->isEnabled();
    }

    QStringList Groups() const
    {
        QStringList groups;
        for (int index = 0; index < group_box->count(); ++index) {
            groups << group_box->itemText(index);
        }
        return groups;
    }

    QStringList Row_Texts(int row) const
    {
        QStringList texts;
        for (int column = 0; column < table->columnCount(); ++column) {
            texts << table->topLevelItem(row)->text(column);
        }
        return texts;
    }

    QStringList Column_Texts(int column) const
    {
        QStringList texts;
        for (int row = 0; row < table->topLevelItemCount(); ++row) {
            texts << table->topLevelItem(row)->text(column);
        }
        return texts;
    }

    QList<QColor> Row_Colours(int row) const
    {
        QList<QColor> colours;
        for (int column = 0; column < table->columnCount(); ++column) {
            colours << table->topLevelItem(row)->foreground(column).color();
        }
        return colours;
    }

    /// The drop-down list that is open for editing in the table, nullptr if there is none.
    QComboBox* Editor() const
    {
        const QList<QComboBox*> editors = table->findChildren<QComboBox*>();
        const auto open =
            std::find_if(editors.begin(), editors.end(), [](const QComboBox* editor) { return editor->isVisible(); });
        return open != editors.end() ? *open : nullptr;
    }

    void Click_Cell(int row, int column)
    {
        const QModelIndex cell = table->model()->index(row, column);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(cell).center());
    }

    TReportWidget widget;
    QComboBox* group_box = widget.findChild<QComboBox*>("report_group");
    TOptionEditorWidget* table = widget.findChild<TOptionEditorWidget*>("report_table");
    QLabel* status = widget.findChild<QLabel*>("report_status");
    QPushButton* pdf = widget.findChild<QPushButton*>("export_pdf");
    QPushButton* csv = widget.findChild<QPushButton*>("export_csv");
    QSignalSpy created{&widget, &TReportWidget::Create_Report};
    QSignalSpy exported{&widget, &TReportWidget::Create_Export_Report};
};

/// Answers the page like the window: with the records of a group, each with the identifier chosen on the page.
class TReceiver
{
public:
    TReceiver(TPage* page, TRecords records) : d_page(page), d_records(std::move(records))
    {
        page->Offer_And_Choose("Scales");
        QObject::connect(&page->widget, &TReportWidget::Create_Report, [this] { Answer(); });
        page->widget.Refresh();
        page->created.clear();
    }

private:
    void Answer()
    {
        for (TRecord& record : d_records) {
            record.identifier = d_page->widget.Current_Identifier(record.name);
        }
        d_page->Fill(d_records);
        d_page->widget.Update_Status_Display(1000.0);
    }

    TPage* d_page;
    TRecords d_records;
};

void Choose_With_Mouse(QComboBox* box, int index)
{
    QTest::mouseClick(box, Qt::LeftButton);
    QAbstractItemView* list = box->view();
    ASSERT_TRUE(QTest::qWaitFor([list] { return list->isVisible(); }));
    const int row_centre = list->visualRect(list->model()->index(index, 0)).center().y();
    const QPoint entry(list->viewport()->width() / 2, row_centre);
    // A release right after the press that opened the list is ignored unless the mouse has moved.
    QTest::mouseMove(list->viewport(), entry - QPoint(15, 0));
    QTest::mouseMove(list->viewport(), entry);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, entry);
}

void Choose_With_Keyboard(QComboBox* box, int index)
{
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QAbstractItemView* list = box->view();
    ASSERT_TRUE(QTest::qWaitFor([list] { return list->isVisible(); }));
    QTest::keyClick(list, Qt::Key_Home);
    for (int step = 0; step < index; ++step) {
        QTest::keyClick(list, Qt::Key_Down);
    }
    QTest::keyClick(list, Qt::Key_Return);
}

using TChoice = std::function<void(QComboBox*, int)>;

struct TChoiceWay
{
    const char* name;
    TChoice choose;
};

const TChoiceWay CHOICE_WAYS[] = {{"with_the_mouse", Choose_With_Mouse}, {"with_the_keyboard", Choose_With_Keyboard}};

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.name;
}

} // namespace

// Layout

TEST(TReportWidget, Starts_without_groups_report_and_exports)
{
    const TPage page;
    EXPECT_EQ(page.Groups(), QStringList({"<no selection>"}));
    EXPECT_EQ(page.group_box->currentIndex(), 0);
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_EQ(page.status->text(), "");
    EXPECT_FALSE(page.Exports_Enabled());
    EXPECT_EQ(page.widget.Output_Mode(), TReportWidget::OUTPUT_PDF);
}

TEST(TReportWidget, Heads_its_seven_columns)
{
    const TPage page;
    ASSERT_EQ(page.table->columnCount(), 7);
    QStringList headers;
    for (int column = 0; column < 7; ++column) {
        headers << page.table->headerItem()->text(column);
    }
    EXPECT_EQ(headers, QStringList({"Description", "Identifier", "Type", "Expression", "Sensitivity",
                                    "Distribution Type", "Value"}));
}

TEST(TReportWidget, Names_its_buttons)
{
    const TPage page;
    EXPECT_EQ(page.pdf->text(), "Export PDF");
    EXPECT_EQ(page.csv->text(), "Export CSV");
}

TEST(TReportWidget, Labels_are_buddies_of_what_they_label)
{
    const TPage page;
    QStringList labels;
    for (const QLabel* label : page.widget.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            labels << label->text() + label->buddy()->objectName();
        }
    }
    labels.sort();
    EXPECT_EQ(labels, QStringList({"Output:export_pdf", "Report Data:report_table", "Report Group:report_group"}));
}

TEST(TReportWidget, Lays_out_a_grid_of_six_rows)
{
    const TPage page;
    const auto* grid = qobject_cast<QGridLayout*>(page.widget.layout());
    ASSERT_NE(grid, nullptr);
    QStringList cells;
    for (int index = 0; index < grid->count(); ++index) {
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(index, &row, &column, &rows, &columns);
        QLayoutItem* item = grid->itemAt(index);
        const auto* label = qobject_cast<QLabel*>(item->widget());
        const QString content = item->spacerItem() != nullptr                   ? "spacer"
                                : item->layout() != nullptr                     ? "buttons"
                                : label != nullptr && label->buddy() != nullptr ? label->text()
                                : item->widget() == nullptr                     ? "nothing"
                                                                                : item->widget()->objectName();
        cells << QStringLiteral("%1 %2 %3x%4 %5").arg(row).arg(column).arg(rows).arg(columns).arg(content);
    }
    cells.sort();
    EXPECT_EQ(cells, QStringList({"0 0 1x1 Report Group:", "0 1 1x1 report_group", "0 2 1x1 spacer",
                                  "1 0 1x1 Report Data:", "1 1 1x2 report_table", "2 1 1x2 report_status", "3 0 1x3 ",
                                  "4 0 1x1 Output:", "4 1 1x2 buttons", "5 0 1x3 spacer"}));
    EXPECT_EQ(grid->itemAtPosition(1, 0)->alignment(), Qt::AlignLeft | Qt::AlignTop);
}

TEST(TReportWidget, Parts_the_exports_by_a_sunken_line)
{
    const TPage page;
    const auto* grid = qobject_cast<QGridLayout*>(page.widget.layout());
    const auto* line = qobject_cast<QFrame*>(grid->itemAtPosition(3, 0)->widget());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->frameShape(), QFrame::HLine);
    EXPECT_EQ(line->frameShadow(), QFrame::Sunken);
}

TEST(TReportWidget, Buttons_stand_side_by_side_at_the_left)
{
    const TPage page;
    EXPECT_EQ(page.pdf->y(), page.csv->y());
    EXPECT_EQ(page.pdf->x(), page.table->x());
    EXPECT_LT(page.pdf->geometry().right(), page.csv->x());
    EXPECT_LT(page.csv->geometry().right(), page.widget.width() / 2);
}

TEST(TReportWidget, Group_box_is_no_wider_than_its_groups_need)
{
    const TPage page;
    EXPECT_EQ(page.group_box->x(), page.table->x());
    EXPECT_EQ(page.group_box->width(), page.group_box->sizeHint().width());
    EXPECT_LT(page.group_box->geometry().right(), page.table->geometry().right());
}

TEST(TReportWidget, Gives_the_height_that_is_left_to_the_table)
{
    const TPage page;
    EXPECT_GT(page.table->height(), page.widget.height() / 2);
    page.widget.window()->resize(900, 800);
    QTest::qWait(0);
    EXPECT_GT(page.csv->geometry().bottom(), 800 - 60);
}

TEST(TReportWidget, Tab_moves_down_the_page)
{
    TPage page;
    page.widget.Start_Report_Update();
    page.widget.End_Report_Update();
    page.group_box->setFocus();
    QStringList names = {QApplication::focusWidget()->objectName()};
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(names, QStringList({"report_group", "report_table", "export_pdf", "export_csv"}));
}

TEST(TReportWidget, Status_shows_plain_text)
{
    const TPage page;
    EXPECT_EQ(page.status->textFormat(), Qt::PlainText);
}

// Report groups

TEST(TReportWidget, Offers_no_selection_and_the_groups_in_their_order)
{
    TPage page;
    page.widget.Update_Report_Groups({"Zero", "All", "Part"});
    EXPECT_EQ(page.Groups(), QStringList({"<no selection>", "Zero", "All", "Part"}));
    EXPECT_EQ(page.group_box->currentText(), "<no selection>");
    page.widget.Update_Report_Groups({"All"});
    EXPECT_EQ(page.Groups(), QStringList({"<no selection>", "All"}));
}

TEST(TReportWidget, Update_reselects_the_chosen_group_without_asking_for_a_report)
{
    TPage page;
    page.widget.Update_Report_Groups({"All", "Part"});
    page.group_box->setCurrentText("Part");
    page.widget.Update_Report_Groups({"Part", "Other", "All"});
    EXPECT_EQ(page.group_box->currentText(), "Part");
    EXPECT_EQ(page.group_box->currentIndex(), 1);
    EXPECT_EQ(page.created.count(), 0);
    EXPECT_EQ(page.exported.count(), 0);
}

TEST(TReportWidget, Update_chooses_no_group_when_the_chosen_one_is_gone)
{
    TPage page;
    page.Offer_And_Choose("Part");
    page.widget.Update_Report_Groups({"All"});
    EXPECT_EQ(page.group_box->currentText(), "<no selection>");
    EXPECT_EQ(page.created.count(), 0);
}

TEST(TReportWidget, Update_tells_groups_apart_by_case_and_in_full)
{
    TPage page;
    page.Offer_And_Choose("Part");
    page.widget.Update_Report_Groups({"piece", "Piece 2"});
    EXPECT_EQ(page.group_box->currentText(), "<no selection>");
}

TEST(TReportWidget, Default_group_is_no_selection_and_leaves_the_table)
{
    TPage page;
    page.Offer_And_Choose("All");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)})});
    page.widget.Set_Default_Report_Group();
    EXPECT_EQ(page.group_box->currentText(), "<no selection>");
    EXPECT_EQ(page.table->topLevelItemCount(), 2);
    EXPECT_EQ(page.created.count(), 0);
}

TEST(TReportWidget, Group_box_takes_its_size_from_the_contents_at_the_first_show)
{
    const TPage page;
    EXPECT_EQ(page.group_box->sizeAdjustPolicy(), QComboBox::AdjustToContentsOnFirstShow);
}

TEST(TReportWidget, Long_group_name_added_after_the_first_show_is_readable)
{
    TPage page;
    const QString group = "All contributions of the long machine";
    page.Offer_And_Choose(group);
    QTest::qWait(0);
    EXPECT_GT(page.group_box->width(), page.group_box->fontMetrics().horizontalAdvance(group));
}

TEST(TReportWidget, Overlong_group_name_is_readable_in_the_opened_list_and_does_not_widen_the_page)
{
    TPage page;
    const QString group = QString("contribution ").repeated(8);
    page.Offer_And_Choose(group);
    QTest::qWait(0);
    EXPECT_EQ(page.widget.width(), 900);
    EXPECT_LE(page.widget.minimumSizeHint().width(), 900);
    QTest::mouseClick(page.group_box, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&page] { return page.group_box->view()->isVisible(); }));
    const int width = std::min(page.group_box->fontMetrics().horizontalAdvance(group), 700);
    EXPECT_GE(page.group_box->view()->width(), width);
    page.group_box->hidePopup();
}

// Report

class TReportWidgetChoice : public ::testing::TestWithParam<TChoiceWay>
{};

TEST_P(TReportWidgetChoice, Group_asks_for_its_report_once)
{
    TPage page;
    page.widget.Update_Report_Groups({"All", "Part"});
    GetParam().choose(page.group_box, 2);
    ASSERT_EQ(page.created.count(), 1);
    EXPECT_EQ(page.created.at(0).at(0).toString(), "Part");
    EXPECT_EQ(page.exported.count(), 0);
}

TEST_P(TReportWidgetChoice, Group_chosen_again_asks_for_its_report_again)
{
    TPage page;
    page.Offer_And_Choose("All");
    GetParam().choose(page.group_box, 1);
    ASSERT_EQ(page.created.count(), 1);
    EXPECT_EQ(page.created.at(0).at(0).toString(), "All");
}

TEST_P(TReportWidgetChoice, No_selection_clears_the_table_and_leaves_the_status)
{
    TPage page;
    page.Offer_And_Choose("All");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)}, "Scale 1")});
    page.widget.Update_Status_Display(500.0);
    GetParam().choose(page.group_box, 0);
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_FALSE(page.Exports_Enabled());
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "");
    EXPECT_EQ(page.status->text(), "Uc at length 500.000 mm: 0.0030 mm");
    EXPECT_EQ(page.created.count(), 0);
}

TEST(TReportWidget, Refresh_asks_for_the_report_of_the_chosen_group)
{
    TPage page;
    page.Offer_And_Choose("All");
    page.widget.Refresh();
    ASSERT_EQ(page.created.count(), 1);
    EXPECT_EQ(page.created.at(0).at(0).toString(), "All");
}

TEST(TReportWidget, Refresh_without_a_group_clears_the_page)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)})});
    page.widget.Refresh();
    EXPECT_EQ(page.created.count(), 0);
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_FALSE(page.Exports_Enabled());
}

TEST(TReportWidget, Component_row_shows_name_and_identifier)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)}, "Scale 2")});
    EXPECT_EQ(page.Row_Texts(0), QStringList({"Scale", "Scale 2", "", "", "", "", ""}));
}

TEST(TReportWidget, Item_row_shows_every_text)
{
    TPage page;
    page.Fill({Record("Scale", {{"Error", "Length Dependent", "a * L", "1.250000", "Triangular", "Type A", 2.449490,
                                 "0.001234", 0.001234}})});
    ASSERT_EQ(page.table->topLevelItemCount(), 2);
    EXPECT_EQ(page.Row_Texts(1),
              QStringList({"Error", "", "Length Dependent", "a * L", "1.250000", "Triangular", "0.001234"}));
}

TEST(TReportWidget, Rows_stand_in_the_order_of_the_records)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Zero", "Constant", 0.0), Item("Error", "Constant", 0.1)}),
               Variable_Record("Room", {Item("Air", "Constant", 0.2)}), Record("Empty", {}),
               Record("Probe", {Item("Tip", "Constant", 0.3)})});
    EXPECT_EQ(page.Column_Texts(0), QStringList({"Scale", "Zero", "Error", "Room", "Air", "Probe", "Tip"}));
    EXPECT_EQ(page.Column_Texts(6), QStringList({"", "0.000000", "0.100000", "", "0.200000", "", "0.300000"}));
}

TEST(TReportWidget, Names_are_shown_as_they_are)
{
    TPage page;
    page.Fill({Record("%1 <b>Scale</b>", {Item("%2 & Error", "Constant", 0.1)})});
    EXPECT_EQ(page.Column_Texts(0), QStringList({"%1 <b>Scale</b>", "%2 & Error"}));
}

TEST(TReportWidget, Only_the_component_name_is_bold)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)})});
    QFont bold = page.table->font();
    bold.setWeight(75);
    EXPECT_EQ(page.table->topLevelItem(0)->font(0), bold);
    EXPECT_FALSE(page.table->topLevelItem(0)->data(1, Qt::FontRole).isValid());
    EXPECT_FALSE(page.table->topLevelItem(1)->data(0, Qt::FontRole).isValid());
}

struct TIdentifierRow
{
    const char* name;
    const char* identifier;
    const char* shown;
};

class TReportWidgetIdentifier : public ::testing::TestWithParam<TIdentifierRow>
{};

TEST_P(TReportWidgetIdentifier, Shows_the_choice)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)}, GetParam().identifier)});
    EXPECT_EQ(page.table->OptionResult(0), GetParam().shown);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), GetParam().identifier);
}

INSTANTIATE_TEST_SUITE_P(TReportWidget, TReportWidgetIdentifier,
                         ::testing::Values(TIdentifierRow{"of_none_as_default", "", "[Default]"},
                                           TIdentifierRow{"of_the_default", "[Default]", "[Default]"},
                                           TIdentifierRow{"of_an_identifier", "Scale 2", "Scale 2"},
                                           TIdentifierRow{"of_another_case_as_default", "scale 2", "[Default]"},
                                           TIdentifierRow{"of_an_unknown_one_as_default", "Scale 9", "[Default]"}),
                         Row_Name<TIdentifierRow>);

TEST(TReportWidget, Identifier_cell_of_a_component_offers_the_identifiers)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)}, "Scale 1")});
    page.Click_Cell(0, 1);
    QComboBox* editor = page.Editor();
    ASSERT_NE(editor, nullptr);
    QStringList offered;
    for (int index = 0; index < editor->count(); ++index) {
        offered << editor->itemText(index);
    }
    EXPECT_EQ(offered, IDENTIFIERS);
    EXPECT_EQ(editor->currentText(), "Scale 1");
}

TEST(TReportWidget, No_other_cell_opens_an_editor)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.001)})});
    EXPECT_EQ(page.table->topLevelItem(1)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 7; ++column) {
            if (row == 0 && column == 1) {
                continue;
            }
            page.Click_Cell(row, column);
            QTest::keyClick(page.table, Qt::Key_F2);
            EXPECT_EQ(page.table->viewport()->findChild<QWidget*>(), nullptr) << row << ", " << column;
        }
    }
}

TEST(TReportWidget, Record_without_items_has_no_row_but_an_identifier)
{
    TPage page;
    page.Fill({Record("Room", {}, "Scale 1")});
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_EQ(page.widget.Current_Identifier("Room"), "Scale 1");
}

TEST(TReportWidget, Record_without_items_belongs_to_no_row_whatever_was_handed_in)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    TRecord room = Record("Room", {});
    room.selection_index = 0;
    page.Fill({room, Record("Scale", {Item("Error", "Constant", 0.001)})});
    page.widget.Identifier_Selection_Changed(0, "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("Room"), "");
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
}

TEST(TReportWidget, Current_identifier_is_that_of_the_first_record_of_exactly_that_name)
{
    TPage page;
    page.Fill({Record("scale", {}, "Scale 1"), Record("Scale", {}, "Scale 2"), Record("Scale", {}, "[Default]")});
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("scale"), "Scale 1");
    EXPECT_EQ(page.widget.Current_Identifier("Probe"), "");
}

TEST(TReportWidget, Item_that_does_not_evaluate_is_red_and_disables_the_exports)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Zero", "Constant", 0.1), Failed_Item("Error")})});
    EXPECT_FALSE(page.Exports_Enabled());
    EXPECT_EQ(page.Row_Texts(2), QStringList({"Error", "", "Constant", "a + b", "1.500000", "Rectangular", "ERR"}));
    EXPECT_EQ(page.Row_Colours(2), QList<QColor>({RED, RED, RED, RED, RED, RED, RED}));
    EXPECT_FALSE(page.table->topLevelItem(0)->data(0, Qt::ForegroundRole).isValid());
    EXPECT_FALSE(page.table->topLevelItem(1)->data(0, Qt::ForegroundRole).isValid());
}

TEST(TReportWidget, Later_record_without_error_leaves_the_exports_disabled)
{
    TPage page;
    page.Fill({Variable_Record("Room", {Failed_Item("Air")}), Record("Scale", {Item("Error", "Constant", 0.1)})});
    EXPECT_FALSE(page.Exports_Enabled());
}

TEST(TReportWidget, Value_text_that_only_resembles_the_error_is_none)
{
    TPage page;
    TItem item = Item("Error", "Constant", 0.004);
    item.value_text = "err";
    page.Fill({Record("Scale", {item})});
    page.widget.Update_Status_Display(1.0);
    EXPECT_TRUE(page.Exports_Enabled());
    EXPECT_FALSE(page.table->topLevelItem(1)->data(6, Qt::ForegroundRole).isValid());
    EXPECT_EQ(page.status->text(), "Uc at length 1.000 mm: 0.0040 mm");
}

TEST(TReportWidget, Report_without_error_enables_the_exports_again)
{
    TPage page;
    page.Fill({Record("Scale", {Failed_Item("Error")})});
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.1)})});
    EXPECT_TRUE(page.Exports_Enabled());
    EXPECT_EQ(page.Column_Texts(0), QStringList({"Scale", "Error"}));
}

TEST(TReportWidget, Clearing_disables_the_exports_and_forgets_the_records)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.1)}, "Scale 1")});
    page.widget.Update_Status_Display(10.0);
    page.widget.Clear_Report();
    EXPECT_FALSE(page.Exports_Enabled());
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "");
    EXPECT_EQ(page.status->text(), "Uc at length 10.000 mm: 0.1000 mm");
    EXPECT_EQ(page.table->columnCount(), 7);
}

TEST(TReportWidget, Table_is_silent_between_start_and_end)
{
    TPage page;
    page.widget.Start_Report_Update();
    EXPECT_TRUE(page.table->signalsBlocked());
    page.widget.Add_Report_Data(Record("Scale", {Item("Error", "Constant", 0.1)}));
    EXPECT_TRUE(page.table->signalsBlocked());
    page.widget.End_Report_Update();
    EXPECT_FALSE(page.table->signalsBlocked());
}

struct TCallRow
{
    const char* name;
    QString calls; ///< S: start, E: end, C: clear
};

class TReportWidgetBlocking : public ::testing::TestWithParam<std::tuple<TCallRow, bool>>
{};

TEST_P(TReportWidgetBlocking, Ends_in_the_state_before)
{
    TPage page;
    const auto& [row, was_blocked] = GetParam();
    page.table->blockSignals(was_blocked);
    for (const QChar call : row.calls) {
        if (call == 'S') {
            page.widget.Start_Report_Update();
        } else if (call == 'E') {
            page.widget.End_Report_Update();
        } else {
            page.widget.Clear_Report();
        }
    }
    EXPECT_EQ(page.table->signalsBlocked(), was_blocked);
}

INSTANTIATE_TEST_SUITE_P(
    TReportWidget, TReportWidgetBlocking,
    ::testing::Combine(::testing::Values(TCallRow{"one_cycle", "CSE"}, TCallRow{"two_cycles", "CSECSE"},
                                         TCallRow{"nested", "SSEE"}, TCallRow{"two_starts_and_one_end", "SSE"},
                                         TCallRow{"one_start_and_two_ends", "SEE"}, TCallRow{"end_alone", "E"},
                                         TCallRow{"clear_alone", "C"}, TCallRow{"cleared_inside", "SCE"},
                                         TCallRow{"cleared_behind", "SEC"},
                                         TCallRow{"new_cycle_before_the_end", "SCSE"}),
                       ::testing::Bool()),
    [](const auto& row) {
        return std::string(std::get<0>(row.param).name) +
               (std::get<1>(row.param) ? "_of_a_blocked_table" : "_of_a_free_table");
    });

TEST(TReportWidget, Columns_fit_their_contents_after_the_update)
{
    TPage page;
    TItem item = Item("A rather long name of an item", "Length Dependent", 0.1);
    item.expression = "sqrt(sumsq(scale_error, scale_resolution, thermal_expansion) * 2)";
    page.Fill({Record("A rather long name of a component", {item})});
    const QAbstractItemView* view = page.table;
    for (const int column : {0, 2, 3, 4, 5, 6}) {
        EXPECT_EQ(page.table->columnWidth(column),
                  std::max(view->sizeHintForColumn(column), page.table->header()->sectionSizeHint(column)))
            << column;
    }
}

TEST(TReportWidget, Values_stay_whole_when_the_window_gets_narrow)
{
    TPage page;
    page.widget.resize(1400, 500);
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.1)})});
    const QAbstractItemView* view = page.table;
    const int value_width = page.table->columnWidth(6);
    EXPECT_EQ(value_width, view->sizeHintForColumn(6));
    page.widget.resize(page.table->x() + page.table->columnViewportPosition(6) + value_width / 2, 500);
    ASSERT_TRUE(QTest::qWaitFor([&page] { return page.table->horizontalScrollBar()->maximum() > 0; }));
    EXPECT_EQ(page.table->columnWidth(6), value_width);
}

TEST(TReportWidget, Identifier_column_is_wide_enough_for_every_choice)
{
    TPage page;
    TRecord record = Record("Scale", {Item("Error", "Constant", 0.1)});
    record.identifiers << "Reference scale of the institute";
    page.Fill({record});
    page.Click_Cell(0, 1);
    ASSERT_NE(page.Editor(), nullptr);
    EXPECT_GE(page.Editor()->width(), page.Editor()->sizeHint().width());
}

// Status

TEST(TCombinedUncertainty, Is_zero_without_values)
{
    EXPECT_EQ(TCombinedUncertainty().Uc(), 0.0);
}

TEST(TCombinedUncertainty, Combines_the_two_partial_root_sum_squares)
{
    // Each grouping of these values rounds to another last digit.
    TCombinedUncertainty two_constants;
    two_constants.Add("Constant", 0.09);
    two_constants.Add("Constant", 0.096);
    two_constants.Add("Length Dependent", 0.084);
    EXPECT_EQ(two_constants.Uc(), 0.15611534197509222);

    TCombinedUncertainty one_constant;
    one_constant.Add("Constant", 0.09);
    one_constant.Add("Length Dependent", 0.096);
    one_constant.Add("Length Dependent", 0.084);
    EXPECT_EQ(one_constant.Uc(), 0.15611534197509228);
}

TEST(TCombinedUncertainty, Counts_every_other_type_as_length_dependent)
{
    TCombinedUncertainty uncertainty;
    uncertainty.Add("Constant", 0.09);
    uncertainty.Add("constant", 0.096);
    uncertainty.Add("", 0.084);
    EXPECT_EQ(uncertainty.Uc(), 0.15611534197509228);
}

struct TStatusRow
{
    const char* name;
    TRecords records;
    double length;
    const char* text;
};

class TReportWidgetStatus : public ::testing::TestWithParam<TStatusRow>
{};

TEST_P(TReportWidgetStatus, Shows_the_combined_uncertainty)
{
    TPage page;
    page.Fill(GetParam().records);
    page.widget.Update_Status_Display(GetParam().length);
    EXPECT_EQ(page.status->text(), GetParam().text);
}

const TStatusRow STATUS_ROWS[] = {
    {"of_no_record", {}, 1000.0, "Uc at length 1000.000 mm: 0.0000 mm"},
    {"of_a_record_without_items", {Record("Scale", {})}, 1000.0, "Uc at length 1000.000 mm: 0.0000 mm"},
    {"of_a_constant_and_a_length_dependent_item",
     {Record("Scale", {Item("Zero", "Constant", 0.003), Item("Error", "Length Dependent", 0.004)})},
     1000.0,
     "Uc at length 1000.000 mm: 0.0050 mm"},
    {"of_several_records",
     {Record("Scale", {Item("Zero", "Constant", 0.002), Item("Error", "Constant", 0.003)}),
      Record("Probe", {Item("Tip", "Length Dependent", 0.006)})},
     12.3456,
     "Uc at length 12.346 mm: 0.0070 mm"},
    {"of_negative_values",
     {Record("Scale", {Item("Zero", "Constant", -0.003), Item("Error", "Constant", -0.004)})},
     0.0,
     "Uc at length 0.000 mm: 0.0050 mm"},
    {"without_report_data_variables",
     {Variable_Record("Room", {Item("Air", "Constant", 5.0)}), Record("Scale", {Item("Zero", "Constant", 0.25)})},
     100000.0,
     "Uc at length 100000.000 mm: 0.2500 mm"},
    {"of_variables_alone_as_zero",
     {Variable_Record("Room", {Item("Air", "Constant", 5.0)})},
     1.0,
     "Uc at length 1.000 mm: 0.0000 mm"},
    {"as_an_error_if_one_item_fails",
     {Record("Scale", {Item("Zero", "Constant", 0.003), Failed_Item("Error"), Item("Tip", "Constant", 0.1)})},
     1000.0,
     "Uc at length 1000.000 mm: ERR"},
    {"as_an_error_if_an_item_of_a_later_record_fails",
     {Record("Scale", {Item("Zero", "Constant", 0.003)}), Record("Probe", {Failed_Item("Tip")})},
     0.5,
     "Uc at length 0.500 mm: ERR"},
    {"without_the_errors_of_report_data_variables",
     {Variable_Record("Room", {Failed_Item("Air")}), Record("Scale", {Item("Zero", "Constant", 0.003)})},
     1000.0,
     "Uc at length 1000.000 mm: 0.0030 mm"}};

INSTANTIATE_TEST_SUITE_P(TReportWidget, TReportWidgetStatus, ::testing::ValuesIn(STATUS_ROWS), Row_Name<TStatusRow>);

// Identifiers

TEST_P(TReportWidgetChoice, Identifier_runs_the_report_again_while_its_editor_is_open)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)}),
                                     Record("Probe", {Item("Tip", "Constant", 0.004)})});
    page.Click_Cell(2, 1);
    ASSERT_NE(page.Editor(), nullptr);
    GetParam().choose(page.Editor(), 2);

    ASSERT_EQ(page.created.count(), 1);
    EXPECT_EQ(page.created.at(0).at(0).toString(), "Scales");
    EXPECT_EQ(page.widget.Current_Identifier("Probe"), "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "");
    EXPECT_EQ(page.Column_Texts(0), QStringList({"Scale", "Error", "Probe", "Tip"}));
    EXPECT_EQ(page.Column_Texts(1), QStringList({"[Default]", "", "Scale 2", ""}));
    EXPECT_EQ(page.status->text(), "Uc at length 1000.000 mm: 0.0050 mm");
}

TEST_P(TReportWidgetChoice, Identifier_can_be_chosen_again_and_again)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.Click_Cell(0, 1);
    QStringList chosen;
    for (const int index : {1, 2, 0, 2}) {
        ASSERT_TRUE(QTest::qWaitFor([&page] { return page.Editor() != nullptr; }));
        GetParam().choose(page.Editor(), index);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        chosen << page.widget.Current_Identifier("Scale");
    }
    EXPECT_EQ(chosen, QStringList({"Scale 1", "Scale 2", "[Default]", "Scale 2"}));
    EXPECT_EQ(page.created.count(), 4);
}

TEST_P(TReportWidgetChoice, Identifier_leaves_the_keyboard_in_its_row)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)}),
                                     Record("Probe", {Item("Tip", "Constant", 0.004)})});
    page.Click_Cell(2, 1);
    ASSERT_NE(page.Editor(), nullptr);
    GetParam().choose(page.Editor(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(page.table->currentIndex(), page.table->model()->index(2, 1));
    ASSERT_NE(page.Editor(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), page.Editor());
    EXPECT_EQ(page.Editor()->currentText(), "Scale 1");
}

TEST_P(TReportWidgetChoice, Identifier_is_safe_when_the_report_fails)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)})});
    QObject::connect(&page.widget, &TReportWidget::Create_Report, [&page] {
        page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)})});
        page.widget.Clear_Report();
        page.widget.Set_Default_Report_Group();
    });
    page.Click_Cell(0, 1);
    ASSERT_NE(page.Editor(), nullptr);
    GetParam().choose(page.Editor(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(page.created.count(), 1);
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_EQ(page.Editor(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), page.table);
}

TEST_P(TReportWidgetChoice, Identifier_is_set_for_every_record_of_the_component)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Item("Zero", "Constant", 0.003)}), Record("Probe", {Item("Tip", "Constant", 0.003)}),
               Record("Scale", {Item("Error", "Constant", 0.004)})});
    page.Click_Cell(4, 1);
    ASSERT_NE(page.Editor(), nullptr);
    GetParam().choose(page.Editor(), 2);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("Probe"), "");
    EXPECT_EQ(page.created.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(TReportWidget, TReportWidgetChoice, ::testing::ValuesIn(CHOICE_WAYS), Row_Name<TChoiceWay>);

TEST(TReportWidget, Arrow_keys_step_through_the_identifiers)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.Click_Cell(0, 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 1");
    EXPECT_EQ(page.created.count(), 3);
}

TEST(TReportWidget, Identifier_is_reached_and_chosen_without_the_mouse)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.group_box->setFocus();
    QTest::keyClick(page.group_box, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), page.table);
    QTest::keyClick(page.table, Qt::Key_Right);
    ASSERT_NE(page.Editor(), nullptr);
    Choose_With_Keyboard(page.Editor(), 2);
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
    EXPECT_EQ(page.created.count(), 1);
}

TEST(TReportWidget, Tab_leads_from_an_open_identifier_to_the_exports)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.Click_Cell(0, 1);
    ASSERT_NE(page.Editor(), nullptr);
    for (int step = 0; step < 30 && QApplication::focusWidget() != page.pdf; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), page.pdf);
}

TEST(TReportWidget, Scrolled_table_stays_where_it_is_when_an_identifier_is_chosen)
{
    TPage page;
    TRecords records;
    for (int number = 1; number <= 40; ++number) {
        records.push_back(Record(QString("Scale %1").arg(number), {Item("Error", "Constant", 0.001)}));
    }
    const TReceiver receiver(&page, records);
    page.table->verticalScrollBar()->setValue(31);
    ASSERT_EQ(page.table->verticalScrollBar()->value(), 31);
    page.Click_Cell(36, 1);
    ASSERT_NE(page.Editor(), nullptr);
    Choose_With_Keyboard(page.Editor(), 1);
    EXPECT_EQ(page.widget.Current_Identifier("Scale 19"), "Scale 1");
    EXPECT_EQ(page.table->verticalScrollBar()->value(), 31);
}

TEST(TReportWidget, Selection_of_an_unknown_row_only_runs_the_report_again)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)}, "Scale 1")});
    page.widget.Identifier_Selection_Changed(1, "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 1");
    EXPECT_EQ(page.created.count(), 1);
}

TEST(TReportWidget, Selection_without_a_group_clears_the_page)
{
    TPage page;
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.widget.Identifier_Selection_Changed(0, "Scale 2");
    EXPECT_EQ(page.table->topLevelItemCount(), 0);
    EXPECT_EQ(page.created.count(), 0);
}

TEST(TReportWidget, Selection_by_the_program_takes_no_focus)
{
    TPage page;
    const TReceiver receiver(&page, {Record("Scale", {Item("Error", "Constant", 0.003)})});
    page.group_box->setFocus();
    page.widget.Identifier_Selection_Changed(0, "Scale 2");
    EXPECT_EQ(page.widget.Current_Identifier("Scale"), "Scale 2");
    EXPECT_EQ(QApplication::focusWidget(), page.group_box);
    EXPECT_EQ(page.Editor(), nullptr);
}

TEST(TReportWidget, Filling_the_table_is_no_selection)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)}, "Scale 1")});
    EXPECT_EQ(page.created.count(), 0);
}

// Export

struct TExportRow
{
    const char* name;
    const char* button;
    bool by_keyboard;
    int mode;
};

class TReportWidgetExport : public ::testing::TestWithParam<TExportRow>
{};

TEST_P(TReportWidgetExport, Asks_for_the_export_of_the_group)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Item("Error", "Constant", 0.003)})});
    auto* button = page.widget.findChild<QPushButton*>(GetParam().button);
    if (GetParam().by_keyboard) {
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Space);
    } else {
        QTest::mouseClick(button, Qt::LeftButton);
    }
    EXPECT_EQ(page.widget.Output_Mode(), GetParam().mode);
    ASSERT_EQ(page.exported.count(), 1);
    EXPECT_EQ(page.exported.at(0).at(0).toString(), "Scales");
    EXPECT_EQ(page.created.count(), 0);
}

INSTANTIATE_TEST_SUITE_P(TReportWidget, TReportWidgetExport,
                         ::testing::Values(TExportRow{"as_pdf_with_the_mouse", "export_pdf", false, 0},
                                           TExportRow{"as_pdf_with_the_keyboard", "export_pdf", true, 0},
                                           TExportRow{"as_csv_with_the_mouse", "export_csv", false, 1},
                                           TExportRow{"as_csv_with_the_keyboard", "export_csv", true, 1}),
                         Row_Name<TExportRow>);

TEST(TReportWidget, Output_mode_is_set_before_the_export_is_asked_for)
{
    TPage page;
    std::vector<int> modes;
    QObject::connect(&page.widget, &TReportWidget::Create_Export_Report,
                     [&] { modes.push_back(page.widget.Output_Mode()); });
    page.widget.Generate_CSV();
    page.widget.Generate_PDF();
    page.widget.Generate_CSV();
    EXPECT_EQ(modes, std::vector<int>({1, 0, 1}));
}

TEST(TReportWidget, Output_mode_outlasts_the_report)
{
    TPage page;
    page.widget.Generate_CSV();
    page.Fill({});
    page.widget.Clear_Report();
    EXPECT_EQ(page.widget.Output_Mode(), TReportWidget::OUTPUT_CSV);
}

TEST(TReportWidget, Disabled_buttons_ask_for_nothing)
{
    TPage page;
    page.Offer_And_Choose("Scales");
    page.Fill({Record("Scale", {Failed_Item("Error")})});
    QTest::mouseClick(page.csv, Qt::LeftButton);
    QTest::mouseClick(page.pdf, Qt::LeftButton);
    EXPECT_EQ(page.exported.count(), 0);
    EXPECT_EQ(page.widget.Output_Mode(), TReportWidget::OUTPUT_PDF);
}
