#include "tests/support/componentpages.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

#include <ostream>

namespace {

using TComponent = TNorvexaData::TComponent;
using TComponentItem = TNorvexaData::TComponentItem;

const char* const NO_BREAK_SPACE = "\u00a0";
const char* const REPEATABILITY_PAGE = "Identifier: [Default]; Type B, Normal, 1.000000; 0.003, (default off); "
                                       "independent linear; Uc = f(expression) mm";
const char* const DRIFT_PAGE = "Identifier: [Default]; Type A, U, 0.500000; Td*CTEm, (default off); dependent "
                               "temperature; Uc = f(expression) C/m";

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& info)
{
    return info.param.name;
}

// The page of "Repeatability" for an identifier.
QString Page_For(const QString& identifier, const QString& expression, const QString& use_default)
{
    return QStringLiteral("Identifier: %1; Type B, Normal, 1.000000; %2, default %3; independent linear; "
                          "Uc = f(expression) mm")
        .arg(identifier, expression, use_default);
}

class TNorvexaEditorItem : public TComponentPagesFixture
{
protected:
    void Open_Item(const QString& item, const QString& identifier = QString())
    {
        Open_Budget(Workshop_Budget());
        Select_Entry(item);
        if (!identifier.isEmpty()) {
            Select_Identifier(identifier);
        }
    }

    // The budget of the workshop with one more change in "Repeatability".
    static TNorvexa Changed_Item(const std::function<void(TComponentItem*)>& change)
    {
        TNorvexa document = Workshop_Budget().document;
        Change_Item(&document, "Probe", "Repeatability", change);
        return document;
    }

    static TNorvexa Changed_Replacement(const QString& identifier, const QString& expression, bool use_default)
    {
        TNorvexa document = Workshop_Budget().document;
        document.Update_Component_Item("Probe", "Repeatability", identifier, expression, use_default);
        return document;
    }
};

// What is shown

TEST_F(TNorvexaEditorItem, An_item_is_shown_with_its_own_values)
{
    Open_Item("Repeatability");
    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);

    Select_Entry("Drift");
    EXPECT_EQ(Item_Page(), DRIFT_PAGE);
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorItem, Offers_the_types_of_the_document)
{
    const auto texts = [this](const char* name) {
        const auto* box = Find<QComboBox>(name);
        QStringList entries;
        for (int index = 0; index < box->count(); ++index) {
            entries << box->itemText(index);
        }
        return entries;
    };

    EXPECT_EQ(texts("uc_type"), QStringList({"Type A", "Type B"}));
    EXPECT_EQ(texts("distribution"), QStringList({"Normal", "Rectangular", "Triangular", "U", "Step"}));
}

struct TIdentifierRow
{
    const char* name;
    QString item;
    QString identifier;
    QString page;
};

void PrintTo(const TIdentifierRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorItemIdentifier : public TNorvexaEditorItem, public ::testing::WithParamInterface<TIdentifierRow>
{};

TEST_P(TNorvexaEditorItemIdentifier, Selected_after_the_item_shows_its_replacement)
{
    Open_Item(GetParam().item, GetParam().identifier);

    EXPECT_EQ(Item_Page(), GetParam().page);
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_P(TNorvexaEditorItemIdentifier, Selected_before_the_item_shows_its_replacement)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    Select_Identifier(GetParam().identifier);

    Select_Entry(GetParam().item);

    EXPECT_EQ(Item_Page(), GetParam().page);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorItem, TNorvexaEditorItemIdentifier,
    ::testing::Values(TIdentifierRow{"replaced", "Repeatability", "SN 1", Page_For("SN 1", "0.001", "off")},
                      TIdentifierRow{"using_the_default", "Repeatability", "SN 2", Page_For("SN 2", "(0.003)", "on")},
                      TIdentifierRow{"with_an_equal_text_using_the_default", "Resolution", "SN 1",
                                     Page_For("SN 1", "(0.004)", "on")}),
    Row_Name<TIdentifierRow>);

TEST_F(TNorvexaEditorItem, Goes_back_to_its_own_expression_when_no_identifier_is_selected_any_more)
{
    Open_Item("Repeatability", "SN 2");

    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);
}

TEST_F(TNorvexaEditorItem, Shows_its_own_expression_while_two_identifiers_are_selected)
{
    Open_Item("Repeatability", "SN 1");

    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);
}

