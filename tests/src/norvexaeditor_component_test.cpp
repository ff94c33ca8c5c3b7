#include "tests/support/componentpages.h"

#include <QCheckBox>
#include <QDate>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <ostream>

namespace {

using TComponent = TNorvexaData::TComponent;
using TComponentInstance = TNorvexaData::TComponentInstance;
using TComponentItem = TNorvexaData::TComponentItem;

const char* const NO_BREAK_SPACE = "\u00a0";
const char* const PROBE_PAGE = "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined";
const char* const SN_1_PAGE = "Probe: SN 1*, SN 2; Sun Nov 15 2026, Mon Nov 15 2027; 250.50000, 8.50; combined";

QString Today(const char* format)
{
    return QLocale::c().toString(QDate::currentDate(), format);
}

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& info)
{
    return info.param.name;
}

class TNorvexaEditorComponent : public TComponentPagesFixture
{
protected:
    void Open_Probe()
    {
        Open_Budget(Workshop_Budget());
        Select_Entry("Probe");
    }

    void Open_Identifier(const QString& name)
    {
        Open_Probe();
        Select_Identifier(name);
    }

    // A budget with the component "Probe" alone, which has identifiers of these names.
    void Open_Identifiers(const QStringList& names)
    {
        Open_Budget(Identifiers_Budget(names));
        Select_Entry("Probe");
    }

    static TBudgetFile Identifiers_Budget(const QStringList& names)
    {
        TBudgetFile budget;
        budget.document.Add_Component("Probe");
        budget.document.Add_Component_Item("Probe", "Wear");
        for (const QString& name : names) {
            budget.document.Component_Add_Identifier("Probe", name);
        }
        return budget;
    }

    // The budget of the workshop with one more change.
    static TNorvexa Changed_Component(const std::function<void(TComponent*)>& change)
    {
        TNorvexa document = Workshop_Budget().document;
        Change_Component(&document, "Probe", change);
        return document;
    }

    static TNorvexa Changed_Identifier(const QString& name, const std::function<void(TComponentInstance*)>& change)
    {
        TNorvexa document = Workshop_Budget().document;
        Change_Identifier(&document, "Probe", name, change);
        return document;
    }
};

// What is shown

TEST_F(TNorvexaEditorComponent, A_component_is_shown_with_its_own_values_and_without_dates)
{
    Open_Budget(Workshop_Budget());

    Select_Entry("Probe");
    EXPECT_EQ(Component_Page(), PROBE_PAGE);
    EXPECT_FALSE(Find<QDateEdit>("calibration_date")->isEnabled());
    EXPECT_FALSE(Find<QDateEdit>("calibration_due_date")->isEnabled());
    EXPECT_FALSE(Find<QToolButton>("remove_identifier")->isEnabled());

    Select_Entry("Scale");
    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    EXPECT_EQ(Item_Page(), "disabled");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorComponent, An_item_is_shown_with_its_component)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");

    Select_Entry("Drift");

    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
}

TEST_F(TNorvexaEditorComponent, A_selected_identifier_is_shown_with_its_values)
{
    Open_Probe();

    Select_Identifier("SN 1");

    EXPECT_EQ(Component_Page(), SN_1_PAGE);
    EXPECT_TRUE(Find<QToolButton>("remove_identifier")->isEnabled());
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorComponent, Two_selected_identifiers_stand_for_the_component_itself)
{
    Open_Identifier("SN 1");

    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    EXPECT_EQ(Component_Page(), "Probe: SN 1*, SN 2*; no dates; 100.00000, 11.50; combined");
    EXPECT_TRUE(Find<QToolButton>("remove_identifier")->isEnabled());
}

TEST_F(TNorvexaEditorComponent, An_identifier_no_longer_selected_gives_way_to_the_component_itself)
{
    Open_Identifier("SN 1");

    Click_Entry(Identifiers(), "SN 1", Qt::ControlModifier);

    EXPECT_EQ(Component_Page(), PROBE_PAGE);
    EXPECT_FALSE(Find<QToolButton>("remove_identifier")->isEnabled());
}

TEST_F(TNorvexaEditorComponent, Selecting_the_component_again_goes_back_to_itself)
{
    Open_Identifier("SN 1");
    Select_Entry("Norvexa Data");

    Select_Entry("Probe");

    EXPECT_EQ(Component_Page(), PROBE_PAGE);
    Enter("component_length", "7.5");
    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([](TComponent* record) { record->length = 7.5; })));
}

