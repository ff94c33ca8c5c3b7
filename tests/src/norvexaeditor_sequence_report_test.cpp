#include "tests/support/sequencefixture.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

namespace {

class TSequenceReport : public TSequenceFixture
{
protected:
    /// The editor of a component's row. After a choice it is open again, so that the keyboard goes on from there.
    QComboBox* Open_Identifiers(const QString& component)
    {
        if (Open_Editor<QComboBox>(Report_Rows()) == nullptr) {
            Click_Entry(Report_Rows(), Entry(Report_Rows(), component).siblingAtColumn(1));
        }
        auto* combo = Open_Editor<QComboBox>(Report_Rows());
        if (combo == nullptr) {
            Fail_Missing("identifiers of " + component);
        }
        return combo;
    }

    /// The value of an item's row.
    QString Value(const QString& item) const { return Entry(Report_Rows(), item).siblingAtColumn(6).data().toString(); }

    void Open_Report(const TBudgetFile& budget)
    {
        Open_Budget(budget);
        Show_Report("Length");
    }
};

} // namespace

// Identifiers

TEST_F(TSequenceReport, An_identifier_stepped_through_in_its_open_editor_is_followed_at_every_step)
{
    const TBudgetFile expected = Linear_Workshop();
    Open_Report(expected);
    ASSERT_EQ(Value("Repeatability"), "0.003000");

    QTest::keyClick(Open_Identifiers("Probe"), Qt::Key_Down);
    EXPECT_EQ(Value("Repeatability"), "0.001000");
    QTest::keyClick(Open_Identifiers("Probe"), Qt::Key_Down);
    EXPECT_EQ(Value("Repeatability"), "0.003000");

    EXPECT_EQ(Find<QLabel>("report_status")->text(), "Uc at length 1000.000 mm: 0.0050 mm");
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceReport, An_identifier_chosen_by_mouse_again_and_again_is_followed)
{
    const TBudgetFile expected = Linear_Workshop();
    Open_Report(expected);

    for (int round = 0; round < 3; ++round) {
        Choose_Identifier("Probe", "SN 1");
        EXPECT_EQ(Value("Repeatability"), "0.001000");
        Choose_Identifier("Probe", "[Default]");
        EXPECT_EQ(Value("Repeatability"), "0.003000");
    }

    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceReport, A_page_is_left_and_the_budget_saved_while_the_editor_of_an_identifier_is_open)
{
    const TBudgetFile expected = Linear_Workshop();
    const QString path = Path("budget.norvexa");
    Open_Report(expected);
    QTest::keyClick(Open_Identifiers("Probe"), Qt::Key_Down);
    Open_Identifiers("Probe");

    Click_Tool("action_components");
    Select_Entry("Probe");
    Select_Identifier("SN 1");
    Rename_Identifier("SN 1", "SN 9");
    Click_Tool("action_save");
    Click_Tool("action_report");

    // The chosen identifier is gone, so the component itself is reported.
    EXPECT_EQ(Value("Repeatability"), "0.003000");
    TBudgetFile renamed = expected;
    renamed.document.Rename_Component_Identifier("Probe", "SN 1", "SN 9");
    EXPECT_EQ(State_Of(Read_Budget(path).document), State_Of(renamed.document));
    EXPECT_EQ(Check_Unchanged(), Model_Of(renamed));
}

// What was reported is gone