// An identifier without replacement item, as only a file can bring it in, shows and edits the item's own expression.
TEST_F(TNorvexaEditorItem, An_identifier_without_a_replacement_shows_and_edits_the_default)
{
    TBudgetFile budget = Workshop_Budget();
    Change_Item(&budget.document, "Probe", "Repeatability",
                [](TComponentItem* record) { record->replacement_items.clear(); });
    Open_Budget(budget);
    Select_Entry("Repeatability");

    Select_Identifier("SN 1");
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.003", "off"));
    Click_Option("use_default_expression");
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.003", "off"));
    Enter("expression", "0.7");

    Change_Item(&budget.document, "Probe", "Repeatability", [](TComponentItem* record) { record->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(budget.document));
}

// Types

struct TOptionsRow
{
    const char* name;
    QStringList clicked;
    TNorvexaData::TExpressionType type;
    const char* shown;
};

void PrintTo(const TOptionsRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorItemOptions : public TNorvexaEditorItem, public ::testing::WithParamInterface<TOptionsRow>
{};

TEST_P(TNorvexaEditorItemOptions, Are_the_expression_type_of_the_item)
{
    Open_Item("Repeatability");
    // Both pairs end as the row says, whatever they showed before.
    Click_Option("length_dependent");
    Click_Option("temperature");

    for (const QString& option : GetParam().clicked) {
        Click_Option(option.toLatin1());
    }

    EXPECT_TRUE(Item_Page().endsWith(GetParam().shown)) << Item_Page().toStdString();
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Item([](TComponentItem* record) { record->expression_type = GetParam().type; })));
}

TEST_P(TNorvexaEditorItemOptions, Show_the_expression_type_of_the_file)
{
    TBudgetFile budget = Workshop_Budget();
    budget.document = Changed_Item([](TComponentItem* record) { record->expression_type = GetParam().type; });
    Open_Budget(budget);
    Select_Entry("Drift");

    Select_Entry("Repeatability");

    EXPECT_TRUE(Item_Page().endsWith(GetParam().shown)) << Item_Page().toStdString();
    Expect_Unmodified();
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorItem, TNorvexaEditorItemOptions,
                         ::testing::Values(TOptionsRow{"independent_linear",
                                                       {"length_independent", "linear"},
                                                       TNorvexaData::CONSTANT_LINEAR,
                                                       "; independent linear; Uc = f(expression) mm"},
                                           TOptionsRow{"independent_temperature",
                                                       {"length_independent"},
                                                       TNorvexaData::CONSTANT_TEMPERATURE,
                                                       "; independent temperature; Uc = f(expression) C"},
                                           TOptionsRow{"dependent_linear",
                                                       {"linear"},
                                                       TNorvexaData::LENGTH_DEPENDENT_LINEAR,
                                                       "; dependent linear; Uc = f(expression) mm/m"},
                                           TOptionsRow{"dependent_temperature",
                                                       {},
                                                       TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE,
                                                       "; dependent temperature; Uc = f(expression) C/m"}),
                         Row_Name<TOptionsRow>);

struct TChoiceRow
{
    const char* name;
    const char* box;
    const char* choice;
    std::function<void(TComponentItem*)> change;
};

void PrintTo(const TChoiceRow& row, std::ostream* stream)
{
    *stream << row.name;
}

std::function<void(TComponentItem*)> Distributed(TNorvexaData::TDistribution distribution)
{
    return [distribution](TComponentItem* record) { record->distribution = distribution; };
}

class TNorvexaEditorItemChoice : public TNorvexaEditorItem, public ::testing::WithParamInterface<TChoiceRow>
{};

TEST_P(TNorvexaEditorItemChoice, Is_written_into_the_item)
{
    Open_Item("Repeatability");

    Choose_Entry(Find<QComboBox>(GetParam().box), GetParam().choice);

    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Item(GetParam().change)));
}