TEST_F(TNorvexaEditorComponent, The_identifier_stays_selected_among_the_items_of_its_component)
{
    Open_Identifier("SN 1");

    for (const char* entry : {"Repeatability", "Resolution", "Norvexa Data", "Repeatability"}) {
        Select_Entry(entry);
    }

    EXPECT_EQ(Component_Page(), SN_1_PAGE);
}

TEST_F(TNorvexaEditorComponent, An_identifier_that_the_component_of_the_next_item_lacks_is_forgotten)
{
    Open_Identifier("SN 1");

    Select_Entry("Drift");

    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    EXPECT_TRUE(Item_Page().startsWith("Identifier: [Default]; "));
    Enter("component_length", "7.5");
    Enter("expression", "0.7");
    TNorvexa expected = Workshop_Budget().document;
    Change_Component(&expected, "Scale", [](TComponent* record) { record->length = 7.5; });
    Change_Item(&expected, "Scale", "Drift", [](TComponentItem* record) { record->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// What is written

TEST_F(TNorvexaEditorComponent, A_typed_length_is_that_of_the_component)
{
    Open_Probe();

    Enter("component_length", "7.5");

    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([](TComponent* record) { record->length = 7.5; })));
}

TEST_F(TNorvexaEditorComponent, A_typed_expansion_coefficient_is_a_thousand_times_that_of_the_component)
{
    Open_Probe();

    Enter("component_expansion_coefficient", "23.25");

    Expect_Modified();
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Component([](TComponent* record) { record->expansion_coefficient = 0.02325; })));
    Select_Entry("Scale");
    Select_Entry("Probe");
    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 23.25; combined");
}

TEST_F(TNorvexaEditorComponent, Numbers_typed_while_an_identifier_is_selected_are_those_of_the_identifier)
{
    Open_Identifier("SN 1");

    Enter("component_length", "7.5");
    Enter("component_expansion_coefficient", "23.25");

    EXPECT_EQ(Saved_State(), State_Of(Changed_Identifier("SN 1", [](TComponentInstance* record) {
                  record->length = 7.5;
                  record->expansion_coefficient = 0.02325;
              })));
}

TEST_F(TNorvexaEditorComponent, Numbers_typed_while_two_identifiers_are_selected_are_those_of_the_component)
{
    Open_Identifier("SN 1");
    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    Enter("component_length", "7.5");

    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([](TComponent* record) { record->length = 7.5; })));
}

struct TNumberRow
{
    const char* name;
    const char* typed;
    double length;
};

class TNorvexaEditorComponentNumber : public TNorvexaEditorComponent, public ::testing::WithParamInterface<TNumberRow>
{};

TEST_P(TNorvexaEditorComponentNumber, Is_read_from_the_field)
{
    Open_Probe();

    Enter("component_length", GetParam().typed);

    const double length = GetParam().length;
    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([=](TComponent* record) { record->length = length; })));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorComponent, TNorvexaEditorComponentNumber,
                         ::testing::Values(TNumberRow{"negative", "-2.5", -2.5}, TNumberRow{"exponent", "1e3", 1000.0},
                                           TNumberRow{"six_decimals", "0.123456", 0.123456},
                                           TNumberRow{"words", "long", 0.0}, TNumberRow{"nothing", "", 0.0},
                                           TNumberRow{"comma", "2,5", 0.0}, TNumberRow{"infinity", "inf", 0.0},
                                           TNumberRow{"no_number", "nan", 0.0}),
                         Row_Name<TNumberRow>);

