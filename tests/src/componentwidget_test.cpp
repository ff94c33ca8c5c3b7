#include "src/componentwidget.h"

#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

namespace {

QString Today_Text()
{
    return QLocale::c().toString(QDate::currentDate(), "MMM d yyyy");
}

class TComponentWidgetTest : public ::testing::Test
{
protected:
    TComponentWidgetTest()
    {
        QObject::connect(&d_page, &TComponentWidget::Component_Changed, &d_page,
                         [this] { d_events.append("changed"); });
        QObject::connect(&d_page, &TComponentWidget::Add_Component_Identifier, &d_page,
                         [this](const QString& name) { d_events.append("add " + name); });
        QObject::connect(&d_page, &TComponentWidget::Rename_Component_Identifiers, &d_page,
                         [this](const QString& old_name, const QString& new_name) {
                             d_events.append("rename " + old_name + " to " + new_name);
                         });
        QObject::connect(&d_page, &TComponentWidget::Remove_Component_Identifiers, &d_page,
                         [this](const QStringList& names) { d_events.append("remove " + names.join(", ")); });
        QObject::connect(&d_page, &TComponentWidget::Component_Identifier_Selected, &d_page,
                         [this](const QString& name) { d_events.append("selected " + name); });
    }

    void Show_With(const QStringList& identifiers)
    {
        d_page.Set_Identifiers(identifiers);
        Show_Active(&d_page);
    }

    // The signals since the last call, in their order, each with its arguments.
    QStringList Take_Events()
    {
        const QStringList events = d_events;
        d_events.clear();
        return events;
    }

    // A new name by mouse and keyboard, in the window that asks for it.
    void Add(const QString& name)
    {
        TModalAnswer answer;
        answer.Type_Name(name);
        QTest::mouseClick(Add_Button(), Qt::LeftButton);
    }

    void Click_Remove(QMessageBox::StandardButton button)
    {
        TModalAnswer answer;
        answer.Click(button);
        QTest::mouseClick(Remove_Button(), Qt::LeftButton);
    }

    QStringList Entries() const
    {
        QStringList entries;
        for (int row = 0; row < List()->count(); ++row) {
            entries.append(List()->item(row)->text());
        }
        return entries;
    }

    QGridLayout* Grid() const { return qobject_cast<QGridLayout*>(d_page.layout()); }

    QLabel* Label_At(int row, int column) const
    {
        QLayoutItem* item = Grid()->itemAtPosition(row, column);
        return item == nullptr ? nullptr : qobject_cast<QLabel*>(item->widget());
    }

    QLabel* Title() const { return Child<QLabel>(&d_page, "component_title"); }
    QListWidget* List() const { return Child<QListWidget>(&d_page, "identifier_list"); }
    QToolButton* Add_Button() const { return Child<QToolButton>(&d_page, "add_identifier"); }
    QToolButton* Remove_Button() const { return Child<QToolButton>(&d_page, "remove_identifier"); }
    QDateEdit* Date() const { return Child<QDateEdit>(&d_page, "calibration_date"); }
    QDateEdit* Due_Date() const { return Child<QDateEdit>(&d_page, "calibration_due_date"); }
    QLineEdit* Length() const { return Child<QLineEdit>(&d_page, "component_length"); }
    QLineEdit* Expansion_Coefficient() const { return Child<QLineEdit>(&d_page, "component_expansion_coefficient"); }
    QRadioButton* Single() const { return Child<QRadioButton>(&d_page, "mode_single"); }
    QRadioButton* Sum() const { return Child<QRadioButton>(&d_page, "mode_sum"); }
    QCheckBox* Export_Equipment() const { return Child<QCheckBox>(&d_page, "mode_export_equipment"); }
    QCheckBox* Limit_Length() const { return Child<QCheckBox>(&d_page, "mode_limit_length"); }

    QStringList d_events;
    TComponentWidget d_page;
};

// A click on the text of a box or radio button; beside it a click does nothing.
void Click_Option(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(20, button->height() / 2));
}

// Types over one section of a date editor after the Tab key has brought the focus there.
void Type_Section(QDateEdit* edit, int section, const char* text)
{
    edit->clearFocus();
    edit->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < section; ++i) {
        QTest::keyClick(edit, Qt::Key_Right, Qt::ControlModifier);
    }
    QTest::keyClicks(edit, text);
}

// Ends the editing in place, which takes a turn of the event loop.
void Press_Return(const QListWidget* list, QLineEdit* editor)
{
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([list] { return Open_Editor(list) == nullptr; }));
}

const int SECTION_MONTH = 1;
const int SECTION_YEAR = 3;

// --- Layout -------------------------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, Has_a_title_of_18_points_underlined_at_the_top_left_over_the_whole_row)
{
    EXPECT_EQ(Title()->text(), "Component");
    EXPECT_EQ(Title()->font().pointSize(), 18);
    EXPECT_TRUE(Title()->font().underline());
    EXPECT_EQ(Title()->alignment(), Qt::AlignTop | Qt::AlignLeft);
    EXPECT_EQ(Title()->textFormat(), Qt::PlainText);

    EXPECT_EQ(Grid()->columnCount(), 3);
    EXPECT_EQ(Grid()->itemAtPosition(0, 0)->widget(), Title());
    EXPECT_EQ(Grid()->itemAtPosition(0, 2)->widget(), Title());
}

