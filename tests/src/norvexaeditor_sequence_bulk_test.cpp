#include "tests/support/sequencefixture.h"

#include <QTreeWidget>

namespace {

const int COMPONENT_COUNT = 2000;

/// "Component 0001" to "Component 2000", each with one item, and a group of the first and the last.
TBudgetFile Large_Budget()
{
    TBudgetFile budget;
    for (int number = 1; number <= COMPONENT_COUNT; ++number) {
        const QString name = QStringLiteral("Component %1").arg(number, 4, 10, QChar('0'));
        budget.document.Add_Component(name);
        budget.document.Add_Component_Item(name, "Wear");
    }
    budget.groups = {{"Ends", {"Component 0001", "Component 2000"}}};
    return budget;
}

class TSequenceBulk : public TSequenceFixture
{
protected:
    TSequenceBulk() : d_budget(Large_Budget())
    {
        Open_Budget(d_budget);
        Select_Entry("Norvexa Data");
    }

    TBudgetFile d_budget;
};

} // namespace

TEST_F(TSequenceBulk, Two_thousand_components_are_searched_by_typing_a_name)
{
    Type_Text(Tree(), "component 1234");

    EXPECT_EQ(Selected_Entries(), QStringList("Component 1234"));
    EXPECT_EQ(Component_Page(), "Component 1234: ; no dates; 0.00000, 10.00; combined");
    Enter("component_length", "7.5");
    Change_Component(&d_budget.document, "Component 1234",
                     [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(d_budget));
}

TEST_F(TSequenceBulk, Two_thousand_components_selected_at_once_are_removed_after_a_Yes)
{
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Selected_Entries().size(), 1 + 2 * COMPONENT_COUNT);
    EXPECT_EQ(Component_Page(), "disabled");

    Remove_Entries();

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_EQ(Available_Components(), QStringList());
    TBudgetFile expected;
    expected.groups = d_budget.groups;
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceBulk, Two_thousand_components_selected_at_once_stay_after_a_No)
{
    Press(Qt::Key_A, Qt::ControlModifier);

    Remove_Entries(QMessageBox::No);

    EXPECT_EQ(Selected_Entries().size(), 1 + 2 * COMPONENT_COUNT);
    EXPECT_EQ(Check_Unchanged(), Model_Of(d_budget));
}
