#include "core/optioneditor.h"

#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QFileDialog>
#include <QHeaderView>
#include <QLayout>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {

const QStringList CHOICES{"[no selection]", "Scale", "Probe"};

QStringList Texts(const QTreeWidgetItem* item)
{
    QStringList texts;
    for (int column = 0; column < 7; ++column) {
        texts += item->text(column);
    }
    return texts;
}

class TOptionEditorWidgetTest : public ::testing::Test
{
protected:
    // A list among other widgets, one option of each kind in it, in the order of the rows below.
    enum TRow
    {
        TEXT,
        PATH,
        CHECK,
        DATE_TIME,
        LIST,
        OTHER_LIST
    };

    void Fill()
    {
        d_list->AddLineEditorOption("Text", "value");
        d_list->AddPathEditorOption("Path", d_folder.path());
        d_list->AddCheckOption("Check", true);
        d_list->AddDateTimeEditorOption("Date", QDateTime(QDate(2024, 2, 29), QTime(15, 5, 9)));
        d_list->AddSelectionList("List", CHOICES, 1);
        d_list->AddSelectionList("Other list", CHOICES, 2);
    }

    void Fill_And_Show()
    {
        Fill();
        d_list->resize(500, 250);
        d_other->move(0, 260);
        Show_Active(&d_window);
    }

    QModelIndex Cell(int row, int column = 1) const { return d_list->model()->index(row, column); }

    // Clicks the value of a row and returns its editor.
    template <typename T>
    T* Edit(int row)
    {
        Click_Entry(d_list, Cell(row));
        T* editor = Open_Editor<T>(d_list);
        if (editor == nullptr) {
            Fail_Missing("editor");
        }
        return editor;
    }

    bool Has_Editor() const { return Open_Editor<QWidget>(d_list) != nullptr; }

    bool Closes_Editor() const
    {
        return QTest::qWaitFor([this]() { return !Has_Editor(); });
    }

    // Opens the list of choices by the keyboard.
    static void Open_List(const QComboBox* combo)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4);
        if (!QTest::qWaitFor([combo]() { return combo->view()->hasFocus(); })) {
            Fail_Missing("opened list of choices");
        }
    }

    const int d_double_click_interval = QApplication::doubleClickInterval();
    QWidget d_window;
    TOptionEditorWidget* d_list = new TOptionEditorWidget(&d_window);
    QLineEdit* d_other = new QLineEdit(&d_window);
    QTemporaryDir d_folder;
};

// --- An empty list -------------------------------------------------------------------------------------------------