TEST_P(TNorvexaEditorItemChoice, Is_shown_for_the_item_of_a_file)
{
    TBudgetFile budget = Workshop_Budget();
    budget.document = Changed_Item(GetParam().change);
    Open_Budget(budget);
    Select_Entry("Drift");

    Select_Entry("Repeatability");

    EXPECT_EQ(Find<QComboBox>(GetParam().box)->currentText(), GetParam().choice);
    Expect_Unmodified();
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorItem, TNorvexaEditorItemChoice,
    ::testing::Values(
        TChoiceRow{"Rectangular", "distribution", "Rectangular", Distributed(TNorvexaData::DISTRIBUTION_RECTANGULAR)},
        TChoiceRow{"Triangular", "distribution", "Triangular", Distributed(TNorvexaData::DISTRIBUTION_TRIANGULAR)},
        TChoiceRow{"U", "distribution", "U", Distributed(TNorvexaData::DISTRIBUTION_U)},
        TChoiceRow{"Step", "distribution", "Step", Distributed(TNorvexaData::DISTRIBUTION_STEP)},
        TChoiceRow{"Type_A", "uc_type", "Type A",
                   [](TComponentItem* record) { record->uc_type = TNorvexaData::UC_TYPE_A; }}),
    Row_Name<TChoiceRow>);

TEST_F(TNorvexaEditorItem, Normal_and_Type_B_can_be_chosen_again)
{
    Open_Item("Drift");

    Choose_Entry(Find<QComboBox>("distribution"), "Normal");
    Choose_Entry(Find<QComboBox>("uc_type"), "Type B");

    TNorvexa expected = Workshop_Budget().document;
    Change_Item(&expected, "Scale", "Drift", [](TComponentItem* record) {
        record->distribution = TNorvexaData::DISTRIBUTION_NORMAL;
        record->uc_type = TNorvexaData::UC_TYPE_B;
    });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// Sensitivity

struct TSensitivityRow
{
    const char* name;
    const char* typed;
    double sensitivity;
};

class TNorvexaEditorItemSensitivity : public TNorvexaEditorItem, public ::testing::WithParamInterface<TSensitivityRow>
{};

TEST_P(TNorvexaEditorItemSensitivity, Is_read_from_the_field)
{
    Open_Item("Repeatability");

    Enter("sensitivity", GetParam().typed);

    Expect_Modified();
    const double sensitivity = GetParam().sensitivity;
    EXPECT_EQ(Saved_State(),
              State_Of(Changed_Item([=](TComponentItem* record) { record->sensitivity = sensitivity; })));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorItem, TNorvexaEditorItemSensitivity,
                         ::testing::Values(TSensitivityRow{"number", "0.25", 0.25},
                                           TSensitivityRow{"negative", "-2", -2.0},
                                           TSensitivityRow{"exponent", "1e-3", 0.001},
                                           TSensitivityRow{"words", "high", 0.0}, TSensitivityRow{"nothing", "", 0.0},
                                           TSensitivityRow{"comma", "0,25", 0.0},
                                           TSensitivityRow{"infinity", "inf", 0.0}),
                         Row_Name<TSensitivityRow>);

// The file keeps six decimals, so that what was rounded shows in the report alone: 1e-7 times 1e6 is 0.1, not 0.
TEST_F(TNorvexaEditorItem, A_sensitivity_that_was_not_edited_is_never_rounded)
{
    Write_Budget(Workshop_Budget(), Path("fine.norvexa"));
    QFile file(Path("fine.norvexa"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll().replace(">0.500000<", ">0.0000001<");
    file.close();
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(text), text.size());
    file.close();
    Drop_Files({file.fileName()});
    Select_Entry("Drift");
    ASSERT_EQ(Find<QLineEdit>("sensitivity")->text(), "0.000000");

    Enter("expression", "1000000");
    Click_Option("length_independent");
    Click_Option("linear");
    Choose_Entry(Find<QComboBox>("distribution"), "Normal");

    Click_Tool("action_report");
    Choose_Entry(Find<QComboBox>("report_group"), "Length");
    const auto* report = Find<QTreeWidget>("report_table");
    const QTreeWidgetItem* drift = report->topLevelItem(report->topLevelItemCount() - 1);
    EXPECT_EQ(drift->text(report->columnCount() - 1), "0.100000");
}

// Expressions

TEST_F(TNorvexaEditorItem, A_typed_expression_is_that_of_the_item)
{
    Open_Item("Repeatability");

    Enter("expression", "SQRT(2)*Sr");

    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) { record->expression = "SQRT(2)*Sr"; })));
}

TEST_F(TNorvexaEditorItem, An_expression_typed_for_an_identifier_is_its_replacement)
{
    Open_Item("Repeatability", "SN 1");

    Enter("expression", "0.7");

    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.7", "off"));
    EXPECT_EQ(Saved_State(), State_Of(Changed_Replacement("SN 1", "0.7", false)));
}

