#include "tests/support/sequencefixture.h"

#include <QApplication>
#include <QTreeWidget>

#include <string>
#include <tuple>

namespace {

using TComponent = TNorvexaData::TComponent;
using TComponentInstance = TNorvexaData::TComponentInstance;

/// One component "Gauge" with one item "Wear" and the identifiers of these names, each with a length of its own.
TBudgetFile Gauge_Budget(const QStringList& identifiers)
{
    TBudgetFile budget;
    budget.document.Add_Component("Gauge");
    budget.document.Add_Component_Item("Gauge", "Wear");
    for (const QString& identifier : identifiers) {
        budget.document.Component_Add_Identifier("Gauge", identifier);
    }
    Change_Component(&budget.document, "Gauge", [](TComponent* component) {
        component->length = 10.0;
        double length = 100.0;
        for (TComponentInstance& instance : component->instances) {
            instance.length = length;
            length += 1.0;
        }
    });
    return budget;
}

class TSequenceNames : public TSequenceFixture
{
protected:
    void Type_Length(const QString& text) { Enter("component_length", text); }
};

void Set_Length(TBudgetFile* budget, const QString& component, double length)
{
    Change_Component(&budget->document, component, [length](TComponent* record) { record->length = length; });
}

void Set_Identifier_Length(TBudgetFile* budget, const QString& component, const QString& identifier, double length)
{
    Change_Identifier(&budget->document, component, identifier,
                      [length](TComponentInstance* record) { record->length = length; });
}

} // namespace

// Components and items