TEST_F(TOptionEditorWidgetTest, Starts_as_an_empty_flat_list_of_two_columns)
{
    EXPECT_EQ(d_list->topLevelItemCount(), 0);
    EXPECT_EQ(d_list->columnCount(), 2);
    EXPECT_EQ(d_list->layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(d_list->editTriggers(), QAbstractItemView::AllEditTriggers);
    EXPECT_TRUE(d_list->alternatingRowColors());
    EXPECT_EQ(d_list->textElideMode(), Qt::ElideRight);
    EXPECT_FALSE(d_list->rootIsDecorated());
    EXPECT_FALSE(d_list->itemsExpandable());
    EXPECT_FALSE(d_list->isAnimated());
}

TEST_F(TOptionEditorWidgetTest, Has_a_delegate_of_its_own_without_a_parent)
{
    const auto* delegate = qobject_cast<TOptionItemDelegate*>(d_list->itemDelegate());

    ASSERT_NE(delegate, nullptr);
    EXPECT_EQ(delegate->parent(), nullptr);
}

TEST_F(TOptionEditorWidgetTest, Stays_left_to_right_in_a_right_to_left_window)
{
    d_window.setLayoutDirection(Qt::RightToLeft);

    EXPECT_EQ(d_list->layoutDirection(), Qt::LeftToRight);
}

// --- Adding options ------------------------------------------------------------------------------------------------

const Qt::ItemFlags PLAIN_FLAGS = Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;

TEST_F(TOptionEditorWidgetTest, Adds_a_text_option)
{
    EXPECT_EQ(d_list->AddLineEditorOption("Name", "value", "a", "b", "c", "d", "e"), 0);

    const QTreeWidgetItem* item = d_list->topLevelItem(0);
    EXPECT_EQ(Texts(item), QStringList({"Name", "value", "a", "b", "c", "d", "e"}));
    EXPECT_EQ(item->data(1, Qt::UserRole), QVariant(1));
    EXPECT_EQ(item->flags(), PLAIN_FLAGS);
    EXPECT_FALSE(item->data(1, Qt::CheckStateRole).isValid());
}

TEST_F(TOptionEditorWidgetTest, Adds_a_text_option_with_a_whole_number)
{
    d_list->AddLineEditorOption("Name", -1024, "a", "b", "c", "d", "e");

    EXPECT_EQ(Texts(d_list->topLevelItem(0)), QStringList({"Name", "-1024", "a", "b", "c", "d", "e"}));
    EXPECT_EQ(d_list->topLevelItem(0)->data(1, Qt::UserRole), QVariant(1));
}

TEST_F(TOptionEditorWidgetTest, Adds_a_path_option)
{
    EXPECT_EQ(d_list->AddPathEditorOption("Name", "/tmp/"), 0);

    const QTreeWidgetItem* item = d_list->topLevelItem(0);
    EXPECT_EQ(Texts(item), QStringList({"Name", "/tmp/", "", "", "", "", ""}));
    EXPECT_EQ(item->data(1, Qt::UserRole), QVariant(2));
    EXPECT_EQ(item->flags(), PLAIN_FLAGS);
}

TEST_F(TOptionEditorWidgetTest, Adds_a_check_option_without_a_text)
{
    EXPECT_EQ(d_list->AddCheckOption("Name", true, "a", "b", "c", "d", "e"), 0);
    EXPECT_EQ(d_list->AddCheckOption("Name", false), 1);

    const QTreeWidgetItem* item = d_list->topLevelItem(0);
    EXPECT_EQ(Texts(item), QStringList({"Name", "", "a", "b", "c", "d", "e"}));
    EXPECT_EQ(item->data(1, Qt::UserRole), QVariant(3));
    EXPECT_EQ(item->flags(), PLAIN_FLAGS | Qt::ItemIsUserCheckable);
    EXPECT_EQ(item->checkState(1), Qt::Checked);
    EXPECT_EQ(d_list->topLevelItem(1)->checkState(1), Qt::Unchecked);
}

TEST_F(TOptionEditorWidgetTest, Adds_a_date_time_option)
{
    EXPECT_EQ(d_list->AddDateTimeEditorOption("Name", QDateTime(QDate(2024, 2, 29), QTime(15, 5, 9))), 0);

    const QTreeWidgetItem* item = d_list->topLevelItem(0);
    EXPECT_EQ(Texts(item), QStringList({"Name", "Thu Feb 29 03:05:09 2024 PM", "", "", "", "", ""}));
    EXPECT_EQ(item->data(1, Qt::UserRole), QVariant(4));
    EXPECT_EQ(item->flags(), PLAIN_FLAGS);
}

TEST_F(TOptionEditorWidgetTest, Adds_a_selection_list)
{
    EXPECT_EQ(d_list->AddSelectionList("Name", CHOICES, 2, "a", "b", "c", "d", "e"), 0);

    const QTreeWidgetItem* item = d_list->topLevelItem(0);
    EXPECT_EQ(Texts(item), QStringList({"Name", "Probe", "a", "b", "c", "d", "e"}));
    EXPECT_EQ(item->data(1, Qt::UserRole), QVariant(CHOICES));
    EXPECT_EQ(item->flags(), PLAIN_FLAGS);
}

TEST_F(TOptionEditorWidgetTest, Each_option_added_returns_its_row)
{
    EXPECT_EQ(d_list->AddLineEditorOption("0", "value"), 0);
    EXPECT_EQ(d_list->AddLineEditorOption("1", 1), 1);
    EXPECT_EQ(d_list->AddPathEditorOption("2", "/"), 2);
    EXPECT_EQ(d_list->AddCheckOption("3", false), 3);
    EXPECT_EQ(d_list->AddDateTimeEditorOption("4", QDateTime()), 4);
    EXPECT_EQ(d_list->AddSelectionList("5", CHOICES, 0), 5);
    EXPECT_EQ(d_list->topLevelItemCount(), 6);
}

TEST_F(TOptionEditorWidgetTest, Keeps_the_callers_texts_in_columns_that_it_does_not_show)
{
    d_list->AddLineEditorOption("Name", "value", "a", "b", "c", "d", "e");

    EXPECT_EQ(d_list->header()->count(), 2);
}

TEST_F(TOptionEditorWidgetTest, Shows_the_callers_texts_once_it_has_seven_columns)
{
    d_list->setColumnCount(7);
    d_list->AddSelectionList("Name", CHOICES, 1, "a", "b", "c", "d", "e");

    EXPECT_EQ(d_list->model()->index(0, 6).data().toString(), "e");
}

TEST(TOptionEditorWidgetDeathTest, AddSelectionList_asserts_that_the_default_is_one_of_the_items)
{
    TOptionEditorWidget list;

    EXPECT_DEATH(list.AddSelectionList("Name", CHOICES, 3),
                 "\\.\\./core/optioneditor\\.cpp: AddSelectionList: DefaultIndex < Items\\.size\\(\\)");
    EXPECT_DEATH(list.AddSelectionList("Name", QStringList(), 0), "DefaultIndex < Items\\.size\\(\\)");
}

// --- Reading and changing options ----------------------------------------------------------------------------------

TEST_F(TOptionEditorWidgetTest, OptionName_and_OptionResult_read_every_kind)
{
    Fill();
    QStringList names;
    QStringList results;
    for (int row = 0; row < d_list->topLevelItemCount(); ++row) {
        names += d_list->OptionName(row);
        results += d_list->OptionResult(row);
    }

    EXPECT_EQ(names, QStringList({"Text", "Path", "Check", "Date", "List", "Other list"}));
    EXPECT_EQ(results, QStringList({"value", d_folder.path(), "Yes", "Thu Feb 29 03:05:09 2024 PM", "Scale", "Probe"}));
}

TEST_F(TOptionEditorWidgetTest, OptionResult_of_an_unchecked_option_is_No)
{
    d_list->AddCheckOption("Check", false);

    EXPECT_EQ(d_list->OptionResult(0), "No");
}

TEST_F(TOptionEditorWidgetTest, OptionResult_of_a_list_whose_one_choice_is_a_figure_is_that_figure)
{
    d_list->AddSelectionList("List", {"3"}, 0);

    EXPECT_EQ(d_list->OptionResult(0), "3");
}

TEST_F(TOptionEditorWidgetTest, Rows_that_are_not_there_read_as_empty)
{
    Fill();

    for (const int row : {-1, 6, 7, 1000}) {
        EXPECT_EQ(d_list->OptionName(row), "");
        EXPECT_EQ(d_list->OptionResult(row), "");
    }
}

TEST_F(TOptionEditorWidgetTest, ChangeOptionText_changes_the_last_row_and_returns_true)
{
    d_list->AddLineEditorOption("First", "1");
    d_list->AddLineEditorOption("Last", "2");

    EXPECT_TRUE(d_list->ChangeOptionText(1, "new"));
    EXPECT_EQ(d_list->OptionResult(0), "1");
    EXPECT_EQ(d_list->OptionResult(1), "new");

    EXPECT_TRUE(d_list->ChangeOptionText(0, -7));
    EXPECT_EQ(d_list->OptionResult(0), "-7");
}

TEST_F(TOptionEditorWidgetTest, ChangeOptionText_refuses_the_number_of_options_and_any_other_row_that_is_not_there)
{
    d_list->AddLineEditorOption("First", "1");

    for (const int row : {1, 2, 1000, -1}) {
        EXPECT_FALSE(d_list->ChangeOptionText(row, "new"));
        EXPECT_FALSE(d_list->ChangeOptionText(row, 5));
    }
    EXPECT_EQ(d_list->OptionResult(0), "1");
}

TEST_F(TOptionEditorWidgetTest, ChangeSelectionListOption_shows_that_choice_and_emits_nothing)
{
    Fill();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    d_list->ChangeSelectionListOption(LIST, 2);

    EXPECT_EQ(d_list->OptionResult(LIST), "Probe");
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(TOptionEditorWidgetTest, ChangeSelectionListOption_leaves_what_is_no_choice_of_a_selection_list)
{
    Fill();

    d_list->ChangeSelectionListOption(LIST, 3);
    d_list->ChangeSelectionListOption(LIST, -1);
    d_list->ChangeSelectionListOption(TEXT, 0);
    d_list->ChangeSelectionListOption(6, 0);
    d_list->ChangeSelectionListOption(-1, 0);

    EXPECT_EQ(d_list->OptionResult(LIST), "Scale");
    EXPECT_EQ(d_list->OptionResult(TEXT), "value");
}

TEST_F(TOptionEditorWidgetTest, Edit_List_Changed_changes_the_text_and_emits_the_row_and_the_text)
{
    Fill();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    d_list->Edit_List_Changed(LIST, "Probe");

    EXPECT_EQ(d_list->OptionResult(LIST), "Probe");
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Probe"}));
}

TEST_F(TOptionEditorWidgetTest, A_receiver_of_a_choice_reads_the_new_value)
{
    Fill();
    QString value;
    QObject::connect(d_list, &TOptionEditorWidget::SelectionListItemChanged,
                     [this, &value](int index) { value = d_list->OptionResult(index); });

    d_list->Edit_List_Changed(LIST, "Probe");

    EXPECT_EQ(value, "Probe");
}

// --- Editing -------------------------------------------------------------------------------------------------------

TEST_F(TOptionEditorWidgetTest, The_first_column_never_opens_an_editor)
{
    Fill_And_Show();

    for (int row = TEXT; row <= OTHER_LIST; ++row) {
        Click_Entry(d_list, Cell(row, 0));
        EXPECT_FALSE(Has_Editor());
        QTest::mouseDClick(d_list->viewport(), Qt::LeftButton, Qt::NoModifier,
                           d_list->visualRect(Cell(row, 0)).center());
        EXPECT_FALSE(Has_Editor());
        QTest::keyClick(d_list, Qt::Key_F2);
        QTest::keyClick(d_list, Qt::Key_A);
        EXPECT_FALSE(Has_Editor());
    }
}

TEST_F(TOptionEditorWidgetTest, Columns_after_the_second_never_open_an_editor)
{
    d_list->setColumnCount(7);
    Fill_And_Show();

    Click_Entry(d_list, Cell(TEXT, 2));

    EXPECT_FALSE(Has_Editor());
}

TEST_F(TOptionEditorWidgetTest, A_row_that_is_no_option_opens_no_editor)
{
    Fill_And_Show();

    for (const QVariant& kind : {QVariant(), QVariant(0), QVariant(5), QVariant("1"), QVariant(1.0)}) {
        auto* item = new QTreeWidgetItem(d_list, {"Item", "text"});
        item->setFlags(PLAIN_FLAGS);
        item->setData(1, Qt::UserRole, kind);

        Click_Entry(d_list, Cell(d_list->topLevelItemCount() - 1));

        EXPECT_FALSE(Has_Editor());
    }
}

TEST_F(TOptionEditorWidgetTest, Editors_are_frameless_opaque_and_carry_the_options_name)
{
    Fill_And_Show();

    const auto* text = Edit<QLineEdit>(TEXT);
    EXPECT_FALSE(text->hasFrame());
    EXPECT_TRUE(text->autoFillBackground());
    EXPECT_EQ(text->accessibleName(), "Text");

    const auto* path = Edit<TPathEdit>(PATH);
    EXPECT_FALSE(path->hasFrame());
    EXPECT_TRUE(path->autoFillBackground());
    EXPECT_EQ(path->accessibleName(), "Path");

    const auto* date_time = Edit<QDateTimeEdit>(DATE_TIME);
    EXPECT_FALSE(date_time->hasFrame());
    EXPECT_TRUE(date_time->autoFillBackground());
    EXPECT_EQ(date_time->accessibleName(), "Date");
    EXPECT_EQ(date_time->displayFormat(), "ddd MMM dd hh:mm:ss yyyy AP");
    EXPECT_EQ(date_time->text(), "Thu Feb 29 03:05:09 2024 PM");

    const auto* combo = Edit<QComboBox>(LIST);
    EXPECT_FALSE(combo->hasFrame());
    EXPECT_TRUE(combo->autoFillBackground());
    EXPECT_EQ(combo->accessibleName(), "List");
}

TEST_F(TOptionEditorWidgetTest, Rows_are_a_quarter_higher_than_usual)
{
    Fill_And_Show();
    QStyleOptionViewItem option;
    option.font = d_list->font();
    option.fontMetrics = d_list->fontMetrics();
    const QSize usual = QItemDelegate().sizeHint(option, Cell(TEXT));

    EXPECT_EQ(d_list->itemDelegate()->sizeHint(option, Cell(TEXT)),
              QSize(usual.width(), usual.height() + usual.height() / 4));
}

TEST_F(TOptionEditorWidgetTest, Return_commits_a_text)
{
    Fill_And_Show();
    auto* editor = Edit<QLineEdit>(TEXT);
    EXPECT_EQ(editor->text(), "value");

    Replace_Text(editor, "new");
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(TEXT), "new");
    EXPECT_EQ(QApplication::focusWidget(), d_list);
}

TEST_F(TOptionEditorWidgetTest, Escape_leaves_the_old_text)
{
    Fill_And_Show();
    auto* editor = Edit<QLineEdit>(TEXT);

    Replace_Text(editor, "new");
    QTest::keyClick(editor, Qt::Key_Escape);

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(TEXT), "value");
}