TEST_F(TNorvexaEditorItem, An_expression_typed_while_two_identifiers_are_selected_is_that_of_the_item)
{
    Open_Item("Repeatability", "SN 1");
    Click_Entry(Identifiers(), "SN 2", Qt::ControlModifier);

    Enter("expression", "0.7");

    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) { record->expression = "0.7"; })));
}

TEST_F(TNorvexaEditorItem, A_changed_default_is_shown_for_the_identifiers_that_use_it)
{
    Open_Item("Repeatability");

    Enter("expression", "0.7");

    Select_Identifier("SN 2");
    EXPECT_EQ(Item_Page(), Page_For("SN 2", "(0.7)", "on"));
    Select_Identifier("SN 1");
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.001", "off"));
}

class TNorvexaEditorItemBlank : public TNorvexaEditorItem, public ::testing::WithParamInterface<QString>
{};

TEST_P(TNorvexaEditorItemBlank, Expression_goes_back_to_the_one_before)
{
    Open_Item("Repeatability");
    Enter("expression", GetParam());
    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);

    Select_Identifier("SN 1");
    Enter("expression", GetParam());
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.001", "off"));

    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_P(TNorvexaEditorItemBlank, Expression_is_not_written_by_another_edit)
{
    Open_Item("Repeatability");
    Replace_Text(Find<QLineEdit>("expression"), GetParam());

    Click_Option("temperature");

    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) {
                  record->expression_type = TNorvexaData::CONSTANT_TEMPERATURE;
              })));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorItem, TNorvexaEditorItemBlank, ::testing::Values("", "  ", NO_BREAK_SPACE),
                         [](const ::testing::TestParamInfo<QString>& text) {
                             return text.param.isEmpty() ? "nothing" : text.param == "  " ? "blanks" : "no_break_space";
                         });

TEST_F(TNorvexaEditorItem, Control_characters_are_taken_out_of_an_expression)
{
    Open_Item("Repeatability");
    auto* field = Find<QLineEdit>("expression");

    Paste_Text(field, QString("0.") + QChar(7) + "7");
    QTest::keyClick(field, Qt::Key_Return);

    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) { record->expression = "0.7"; })));
}

TEST_F(TNorvexaEditorItem, An_expression_being_typed_belongs_to_the_item_that_was_shown)
{
    Open_Item("Repeatability");
    Replace_Text(Find<QLineEdit>("expression"), "0.7");

    Select_Entry("Resolution");

    EXPECT_EQ(Find<QLineEdit>("expression")->text(), "0.004");
    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) { record->expression = "0.7"; })));
}

TEST_F(TNorvexaEditorItem, An_expression_being_typed_belongs_to_the_identifier_that_was_shown)
{
    Open_Item("Repeatability", "SN 1");
    Replace_Text(Find<QLineEdit>("expression"), "0.7");

    Select_Identifier("SN 2");

    EXPECT_EQ(Item_Page(), Page_For("SN 2", "(0.003)", "on"));
    EXPECT_EQ(Saved_State(), State_Of(Changed_Replacement("SN 1", "0.7", false)));
}

// Use default

TEST_F(TNorvexaEditorItem, Ticking_the_box_shows_the_default_and_keeps_the_own_text)
{
    Open_Item("Repeatability", "SN 1");

    Click_Option("use_default_expression");

    EXPECT_EQ(Item_Page(), Page_For("SN 1", "(0.003)", "on"));
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Replacement("SN 1", "0.001", true)));
}

TEST_F(TNorvexaEditorItem, Clearing_the_box_shows_the_own_text_again)
{
    Open_Item("Repeatability", "SN 2");

    Click_Option("use_default_expression");

    EXPECT_EQ(Item_Page(), Page_For("SN 2", "0.002", "off"));
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(Changed_Replacement("SN 2", "0.002", false)));
}

TEST_F(TNorvexaEditorItem, Ticking_and_clearing_the_box_changes_nothing)
{
    Open_Item("Repeatability", "SN 1");

    Click_Option("use_default_expression");
    Click_Option("use_default_expression");

    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.001", "off"));
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorItem, Other_edits_while_the_default_is_used_keep_the_own_text)
{
    Open_Item("Repeatability", "SN 2");

    Enter("sensitivity", "0.25");
    Click_Option("temperature");
    Choose_Entry(Find<QComboBox>("uc_type"), "Type A");

    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) {
                  record->sensitivity = 0.25;
                  record->expression_type = TNorvexaData::CONSTANT_TEMPERATURE;
                  record->uc_type = TNorvexaData::UC_TYPE_A;
              })));
}