TEST_F(TComponentWidgetTest, Shows_the_name_of_the_component_as_title_letter_by_letter)
{
    d_page.Set_Title("<b>%1</b>");
    EXPECT_EQ(Title()->text(), "<b>%1</b>");
}

TEST_F(TComponentWidgetTest, A_long_title_does_not_widen_the_page)
{
    const int width = d_page.minimumSizeHint().width();

    d_page.Set_Title(QString("x").repeated(40));
    EXPECT_EQ(d_page.minimumSizeHint().width(), width);
    EXPECT_EQ(Title()->text(), QString("x").repeated(40));
}

struct TLabelRow
{
    const char* name;
    int row;
    const char* label;
    const char* editor;
    const char* unit;
};

class TComponentWidgetRow : public TComponentWidgetTest, public ::testing::WithParamInterface<TLabelRow>
{};

TEST_P(TComponentWidgetRow, Has_label_editor_and_unit)
{
    const auto* label = Label_At(GetParam().row, 0);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), GetParam().label);
    ASSERT_NE(label->buddy(), nullptr);
    EXPECT_EQ(label->buddy()->objectName(), GetParam().editor);
    EXPECT_EQ(Grid()->itemAtPosition(GetParam().row, 1)->widget(), label->buddy());

    const QLabel* unit = Label_At(GetParam().row, 2);
    EXPECT_EQ(unit == nullptr ? QString() : unit->text(), QString::fromUtf8(GetParam().unit));
}

INSTANTIATE_TEST_SUITE_P(
    TComponentWidget, TComponentWidgetRow,
    ::testing::Values(TLabelRow{"identifiers", 1, "Identifiers:", "identifier_list", ""},
                      TLabelRow{"calibration_date", 2, "Calibration Date:", "calibration_date", ""},
                      TLabelRow{"calibration_due_date", 3, "Calibration Due Date:", "calibration_due_date", ""},
                      TLabelRow{"length", 4, "Length:", "component_length", "mm"},
                      TLabelRow{"expansion_coefficient", 5, "Expansion Coefficient:", "component_expansion_coefficient",
                                "um/m/\xCB\x9A"
                                "C"}),
    [](const ::testing::TestParamInfo<TLabelRow>& row) { return row.param.name; });

TEST_F(TComponentWidgetTest, Has_a_sunken_line_above_the_options)
{
    const auto* line = qobject_cast<QFrame*>(Grid()->itemAtPosition(6, 0)->widget());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->frameShape(), QFrame::HLine);
    EXPECT_EQ(line->frameShadow(), QFrame::Sunken);
    EXPECT_EQ(Grid()->itemAtPosition(6, 2)->widget(), line);
    EXPECT_EQ(Label_At(7, 0)->text(), "Options:");
}

TEST_F(TComponentWidgetTest, Has_two_radio_buttons_of_which_the_combined_one_is_checked)
{
    EXPECT_EQ(Grid()->itemAtPosition(8, 0)->widget(), Single());
    EXPECT_EQ(Single()->text(), "Report as individual uncertainty items");
    EXPECT_FALSE(d_page.Mode_Single());

    EXPECT_EQ(Grid()->itemAtPosition(9, 0)->widget(), Sum());
    EXPECT_EQ(Sum()->text(), "Report as a combined uncertainty item");
    EXPECT_TRUE(d_page.Mode_Sum());
}

TEST_F(TComponentWidgetTest, Has_two_check_boxes_both_clear)
{
    EXPECT_EQ(Grid()->itemAtPosition(10, 0)->widget(), Export_Equipment());
    EXPECT_EQ(Export_Equipment()->text(), "Report component hint");
    EXPECT_FALSE(d_page.Mode_Export_Equipment());

    EXPECT_EQ(Grid()->itemAtPosition(11, 0)->widget(), Limit_Length());
    EXPECT_EQ(Limit_Length()->text(), "Limit uncertainty to component length");
    EXPECT_FALSE(d_page.Mode_Limit_Uncertainty_Length());
}