TEST_F(TOptionEditorWidgetTest, A_text_is_committed_when_the_focus_goes_elsewhere)
{
    Fill_And_Show();
    Replace_Text(Edit<QLineEdit>(TEXT), "new");

    d_other->setFocus();

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(TEXT), "new");
}

TEST_F(TOptionEditorWidgetTest, A_text_is_committed_when_the_focus_is_taken_away)
{
    Fill_And_Show();
    Replace_Text(Edit<QLineEdit>(TEXT), "new");

    QApplication::focusWidget()->clearFocus();

    EXPECT_EQ(d_list->OptionResult(TEXT), "new");
    EXPECT_TRUE(Closes_Editor());
}

TEST_F(TOptionEditorWidgetTest, Clicking_the_check_box_toggles_it_and_opens_no_editor)
{
    Fill_And_Show();
    const QRect cell = d_list->visualRect(Cell(CHECK));
    const QPoint box(cell.left() + 8, cell.center().y());

    QTest::mouseClick(d_list->viewport(), Qt::LeftButton, Qt::NoModifier, box);
    EXPECT_EQ(d_list->OptionResult(CHECK), "No");
    EXPECT_EQ(d_list->topLevelItem(CHECK)->checkState(1), Qt::Unchecked);

    QTest::mouseClick(d_list->viewport(), Qt::LeftButton, Qt::NoModifier, box);
    EXPECT_EQ(d_list->OptionResult(CHECK), "Yes");
    EXPECT_FALSE(Has_Editor());
}

