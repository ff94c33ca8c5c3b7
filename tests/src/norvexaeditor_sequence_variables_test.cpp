#include "tests/support/sequencefixture.h"

#include <QComboBox>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace {

TBudgetFile Budget_Of_Variables(const std::vector<TVariable>& variables)
{
    TBudgetFile budget = Workshop_Budget();
    budget.variables = variables;
    return budget;
}

class TSequenceVariables : public TSequenceFixture
{
protected:
    void Open_Variables(const TBudgetFile& budget)
    {
        Open_Budget(budget);
        Show_Page("Variables");
    }
};

} // namespace

// Rows

TEST_F(TSequenceVariables, A_choice_in_the_row_behind_a_removed_one_is_that_of_its_variable)
{
    Open_Variables(Budget_Of_Variables({{"Air", "Probe", -1, 0.0}, {"Bend", "Probe", -1, 0.0}, {"Cut", "", -1, 0.0}}));
    Remove_Variable("Air");
    Choose_Component("Cut", "Scale - Drift");

    EXPECT_EQ(User_Variables(), QStringList({"Bend: Probe", "Cut: Scale - Drift"}));
    EXPECT_EQ(Check(), Model_Of(Budget_Of_Variables({{"Bend", "Probe", -1, 0.0}, {"Cut", "Scale - Drift", -1, 0.0}})));
}

TEST_F(TSequenceVariables, A_choice_in_the_row_that_takes_the_place_of_a_removed_one_is_that_of_its_variable)
{
    Open_Variables(Budget_Of_Variables({{"Air", "Probe", -1, 0.0}, {"Bend", "Probe", -1, 0.0}, {"Cut", "", -1, 0.0}}));
    Remove_Variable("Air");
    Choose_Component("Bend", "Scale - Drift");

    EXPECT_EQ(User_Variables(), QStringList({"Bend: Scale - Drift", "Cut: [no selection]"}));
    EXPECT_EQ(Check(), Model_Of(Budget_Of_Variables({{"Bend", "Scale - Drift", -1, 0.0}, {"Cut", "", -1, 0.0}})));
}

TEST_F(TSequenceVariables, A_variable_renamed_while_its_list_is_open_keeps_the_choice_made_there)
{
    Open_Variables(Budget_Of_Variables({{"Air", "Probe", -1, 0.0}, {"Bend", "Probe", -1, 0.0}}));
    QTest::keyClick(Open_Selection("Air"), Qt::Key_Down);

    d_answer.Type_Name("Zinc");
    QTest::mouseClick(Find<QToolButton>("rename_variable"), Qt::LeftButton);

    EXPECT_EQ(User_Variables(), QStringList({"Zinc: Scale - Drift", "Bend: Probe"}));
    EXPECT_EQ(Check(), Model_Of(Budget_Of_Variables({{"Zinc", "Scale - Drift", -1, 0.0}, {"Bend", "Probe", -1, 0.0}})));
}

TEST_F(TSequenceVariables, A_choice_in_the_list_that_was_open_during_a_rename_is_that_of_the_renamed_variable)
{
    Open_Variables(Budget_Of_Variables({{"Air", "Probe", -1, 0.0}, {"Bend", "Probe", -1, 0.0}}));
    Open_Selection("Air");
    d_answer.Type_Name("Zinc");
    QTest::mouseClick(Find<QToolButton>("rename_variable"), Qt::LeftButton);

    QComboBox* list = Open_Editor<QComboBox>(Variables());
    QTest::keyClick(list == nullptr ? Open_Selection("Zinc") : list, Qt::Key_Down);

    EXPECT_EQ(User_Variables(), QStringList({"Zinc: Scale - Drift", "Bend: Probe"}));
    EXPECT_EQ(Check(), Model_Of(Budget_Of_Variables({{"Zinc", "Scale - Drift", -1, 0.0}, {"Bend", "Probe", -1, 0.0}})));
}

// Names

struct TName
{
    const char* name;
    const char* text;
    bool is_taken;
    const char* value; ///< of "Sr + " and the name; Sr is 0.001, and a name that is taken stands for 0.25
};

void PrintTo(const TName& row, std::ostream* stream)
{
    *stream << row.name;
}

const TName NAMES[] = {
    {"A_built_in_one_in_lower_case", "l", false, "1000.001000"},
    {"A_longer_built_in_one_in_lower_case", "ctem", false, "0.012500"},
    {"An_alternative", "a|", true, "ERR"},
    {"A_wild_card", "a.b", true, "0.251000"},
    {"An_open_bracket", "[", true, "ERR"},
    {"A_count", "x{2}", true, "ERR"},
    {"A_place_in_a_format", "%1", true, "ERR"},
    {"Another_place_in_a_format", "%2", true, "ERR"},
};

class TSequenceVariableName : public TSequenceVariables, public ::testing::WithParamInterface<TName>
{
protected:
    /// The built-in variable L and the scale are what the item "Resolution" is made of. Beside it stands the component
    /// "Air" of 0.25.
    static TBudgetFile Budget()
    {
        TBudgetFile budget = Linear_Workshop();
        budget.variables.clear();
        budget.document.Add_Component("Air");
        budget.document.Add_Component_Item("Air", "Draught");
        budget.document.Update_Component_Item("Air", "Draught", QString(), "0.25", false);
        budget.document.Update_Component_Item("Probe", "Resolution", QString(), "L + Sr", false);
        return budget;
    }

    QString Value(const QString& item) const { return Entry(Report_Rows(), item).siblingAtColumn(6).data().toString(); }
};

TEST_P(TSequenceVariableName, Is_kept_or_refused_and_leaves_the_others_their_values)
{
    TBudgetFile expected = Budget();
    Open_Variables(expected);
    Add_Variable(GetParam().text);
    if (GetParam().is_taken) {
        Choose_Component(GetParam().text, "Air");
        expected.variables = {{GetParam().text, "Air", -1, 0.0}};
    }

    Show_Report("Length");

    EXPECT_EQ(Value("Resolution"), "1000.001000");
    EXPECT_EQ(GetParam().is_taken ? Check() : Check_Unchanged(), Model_Of(expected));
}

TEST_P(TSequenceVariableName, Can_be_used_in_an_expression_and_saved)
{
    TBudgetFile expected = Budget();
    Open_Variables(expected);
    Add_Variable(GetParam().text);
    if (GetParam().is_taken) {
        Choose_Component(GetParam().text, "Air");
        expected.variables = {{GetParam().text, "Air", -1, 0.0}};
    }
    const QString expression = QString("Sr + ") + GetParam().text;

    Show_Page("Budget Components");
    Select_Entry("Repeatability");
    Enter("expression", expression);
    Show_Report("Length");

    EXPECT_EQ(Value("Repeatability"), GetParam().value);
    expected.document.Update_Component_Item("Probe", "Repeatability", QString(), expression, false);
    EXPECT_EQ(Check(), Model_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceVariableName, ::testing::ValuesIn(NAMES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TSequenceVariables, Names_in_a_file_that_differ_from_built_in_ones_in_case_leave_those_their_values)
{
    TBudgetFile expected = Linear_Workshop();
    expected.document.Update_Component_Item("Probe", "Resolution", QString(), "L + Sr + CTEm", false);
    expected.variables = {{"l", "Scale - Drift", -1, 0.0}, {"ctem", QString(), -1, 0.0}, {"a|", "Probe", -1, 0.0}};
    Open_Variables(expected);

    Show_Report("Length");

    EXPECT_EQ(Entry(Report_Rows(), "Resolution").siblingAtColumn(6).data().toString(), "1000.012500");
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}