TEST_F(TComponentWidgetTest, Has_a_sorted_list_with_extended_selection)
{
    EXPECT_EQ(List()->selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_TRUE(List()->isSortingEnabled());
}

struct TButtonRow
{
    const char* name;
    const char* icon;
    const char* text;
    bool is_enabled;
};

class TComponentWidgetButton : public TComponentWidgetTest, public ::testing::WithParamInterface<TButtonRow>
{};

TEST_P(TComponentWidgetButton, Is_an_icon_of_16_pixels_that_says_what_it_does)
{
    auto* button = Child<QToolButton>(&d_page, GetParam().name);
    EXPECT_EQ(button->size(), QSize(16, 16));
    EXPECT_EQ(button->icon().pixmap(16).toImage(), QIcon(GetParam().icon).pixmap(16).toImage());
    EXPECT_FALSE(button->icon().isNull());
    EXPECT_EQ(button->toolTip(), GetParam().text);
    EXPECT_EQ(button->accessibleName(), GetParam().text);
    EXPECT_EQ(button->isEnabled(), GetParam().is_enabled);

    const QLayout* buttons = Grid()->itemAtPosition(1, 2)->layout();
    ASSERT_NE(buttons, nullptr);
    EXPECT_GE(buttons->indexOf(button), 0);
}

INSTANTIATE_TEST_SUITE_P(TComponentWidget, TComponentWidgetButton,
                         ::testing::Values(TButtonRow{"add_identifier", ":/gui/add.png", "Add an identifier", true},
                                           TButtonRow{"remove_identifier", ":/gui/remove.png",
                                                      "Remove the selected identifiers", false}),
                         [](const ::testing::TestParamInfo<TButtonRow>& row) { return row.param.name; });

TEST_F(TComponentWidgetTest, Starts_with_disabled_dates_and_without_identifier)
{
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_FALSE(Due_Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Due_Date()->text(), "");
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(d_page.Current_Identifier(), "");
}

TEST_F(TComponentWidgetTest, The_Tab_key_walks_down_the_page)
{
    Show_With({"A", "B"});
    List()->setCurrentRow(0);
    List()->setFocus();

    QStringList walk;
    for (int i = 0; i < 17; ++i) {
        const QString name = QApplication::focusWidget()->objectName();
        // A date editor takes the key for each of its parts; a pair of radio buttons is one stop.
        if (walk.isEmpty() || walk.last() != name) {
            walk.append(name);
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(walk, QStringList({"identifier_list", "add_identifier", "remove_identifier", "calibration_date",
                                 "calibration_due_date", "component_length", "component_expansion_coefficient",
                                 "mode_sum", "mode_export_equipment", "mode_limit_length", "identifier_list"}));
}

TEST_F(TComponentWidgetTest, Its_labels_have_no_mnemonics)
{
    for (const QLabel* label : d_page.findChildren<QLabel*>()) {
        EXPECT_FALSE(label->text().contains('&')) << label->text().toStdString();
    }
    for (const QAbstractButton* button : d_page.findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(button->text().contains('&')) << button->text().toStdString();
    }
}

// --- Numbers ------------------------------------------------------------------------------------------------------

struct TNumberRow
{
    const char* name;
    double value;
    const char* length_text;
    const char* expansion_coefficient_text;
};

class TComponentWidgetNumber : public TComponentWidgetTest, public ::testing::WithParamInterface<TNumberRow>
{};

TEST_P(TComponentWidgetNumber, Is_shown_with_fixed_decimals)
{
    d_page.Set_Length(GetParam().value);
    d_page.Set_Expansion_Coefficient(GetParam().value);

    EXPECT_EQ(Length()->text(), GetParam().length_text);
    EXPECT_EQ(d_page.Length_Text(), GetParam().length_text);
    EXPECT_EQ(d_page.Length(), QString(GetParam().length_text).toDouble());
    EXPECT_EQ(Expansion_Coefficient()->text(), GetParam().expansion_coefficient_text);
    EXPECT_EQ(d_page.Expansion_Coefficient_Text(), GetParam().expansion_coefficient_text);
    EXPECT_EQ(d_page.Expansion_Coefficient(), QString(GetParam().expansion_coefficient_text).toDouble());
    EXPECT_EQ(Take_Events(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(TComponentWidget, TComponentWidgetNumber,
                         ::testing::Values(TNumberRow{"zero", 0.0, "0.00000", "0.00"},
                                           TNumberRow{"ten", 10.0, "10.00000", "10.00"},
                                           TNumberRow{"rounded", 1.234567, "1.23457", "1.23"},
                                           TNumberRow{"negative", -0.5, "-0.50000", "-0.50"},
                                           TNumberRow{"large", 12345678.0, "12345678.00000", "12345678.00"}),
                         [](const ::testing::TestParamInfo<TNumberRow>& row) { return row.param.name; });

TEST_F(TComponentWidgetTest, A_typed_length_is_signalled_when_editing_is_finished)
{
    Show_With({});
    Replace_Text(Length(), "12.5");
    EXPECT_TRUE(Length()->isModified());
    EXPECT_EQ(Take_Events(), QStringList());

    QTest::keyClick(Length(), Qt::Key_Tab);
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
    EXPECT_EQ(d_page.Length(), 12.5);
    EXPECT_EQ(d_page.Length_Text(), "12.5");
    EXPECT_FALSE(Length()->isModified());
}

TEST_F(TComponentWidgetTest, A_typed_expansion_coefficient_is_signalled_when_editing_is_finished)
{
    Show_With({});
    Replace_Text(Expansion_Coefficient(), "11.5");
    EXPECT_EQ(Take_Events(), QStringList());

    QTest::keyClick(Expansion_Coefficient(), Qt::Key_Return);
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
    EXPECT_EQ(d_page.Expansion_Coefficient(), 11.5);
    EXPECT_EQ(d_page.Expansion_Coefficient_Text(), "11.5");
    EXPECT_FALSE(Expansion_Coefficient()->isModified());
}

TEST_F(TComponentWidgetTest, A_comma_is_no_decimal_separator_and_is_explained)
{
    Show_With({});
    Replace_Text(Length(), "12,5");
    QTest::keyClick(Length(), Qt::Key_Return);

    EXPECT_EQ(d_page.Length(), 0.0);
    EXPECT_EQ(d_page.Length_Text(), "12,5");
    EXPECT_EQ(Length()->toolTip(), "Not a number, counts as 0: use a point as decimal separator, not a comma.");
}

// --- Options ------------------------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, A_click_on_the_other_radio_button_changes_the_mode)
{
    Show_With({});
    Click_Option(Single());
    EXPECT_TRUE(d_page.Mode_Single());
    EXPECT_FALSE(d_page.Mode_Sum());
    // One of the pair goes off, the other on.
    EXPECT_EQ(Take_Events(), QStringList({"changed", "changed"}));

    Click_Option(Single());
    EXPECT_EQ(Take_Events(), QStringList());

    Click_Option(Sum());
    EXPECT_FALSE(d_page.Mode_Single());
    EXPECT_TRUE(d_page.Mode_Sum());
    EXPECT_EQ(Take_Events(), QStringList({"changed", "changed"}));
}

TEST_F(TComponentWidgetTest, The_pair_has_settled_when_a_change_of_mode_is_signalled)
{
    Show_With({});
    QObject::connect(&d_page, &TComponentWidget::Component_Changed, &d_page,
                     [this] { EXPECT_NE(d_page.Mode_Single(), d_page.Mode_Sum()); });
    Click_Option(Single());
    EXPECT_EQ(Take_Events().size(), 2);
}

TEST_F(TComponentWidgetTest, A_check_box_is_toggled_with_the_space_key)
{
    Show_With({});
    Export_Equipment()->setFocus();
    QTest::keyClick(Export_Equipment(), Qt::Key_Space);
    EXPECT_TRUE(d_page.Mode_Export_Equipment());
    EXPECT_FALSE(d_page.Mode_Limit_Uncertainty_Length());
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));

    Limit_Length()->setFocus();
    QTest::keyClick(Limit_Length(), Qt::Key_Space);
    EXPECT_TRUE(d_page.Mode_Limit_Uncertainty_Length());
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
}

TEST_F(TComponentWidgetTest, Options_set_by_the_program_are_shown_and_not_signalled)
{
    d_page.Set_Mode_Single();
    EXPECT_TRUE(d_page.Mode_Single());
    EXPECT_FALSE(d_page.Mode_Sum());
    d_page.Set_Mode_Sum();
    EXPECT_FALSE(d_page.Mode_Single());
    EXPECT_TRUE(d_page.Mode_Sum());

    d_page.Set_Mode_Export_Equipment(true);
    EXPECT_TRUE(d_page.Mode_Export_Equipment());
    d_page.Set_Mode_Export_Equipment(false);
    EXPECT_FALSE(d_page.Mode_Export_Equipment());

    d_page.Set_Mode_Limit_Uncertainty_Length(true);
    EXPECT_TRUE(d_page.Mode_Limit_Uncertainty_Length());
    d_page.Set_Mode_Limit_Uncertainty_Length(false);
    EXPECT_FALSE(d_page.Mode_Limit_Uncertainty_Length());

    EXPECT_EQ(Take_Events(), QStringList());
}

// --- Dates --------------------------------------------------------------------------------------------------------

struct TDateRow
{
    const char* name;
    const char* text;
    const char* shown; // nullptr: today
    const char* date;
};

class TComponentWidgetDate : public TComponentWidgetTest, public ::testing::WithParamInterface<TDateRow>
{};

TEST_P(TComponentWidgetDate, Is_shown_with_its_day_of_week)
{
    const QDate today = QDate::currentDate();
    const QString shown =
        GetParam().shown == nullptr ? QLocale::c().toString(today, "ddd MMM d yyyy") : QString(GetParam().shown);
    const QString date = GetParam().date == nullptr ? Today_Text() : QString(GetParam().date);

    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();
    d_page.Set_Dates(GetParam().text, "Dec 31 1999");
    EXPECT_EQ(Date()->text(), shown);
    EXPECT_EQ(d_page.Calibration_Date(), date);
    EXPECT_EQ(Due_Date()->text(), "Fri Dec 31 1999");
    EXPECT_EQ(d_page.Calibration_Due_Date(), "Dec 31 1999");

    d_page.Set_Dates("Dec 31 1999", GetParam().text);
    EXPECT_EQ(Date()->text(), "Fri Dec 31 1999");
    EXPECT_EQ(Due_Date()->text(), shown);
    EXPECT_EQ(d_page.Calibration_Due_Date(), date);

    EXPECT_EQ(Take_Events(), QStringList());
    EXPECT_FALSE(d_page.Calibration_Date_Edited());
    EXPECT_FALSE(d_page.Calibration_Due_Date_Edited());
}

INSTANTIATE_TEST_SUITE_P(TComponentWidget, TComponentWidgetDate,
                         ::testing::Values(TDateRow{"one_digit_day", "Jan 5 2020", "Sun Jan 5 2020", "Jan 5 2020"},
                                           TDateRow{"two_digit_day", "Oct 31 2021", "Sun Oct 31 2021", "Oct 31 2021"},
                                           TDateRow{"leap_day", "Feb 29 2024", "Thu Feb 29 2024", "Feb 29 2024"},
                                           TDateRow{"empty", "", nullptr, nullptr},
                                           TDateRow{"no_date", "unknown", nullptr, nullptr},
                                           TDateRow{"no_leap_year", "Feb 29 2023", nullptr, nullptr},
                                           TDateRow{"with_day_of_week", "Sun Jan 5 2020", nullptr, nullptr},
                                           TDateRow{"other_order", "2020-01-05", nullptr, nullptr},
                                           TDateRow{"foreign_month", "Okt 5 2020", nullptr, nullptr}),
                         [](const ::testing::TestParamInfo<TDateRow>& row) { return row.param.name; });

TEST_F(TComponentWidgetTest, Dates_are_English_under_every_locale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    {
        TComponentWidget page;
        auto* date = Child<QDateEdit>(&page, "calibration_date");
        Show_Active(&page);
        page.Set_Identifiers({"A"});
        Child<QListWidget>(&page, "identifier_list")->setCurrentRow(0);
        page.Set_Dates("Oct 5 2020", "Mar 7 2021");
        EXPECT_EQ(date->text(), "Mon Oct 5 2020");
        EXPECT_EQ(page.Calibration_Date(), "Oct 5 2020");
        EXPECT_EQ(page.Calibration_Due_Date(), "Mar 7 2021");
        EXPECT_EQ(Open_Calendar(date)->locale(), QLocale::c());
    }
    QLocale::setDefault(before);
}

TEST_F(TComponentWidgetTest, Cleared_dates_are_disabled_and_show_nothing)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Take_Events();

    d_page.Clear_Dates();
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_FALSE(Due_Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Due_Date()->text(), "");
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_cleared_date_gives_the_focus_away)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Date()->setFocus();
    ASSERT_TRUE(Date()->hasFocus());
    Take_Events();

    d_page.Clear_Dates();
    EXPECT_FALSE(Date()->hasFocus());
    EXPECT_EQ(Date()->text(), "");
    Click_Entry(List(), "A", Qt::ControlModifier);
    Click_Entry(List(), "A");
    EXPECT_EQ(Date()->text(), "Sun Jan 5 2020");
    EXPECT_EQ(Take_Events(), QStringList({"selected ", "selected A"}));
}

TEST_F(TComponentWidgetTest, Dates_set_without_an_identifier_stay_disabled_and_show_nothing)
{
    Show_With({"A"});
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");

    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Due_Date()->text(), "");
}

TEST_F(TComponentWidgetTest, A_disabled_page_shows_no_dates_and_shows_them_again_when_enabled)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Date()->setFocus();
    Take_Events();

    d_page.setEnabled(false);
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Due_Date()->text(), "");
    d_page.setEnabled(true);
    EXPECT_EQ(Date()->text(), "Sun Jan 5 2020");
    EXPECT_EQ(Due_Date()->text(), "Mon Jan 6 2020");
    EXPECT_EQ(Take_Events(), QStringList());
    EXPECT_FALSE(d_page.Calibration_Date_Edited());
}