TEST_F(TOptionEditorWidgetTest, The_keyboard_reaches_every_value_and_toggles_a_check_box)
{
    Fill_And_Show();
    QTest::mouseClick(d_other, Qt::LeftButton);
    QTest::keyClick(d_other, Qt::Key_Backtab);
    ASSERT_EQ(QApplication::focusWidget(), d_list);
    d_list->setCurrentItem(d_list->topLevelItem(CHECK), 0);

    QTest::keyClick(d_list, Qt::Key_Right);
    EXPECT_EQ(d_list->currentColumn(), 1);
    QTest::keyClick(d_list, Qt::Key_Space);
    EXPECT_EQ(d_list->OptionResult(CHECK), "No");

    QTest::keyClick(d_list, Qt::Key_Down);
    EXPECT_NE(Open_Editor<QDateTimeEdit>(d_list), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_NE(Open_Editor<QComboBox>(d_list), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(Closes_Editor());
    QTest::keyClick(d_list, Qt::Key_Left);
    EXPECT_EQ(d_list->currentIndex(), Cell(LIST, 0));
    QTest::keyClick(d_list, Qt::Key_Left);
    EXPECT_EQ(d_list->currentIndex(), Cell(LIST, 0));
}

TEST_F(TOptionEditorWidgetTest, A_date_and_time_is_edited_in_its_own_editor)
{
    Fill_And_Show();
    auto* editor = Edit<QDateTimeEdit>(DATE_TIME);
    EXPECT_EQ(editor->date(), QDate(2024, 2, 29));
    EXPECT_EQ(editor->time(), QTime(15, 5, 9));

    editor->setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClick(editor, Qt::Key_Up);
    editor->setCurrentSection(QDateTimeEdit::AmPmSection);
    QTest::keyClick(editor, Qt::Key_Down);
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(DATE_TIME), "Fri Feb 28 03:05:09 2025 AM");
}

TEST_F(TOptionEditorWidgetTest, Escape_leaves_the_old_date_and_time)
{
    Fill_And_Show();
    auto* editor = Edit<QDateTimeEdit>(DATE_TIME);

    editor->setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClick(editor, Qt::Key_Up);
    QTest::keyClick(editor, Qt::Key_Escape);

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(DATE_TIME), "Thu Feb 29 03:05:09 2024 PM");
}

class TOptionEditorNoDateTest : public TOptionEditorWidgetTest, public ::testing::WithParamInterface<const char*>
{};

TEST_P(TOptionEditorNoDateTest, Opens_the_editor_on_a_sane_one)
{
    Fill_And_Show();
    d_list->ChangeOptionText(DATE_TIME, GetParam());

    const auto* editor = Edit<QDateTimeEdit>(DATE_TIME);

    EXPECT_EQ(editor->date(), QDate(2000, 1, 1));
    EXPECT_EQ(editor->time(), QTime(0, 0));
}

INSTANTIATE_TEST_SUITE_P(, TOptionEditorNoDateTest,
                         ::testing::Values("some day", "Thu Feb 30 03:05:09 2024 PM", "Thu Feb 29 03:65:09 2024 PM"));

TEST_F(TOptionEditorWidgetTest, A_change_from_outside_shows_in_the_open_editor)
{
    Fill_And_Show();
    const auto* editor = Edit<QComboBox>(LIST);
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    d_list->ChangeSelectionListOption(LIST, 2);

    EXPECT_EQ(editor->currentText(), "Probe");
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(TOptionEditorWidgetTest, Clearing_and_filling_again_commits_no_editor_and_emits_nothing)
{
    Fill_And_Show();
    Replace_Text(Edit<QLineEdit>(TEXT), "new");
    const QSignalSpy changed(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    const QSignalSpy committed(d_list->itemDelegate(), &QAbstractItemDelegate::commitData);

    d_list->clear();
    Fill();
    QCoreApplication::processEvents();

    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(committed.count(), 0);
    EXPECT_EQ(d_list->OptionResult(TEXT), "value");
    EXPECT_FALSE(Has_Editor());
}

// --- Selection lists -----------------------------------------------------------------------------------------------

TEST_F(TOptionEditorWidgetTest, Opening_a_selection_list_shows_its_choices_and_emits_nothing)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    const auto* combo = Edit<QComboBox>(LIST);

    QStringList choices;
    for (int index = 0; index < combo->count(); ++index) {
        choices += combo->itemText(index);
    }
    EXPECT_EQ(choices, CHOICES);
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(TOptionEditorWidgetTest, A_text_that_is_no_choice_selects_none_case_counts)
{
    Fill_And_Show();
    d_list->ChangeOptionText(LIST, "scale");

    EXPECT_EQ(Edit<QComboBox>(LIST)->currentIndex(), -1);
}

TEST_F(TOptionEditorWidgetTest, Choosing_by_keyboard_changes_the_value_and_emits_row_and_text)
{
    Fill_And_Show();
    auto* combo = Edit<QComboBox>(LIST);
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    QTest::keyClick(combo, Qt::Key_Down);

    EXPECT_EQ(d_list->OptionResult(LIST), "Probe");
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Probe"}));

    QTest::keyClick(combo, Qt::Key_Return);
    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(LIST), "Probe");
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(TOptionEditorWidgetTest, Choosing_from_the_opened_list_changes_the_value_of_that_row)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    Choose_Entry(Edit<QComboBox>(LIST), "Probe");

    Choose_Entry(Edit<QComboBox>(OTHER_LIST), "[no selection]");

    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Probe"}));
    EXPECT_EQ(spy.at(1), QVariantList({int(OTHER_LIST), "[no selection]"}));
    EXPECT_EQ(d_list->OptionResult(LIST), "Probe");
    EXPECT_EQ(d_list->OptionResult(OTHER_LIST), "[no selection]");
}

TEST_F(TOptionEditorWidgetTest, Choosing_the_entry_that_is_shown_by_mouse_emits_it_once)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    auto* combo = Edit<QComboBox>(LIST);

    Choose_Entry(combo, "Scale");
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Scale"}));
    EXPECT_EQ(d_list->OptionResult(LIST), "Scale");

    Choose_Entry(combo, "Scale");
    EXPECT_EQ(spy.count(), 2);
    QTest::keyClick(combo, Qt::Key_Return);
    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(TOptionEditorWidgetTest, Choosing_the_entry_that_is_shown_by_Return_emits_it_once)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    const auto* combo = Edit<QComboBox>(OTHER_LIST);

    Open_List(combo);
    QTest::keyClick(combo->view(), Qt::Key_Return);

    ASSERT_TRUE(QTest::qWaitFor([combo]() { return !combo->view()->isVisible(); }));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(OTHER_LIST), "Probe"}));
    EXPECT_EQ(d_list->OptionResult(OTHER_LIST), "Probe");
}