TEST_F(TSequenceReport, A_component_removed_and_then_its_group_leave_an_empty_page)
{
    TBudgetFile expected = Linear_Workshop();
    Open_Report(expected);
    ASSERT_EQ(Value("Repeatability"), "0.003000");

    Show_Page("Budget Components");
    Select_Entry("Probe");
    Remove_Entries();
    Show_Page("Report");
    EXPECT_TRUE(Log().contains("ERR:  Group item cannot be identified.")) << Log().toStdString();
    EXPECT_EQ(Report_Table(), QStringList());

    Select_Group("Length");
    QTest::mouseClick(Find<QToolButton>("remove_group"), Qt::LeftButton);
    Show_Page("Report");
    EXPECT_EQ(Find<QComboBox>("report_group")->currentText(), "<no selection>");
    EXPECT_EQ(Report_Table(), QStringList());

    expected.document.Remove_Component("Probe");
    expected.groups.clear();
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceReport, A_group_removed_while_its_identifier_is_being_chosen_leaves_an_empty_page)
{
    TBudgetFile expected = Linear_Workshop();
    Open_Report(expected);
    Open_Identifiers("Probe");

    Select_Group("Length");
    QTest::mouseClick(Find<QToolButton>("remove_group"), Qt::LeftButton);
    Show_Page("Report");

    EXPECT_EQ(Report_Table(), QStringList());
    expected.groups.clear();
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Names that look like others

TEST_F(TSequenceReport, A_component_called_like_the_item_of_another_is_kept_beside_it)
{
    Add_Component("A");
    Add_Item("A", "B");
    Enter("expression", "0.5");
    Select_Entry("A");
    Click_Option("mode_single");
    Add_Component("A - B");
    Add_Item("A - B", "C");
    Enter("expression", "0.25");
    EXPECT_EQ(Available_Components(), QStringList({"A - B", "A - B"}));
    Show_Page("Report Groups");
    Add_Group("Length");
    Select_Group("Length");
    Click_Entry(Find<QListWidget>("component_list"), "A - B");
    Show_Report("Length");

    // The first of the name in the budget is meant: the item.
    EXPECT_EQ(Report_Table(), QStringList({"A|[Default]|||||", "B||Constant|0.5|1.000000|Normal|0.500000"}));
    TBudgetFile expected;
    expected.document.Add_Component("A");
    expected.document.Add_Component_Item("A", "B");
    expected.document.Update_Component_Item("A", "B", QString(), "0.5", false);
    Change_Component(&expected.document, "A",
                     [](TNorvexaData::TComponent* record) { record->mode = TNorvexaData::UC_MODE_INDIVIDUAL; });
    expected.document.Add_Component("A - B");
    expected.document.Add_Component_Item("A - B", "C");
    expected.document.Update_Component_Item("A - B", "C", QString(), "0.25", false);
    expected.groups = {{"Length", {"A - B"}}};
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceReport, Names_that_look_like_places_in_a_format_stand_as_they_are)
{
    Add_Component("%2");
    Add_Item("%2", "%1 L2");
    Enter("expression", "0.25");
    Add_Component("%1");
    Add_Item("%1", "%2");
    Enter("expression", "0.5");
    Select_Entry("%1");
    Click_Option("mode_single");
    EXPECT_EQ(Available_Components(), QStringList({"%2", "%1 - %2"}));
    Show_Page("Report Groups");
    Add_Group("%1");
    Select_Group("%1");
    Click_Entry(Find<QListWidget>("component_list"), "%1 - %2");
    Click_Entry(Find<QListWidget>("component_list"), "%2");
    Show_Report("%1");

    EXPECT_EQ(Report_Table(), QStringList({"%2|[Default]|||||", "%1 L2||Constant|0.25|1.000000|Normal|0.250000",
                                           "%1|[Default]|||||", "%2||Constant|0.5|1.000000|Normal|0.500000"}));
    EXPECT_TRUE(Log().startsWith("Calculating data for group: %1")) << Log().toStdString();
    Export_CSV(Path("export.csv"));
    EXPECT_TRUE(Bytes(Path("export.csv")).contains("%1 L2")) << Bytes(Path("export.csv")).constData();
    TBudgetFile expected;
    expected.document.Add_Component("%2");
    expected.document.Add_Component_Item("%2", "%1 L2");
    expected.document.Update_Component_Item("%2", "%1 L2", QString(), "0.25", false);
    expected.document.Add_Component("%1");
    expected.document.Add_Component_Item("%1", "%2");
    expected.document.Update_Component_Item("%1", "%2", QString(), "0.5", false);
    Change_Component(&expected.document, "%1",
                     [](TNorvexaData::TComponent* record) { record->mode = TNorvexaData::UC_MODE_INDIVIDUAL; });
    expected.groups = {{"%1", {"%2", "%1 - %2"}}};
    EXPECT_EQ(Check(), Model_Of(expected));
}