TEST_F(TComponentWidgetTest, A_date_is_typed_part_by_part)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Take_Events();

    Type_Section(Date(), SECTION_MONTH, "Feb122026");
    Length()->setFocus();
    EXPECT_EQ(Date()->text(), "Thu Feb 12 2026");
    EXPECT_EQ(d_page.Calibration_Date(), "Feb 12 2026");
    EXPECT_EQ(d_page.Calibration_Due_Date(), "Jan 6 2020");
    // Every date on the way is one: Feb 5, Feb 1, Feb 12 of 2020, and Feb 12 2026.
    EXPECT_EQ(Take_Events(), QStringList({"changed", "changed", "changed", "changed"}));
}

TEST_F(TComponentWidgetTest, Only_the_date_that_the_user_changed_counts_as_edited)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("unknown", "Jan 6 2020");
    Take_Events();

    Type_Section(Due_Date(), SECTION_YEAR, "2031");
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
    EXPECT_FALSE(d_page.Calibration_Date_Edited());
    EXPECT_TRUE(d_page.Calibration_Due_Date_Edited());
    EXPECT_EQ(d_page.Calibration_Due_Date(), "Jan 6 2031");

    Type_Section(Date(), SECTION_YEAR, "2030");
    EXPECT_TRUE(d_page.Calibration_Date_Edited());
}