TEST_F(TOptionEditorWidgetTest, Choosing_another_entry_by_Return_emits_it_once)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    const auto* combo = Edit<QComboBox>(LIST);

    Open_List(combo);
    QTest::keyClick(combo->view(), Qt::Key_Up);
    EXPECT_EQ(spy.count(), 0);
    QTest::keyClick(combo->view(), Qt::Key_Return);

    ASSERT_TRUE(QTest::qWaitFor([combo]() { return !combo->view()->isVisible(); }));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "[no selection]"}));
}

TEST_F(TOptionEditorWidgetTest, Keys_that_go_back_to_the_entry_after_a_list_was_left_emit_each_step_once)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    auto* combo = Edit<QComboBox>(LIST);
    Open_List(combo);
    QTest::keyClick(combo->view(), Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([combo]() { return !combo->view()->isVisible(); }));

    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Down); // already the last
    QTest::keyClick(combo, Qt::Key_Up);

    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Probe"}));
    EXPECT_EQ(spy.at(1), QVariantList({int(LIST), "Scale"}));
}

TEST_F(TOptionEditorWidgetTest, A_slow_click_that_opens_the_list_and_is_released_over_the_entry_emits_nothing)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    auto* combo = Edit<QComboBox>(LIST);
    Open_List(combo);
    QTest::keyClick(combo->view(), Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([combo]() { return combo->hasFocus(); }));
    const QSignalSpy taken_for_a_choice(combo, qOverload<int>(&QComboBox::activated));
    QApplication::setDoubleClickInterval(1); // any later release is a slow one

    QTest::mousePress(combo, Qt::LeftButton);
    QWidget* list = combo->view()->viewport();
    ASSERT_TRUE(QTest::qWaitFor([list]() { return list->isVisible(); }));
    const QPoint entry = combo->view()->visualRect(combo->view()->currentIndex()).center();
    const bool is_released = QTest::qWaitFor([list, entry, combo]() {
        QTest::mouseRelease(list, Qt::LeftButton, Qt::NoModifier, entry);
        return !combo->view()->isVisible();
    });

    QApplication::setDoubleClickInterval(d_double_click_interval);
    EXPECT_TRUE(is_released);
    EXPECT_EQ(taken_for_a_choice.count(), 1); // by Qt
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(d_list->OptionResult(LIST), "Scale");
}

// The keys that leave a selection list without a choice.
struct TLeave
{
    const char* case_name;
    QKeySequence list_key; // leaves the opened list; empty where it is not opened at all
    Qt::Key editor_key;
};

void PrintTo(const TLeave& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class TOptionEditorLeaveTest : public TOptionEditorWidgetTest, public ::testing::WithParamInterface<TLeave>
{};

TEST_P(TOptionEditorLeaveTest, Emits_nothing_and_leaves_the_value)
{
    Fill_And_Show();
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);
    auto* combo = Edit<QComboBox>(LIST);

    if (!GetParam().list_key.isEmpty()) {
        Open_List(combo);
        QTest::keyClick(combo->view(), Qt::Key_Down);
        QTest::keySequence(combo->view(), GetParam().list_key);
        ASSERT_TRUE(QTest::qWaitFor([combo]() { return combo->hasFocus(); }));
        EXPECT_EQ(combo->currentText(), "Scale");
    }
    QTest::keyClick(combo, GetParam().editor_key);
    EXPECT_TRUE(QTest::qWaitFor([this, combo]() { return Open_Editor<QComboBox>(d_list) != combo; }));

    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(d_list->OptionResult(LIST), "Scale");
}

INSTANTIATE_TEST_SUITE_P(, TOptionEditorLeaveTest,
                         ::testing::Values(TLeave{"Editor_by_Escape", {}, Qt::Key_Escape},
                                           TLeave{"Editor_by_Return", {}, Qt::Key_Return},
                                           TLeave{"Editor_by_Tab", {}, Qt::Key_Tab},
                                           TLeave{"List_by_Escape", Qt::Key_Escape, Qt::Key_Return},
                                           TLeave{"List_by_F4", Qt::Key_F4, Qt::Key_Return},
                                           TLeave{"List_by_Alt_and_Down", QKeySequence("Alt+Down"), Qt::Key_Return}),
                         [](const auto& test) { return test.param.case_name; });

TEST_F(TOptionEditorWidgetTest, A_receiver_may_clear_and_fill_the_list_while_its_editor_is_open)
{
    Fill_And_Show();
    QObject::connect(d_list, &TOptionEditorWidget::SelectionListItemChanged, [this]() {
        d_list->clear();
        Fill();
    });

    QTest::keyClick(Edit<QComboBox>(LIST), Qt::Key_Down);
    QCoreApplication::processEvents();
    Choose_Entry(Edit<QComboBox>(OTHER_LIST), "Scale");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_FALSE(Has_Editor());
    EXPECT_EQ(d_list->topLevelItemCount(), 6);
    EXPECT_EQ(d_list->OptionResult(OTHER_LIST), "Probe");
    EXPECT_EQ(QApplication::focusWidget(), d_list);
}

TEST_F(TOptionEditorWidgetTest, The_focus_stays_in_the_list_that_a_receiver_fills_anew)
{
    Fill_And_Show();
    // So that another widget follows the closed editor.
    QWidget::setTabOrder(d_other, d_list);
    QObject::connect(d_list, &TOptionEditorWidget::SelectionListItemChanged, [this]() {
        d_list->clear();
        Fill();
    });

    QTest::keyClick(Edit<QComboBox>(LIST), Qt::Key_Down);

    EXPECT_EQ(QApplication::focusWidget(), d_list);
}