TEST_F(TNorvexaEditorComponent, A_field_that_was_not_edited_is_never_rounded)
{
    Open_Identifier("SN 2");
    ASSERT_EQ(Find<QLineEdit>("component_length")->text(), "0.12346");

    Enter("component_expansion_coefficient", "23.25");
    Enter_Year("calibration_date", "2032");
    Click_Option("mode_limit_length");
    QTest::mouseClick(Find<QLineEdit>("component_length"), Qt::LeftButton);
    Press(Qt::Key_Return);

    TNorvexa expected = Changed_Identifier("SN 2", [](TComponentInstance* record) {
        record->expansion_coefficient = 0.02325;
        record->calibration_date = Today("MMM d") + " 2032";
    });
    Change_Component(&expected, "Probe", [](TComponent* record) { record->limit_uncertainty_length = true; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_length_of_the_component_itself_is_never_rounded_by_another_edit)
{
    TBudgetFile budget = Workshop_Budget();
    Change_Component(&budget.document, "Probe", [](TComponent* record) { record->length = 0.123456; });
    Open_Budget(budget);
    Select_Entry("Probe");

    Click_Option("mode_export_equipment");

    Change_Component(&budget.document, "Probe", [](TComponent* record) { record->export_equipment = true; });
    EXPECT_EQ(Saved_State(), State_Of(budget.document));
}

// Several options can be clicked in one row.
struct TOptionRow
{
    const char* name;
    QStringList clicked;
    TNorvexaData::TUCMode mode;
    bool hint;
    bool limit;
    QStringList offered;
};

void PrintTo(const TOptionRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorComponentOptions : public TNorvexaEditorComponent, public ::testing::WithParamInterface<TOptionRow>
{};

TEST_P(TNorvexaEditorComponentOptions, Are_written_into_the_component_and_offered_on_the_groups_page)
{
    Open_Probe();

    for (const QString& option : GetParam().clicked) {
        Click_Option(option.toLatin1());
    }

    EXPECT_EQ(Available_Components(), GetParam().offered);
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([](TComponent* record) {
                  record->mode = GetParam().mode;
                  record->export_equipment = GetParam().hint;
                  record->limit_uncertainty_length = GetParam().limit;
              })));
}

const QStringList OFFERED_COMBINED = {"Probe", "Scale - Drift"};
const QStringList OFFERED_INDIVIDUAL = {"Probe - Repeatability", "Probe - Resolution", "Scale - Drift"};

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorComponent, TNorvexaEditorComponentOptions,
    ::testing::Values(
        TOptionRow{"individual", {"mode_single"}, TNorvexaData::UC_MODE_INDIVIDUAL, false, false, OFFERED_INDIVIDUAL},
        TOptionRow{"individual_and_back",
                   {"mode_single", "mode_sum"},
                   TNorvexaData::UC_MODE_SUM,
                   false,
                   false,
                   OFFERED_COMBINED},
        TOptionRow{"hint", {"mode_export_equipment"}, TNorvexaData::UC_MODE_SUM, true, false, OFFERED_COMBINED},
        TOptionRow{"limit", {"mode_limit_length"}, TNorvexaData::UC_MODE_SUM, false, true, OFFERED_COMBINED},
        TOptionRow{"all",
                   {"mode_limit_length", "mode_single", "mode_export_equipment"},
                   TNorvexaData::UC_MODE_INDIVIDUAL,
                   true,
                   true,
                   OFFERED_INDIVIDUAL}),
    Row_Name<TOptionRow>);

TEST_F(TNorvexaEditorComponent, Options_clicked_while_an_identifier_is_selected_belong_to_the_component)
{
    Open_Identifier("SN 1");

    Click_Option("mode_single");

    EXPECT_EQ(Component_Page(), "Probe: SN 1*, SN 2; Sun Nov 15 2026, Mon Nov 15 2027; 250.50000, 8.50; individual");
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Component([](TComponent* record) { record->mode = TNorvexaData::UC_MODE_INDIVIDUAL; })));
}

TEST_F(TNorvexaEditorComponent, An_edit_without_a_component_writes_nothing)
{
    d_editor.Component_Data_Changed();
    d_editor.Component_Identifier_Selected("SN 1");

    EXPECT_EQ(Saving(), "");
    Expect_Unmodified();
    EXPECT_FALSE(Find<QCheckBox>("use_default_expression")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("use_default_expression")->isEnabled());
    EXPECT_FALSE(Find<QDateEdit>("calibration_date")->isEnabled());
}

// Dates

struct TDateRow
{
    const char* name;
    QString recorded;
    QString shown;
};

