#include "tests/support/sequencefixture.h"

#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

/// What is being typed is in its editor and nowhere else: no Return, no other widget has had the focus since.
class TSequenceTyped : public TSequenceFixture
{
protected:
    void Open_Workshop() { d_path = Open_Budget(Workshop_Budget()); }
    void Open_Linear_Workshop() { d_path = Open_Budget(Linear_Workshop()); }

    void Type_Expression(const QString& text)
    {
        Select_Entry("Drift");
        Replace_Text(Find<QLineEdit>("expression"), text);
    }

    static TBudgetFile Workshop_With_Drift(const QString& expression)
    {
        TBudgetFile budget = Workshop_Budget();
        budget.document.Update_Component_Item("Scale", "Drift", QString(), expression, false);
        return budget;
    }

    /// What the file holds that was opened.
    QStringList File() const { return Budget_Text(d_path); }

    static QStringList Budget_Text(const QString& path) { return State_Of(Read_Budget(path).document); }

    QString d_path;
};

} // namespace

// Expression

TEST_F(TSequenceTyped, An_expression_is_in_the_file_once_the_Save_button_is_clicked)
{
    Open_Workshop();
    Type_Expression("0.75");

    Click_Tool("action_save");

    const TBudgetFile expected = Workshop_With_Drift("0.75");
    EXPECT_EQ(File(), State_Of(expected.document));
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceTyped, An_expression_is_asked_about_and_kept_when_the_window_is_not_closed_after_all)
{
    Open_Workshop();
    Type_Expression("0.75");
    d_answer.Click(QMessageBox::No);

    EXPECT_FALSE(d_editor.close());

    EXPECT_EQ(d_answer.Seen(0).text, "Data Not Saved");
    EXPECT_EQ(File(), State_Of(Workshop_Budget().document));
    EXPECT_EQ(Check(), Model_Of(Workshop_With_Drift("0.75")));
}

TEST_F(TSequenceTyped, An_expression_is_lost_with_the_window_only_after_a_Yes)
{
    Open_Workshop();
    Type_Expression("0.75");
    d_answer.Click(QMessageBox::Yes);

    EXPECT_TRUE(d_editor.close());

    EXPECT_FALSE(d_editor.isVisible());
    EXPECT_EQ(File(), State_Of(Workshop_Budget().document));
    Show_Active(&d_editor);
    EXPECT_EQ(Check(), Model_Of(Workshop_With_Drift("0.75")));
}

TEST_F(TSequenceTyped, An_expression_is_asked_about_and_kept_when_no_new_budget_is_begun_after_all)
{
    Open_Workshop();
    Type_Expression("0.75");
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_new");

    EXPECT_EQ(Find<QLineEdit>("expression")->text(), "0.75");
    EXPECT_EQ(Check(), Model_Of(Workshop_With_Drift("0.75")));
}

TEST_F(TSequenceTyped, An_expression_is_kept_when_the_session_ends_while_a_question_is_open)
{
    Open_Workshop();
    Type_Expression("0.75");
    bool is_closed = true;
    QTimer::singleShot(0, &d_editor, [&] { is_closed = d_editor.close(); });
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_new");

    EXPECT_FALSE(is_closed);
    EXPECT_TRUE(d_editor.isVisible());
    EXPECT_EQ(Check(), Model_Of(Workshop_With_Drift("0.75")));
}