TEST_F(TOptionEditorWidgetTest, A_receiver_may_delete_the_row_whose_editor_is_open)
{
    Fill_And_Show();
    QObject::connect(d_list, &TOptionEditorWidget::SelectionListItemChanged,
                     [this](int index) { delete d_list->topLevelItem(index); });

    Choose_Entry(Edit<QComboBox>(LIST), "Probe");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(d_list->topLevelItemCount(), 5);
    EXPECT_EQ(d_list->OptionName(4), "Other list");
}

TEST_F(TOptionEditorWidgetTest, A_choice_arrives_in_its_row_after_a_row_before_it_has_gone)
{
    Fill_And_Show();
    auto* combo = Edit<QComboBox>(OTHER_LIST);
    delete d_list->topLevelItem(LIST);
    const QSignalSpy spy(d_list, &TOptionEditorWidget::SelectionListItemChanged);

    QTest::keyClick(combo, Qt::Key_Up);

    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({int(LIST), "Scale"}));
    EXPECT_EQ(d_list->OptionName(LIST), "Other list");
    EXPECT_EQ(d_list->OptionResult(LIST), "Scale");
}

TEST_F(TOptionEditorWidgetTest, A_receiver_may_clear_and_fill_the_list_when_the_entry_shown_was_chosen)
{
    Fill_And_Show();
    int choices = 0;
    QObject::connect(d_list, &TOptionEditorWidget::SelectionListItemChanged, [this, &choices]() {
        ++choices;
        d_list->clear();
        Fill();
    });

    Choose_Entry(Edit<QComboBox>(LIST), "Scale");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(choices, 1);
    EXPECT_FALSE(Has_Editor());
    EXPECT_EQ(QApplication::focusWidget(), d_list);
}

// --- The end of a list whose editor is open ------------------------------------------------------------------------

// A page that owns a list and listens to the user's acts in it. The connections outlive the page's own part.
class TOptionPage : public QWidget
{
public:
    explicit TOptionPage(QStringList* heard) : d_heard(heard)
    {
        d_list->resize(500, 250);
        connect(d_list, &TOptionEditorWidget::SelectionListItemChanged, this, &TOptionPage::Hear_Choice);
        connect(d_list, &QTreeWidget::itemSelectionChanged, this, &TOptionPage::Hear_Selection);
    }

    void Hear_Choice() { d_heard->append("choice " + d_name); }
    void Hear_Selection() { d_heard->append("selection " + d_name); }

    TOptionEditorWidget* List() const { return d_list; }

private:
    QStringList* d_heard;
    QString d_name = "page"; // gone as soon as the page is half destroyed
    TOptionEditorWidget* d_list = new TOptionEditorWidget(this);
};

enum class TEnd
{
    LIST,
    PAGE,
    PAGE_THAT_IS_A_WINDOW,
    WINDOW
};

// Which of them is deleted, and the row whose editor has the focus then.
class TOptionEditorEndTest : public ::testing::TestWithParam<std::tuple<TEnd, int>>
{
protected:
    enum TRow
    {
        TEXT,
        PATH,
        DATE_TIME,
        LIST,
        OPENED_LIST
    };

    void Fill_And_Show()
    {
        TOptionEditorWidget* list = d_page->List();
        list->AddLineEditorOption("Text", "value");
        list->AddPathEditorOption("Path", "/");
        list->AddDateTimeEditorOption("Date", QDateTime(QDate(2024, 2, 29), QTime(15, 5, 9)));
        list->AddSelectionList("List", CHOICES, 1);
        list->AddSelectionList("Opened list", CHOICES, 1);
        if (d_end != TEnd::PAGE_THAT_IS_A_WINDOW) {
            d_page->setParent(d_window.get());
        }
        d_page->resize(500, 250);
        d_window->resize(500, 250);
        Show_Active(d_page->window());
    }

    // Opens the editor and leaves it with something to commit, or with its list of choices open.
    void Edit()
    {
        TOptionEditorWidget* list = d_page->List();
        Click_Entry(list, list->model()->index(d_row, 1));
        QWidget* editor = Open_Editor<QWidget>(list);
        ASSERT_NE(editor, nullptr);
        if (d_row < LIST) {
            QTest::keyClick(editor, Qt::Key_1);
        } else if (d_row == OPENED_LIST) {
            QTest::keyClick(editor, Qt::Key_F4);
            const auto* choices = qobject_cast<QComboBox*>(editor)->view();
            ASSERT_TRUE(QTest::qWaitFor([choices]() { return choices->hasFocus(); }));
        }
    }

    void Delete()
    {
        switch (d_end) {
        case TEnd::LIST:
            delete d_page->List();
            break;
        case TEnd::WINDOW:
            delete d_window.release();
            break;
        default:
            delete d_page;
        }
    }

    const TEnd d_end = std::get<0>(GetParam());
    const int d_row = std::get<1>(GetParam());
    QStringList d_heard;
    std::unique_ptr<QWidget> d_window = std::make_unique<QWidget>();
    TOptionPage* d_page = new TOptionPage(&d_heard);
};