TEST_F(TComponentWidgetTest, Setting_or_clearing_the_dates_forgets_that_they_were_edited)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Type_Section(Date(), SECTION_YEAR, "2031");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    EXPECT_FALSE(d_page.Calibration_Date_Edited());

    Type_Section(Date(), SECTION_YEAR, "2031");
    EXPECT_TRUE(d_page.Calibration_Date_Edited());
    d_page.Clear_Dates();
    EXPECT_FALSE(d_page.Calibration_Date_Edited());
}

TEST_F(TComponentWidgetTest, A_date_left_half_typed_goes_back_to_the_one_before)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Take_Events();

    Type_Section(Date(), SECTION_YEAR, "20");
    QTest::mouseClick(Length(), Qt::LeftButton);
    EXPECT_EQ(Date()->text(), "Sun Jan 5 2020");
    EXPECT_FALSE(d_page.Calibration_Date_Edited());
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_date_is_chosen_in_the_calendar)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    d_page.Set_Dates("Jan 5 2020", "Jan 6 2020");
    Take_Events();

    auto* days = Open_Calendar(Date())->findChild<QAbstractItemView*>();
    ASSERT_NE(days, nullptr);
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);

    EXPECT_EQ(Date()->text(), "Mon Jan 6 2020");
    EXPECT_EQ(d_page.Calibration_Date(), "Jan 6 2020");
    EXPECT_TRUE(d_page.Calibration_Date_Edited());
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
}