TEST_F(TSequenceNames, The_first_item_of_a_fresh_window_belongs_to_no_identifier)
{
    Add_Component("Probe");
    Add_Item("Probe", "Wear");
    Select_Entry("Wear");
    EXPECT_EQ(Item_Page(),
              "Identifier: [Default]; Type B, Normal, 1.000000; 0.0000, (default off); independent linear; "
              "Uc = f(expression) mm");
    Enter("expression", "0.25");

    TBudgetFile expected;
    expected.document.Add_Component("Probe");
    expected.document.Add_Component_Item("Probe", "Wear");
    expected.document.Update_Component_Item("Probe", "Wear", QString(), "0.25", false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, An_item_of_a_component_that_lacks_the_selected_identifier_is_edited_as_such)
{
    TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Select_Entry("Probe");
    Select_Identifier("SN 1");
    Select_Entry("Drift");

    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    Type_Length("7.5");
    Enter("expression", "0.75");

    Set_Length(&expected, "Scale", 7.5);
    expected.document.Update_Component_Item("Scale", "Drift", QString(), "0.75", false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, A_renamed_component_takes_the_length_that_is_typed_next)
{
    TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Rename("Probe", "Feeler");

    Type_Length("7.5");

    expected.document.Rename_Component("Probe", "Feeler");
    Set_Length(&expected, "Feeler", 7.5);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, Two_components_stay_themselves_when_one_was_to_take_the_name_of_the_other)
{
    const TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Rename("Probe", "Scale");

    Select_Entry("Scale");
    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    Select_Entry("Probe");
    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined");

    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, Two_items_stay_themselves_when_one_was_to_take_the_name_of_the_other)
{
    TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Rename("Resolution", "Repeatability");

    Select_Entry("Repeatability");
    Enter("expression", "0.3");
    Select_Entry("Resolution");
    Enter("expression", "0.4");

    expected.document.Update_Component_Item("Probe", "Repeatability", QString(), "0.3", false);
    expected.document.Update_Component_Item("Probe", "Resolution", QString(), "0.4", false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, Two_selected_entries_keep_their_names_whatever_is_typed)
{
    const TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Select_Entries({"Probe", "Scale"});

    Press(Qt::Key_F2);
    Type_Text(QApplication::focusWidget(), "Ruler");
    Press(Qt::Key_Return);

    EXPECT_EQ(Open_Editor(Tree()), nullptr);
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceNames, Root_component_and_its_item_removed_together_take_the_component_alone)
{
    TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Select_Entries({"Norvexa Data", "Probe", "Resolution"});

    Remove_Entries();

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Scale(Drift))");
    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_EQ(Component_Page(), "disabled");
    expected.document.Remove_Component("Probe");
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, The_root_removed_together_with_an_item_leaves_a_component_of_its_name)
{
    TBudgetFile expected = Workshop_Budget();
    expected.document.Add_Component("Norvexa Data");
    Open_Budget(expected);
    Select_Entries({"Norvexa Data", "Resolution"}); // the first of the name is the root

    Remove_Entries();

    expected.document.Remove_Component_Items("Probe", {"Resolution"});
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Names that are none

struct TNoName
{
    const char* name;
    const char* text;
};

void PrintTo(const TNoName& row, std::ostream* stream)
{
    *stream << row.name;
}

const TNoName NO_NAMES[] = {
    {"Nothing", ""},
    {"Blanks", "   "},
    {"A_no_break_space", "\u00a0"},
};

struct TRenamed
{
    const char* name;
    const char* entry;
    const char* list;
};

void PrintTo(const TRenamed& row, std::ostream* stream)
{
    *stream << row.name;
}

const TRenamed RENAMED[] = {
    {"A_component", "Probe", "budget_tree"},
    {"An_item", "Resolution", "budget_tree"},
    {"An_identifier", "SN 1", "identifier_list"},
    {"A_group", "Length", "group_list"},
};

class TSequenceNoName : public TSequenceNames, public ::testing::WithParamInterface<std::tuple<TRenamed, TNoName>>
{};

TEST_P(TSequenceNoName, Leaves_the_old_name)
{
    const TRenamed renamed = std::get<0>(GetParam());
    const TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Select_Group("Length");
    if (renamed.list != std::string("group_list")) {
        Show_Page("Budget Components");
        Select_Entry("Probe");
    }
    auto* view = Find<QAbstractItemView>(renamed.list);

    Rename_Entry(view, renamed.entry, QString::fromUtf8(std::get<1>(GetParam()).text));

    EXPECT_TRUE(Entry(view, renamed.entry).isValid());
    EXPECT_EQ(Check(), Model_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceNoName,
                         ::testing::Combine(::testing::ValuesIn(RENAMED), ::testing::ValuesIn(NO_NAMES)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).name) + "_" + std::get<1>(row.param).name;
                         });

// Identifiers

TEST_F(TSequenceNames, The_first_of_three_identifiers_renamed_to_be_the_last_takes_the_next_length)
{
    TBudgetFile expected = Gauge_Budget({"A", "B", "C"});
    Open_Budget(expected);
    Select_Entry("Gauge");
    Rename_Identifier("A", "Z");

    Type_Length("7.5");

    EXPECT_TRUE(Component_Page().startsWith("Gauge: B, C, Z*; ")) << Component_Page().toStdString();
    expected.document.Rename_Component_Identifier("Gauge", "A", "Z");
    Set_Identifier_Length(&expected, "Gauge", "Z", 7.5);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, A_removed_identifier_leaves_its_values_neither_to_the_component_nor_to_the_next)
{
    TBudgetFile expected = Gauge_Budget({"A", "B"});
    Open_Budget(expected);
    Select_Entry("Gauge");
    Select_Identifier("A");
    Remove_Identifiers();

    EXPECT_EQ(Component_Page(), "Gauge: B; no dates; 10.00000, 10.00; combined");
    Enter("component_expansion_coefficient", "7.5");

    expected.document.Component_Remove_Identifier("Gauge", {"A"});
    Change_Component(&expected.document, "Gauge", [](TComponent* record) { record->expansion_coefficient = 0.0075; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNames, A_length_typed_after_the_only_identifier_is_removed_is_that_of_the_component)
{
    TBudgetFile expected = Gauge_Budget({"A"});
    Open_Budget(expected);
    Select_Entry("Gauge");
    Select_Identifier("A");
    Remove_Identifiers();
    EXPECT_EQ(Component_Page(), "Gauge: ; no dates; 10.00000, 10.00; combined");

    Type_Length("7.5");

    expected.document.Component_Remove_Identifier("Gauge", {"A"});
    Set_Length(&expected, "Gauge", 7.5);
    EXPECT_EQ(Check(), Model_Of(expected));
}

struct TRefused
{
    const char* name;
    const char* text;
};

void PrintTo(const TRefused& row, std::ostream* stream)
{
    *stream << row.name;
}

class TSequenceIdentifier : public TSequenceNames, public ::testing::WithParamInterface<TRefused>
{};

TEST_P(TSequenceIdentifier, Is_no_new_name)
{
    TBudgetFile expected = Gauge_Budget({"A", "B"});
    Open_Budget(expected);
    Select_Entry("Gauge");
    Rename_Identifier("A", GetParam().text);
    EXPECT_TRUE(Component_Page().startsWith("Gauge: A*, B; ")) << Component_Page().toStdString();

    Type_Length("7.5");

    Set_Identifier_Length(&expected, "Gauge", "A", 7.5);
    EXPECT_EQ(Check(), Model_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceIdentifier,
                         ::testing::Values(TRefused{"That_of_another_in_other_case", "b"},
                                           TRefused{"That_of_the_default", "[Default]"},
                                           TRefused{"That_of_the_default_in_other_case", "[default]"}),
                         [](const auto& row) { return std::string(row.param.name); });