TEST_P(TOptionEditorEndTest, Is_silent)
{
    Fill_And_Show();
    Edit();
    d_heard.clear();

    Delete();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(d_heard, QStringList());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

std::string End_Name(const ::testing::TestParamInfo<std::tuple<TEnd, int>>& test)
{
    const QStringList ends{"List", "Page", "Page_that_is_a_window", "Window"};
    const QStringList editors{"a_text", "a_path", "a_date_and_time", "a_selection_list", "an_opened_selection_list"};
    const auto [end, row] = test.param;

    return QString(ends.at(int(end)) + "_with_" + editors.at(row)).toStdString();
}

INSTANTIATE_TEST_SUITE_P(, TOptionEditorEndTest,
                         ::testing::Combine(::testing::Values(TEnd::LIST, TEnd::PAGE, TEnd::PAGE_THAT_IS_A_WINDOW,
                                                              TEnd::WINDOW),
                                            ::testing::Range(0, 5)),
                         End_Name);

TEST_F(TOptionEditorWidgetTest, The_list_may_go_before_a_browse_that_was_asked_for_begins)
{
    Fill_And_Show();
    const TModalAnswer no_dialog_opens;
    QTest::mouseClick(Child<QToolButton>(Edit<TPathEdit>(PATH), "browse_button"), Qt::LeftButton);

    delete d_list;
    QCoreApplication::processEvents();
    Replace_Text(d_other, "still here");

    EXPECT_EQ(no_dialog_opens.Seen_Count(), 0);
    EXPECT_EQ(d_other->text(), "still here");
}

TEST_F(TOptionEditorWidgetTest, The_list_may_go_before_the_commit_of_a_Return_arrives)
{
    Fill_And_Show();
    auto* editor = Edit<QDateTimeEdit>(DATE_TIME);
    QTest::keyClick(editor, Qt::Key_Up);
    QTest::keyClick(editor, Qt::Key_Return);

    delete d_list;
    QCoreApplication::processEvents();
    Replace_Text(d_other, "still here");

    EXPECT_EQ(d_other->text(), "still here");
}

// --- The delegate --------------------------------------------------------------------------------------------------

TEST(TOptionItemDelegate, Combo_Item_Changed_without_a_combo_box_emits_nothing)
{
    TOptionEditorWidget list;
    TOptionItemDelegate delegate(&list);
    const QSignalSpy spy(&delegate, &TOptionItemDelegate::List_Item_Changed);

    delegate.Combo_Item_Changed(0);

    EXPECT_EQ(spy.count(), 0);
}

TEST(TOptionItemDelegate, Combo_Item_Changed_ignores_an_index_that_the_combo_box_does_not_have)
{
    TOptionEditorWidget list;
    TOptionItemDelegate delegate(&list);
    QComboBox combo;
    combo.addItems(CHOICES);
    QObject::connect(&combo, qOverload<int>(&QComboBox::activated), &delegate,
                     &TOptionItemDelegate::Combo_Item_Changed);
    const QSignalSpy spy(&delegate, &TOptionItemDelegate::List_Item_Changed);

    emit combo.activated(-1);
    emit combo.activated(3);
    EXPECT_EQ(spy.count(), 0);

    emit combo.activated(2);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({0, "Probe"})); // no editor was filled yet: row 0
}

TEST(TOptionItemDelegate, Leaves_editors_that_are_not_its_own)
{
    TOptionEditorWidget list;
    list.AddSelectionList("List", CHOICES, 1);
    const QModelIndex index = list.model()->index(0, 1);
    const TOptionItemDelegate delegate(&list);
    QToolButton button;
    button.setText("own");

    delegate.setEditorData(&button, index);
    delegate.setModelData(&button, list.model(), index);

    EXPECT_EQ(button.text(), "own");
    EXPECT_EQ(index.data().toString(), "Scale");
}

TEST(TOptionItemDelegate, Combo_Item_Changed_of_a_row_that_is_gone_emits_nothing)
{
    TOptionEditorWidget list;
    list.AddSelectionList("List", CHOICES, 1);
    TOptionItemDelegate delegate(&list);
    QComboBox combo;
    combo.addItems(CHOICES);
    delegate.setEditorData(&combo, list.model()->index(0, 1));
    QObject::connect(&combo, qOverload<int>(&QComboBox::activated), &delegate,
                     &TOptionItemDelegate::Combo_Item_Changed);
    const QSignalSpy spy(&delegate, &TOptionItemDelegate::List_Item_Changed);

    list.clear();
    emit combo.activated(2);

    EXPECT_EQ(spy.count(), 0);
}

TEST(TOptionItemDelegate, CommitAndCloseEditor_commits_and_closes_its_sender)
{
    TOptionEditorWidget list;
    TOptionItemDelegate delegate(&list);
    QLineEdit line_edit;
    TPathEdit path_edit;
    QDateTimeEdit date_time_edit;
    QComboBox combo;
    std::vector<QWidget*> committed;
    std::vector<QWidget*> closed;
    QObject::connect(&delegate, &QAbstractItemDelegate::commitData,
                     [&committed](QWidget* editor) { committed.push_back(editor); });
    QObject::connect(&delegate, &QAbstractItemDelegate::closeEditor,
                     [&closed](QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
                         EXPECT_EQ(hint, QAbstractItemDelegate::NoHint);
                         closed.push_back(editor);
                     });

    const std::vector<QWidget*> editors{&line_edit, &path_edit, &date_time_edit, &combo};
    for (QWidget* editor : editors) {
        // Any signal of the editor will do.
        QObject::connect(editor, &QWidget::windowTitleChanged, &delegate, &TOptionItemDelegate::commitAndCloseEditor);
        editor->setWindowTitle("changed");
    }

    EXPECT_EQ(committed, editors);
    EXPECT_EQ(closed, editors);
}

TEST(TOptionItemDelegate, CommitAndCloseEditor_leaves_other_senders_alone)
{
    TOptionEditorWidget list;
    TOptionItemDelegate delegate(&list);
    QToolButton button;
    const QSignalSpy committed(&delegate, &QAbstractItemDelegate::commitData);
    QObject::connect(&button, &QToolButton::clicked, &delegate, &TOptionItemDelegate::commitAndCloseEditor);

    button.click();
    delegate.commitAndCloseEditor();

    EXPECT_EQ(committed.count(), 0);
}

// --- Paths ---------------------------------------------------------------------------------------------------------

TEST_F(TOptionEditorWidgetTest, Return_commits_a_typed_path)
{
    Fill_And_Show();
    auto* editor = Edit<TPathEdit>(PATH);
    EXPECT_EQ(editor->text(), d_folder.path());

    Replace_Text(editor, "/typed");
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_TRUE(Closes_Editor());
    EXPECT_EQ(d_list->OptionResult(PATH), "/typed");
}

TEST_F(TOptionEditorWidgetTest, Browsing_to_a_directory_yields_a_path_with_a_separator_at_its_end)
{
    Fill_And_Show();
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("budgets"));
    TModalAnswer answer;
    answer.Choose_File(d_folder.filePath("budgets"));

    QTest::mouseClick(Child<QToolButton>(Edit<TPathEdit>(PATH), "browse_button"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&answer]() { return answer.Seen_Count() == 1; }));

    EXPECT_EQ(answer.Seen(0).title, "Select a directory path");
    EXPECT_EQ(answer.Seen(0).directory, d_folder.path());
    EXPECT_EQ(d_list->OptionResult(PATH), d_folder.filePath("budgets") + "/");
}