TEST_F(TComponentWidgetTest, The_calendar_is_made_with_the_first_click_on_its_arrow)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    ASSERT_EQ(d_page.findChildren<QCalendarWidget*>(), QList<QCalendarWidget*>());

    auto* calendar = Open_Calendar(Date());

    EXPECT_EQ(d_page.findChildren<QCalendarWidget*>(), QList<QCalendarWidget*>({calendar}));
}

TEST_F(TComponentWidgetTest, The_editors_of_the_calendar_take_no_drops)
{
    Show_With({"A"});
    Click_Entry(List(), "A");

    const QList<QLineEdit*> editors = Open_Calendar(Date())->findChildren<QLineEdit*>();

    EXPECT_FALSE(editors.isEmpty());
    for (const QLineEdit* editor : editors) {
        EXPECT_FALSE(editor->acceptDrops());
    }
}

// --- The list of identifiers --------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, Identifiers_are_shown_sorted_and_editable_without_a_signal)
{
    Show_With({"C", "A", "B"});
    EXPECT_EQ(Entries(), QStringList({"A", "B", "C"}));
    for (int row = 0; row < List()->count(); ++row) {
        EXPECT_TRUE(List()->item(row)->flags().testFlag(Qt::ItemIsEditable));
    }
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_refilled_list_has_no_selection_no_dates_and_emits_nothing)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    Take_Events();

    d_page.Set_Identifiers({"D", "A"});
    EXPECT_EQ(Entries(), QStringList({"A", "D"}));
    EXPECT_EQ(d_page.Current_Identifier(), "");
    EXPECT_FALSE(Remove_Button()->isEnabled());
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, Refilling_the_list_while_an_entry_is_edited_drops_the_edit)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Replace_Text(editor, "X");
    Take_Events();

    d_page.Set_Identifiers({"D"});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Entries(), QStringList({"D"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, Selecting_one_identifier_enables_dates_and_removal)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "B");
    EXPECT_EQ(Take_Events(), QStringList({"selected B"}));
    EXPECT_EQ(d_page.Current_Identifier(), "B");
    EXPECT_TRUE(Date()->isEnabled());
    EXPECT_TRUE(Due_Date()->isEnabled());
    EXPECT_TRUE(Remove_Button()->isEnabled());
}

TEST_F(TComponentWidgetTest, The_arrow_keys_select_another_identifier)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_Down);
    EXPECT_EQ(Take_Events(), QStringList({"selected A", "selected B"}));
}

TEST_F(TComponentWidgetTest, Several_selected_identifiers_stand_for_the_component_itself)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    Take_Events();

    Click_Entry(List(), "B", Qt::ControlModifier);
    EXPECT_EQ(Take_Events(), QStringList({"selected "}));
    EXPECT_EQ(d_page.Current_Identifier(), "");
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_FALSE(Due_Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_TRUE(Remove_Button()->isEnabled());
}

TEST_F(TComponentWidgetTest, A_click_beside_the_entries_goes_back_to_the_component_itself)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();

    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      List()->viewport()->rect().bottomRight() - QPoint(5, 5));
    EXPECT_EQ(Take_Events(), QStringList({"selected "}));
    EXPECT_EQ(d_page.Current_Identifier(), "");
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_FALSE(Remove_Button()->isEnabled());
}

TEST_F(TComponentWidgetTest, The_slots_can_be_called_without_any_identifier)
{
    const TModalAnswer nothing_opens;
    d_page.Identifier_Selected();
    d_page.Remove_Identifiers();
    d_page.Rename_Identifier(nullptr);
    EXPECT_EQ(Take_Events(), QStringList({"selected "}));

    d_page.Data_Changed();
    EXPECT_EQ(Take_Events(), QStringList({"changed"}));
}

// --- Adding -------------------------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, Adds_the_identifier_that_the_dialog_names)
{
    Show_With({"A", "C"});
    TModalAnswer answer;
    answer.Type_Name(" B ");
    QTest::mouseClick(Add_Button(), Qt::LeftButton);

    ASSERT_EQ(answer.Seen_Count(), 1);
    EXPECT_EQ(answer.Seen(0).title, "Add Identifier");
    EXPECT_EQ(answer.Seen(0).text, "");
    EXPECT_EQ(Entries(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(Take_Events(), QStringList({"add B"}));
}

TEST_F(TComponentWidgetTest, Adds_an_identifier_by_keyboard_alone)
{
    Show_With({});
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), Add_Button());

    TModalAnswer answer;
    answer.Type_Name("B");
    QTest::keyClick(Add_Button(), Qt::Key_Space);
    EXPECT_EQ(Take_Events(), QStringList({"add B"}));
}