void PrintTo(const TDateRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorComponentDate : public TNorvexaEditorComponent, public ::testing::WithParamInterface<TDateRow>
{
protected:
    TBudgetFile Budget() const
    {
        TBudgetFile budget = Workshop_Budget();
        budget.document = Changed_Identifier("SN 1", [](TComponentInstance* record) {
            record->calibration_date = GetParam().recorded;
            record->calibration_due_date = GetParam().recorded;
        });
        return budget;
    }

    void Open_Date()
    {
        Open_Budget(Budget());
        Select_Entry("Probe");
        Select_Identifier("SN 1");
    }

    QString Expected_Date() const { return GetParam().shown.isEmpty() ? Today("ddd MMM d yyyy") : GetParam().shown; }
};

TEST_P(TNorvexaEditorComponentDate, Is_shown_and_left_as_it_stands)
{
    Open_Date();

    EXPECT_EQ(Find<QDateEdit>("calibration_date")->text(), Expected_Date());
    EXPECT_EQ(Find<QDateEdit>("calibration_due_date")->text(), Expected_Date());
    Expect_Unmodified();
    Enter("component_length", "7.5");
    Click_Option("mode_limit_length");
    Select_Identifier("SN 2");
    Select_Identifier("SN 1");

    TNorvexa expected = Budget().document;
    Change_Identifier(&expected, "Probe", "SN 1", [](TComponentInstance* record) { record->length = 7.5; });
    Change_Component(&expected, "Probe", [](TComponent* record) { record->limit_uncertainty_length = true; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_P(TNorvexaEditorComponentDate, Is_written_once_it_is_changed_and_the_other_one_stays)
{
    Open_Date();

    Enter_Year("calibration_due_date", "2032");

    // A leap year, in which today exists as well.
    const QString changed = Expected_Date().section(' ', 1, 2) + " 2032";
    Expect_Modified();
    TNorvexa expected = Budget().document;
    Change_Identifier(&expected, "Probe", "SN 1",
                      [&](TComponentInstance* record) { record->calibration_due_date = changed; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorComponent, TNorvexaEditorComponentDate,
                         ::testing::Values(TDateRow{"written_form", "Mar 5 2026", "Thu Mar 5 2026"},
                                           TDateRow{"form_of_new_identifiers", "Thu Mar 5 2026", "Thu Mar 5 2026"},
                                           TDateRow{"two_digits", "Mar 05 2026", "Thu Mar 5 2026"},
                                           TDateRow{"numbers", "2026-03-05", ""},
                                           TDateRow{"other_language", "Do M\u00e4r 5 2026", ""},
                                           TDateRow{"no_such_day", "Feb 30 2026", ""},
                                           TDateRow{"words", "when it is back", ""}),
                         Row_Name<TDateRow>);

TEST_F(TNorvexaEditorComponent, Dates_are_English_under_another_locale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    Open_Identifier("SN 1");

    Enter_Year("calibration_date", "2028");

    EXPECT_EQ(Component_Page(), "Probe: SN 1*, SN 2; Wed Nov 15 2028, Mon Nov 15 2027; 250.50000, 8.50; combined");
    EXPECT_EQ(Saved_State(), State_Of(Changed_Identifier("SN 1", [](TComponentInstance* record) {
                  record->calibration_date = "Nov 15 2028";
              })));
    QLocale::setDefault(before);
}

TEST_F(TNorvexaEditorComponent, A_date_changed_back_is_written_as_a_date)
{
    TBudgetFile budget = Workshop_Budget();
    budget.document =
        Changed_Identifier("SN 1", [](TComponentInstance* record) { record->calibration_date = "Thu Mar 5 2026"; });
    Open_Budget(budget);
    Select_Entry("Probe");
    Select_Identifier("SN 1");

    Enter_Year("calibration_date", "2027");
    Enter_Year("calibration_date", "2026");

    Change_Identifier(&budget.document, "Probe", "SN 1",
                      [](TComponentInstance* record) { record->calibration_date = "Mar 5 2026"; });
    EXPECT_EQ(Saved_State(), State_Of(budget.document));
}

TEST_F(TNorvexaEditorComponent, A_click_on_the_frame_of_a_date_is_no_edit)
{
    Open_Identifier("SN 1");
    auto* date = Find<QDateEdit>("calibration_date");
    const QString text = date->text();
    const QString saving = Saving();

    for (const QPoint& position :
         {QPoint(date->width() / 2, 0), QPoint(0, date->height() / 2), QPoint(date->width() / 2, date->height() - 1),
          QPoint(date->width() - 1, date->height() / 2)}) {
        QTest::mousePress(date, Qt::LeftButton, Qt::NoModifier, position);
        QTest::mouseRelease(date, Qt::LeftButton, Qt::NoModifier, position);
    }

    EXPECT_EQ(date->text(), text);
    EXPECT_EQ(Saving(), saving);
}

TEST_F(TNorvexaEditorComponent, The_date_of_one_identifier_never_reaches_the_next)
{
    Open_Identifier("SN 1");
    Enter_Year("calibration_date", "2030");

    Select_Identifier("SN 2");
    Enter("component_length", "7.5");

    TNorvexa expected =
        Changed_Identifier("SN 1", [](TComponentInstance* record) { record->calibration_date = "Nov 15 2030"; });
    Change_Identifier(&expected, "Probe", "SN 2", [](TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// Identifiers

TEST_F(TNorvexaEditorComponent, An_added_identifier_takes_the_values_of_the_component_and_the_date_of_today)
{
    Open_Probe();

    Add_Identifier("SN 0");

    EXPECT_EQ(Component_Page(), "Probe: SN 0, SN 1, SN 2; no dates; 100.00000, 11.50; combined");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Add_Identifier("Probe", "SN 0");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_length_being_typed_is_taken_before_an_identifier_is_added)
{
    Open_Probe();
    Replace_Text(Find<QLineEdit>("component_length"), "7.5");

    Add_Identifier("SN 0");

    TNorvexa expected = Changed_Component([](TComponent* record) { record->length = 7.5; });
    expected.Component_Add_Identifier("Probe", "SN 0");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_new_identifier_shows_today_and_keeps_its_text_when_its_length_is_typed)
{
    Open_Probe();
    Add_Identifier("SN 0");

    Select_Identifier("SN 0");
    const QString today = Today("ddd MMM d yyyy");
    EXPECT_EQ(Component_Page(), "Probe: SN 0*, SN 1, SN 2; " + today + ", " + today + "; 100.00000, 11.50; combined");
    Enter("component_length", "7.5");

    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Add_Identifier("Probe", "SN 0");
    Change_Identifier(&expected, "Probe", "SN 0", [](TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, Adding_an_identifier_leaves_the_selected_one_current)
{
    Open_Identifier("SN 2");

    Add_Identifier("SN 0");
    Enter("component_length", "7.5");

    TNorvexa expected = Changed_Identifier("SN 2", [](TComponentInstance* record) { record->length = 7.5; });
    expected.Component_Add_Identifier("Probe", "SN 0");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, An_identifier_added_while_an_item_is_selected_belongs_to_its_component)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Drift");

    Add_Identifier("SN 1");
    Select_Identifier("SN 1");

    EXPECT_EQ(Item_Page(), "Identifier: SN 1; Type A, U, 0.500000; (Td*CTEm), default on; dependent temperature; "
                           "Uc = f(expression) C/m");
    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Add_Identifier("Scale", "SN 1");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

struct TRefusedRow
{
    const char* name;
    QString typed;
};

void PrintTo(const TRefusedRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorIdentifierRefused : public TNorvexaEditorComponent,
                                        public ::testing::WithParamInterface<TRefusedRow>
{};

TEST_P(TNorvexaEditorIdentifierRefused, Is_no_new_name)
{
    Open_Identifier("SN 1");

    Rename_Identifier("SN 1", GetParam().typed);

    EXPECT_EQ(Component_Page(), SN_1_PAGE);
    Expect_Unmodified();
    Enter("component_length", "7.5");
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Identifier("SN 1", [](TComponentInstance* record) { record->length = 7.5; })));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorComponent, TNorvexaEditorIdentifierRefused,
                         ::testing::Values(TRefusedRow{"name_of_another", "SN 2"},
                                           TRefusedRow{"name_of_another_in_other_case", "sn 2"},
                                           TRefusedRow{"default", "[Default]"}, TRefusedRow{"nothing", ""},
                                           TRefusedRow{"blanks", "  "}, TRefusedRow{"no_break_space", NO_BREAK_SPACE},
                                           TRefusedRow{"own_name", "SN 1"}),
                         Row_Name<TRefusedRow>);

class TNorvexaEditorIdentifierNotAdded : public TNorvexaEditorComponent,
                                         public ::testing::WithParamInterface<TRefusedRow>
{};

TEST_P(TNorvexaEditorIdentifierNotAdded, Changes_nothing)
{
    Open_Probe();

    Add_Identifier(GetParam().typed);

    EXPECT_EQ(Component_Page(), PROBE_PAGE);
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorComponent, TNorvexaEditorIdentifierNotAdded,
                         ::testing::Values(TRefusedRow{"name_in_use", "SN 2"},
                                           TRefusedRow{"name_in_use_in_other_case", "sn 2"},
                                           TRefusedRow{"default", "[Default]"}, TRefusedRow{"blanks", "  "},
                                           TRefusedRow{"no_break_space", NO_BREAK_SPACE}),
                         Row_Name<TRefusedRow>);

TEST_F(TNorvexaEditorComponent, A_renamed_identifier_stays_current_with_all_its_replacements)
{
    Open_Identifier("SN 1");

    Rename_Identifier("SN 1", "SN 9");

    EXPECT_EQ(Component_Page(), "Probe: SN 2, SN 9*; Sun Nov 15 2026, Mon Nov 15 2027; 250.50000, 8.50; combined");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    Enter("component_length", "7.5");
    Enter_Year("calibration_due_date", "2030");
    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "SN 9");
    Change_Identifier(&expected, "Probe", "SN 9", [](TComponentInstance* record) {
        record->length = 7.5;
        record->calibration_due_date = "Nov 15 2030";
    });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, The_title_of_the_item_page_follows_a_renamed_identifier)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Repeatability");
    Select_Identifier("SN 1");

    Rename_Identifier("SN 1", "SN 9");
    Enter("expression", "0.7");

    EXPECT_TRUE(Item_Page().startsWith("Identifier: SN 9; "));
    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "SN 9");
    expected.Update_Component_Item("Probe", "Repeatability", "SN 9", "0.7", false);
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_change_of_case_renames_an_identifier)
{
    Open_Probe();

    Rename_Identifier("SN 1", "sn 1");

    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "sn 1");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_first_identifier_renamed_to_be_the_last_keeps_receiving_the_edits)
{
    Open_Identifiers({"A", "B", "C"});

    Rename_Identifier("A", "Z");
    Enter("component_length", "7.5");

    EXPECT_TRUE(Component_Page().startsWith("Probe: B, C, Z*; "));
    TNorvexa expected = Identifiers_Budget({"A", "B", "C"}).document;
    expected.Rename_Component_Identifier("Probe", "A", "Z");
    Change_Identifier(&expected, "Probe", "Z", [](TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, An_identifier_left_by_a_key_while_it_is_renamed_is_not_the_current_one)
{
    Open_Identifier("SN 1");
    Press(Qt::Key_F2);
    Replace_Text(Open_Editor(Identifiers()), "SN 0");

    Press(Qt::Key_Down);
    Enter("component_length", "7.5");

    EXPECT_TRUE(Component_Page().startsWith("Probe: SN 0, SN 2*; "));
    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "SN 0");
    Change_Identifier(&expected, "Probe", "SN 2", [](TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, A_double_click_renames_an_identifier)
{
    Open_Identifier("SN 1");

    QTest::mouseDClick(Identifiers()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       Identifiers()->visualRect(Entry(Identifiers(), "SN 1")).center());
    ASSERT_NE(Open_Editor(Identifiers()), nullptr);
    Replace_Text(Open_Editor(Identifiers()), "SN 9");
    Press(Qt::Key_Return);

    ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Identifiers()) == nullptr; }));
    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "SN 9");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, Two_selected_identifiers_are_not_renamed)
{
    Open_Identifier("SN 1");
    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    QTest::keyClick(Identifiers(), Qt::Key_F2);
    EXPECT_EQ(Open_Editor(Identifiers()), nullptr);
    Type_Text(Identifiers(), "X");
    QTest::keyClick(Identifiers(), Qt::Key_Return);

    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorComponent, A_name_being_typed_for_an_identifier_is_taken_when_another_entry_is_selected)
{
    Open_Identifier("SN 1");
    QTest::keyClick(Identifiers(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Identifiers()), nullptr);
    Replace_Text(Open_Editor(Identifiers()), "SN 0");

    Select_Entry("Scale");

    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    TNorvexa expected = Workshop_Budget().document;
    expected.Rename_Component_Identifier("Probe", "SN 1", "SN 0");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, Removing_identifiers_asks_first_and_No_changes_nothing)
{
    Open_Identifier("SN 1");

    Remove_Identifiers(QMessageBox::No);

    EXPECT_EQ(d_answer.Seen(0).text, "Delete Selected Component Identifiers");
    EXPECT_EQ(Component_Page(), SN_1_PAGE);
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorComponent, A_removed_identifier_takes_its_replacements_with_it)
{
    Open_Identifier("SN 1");

    Remove_Identifiers();

    EXPECT_EQ(Component_Page(), "Probe: SN 2; no dates; 100.00000, 11.50; combined");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Remove_Identifier("Probe", {"SN 1"});
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, After_the_selected_identifier_is_removed_the_component_keeps_its_own_values)
{
    Open_Identifier("SN 1");
    Remove_Identifiers();

    Enter("component_length", "7.5");

    TNorvexa expected = Changed_Component([](TComponent* record) { record->length = 7.5; });
    expected.Component_Remove_Identifier("Probe", {"SN 1"});
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, After_the_identifier_of_a_selected_item_is_removed_its_own_expression_is_edited)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Repeatability");
    Select_Identifier("SN 1");

    Remove_Identifiers();

    EXPECT_EQ(Item_Page(), "Identifier: [Default]; Type B, Normal, 1.000000; 0.003, (default off); independent linear; "
                           "Uc = f(expression) mm");
    Enter("expression", "0.7");
    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Remove_Identifier("Probe", {"SN 1"});
    Change_Item(&expected, "Probe", "Repeatability", [](TComponentItem* record) { record->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, Several_identifiers_are_removed_at_once)
{
    Open_Identifier("SN 1");
    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    Remove_Identifiers();

    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Remove_Identifier("Probe", {"SN 1", "SN 2"});
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, An_identifier_added_again_starts_afresh)
{
    Open_Identifier("SN 1");
    Remove_Identifiers();

    Add_Identifier("SN 1");

    TNorvexa expected = Workshop_Budget().document;
    expected.Component_Remove_Identifier("Probe", {"SN 1"});
    expected.Component_Add_Identifier("Probe", "SN 1");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// An identifier of that name, which only a file can bring in, means the component itself.
TEST_F(TNorvexaEditorComponent, An_identifier_called_Default_is_the_component_itself)
{
    const TBudgetFile budget = Identifiers_Budget({"A", "[Default]"});
    Open_Budget(budget);
    Select_Entry("Wear");

    Select_Identifier("[Default]");

    EXPECT_EQ(Component_Page(), "Probe: A, [Default]*; no dates; 0.00000, 10.00; combined");
    EXPECT_TRUE(Item_Page().startsWith("Identifier: [Default]; "));
    Enter("component_length", "7.5");
    TNorvexa expected = budget.document;
    Change_Component(&expected, "Probe", [](TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorComponent, After_a_component_is_renamed_its_identifiers_are_edited_under_the_new_name)
{
    Open_Probe();
    Rename_Entry(Tree(), "Probe", "Zoom");

    Add_Identifier("SN 0");
    Rename_Identifier("SN 1", "SN 9");
    Enter("component_length", "7.5");
    Select_Identifier("SN 2");
    Remove_Identifiers();

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    expected.Component_Add_Identifier("Zoom", "SN 0");
    expected.Rename_Component_Identifier("Zoom", "SN 1", "SN 9");
    expected.Component_Remove_Identifier("Zoom", {"SN 2"});
    Change_Identifier(&expected, "Zoom", "SN 9", [](TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// What was typed in one record is never written into the next

TEST_F(TNorvexaEditorComponent, A_length_being_typed_belongs_to_the_component_that_was_shown)
{
    Open_Probe();
    Replace_Text(Find<QLineEdit>("component_length"), "7.5");

    Select_Entry("Scale");

    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    EXPECT_EQ(Saved_State(), State_Of(Changed_Component([](TComponent* record) { record->length = 7.5; })));
}

TEST_F(TNorvexaEditorComponent, A_length_being_typed_belongs_to_the_identifier_that_was_shown)
{
    Open_Identifier("SN 1");
    Replace_Text(Find<QLineEdit>("component_length"), "7.5");

    Select_Identifier("SN 2");

    EXPECT_EQ(Find<QLineEdit>("component_length")->text(), "0.12346");
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Identifier("SN 1", [](TComponentInstance* record) { record->length = 7.5; })));
}

} // namespace