TEST_F(TOptionEditorWidgetTest, Browsing_to_the_root_adds_no_second_separator)
{
    Fill();
    TModalAnswer answer;
    answer.Choose_File("/");

    d_list->Path_Edit_Browse(d_folder.path(), PATH, 1);

    EXPECT_EQ(d_list->OptionResult(PATH), "/");
}

TEST_F(TOptionEditorWidgetTest, Browsing_shows_directories_alone_and_leaves_links_as_they_are)
{
    Fill();
    QFileDialog::Options options;
    QTimer::singleShot(0, [&options]() {
        const auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        options = dialog != nullptr ? dialog->options() : QFileDialog::Options();
    });
    TModalAnswer answer;
    answer.Cancel_File();

    d_list->Path_Edit_Browse(d_folder.path(), PATH, 1);

    EXPECT_EQ(options, QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks | QFileDialog::DontUseNativeDialog);
}

TEST_F(TOptionEditorWidgetTest, A_cancelled_browse_changes_nothing)
{
    Fill_And_Show();
    TModalAnswer answer;
    answer.Cancel_File();

    QTest::mouseClick(Child<QToolButton>(Edit<TPathEdit>(PATH), "browse_button"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&answer]() { return answer.Seen_Count() == 1; }));

    EXPECT_EQ(d_list->OptionResult(PATH), d_folder.path());
}

TEST_F(TOptionEditorWidgetTest, Browsing_for_a_row_that_is_gone_changes_nothing)
{
    d_list->AddLineEditorOption("Text", "value");
    TModalAnswer answer;
    answer.Choose_File(d_folder.path());

    d_list->Path_Edit_Browse("/", 1, 1);

    EXPECT_EQ(answer.Seen_Count(), 1);
    EXPECT_EQ(d_list->OptionResult(0), "value");
}

TEST(TPathEdit, Holds_a_button_with_an_ellipsis_at_its_right_end)
{
    TPathEdit edit;
    Show_Active(&edit);
    edit.resize(300, 24);
    const auto* button = Child<QToolButton>(&edit, "browse_button");

    EXPECT_EQ(button->text(), "...");
    EXPECT_EQ(button->accessibleName(), "Browse");
    EXPECT_EQ(edit.layout()->spacing(), 0);
    EXPECT_EQ(edit.layout()->contentsMargins(), QMargins());
    EXPECT_EQ(button->geometry().right(), edit.rect().right());
    EXPECT_GE(edit.textMargins().right(), button->width());
}

TEST(TPathEdit, A_click_on_the_button_emits_the_text_and_the_cell)
{
    TPathEdit edit;
    edit.Set_Cell(3, 1);
    edit.setText("/typed");
    Show_Active(&edit);
    const QSignalSpy spy(&edit, &TPathEdit::Browse_Path);

    QTest::mouseClick(Child<QToolButton>(&edit, "browse_button"), Qt::LeftButton);

    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0), QVariantList({"/typed", 3, 1}));
}

// --- Dates ---------------------------------------------------------------------------------------------------------

class TOptionDateTime : public ::testing::TestWithParam<QLocale::Language>
{
protected:
    void SetUp() override { QLocale::setDefault(QLocale(GetParam())); }
    void TearDown() override { QLocale::setDefault(QLocale::c()); }
};

// Opens the editor of the only option and commits it as it is.
QString Recommitted(const TOptionEditorWidget* list)
{
    const QModelIndex cell = list->model()->index(0, 1);
    QAbstractItemDelegate* delegate = list->itemDelegate();
    QWidget* editor = delegate->createEditor(list->viewport(), QStyleOptionViewItem(), cell);

    delegate->setEditorData(editor, cell);
    delegate->setModelData(editor, list->model(), cell);
    delete editor;
    return list->OptionResult(0);
}

TEST_P(TOptionDateTime, Comes_back_from_its_editor_as_it_went_in)
{
    for (int hour = 0; hour < 24; ++hour) {
        TOptionEditorWidget list;
        // Every month and every day of the week comes up; at some of these hours clocks are changed in some zone.
        const QDateTime value(QDate(2024, 1 + hour / 2, 1 + hour), QTime(hour, 59 - hour, hour), Qt::UTC);
        list.AddDateTimeEditorOption("Date", value);
        const QString text = list.OptionResult(0);

        EXPECT_EQ(text, QLocale::c().toString(value, "ddd MMM dd hh:mm:ss yyyy AP"));
        EXPECT_EQ(Recommitted(&list), text);
    }
}

INSTANTIATE_TEST_SUITE_P(, TOptionDateTime,
                         ::testing::Values(QLocale::C, QLocale::English, QLocale::German, QLocale::French,
                                           QLocale::Arabic, QLocale::Japanese),
                         [](const auto& test) { return QLocale::languageToString(test.param).toStdString(); });

struct TDateTimeText
{
    const char* case_name;
    QDateTime value;
    QString text;
};

void PrintTo(const TDateTimeText& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class TOptionDateTimeText : public ::testing::TestWithParam<TDateTimeText>
{};

TEST_P(TOptionDateTimeText, Is_on_a_twelve_hour_clock)
{
    TOptionEditorWidget list;
    list.AddDateTimeEditorOption("Date", GetParam().value);

    EXPECT_EQ(list.OptionResult(0), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , TOptionDateTimeText,
    ::testing::Values(TDateTimeText{"Midnight", {{2024, 1, 1}, {0, 0, 0}}, "Mon Jan 01 12:00:00 2024 AM"},
                      TDateTimeText{"Before_noon", {{2024, 5, 31}, {11, 59, 59}}, "Fri May 31 11:59:59 2024 AM"},
                      TDateTimeText{"Noon", {{2024, 12, 31}, {12, 0, 0}}, "Tue Dec 31 12:00:00 2024 PM"},
                      TDateTimeText{"Evening", {{1999, 8, 8}, {23, 1, 2}}, "Sun Aug 08 11:01:02 1999 PM"},
                      TDateTimeText{"None", {}, ""}),
    [](const auto& test) { return test.param.case_name; });

TEST(TOptionDateTimeZone, The_hour_that_is_skipped_in_spring_comes_back_too)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    TOptionEditorWidget list;
    list.AddDateTimeEditorOption("Date", QDateTime(QDate(2024, 3, 31), QTime(2, 30), Qt::UTC));

    EXPECT_EQ(Recommitted(&list), "Sun Mar 31 02:30:00 2024 AM");

    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

} // namespace