TEST_F(TSequenceTyped, An_expression_of_100000_characters_is_edited_as_a_whole)
{
    const QString expression = QString("1+").repeated(49'998) + "10";
    Open_Budget(Workshop_With_Drift(expression));
    Select_Entry("Drift");

    QTest::mouseClick(Find<QLineEdit>("expression"), Qt::LeftButton);
    Press(Qt::Key_End);
    QTest::keyClicks(Find<QLineEdit>("expression"), "+2");
    Click_Tool("action_save");

    EXPECT_EQ(Check_Unchanged(), Model_Of(Workshop_With_Drift(expression + "+2")));
}

TEST_F(TSequenceTyped, An_expression_too_long_to_be_edited_stays_whole_when_another_field_is_edited)
{
    const QString expression = QString("1+").repeated(50'000) + "1";
    Open_Budget(Workshop_With_Drift(expression));
    Select_Entry("Drift");
    auto* editor = Find<QLineEdit>("expression");
    ASSERT_TRUE(editor->toolTip().contains("The expression is too long to be edited here."))
        << editor->toolTip().toStdString();

    QTest::mouseClick(editor, Qt::LeftButton);
    QTest::keyClicks(editor, "2");
    Press(Qt::Key_Return);
    Enter("sensitivity", "0.5");
    Select_Entry("Scale"); // the page of the item shows only a part of the expression

    TBudgetFile expected = Workshop_With_Drift(expression);
    Change_Item(&expected.document, "Scale", "Drift",
                [](TNorvexaData::TComponentItem* item) { item->sensitivity = 0.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceTyped, An_expression_typed_for_one_item_is_not_undone_in_another_that_reads_the_same)
{
    Open_Budget(Workshop_With_Drift("0.125"));
    Select_Entry("Resolution");
    const QString own = Find<QLineEdit>("expression")->text();
    Replace_Text(Find<QLineEdit>("expression"), "0.125");
    Select_Entry("Drift");

    QTest::keyClick(Find<QLineEdit>("expression"), Qt::Key_Z, Qt::ControlModifier);

    EXPECT_EQ(Find<QLineEdit>("expression")->text(), "0.125");
    TBudgetFile expected = Workshop_With_Drift("0.125");
    expected.document.Update_Component_Item("Probe", "Resolution", QString(), "0.125", false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceTyped, An_expression_is_undone_after_Return)
{
    Open_Workshop();
    Type_Expression("0.75");
    Press(Qt::Key_Return);

    QTest::keyClick(Find<QLineEdit>("expression"), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(Find<QLineEdit>("expression"), Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Return);

    EXPECT_EQ(Check(), Model_Of(Workshop_Budget()));
}

TEST_F(TSequenceTyped, An_expression_goes_with_its_budget_when_a_new_one_is_begun)
{
    Open_Workshop();
    Type_Expression("0.75");
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_new");

    EXPECT_EQ(Item_Page(), "disabled");
    EXPECT_EQ(File(), State_Of(Workshop_Budget().document));
    TBudgetFile expected;
    expected.variables = Workshop_Budget().variables;
    EXPECT_EQ(Check_New(), Model_Of(expected));
}

TEST_F(TSequenceTyped, An_expression_is_in_the_export)
{
    Open_Linear_Workshop();
    Show_Report("Length");
    Show_Page("Budget Components");
    Select_Entry("Resolution");
    Replace_Text(Find<QLineEdit>("expression"), "0.125");
    Show_Page("Report");

    Export_CSV(Path("export.csv"));

    EXPECT_TRUE(Bytes(Path("export.csv")).contains("\"0.125\"")) << Bytes(Path("export.csv")).constData();
    TBudgetFile expected = Linear_Workshop();
    expected.document.Update_Component_Item("Probe", "Resolution", QString(), "0.125", false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceTyped, A_range_that_is_still_being_typed_is_that_of_the_export)
{
    Open_Linear_Workshop();
    Show_Report("Length");
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("end_position"), "100");
    Click_Tool("action_report");

    Export_CSV(Path("export.csv"));

    EXPECT_TRUE(Bytes(Path("export.csv")).contains(",,Position (mm),0.000,50.000,100.000\n"))
        << Bytes(Path("export.csv")).constData();
    TBudgetFile expected = Linear_Workshop();
    expected.input_data.report_end = 100.0;
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Length

TEST_F(TSequenceTyped, A_length_is_asked_about_by_Ctrl_N_and_kept_after_a_No)
{
    Open_Workshop();
    Select_Entry("Probe");
    Replace_Text(Find<QLineEdit>("component_length"), "7.5");
    d_answer.Click(QMessageBox::No);

    Press(Qt::Key_N, Qt::ControlModifier);

    TBudgetFile expected = Workshop_Budget();
    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceTyped, A_length_goes_with_its_budget_on_Ctrl_N_and_a_Yes)
{
    Open_Workshop();
    Select_Entry("Probe");
    Replace_Text(Find<QLineEdit>("component_length"), "7.5");
    d_answer.Click(QMessageBox::Yes);

    Press(Qt::Key_N, Qt::ControlModifier);
    Add_Component("Probe");

    TBudgetFile expected;
    expected.variables = Workshop_Budget().variables;
    expected.document.Add_Component("Probe");
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Entries of the tree

TEST_F(TSequenceTyped, A_name_in_the_tree_is_in_the_file_once_the_Save_button_is_clicked)
{
    Open_Workshop();
    Type_In_Entry(Tree(), "Scale", "Ruler");

    Click_Tool("action_save");

    TBudgetFile expected = Workshop_Budget();
    expected.document.Rename_Component("Scale", "Ruler");
    EXPECT_EQ(File(), State_Of(expected.document));
    EXPECT_EQ(Check_Unchanged(TLists::Stale), Model_Of(expected));
}

TEST_F(TSequenceTyped, A_name_in_the_tree_is_taken_when_another_entry_is_clicked)
{
    Open_Workshop();
    Type_In_Entry(Tree(), "Scale", "Ruler");

    Select_Entry("Resolution");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Ruler(Drift))");
    EXPECT_EQ(Selected_Entries(), QStringList("Resolution"));
    TBudgetFile expected = Workshop_Budget();
    expected.document.Rename_Component("Scale", "Ruler");
    EXPECT_EQ(Check(TLists::Stale), Model_Of(expected));
}

TEST_F(TSequenceTyped, A_name_that_moves_its_entry_under_the_click_is_taken_and_what_is_selected_then_is_edited)
{
    Open_Workshop();
    Type_In_Entry(Tree(), "Scale", "Air");

    Select_Entry("Probe"); // whose place is that of "Air" once the name has arrived
    EXPECT_EQ(Selected_Entries(), QStringList("Air"));
    Enter("component_length", "7.5");

    TBudgetFile expected = Workshop_Budget();
    expected.document.Rename_Component("Scale", "Air");
    Change_Component(&expected.document, "Air", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceTyped, A_name_in_use_is_refused_when_another_entry_is_clicked)
{
    Open_Workshop();
    Type_In_Entry(Tree(), "Scale", "Probe");

    Select_Entry("Drift");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))");
    EXPECT_EQ(Check(), Model_Of(Workshop_Budget()));
}
