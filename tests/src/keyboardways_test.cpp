#include "tests/support/filledpages.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

namespace {

/// The ways to the actions of the pages without a mouse.
class TKeyboardWays : public TFilledPagesFixture
{
protected:
    // Presses Tab until that widget has the focus.
    void Go_To(const QString& name)
    {
        for (int step = 0; step < 100 && Name_Of(QApplication::focusWidget()) != name; ++step) {
            Press(Qt::Key_Tab);
        }
        ASSERT_EQ(Name_Of(QApplication::focusWidget()), name);
    }

    void Press_Times(Qt::Key key, int times)
    {
        for (int time = 0; time < times; ++time) {
            Press(key);
        }
    }
};

TEST_F(TKeyboardWays, The_buttons_of_the_tree_work_with_the_space_bar)
{
    Tree()->setFocus();
    Press(Qt::Key_Home);
    d_answer.Type_Name("Anvil");
    Go_To("add_budget_item");
    Press(Qt::Key_Space);
    EXPECT_EQ(Selected_Entries(), QStringList("Anvil"));

    d_answer.Press(Qt::Key_Y);
    Tree()->setFocus();
    Go_To("remove_budget_item");
    Press(Qt::Key_Space);
    EXPECT_FALSE(Tree_Text().contains("Anvil"));
}

TEST_F(TKeyboardWays, F2_renames_an_identifier)
{
    Tree()->setFocus();
    Go_To("identifier_list");
    Press(Qt::Key_F2);
    Type_Text(QApplication::focusWidget(), "CMM 3");
    Press(Qt::Key_Return);

    const auto* list = Find<QListWidget>("identifier_list");
    EXPECT_TRUE(QTest::qWaitFor([list] { return list->item(1)->text() == "CMM 3"; }));
    EXPECT_EQ(list->item(0)->text(), "CMM 1");
}

TEST_F(TKeyboardWays, The_space_bar_adds_a_component_to_a_group_and_takes_it_out)
{
    Press(Qt::Key_G, Qt::AltModifier);
    Find<QListWidget>("group_list")->setFocus();
    Go_To("component_list");
    auto* list = Find<QListWidget>("component_list");
    Press(Qt::Key_Home);
    const bool was_member = list->item(0)->isSelected();

    Press(Qt::Key_Space);
    EXPECT_EQ(list->item(0)->isSelected(), !was_member);
    Press(Qt::Key_Space);
    EXPECT_EQ(list->item(0)->isSelected(), was_member);
}

TEST_F(TKeyboardWays, The_arrow_keys_lead_to_the_component_of_a_variable)
{
    Press(Qt::Key_V, Qt::AltModifier);
    auto* list = Find<QTreeWidget>("variable_list");
    list->setFocus();
    Press(Qt::Key_Right);
    auto* choices = Open_Editor<QComboBox>(list);
    ASSERT_NE(choices, nullptr);
    EXPECT_EQ(QApplication::focusWidget(), choices);

    Press(Qt::Key_Home);

    EXPECT_EQ(list->currentItem()->text(0), "Tunc");
    EXPECT_EQ(list->currentItem()->text(1), "[no selection]");
}

TEST_F(TKeyboardWays, The_arrow_keys_lead_to_the_identifier_of_a_reported_component)
{
    Press(Qt::Key_R, Qt::AltModifier);
    auto* table = Find<QTreeWidget>("report_table");
    Find<QComboBox>("report_group")->setFocus();
    Go_To("report_table");
    Press(Qt::Key_Home);
    Press_Times(Qt::Key_Down, 3);
    Press(Qt::Key_Right);
    auto* choices = Open_Editor<QComboBox>(table);
    ASSERT_NE(choices, nullptr);

    Press(Qt::Key_End);

    EXPECT_EQ(table->topLevelItem(3)->text(0), "CMM");
    EXPECT_EQ(table->topLevelItem(3)->text(1), "CMM 2");
}

} // namespace
