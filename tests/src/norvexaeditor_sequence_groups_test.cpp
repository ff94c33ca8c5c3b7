#include "tests/support/sequencefixture.h"

#include <QListWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <string>

namespace {

using TComponent = TNorvexaData::TComponent;

TBudgetFile Two_Groups()
{
    TBudgetFile budget = Workshop_Budget();
    budget.groups.push_back({"Height", {"Scale - Drift"}});
    return budget;
}

class TSequenceGroups : public TSequenceFixture
{};

} // namespace

// A selected group

TEST_F(TSequenceGroups, A_selected_group_keeps_its_members_while_the_length_of_one_is_typed)
{
    TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Select_Group("Length");

    Show_Page("Budget Components");
    Select_Entry("Probe");
    Enter("component_length", "7.5");

    EXPECT_EQ(Selected_On_Groups_Page(), "Length | Probe, Scale - Drift");
    Change_Component(&expected.document, "Probe", [](TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceGroups, A_selected_group_keeps_its_members_while_one_changes_its_way_to_be_reported_and_back)
{
    TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Select_Group("Length");

    Show_Page("Budget Components");
    Select_Entry("Scale");
    Click_Option("mode_sum");
    EXPECT_EQ(Selected_On_Groups_Page(), "Length | Probe");
    Click_Option("mode_single");

    EXPECT_EQ(Selected_On_Groups_Page(), "Length | Probe, Scale - Drift");
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceGroups, A_selected_group_keeps_a_member_that_is_no_longer_offered)
{
    TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Select_Group("Length");

    Show_Page("Budget Components");
    Rename("Drift", "Wander");
    Select_Entry("Probe");
    Click_Option("mode_limit_length");

    EXPECT_EQ(Selected_On_Groups_Page(), "Length | Probe");
    expected.document.Rename_Component_Item("Scale", "Drift", "Wander");
    Change_Component(&expected.document, "Probe", [](TComponent* record) { record->limit_uncertainty_length = true; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceGroups, A_selected_group_keeps_its_members_while_components_come_and_go)
{
    TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Select_Group("Length");

    Show_Page("Budget Components");
    Add_Component("Air");
    Select_Entry("Probe");
    Remove_Entries();

    EXPECT_EQ(Selected_On_Groups_Page(), "Length | Scale - Drift");
    expected.document.Add_Component("Air");
    expected.document.Remove_Component("Probe");
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Names

TEST_F(TSequenceGroups, Two_groups_stay_themselves_when_one_was_to_take_the_name_of_the_other)
{
    TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Show_Page("Report Groups");
    auto* groups = Find<QListWidget>("group_list");
    Rename_Entry(groups, "Height", "Length");
    EXPECT_EQ(Groups(), QStringList({"Length", "Height"}));

    Click_Entry(groups, "Height");
    EXPECT_EQ(Selected_On_Groups_Page(), "Height | Scale - Drift");
    Click_Entry(Find<QListWidget>("component_list"), "Probe");

    expected.groups = {{"Length", {"Probe", "Scale - Drift"}}, {"Height", {"Probe", "Scale - Drift"}}};
    EXPECT_EQ(Offered_Groups(), QStringList({"<no selection>", "Length", "Height"}));
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceGroups, A_group_renamed_to_nothing_keeps_its_name_on_both_pages)
{
    const TBudgetFile expected = Two_Groups();
    Open_Budget(expected);
    Show_Page("Report Groups");

    Rename_Entry(Find<QListWidget>("group_list"), "Height", "");

    EXPECT_EQ(Groups(), QStringList({"Length", "Height"}));
    EXPECT_EQ(Offered_Groups(), QStringList({"<no selection>", "Length", "Height"}));
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Names twice, as a file may carry them

class TSequenceNamesakes : public TSequenceFixture
{
protected:
    /// Opens the budget with "Other" written as "Probe" in its file.
    void Open_With_Namesakes(const TBudgetFile& budget)
    {
        Write_Budget(budget, Path("budget.norvexa"));
        QByteArray bytes = Bytes(Path("budget.norvexa"));
        Write_Bytes(Path("namesakes.norvexa"), bytes.replace("Other", "Probe"));
        Drop_Files({Path("namesakes.norvexa")});
    }
};

TEST_F(TSequenceNamesakes, Of_two_components_one_is_removed_and_the_other_can_be_edited)
{
    TBudgetFile budget;
    budget.document.Add_Component("Probe");
    budget.document.Add_Component("Other");
    budget.document.Add_Component_Item("Probe", "Wear");
    budget.document.Add_Component_Item("Other", "Drift");
    Change_Component(&budget.document, "Other", [](TComponent* record) { record->length = 2.0; });
    Open_With_Namesakes(budget);
    Select_Entry("Probe");

    Remove_Entries();
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Drift))");
    Select_Entry("Probe");
    Enter("component_expansion_coefficient", "7.5");

    TBudgetFile expected;
    expected.document.Add_Component("Probe");
    expected.document.Add_Component_Item("Probe", "Drift");
    Change_Component(&expected.document, "Probe", [](TComponent* record) {
        record->length = 2.0;
        record->expansion_coefficient = 0.0075;
    });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNamesakes, Of_two_items_one_is_removed_and_the_other_can_be_edited)
{
    TBudgetFile budget;
    budget.document.Add_Component("Machine");
    budget.document.Add_Component_Item("Machine", "Probe");
    budget.document.Add_Component_Item("Machine", "Other");
    budget.document.Update_Component_Item("Machine", "Other", QString(), "0.2", false);
    Open_With_Namesakes(budget);
    Select_Entry("Probe");

    Remove_Entries();
    Select_Entry("Probe");
    Enter("sensitivity", "7.5");

    TBudgetFile expected;
    expected.document.Add_Component("Machine");
    expected.document.Add_Component_Item("Machine", "Probe");
    expected.document.Update_Component_Item("Machine", "Probe", QString(), "0.2", false);
    Change_Item(&expected.document, "Machine", "Probe",
                [](TNorvexaData::TComponentItem* record) { record->sensitivity = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNamesakes, Of_two_identifiers_one_is_removed_and_the_other_can_be_edited)
{
    TBudgetFile budget;
    budget.document.Add_Component("Machine");
    budget.document.Component_Add_Identifier("Machine", "Probe");
    budget.document.Component_Add_Identifier("Machine", "Other");
    Open_With_Namesakes(budget);
    Select_Entry("Machine");
    Select_Identifier("Probe");

    Remove_Identifiers();
    Select_Identifier("Probe");
    Enter("component_length", "7.5");

    TBudgetFile expected;
    expected.document.Add_Component("Machine");
    expected.document.Component_Add_Identifier("Machine", "Probe");
    Change_Identifier(&expected.document, "Machine", "Probe",
                      [](TNorvexaData::TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNamesakes, Of_two_groups_one_is_removed_and_the_other_can_be_edited)
{
    TBudgetFile budget;
    budget.document.Add_Component("Machine");
    budget.groups = {{"Probe", {}}, {"Other", {"Machine"}}};
    Open_With_Namesakes(budget);
    Select_Group("Probe");

    QTest::mouseClick(Find<QToolButton>("remove_group"), Qt::LeftButton);
    Select_Group("Probe");
    EXPECT_EQ(Selected_On_Groups_Page(), "Probe | Machine");
    Click_Entry(Find<QListWidget>("component_list"), "Machine");

    TBudgetFile expected;
    expected.document.Add_Component("Machine");
    expected.groups = {{"Probe", {}}};
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceNamesakes, Of_two_variables_one_is_removed_and_the_other_can_be_edited)
{
    TBudgetFile budget;
    budget.document.Add_Component("Machine");
    budget.variables = {{"Probe", QString(), -1, 0.0}, {"Other", "Machine", -1, 0.0}};
    Open_With_Namesakes(budget);
    Show_Page("Variables");
    EXPECT_EQ(User_Variables(), QStringList({"Probe: [no selection]", "Probe: Machine"}));

    Remove_Variable("Probe");
    Rename_Variable("Probe", "Wear");

    TBudgetFile expected;
    expected.document.Add_Component("Machine");
    expected.variables = {{"Wear", "Machine", -1, 0.0}};
    EXPECT_EQ(Check(), Model_Of(expected));
}