TEST_F(TNorvexaEditorItem, An_expression_being_typed_is_kept_when_the_box_is_ticked)
{
    Open_Item("Repeatability", "SN 1");
    Replace_Text(Find<QLineEdit>("expression"), "0.7");

    Click_Option("use_default_expression");
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "(0.003)", "on"));

    Click_Option("use_default_expression");
    EXPECT_EQ(Item_Page(), Page_For("SN 1", "0.7", "off"));
    EXPECT_EQ(Saved_State(), State_Of(Changed_Replacement("SN 1", "0.7", false)));
}

TEST_F(TNorvexaEditorItem, The_box_cannot_be_ticked_for_the_component_itself)
{
    Open_Item("Repeatability");

    Click_Option("use_default_expression");

    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorItem, The_box_ticked_for_one_identifier_is_not_carried_to_the_next_or_to_the_default)
{
    Open_Item("Repeatability", "SN 1");
    Click_Option("use_default_expression");

    Click_Entry(Identifiers(), "SN 1", Qt::ControlModifier);
    EXPECT_EQ(Item_Page(), REPEATABILITY_PAGE);
    Enter("expression", "0.7");

    TNorvexa expected = Changed_Replacement("SN 1", "0.001", true);
    Change_Item(&expected, "Probe", "Repeatability", [](TComponentItem* record) { record->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// Sequences

TEST_F(TNorvexaEditorItem, A_budget_is_begun_in_a_fresh_window)
{
    Add_Component("Gauge");
    Add_Item("Gauge", "Wear");
    Select_Entry("Norvexa Data");
    Select_Entry("Wear");

    Enter("expression", "0.7");
    Enter("component_length", "7.5");

    TNorvexa expected;
    expected.Add_Component("Gauge");
    expected.Add_Component_Item("Gauge", "Wear");
    Change_Item(&expected, "Gauge", "Wear", [](TComponentItem* record) { record->expression = "0.7"; });
    Change_Component(&expected, "Gauge", [](TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorItem, All_fields_of_an_item_are_edited_one_after_the_other)
{
    Open_Item("Repeatability");

    Choose_Entry(Find<QComboBox>("uc_type"), "Type A");
    Choose_Entry(Find<QComboBox>("distribution"), "Step");
    Enter("sensitivity", "0.25");
    Enter("expression", "Td");
    Click_Option("length_dependent");
    Click_Option("temperature");

    EXPECT_EQ(Item_Page(), "Identifier: [Default]; Type A, Step, 0.25; Td, (default off); dependent temperature; "
                           "Uc = f(expression) C/m");
    EXPECT_EQ(Saved_State(), State_Of(Changed_Item([](TComponentItem* record) {
                  record->uc_type = TNorvexaData::UC_TYPE_A;
                  record->distribution = TNorvexaData::DISTRIBUTION_STEP;
                  record->sensitivity = 0.25;
                  record->expression = "Td";
                  record->expression_type = TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
              })));
}

TEST_F(TNorvexaEditorItem, Items_of_the_same_name_in_two_components_are_told_apart)
{
    TBudgetFile budget = Workshop_Budget();
    budget.document.Add_Component_Item("Scale", "Repeatability");
    Open_Budget(budget);
    Select_Entry("Repeatability");
    Select_Identifier("SN 1");

    d_editor.Select_BudgetTree_Item("Scale", "Repeatability");
    Enter("expression", "0.7");

    Change_Item(&budget.document, "Scale", "Repeatability", [](TComponentItem* record) { record->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(budget.document));
}

TEST_F(TNorvexaEditorItem, An_item_of_a_renamed_component_is_edited_under_the_new_name)
{
    Open_Item("Repeatability", "SN 1");
    Rename("Probe", "Zoom");
    Select_Entry("Repeatability");
    Select_Identifier("SN 1");

    Enter("expression", "0.7");

    TNorvexa expected = Changed_Replacement("SN 1", "0.7", false);
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorItem, A_renamed_item_keeps_the_selected_identifier)
{
    Open_Item("Repeatability", "SN 1");

    Rename("Repeatability", "Zero");
    Enter("expression", "0.7");

    TNorvexa expected = Changed_Replacement("SN 1", "0.7", false);
    ASSERT_TRUE(expected.Rename_Component_Item("Probe", "Repeatability", "Zero"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

} // namespace