TEST_F(TComponentWidgetTest, A_cancelled_dialog_adds_nothing)
{
    Show_With({"A"});
    TModalAnswer answer;
    answer.Type_Name_And_Cancel("B");
    QTest::mouseClick(Add_Button(), Qt::LeftButton);
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

struct TRefusedName
{
    const char* name;
    const char* text;
};

class TComponentWidgetRefusedName : public TComponentWidgetTest, public ::testing::WithParamInterface<TRefusedName>
{};

TEST_P(TComponentWidgetRefusedName, Is_not_added)
{
    Show_With({"Bar 1", "Bar 2"});
    Add(GetParam().text);
    EXPECT_EQ(Entries(), QStringList({"Bar 1", "Bar 2"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_P(TComponentWidgetRefusedName, Is_not_taken_as_new_name_and_the_old_one_is_shown_again)
{
    Show_With({"Bar 1", "Bar 2"});
    Click_Entry(List(), "Bar 1");
    Take_Events();

    Rename_Entry(List(), "Bar 1", GetParam().text);
    EXPECT_EQ(Entries(), QStringList({"Bar 1", "Bar 2"}));
    EXPECT_EQ(d_page.Current_Identifier(), "Bar 1");
    EXPECT_EQ(Take_Events(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(TComponentWidget, TComponentWidgetRefusedName,
                         ::testing::Values(TRefusedName{"in_use", "Bar 2"},
                                           TRefusedName{"in_use_but_for_case", "bar 2"}, TRefusedName{"blanks", "   "},
                                           TRefusedName{"no_break_spaces", "\xC2\xA0\xC2\xA0"},
                                           TRefusedName{"default_identifier", "[Default]"},
                                           TRefusedName{"default_identifier_but_for_case", "[default]"}),
                         [](const ::testing::TestParamInfo<TRefusedName>& row) { return row.param.name; });

TEST_F(TComponentWidgetTest, A_name_that_is_a_part_of_another_is_added)
{
    Show_With({"Bar 1"});
    Add("Bar");
    EXPECT_EQ(Entries(), QStringList({"Bar", "Bar 1"}));
    EXPECT_EQ(Take_Events(), QStringList({"add Bar"}));
}

TEST_F(TComponentWidgetTest, An_added_identifier_can_be_renamed_and_removed)
{
    Show_With({});
    Add("A");
    Rename_Entry(List(), "A", "B");
    Take_Events();
    Click_Remove(QMessageBox::Yes);
    EXPECT_EQ(Take_Events(), QStringList({"selected ", "remove B"}));

    Add("A");
    EXPECT_EQ(Take_Events(), QStringList({"add A"}));
}

// --- Renaming -----------------------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, A_rename_moves_the_entry_and_selects_the_new_name)
{
    Show_With({"A", "B", "C"});
    Click_Entry(List(), "A");
    Take_Events();

    Rename_Entry(List(), "A", "D");
    EXPECT_EQ(Entries(), QStringList({"B", "C", "D"}));
    EXPECT_EQ(d_page.Current_Identifier(), "D");
    EXPECT_EQ(Take_Events(), QStringList({"rename A to D", "selected D"}));
}

TEST_F(TComponentWidgetTest, A_double_click_opens_the_editor_and_leaving_it_commits)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       List()->visualRect(Entry(List(), "A")).center());
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Take_Events();

    Replace_Text(editor, "Z");
    QTest::mouseClick(Length(), Qt::LeftButton);
    EXPECT_EQ(Entries(), QStringList({"B", "Z"}));
    EXPECT_EQ(Take_Events(), QStringList({"rename A to Z", "selected Z"}));
}

TEST_F(TComponentWidgetTest, The_Escape_key_leaves_the_old_name)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);

    Replace_Text(editor, "Z");
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, An_emptied_entry_shows_its_old_name_again)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();
    Rename_Entry(List(), "A", "");
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(d_page.Current_Identifier(), "A");
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, The_same_name_is_no_rename)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();
    Rename_Entry(List(), "A", "A");
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_change_of_case_is_a_rename)
{
    Show_With({"bar", "foo"});
    Click_Entry(List(), "bar");
    Take_Events();
    Rename_Entry(List(), "bar", "BAR");
    EXPECT_EQ(Entries(), QStringList({"BAR", "foo"}));
    EXPECT_EQ(Take_Events(), QStringList({"rename bar to BAR", "selected BAR"}));
}

TEST_F(TComponentWidgetTest, Control_characters_are_taken_out_of_a_new_name)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Take_Events();

    Paste_Text(editor, QString("B") + QChar(0x1) + "C");
    Press_Return(List(), editor);
    EXPECT_EQ(Entries(), QStringList({"BC"}));
    EXPECT_EQ(Take_Events(), QStringList({"rename A to BC", "selected BC"}));
}

TEST_F(TComponentWidgetTest, A_second_commit_of_the_same_editor_changes_nothing)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Replace_Text(editor, "D");
    Take_Events();

    emit List()->itemDelegate()->commitData(editor);
    EXPECT_EQ(Take_Events(), QStringList({"rename A to D", "selected D"}));
    emit List()->itemDelegate()->commitData(editor);
    Press_Return(List(), editor);
    EXPECT_EQ(Entries(), QStringList({"B", "D"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_refused_name_committed_twice_is_refused_twice)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Replace_Text(editor, "B");
    Take_Events();

    emit List()->itemDelegate()->commitData(editor);
    emit List()->itemDelegate()->commitData(editor);
    Press_Return(List(), editor);
    EXPECT_EQ(Entries(), QStringList({"A", "B"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, An_entry_cannot_be_edited_while_several_are_selected)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    Click_Entry(List(), "B", Qt::ControlModifier);
    QTest::keyClick(List(), Qt::Key_F2);
    EXPECT_EQ(Open_Editor(List()), nullptr);
}

TEST_F(TComponentWidgetTest, Identifiers_of_the_same_name_are_renamed_together)
{
    Show_With({"A", "A", "B"});
    List()->setCurrentRow(0);
    Take_Events();
    Rename_Entry(List(), "A", "C");
    EXPECT_EQ(Entries(), QStringList({"B", "C", "C"}));
    EXPECT_EQ(Take_Events(), QStringList({"rename A to C", "selected C"}));
}

TEST_F(TComponentWidgetTest, A_page_that_goes_while_an_entry_is_edited_signals_nothing)
{
    auto page = std::make_unique<TComponentWidget>();
    QStringList renames;
    QObject::connect(page.get(), &TComponentWidget::Rename_Component_Identifiers, &d_page,
                     [&renames](const QString& /*old_name*/, const QString& new_name) { renames.append(new_name); });
    page->Set_Identifiers({"A"});
    Show_Active(page.get());
    auto* list = Child<QListWidget>(page.get(), "identifier_list");
    Click_Entry(list, "A");
    QTest::keyClick(list, Qt::Key_F2);
    ASSERT_NE(Open_Editor(list), nullptr);
    Replace_Text(Open_Editor(list), "B");

    page.reset();
    EXPECT_EQ(renames, QStringList());
}

TEST_F(TComponentWidgetTest, A_page_that_goes_while_a_length_is_typed_signals_nothing)
{
    auto page = std::make_unique<TComponentWidget>();
    int changes = 0;
    QObject::connect(page.get(), &TComponentWidget::Component_Changed, &d_page, [&changes] { ++changes; });
    Show_Active(page.get());
    Replace_Text(Child<QLineEdit>(page.get(), "component_length"), "12.5");

    page.reset();
    EXPECT_EQ(changes, 0);
}

TEST_F(TComponentWidgetTest, Renaming_an_entry_that_the_page_does_not_know_is_a_programming_error)
{
    Show_With({"A"});
    auto* stray = new QListWidgetItem("stray", List());
    stray->setFlags(stray->flags() | Qt::ItemIsEditable);
    List()->setCurrentItem(stray);
    List()->editItem(stray);
    EXPECT_DEATH(emit List()->itemDelegate()->commitData(Open_Editor(List())),
                 "\\.\\./src/componentwidget\\.cpp: Rename_Identifier: !\\(index < 0\\)");
}

// --- Removing -----------------------------------------------------------------------------------------------------

TEST_F(TComponentWidgetTest, Asks_before_identifiers_are_removed)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    Take_Events();
    TModalAnswer answer;
    answer.Click(QMessageBox::No);
    QTest::mouseClick(Remove_Button(), Qt::LeftButton);

    ASSERT_EQ(answer.Seen_Count(), 1);
    const TModalAnswer::TSeen question = answer.Seen(0);
    EXPECT_EQ(question.title, "Norvexa Editor");
    EXPECT_EQ(question.text, "Delete Selected Component Identifiers");
    EXPECT_EQ(question.informative_text, "Are you sure you want to delete the selected component identifier items?");
    EXPECT_EQ(question.detailed_text, "");
    EXPECT_EQ(question.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(question.default_button, QMessageBox::No);
    EXPECT_EQ(question.icon, QMessageBox::Question);

    EXPECT_EQ(Entries(), QStringList({"A", "B"}));
    EXPECT_EQ(d_page.Current_Identifier(), "A");
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, Yes_removes_the_selected_identifier)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    Take_Events();
    Click_Remove(QMessageBox::Yes);

    EXPECT_EQ(Entries(), QStringList({"B"}));
    EXPECT_EQ(d_page.Current_Identifier(), "");
    EXPECT_FALSE(Remove_Button()->isEnabled());
    EXPECT_FALSE(Date()->isEnabled());
    EXPECT_EQ(Date()->text(), "");
    EXPECT_EQ(Take_Events(), QStringList({"selected ", "remove A"}));
}

TEST_F(TComponentWidgetTest, Several_identifiers_are_removed_in_one_signal)
{
    Show_With({"C", "A", "B"});
    Click_Entry(List(), "C");
    Click_Entry(List(), "A", Qt::ControlModifier);
    Take_Events();
    Click_Remove(QMessageBox::Yes);

    EXPECT_EQ(Entries(), QStringList({"B"}));
    EXPECT_EQ(Take_Events(), QStringList({"selected ", "remove A, C"}));
}

TEST_F(TComponentWidgetTest, The_default_and_the_Escape_key_remove_nothing)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Take_Events();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        TModalAnswer answer;
        answer.Press(key);
        QTest::mouseClick(Remove_Button(), Qt::LeftButton);
    }
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(Take_Events(), QStringList());
}

TEST_F(TComponentWidgetTest, A_removed_name_can_be_added_again)
{
    Show_With({"A"});
    Click_Entry(List(), "A");
    Click_Remove(QMessageBox::Yes);
    Take_Events();
    Add("A");
    EXPECT_EQ(Entries(), QStringList({"A"}));
    EXPECT_EQ(Take_Events(), QStringList({"add A"}));
}

TEST_F(TComponentWidgetTest, Removing_an_entry_whose_editor_is_open_ends_in_one_consistent_list)
{
    Show_With({"A", "B"});
    Click_Entry(List(), "A");
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = Open_Editor(List());
    ASSERT_NE(editor, nullptr);
    Replace_Text(editor, "D");
    Take_Events();

    Click_Remove(QMessageBox::Yes);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Entries(), QStringList({"B"}));
    // The question took the focus, which commits the edit first.
    EXPECT_EQ(Take_Events(), QStringList({"rename A to D", "selected D", "selected ", "remove D"}));
}

} // namespace
