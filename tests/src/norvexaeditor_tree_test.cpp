#include "tests/support/componentpages.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <ostream>

namespace {

using TComponent = TNorvexaData::TComponent;
using TComponentItem = TNorvexaData::TComponentItem;

const char* const NO_BREAK_SPACE = "\u00a0";
const char* const WORKSHOP_TREE = "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))";
const char* const NEW_COMPONENT_PAGE = "Gauge: ; no dates; 0.00000, 10.00; combined";

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& info)
{
    return info.param.name;
}

class TNorvexaEditorTree : public TComponentPagesFixture
{
protected:
    // Which of the two actions can be used, as their buttons say it too: "add, remove", "add", "remove" or "".
    QString Usable() const
    {
        EXPECT_EQ(Action("action_add_budget_item")->isEnabled(), Find<QToolButton>("add_budget_item")->isEnabled());
        EXPECT_EQ(Action("action_remove_budget_item")->isEnabled(),
                  Find<QToolButton>("remove_budget_item")->isEnabled());
        QStringList names;
        names << QStringList(Action("action_add_budget_item")->isEnabled() ? "add" : QString())
              << QStringList(Action("action_remove_budget_item")->isEnabled() ? "remove" : QString());
        names.removeAll(QString());
        return names.join(", ");
    }

    // "component", "component and item" or "": the pages that can be used.
    QString Usable_Pages() const
    {
        const QString component = Component_Page() == "disabled" ? "" : "component";
        return component + (Item_Page() == "disabled" ? "" : " and item");
    }

    void Click_Add() { QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton); }

    // The components that a user variable can be tied to, in the list that opens in its row.
    QStringList Offered_To_Variables()
    {
        Click_Tool("action_variables");
        auto* list = Find<QTreeWidget>("variable_list");
        const QModelIndex value = list->model()->index(list->topLevelItemCount() - 1, 1);
        Click_Entry(list, value);
        list->edit(value);

        QStringList names;
        if (const auto* choices = list->viewport()->findChild<QComboBox*>()) {
            for (int index = 0; index < choices->count(); ++index) {
                names << choices->itemText(index);
            }
        }
        Click_Tool("action_components");
        return names;
    }

    // A file with two components of one name, "Probe": the first with the item "Tip", the second with "Stem".
    void Open_Namesakes()
    {
        TBudgetFile budget;
        for (const char* name : {"Probe", "Second"}) {
            budget.document.Add_Component(name);
        }
        budget.document.Add_Component_Item("Probe", "Tip");
        budget.document.Add_Component_Item("Second", "Stem");
        Open_With_Name_Twice(budget, "Second", "Probe");
    }

    // A file with two items of one name, "Repeatability", in the component "Probe": the second was "Resolution".
    void Open_Item_Namesakes() { Open_With_Name_Twice(Workshop_Budget(), "Resolution", "Repeatability"); }

    // Opens a budget from a file in which a name has become that of another record.
    void Open_With_Name_Twice(const TBudgetFile& budget, const QByteArray& name, const QByteArray& other_name)
    {
        Write_Budget(budget, Path("namesakes.norvexa"));

        QFile file(Path("namesakes.norvexa"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll().replace('>' + name + '<', '>' + other_name + '<');
        file.close();
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(text), text.size());
        file.close();
        Drop_Files({file.fileName()});
    }

    // Components "Component 100" to "Component 299", many more than the tree can show.
    static TBudgetFile Large_Budget()
    {
        TBudgetFile budget;
        for (int number = 100; number < 300; ++number) {
            budget.document.Add_Component(QString("Component %1").arg(number));
        }
        return budget;
    }

    // Opens the large budget in a tree that does not follow the current entry by itself.
    void Open_Large_Budget()
    {
        Open_Budget(Large_Budget());
        Tree()->setAutoScroll(false);
    }

    bool Is_In_Sight(const QTreeWidgetItem* entry) const
    {
        const QRect place = Tree()->visualItemRect(entry);
        return !place.isEmpty() && place.top() >= 0 && place.bottom() < Tree()->viewport()->height();
    }

    QTreeWidgetItem* Component_Entry(int index) const { return Tree()->topLevelItem(0)->child(index); }

    void Click(QTreeWidgetItem* entry, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Tree()->scrollToItem(entry);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, modifiers, Tree()->visualItemRect(entry).center());
    }

    // Types over the name of the one selected entry.
    void Type_Over_Selected(const QString& name)
    {
        QTest::keyClick(Tree(), Qt::Key_F2);
        auto* editor = Open_Editor(Tree());
        ASSERT_NE(editor, nullptr);
        Replace_Text(editor, name);
        QTest::keyClick(editor, Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Tree()) == nullptr; }));
    }
};

// Building

TEST_F(TNorvexaEditorTree, A_fresh_tree_holds_the_selected_root_alone)
{
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_EQ(Usable(), "add");
    EXPECT_EQ(Usable_Pages(), "");
}

TEST_F(TNorvexaEditorTree, Holds_components_under_the_root_and_their_items_under_them)
{
    Open_Budget(Workshop_Budget());

    EXPECT_EQ(Tree_Text(), WORKSHOP_TREE);
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, Is_sorted_and_expanded_whatever_the_order_in_the_budget)
{
    TBudgetFile budget;
    for (const char* name : {"b", "C", "a"}) {
        budget.document.Add_Component(name);
    }
    budget.document.Add_Component_Item("b", "2");
    budget.document.Add_Component_Item("b", "1");

    Open_Budget(budget);

    EXPECT_EQ(Tree_Text(), "Norvexa Data(C(), a(), b(1, 2))");
    EXPECT_TRUE(Tree()->topLevelItem(0)->isExpanded());
    EXPECT_TRUE(Component_Entry(2)->isExpanded());
    EXPECT_EQ(budget.document.Enum_Components(), QStringList({"b", "C", "a"}));
}

TEST_F(TNorvexaEditorTree, Components_and_items_can_be_edited_in_place_and_the_root_cannot)
{
    Open_Budget(Workshop_Budget());

    for (const char* name : {"Probe", "Repeatability"}) {
        Select_Entry(name);
        QTest::keyClick(Tree(), Qt::Key_F2);
        EXPECT_NE(Open_Editor(Tree()), nullptr) << name;
    }
    Select_Entry("Norvexa Data");
    QTest::keyClick(Tree(), Qt::Key_F2);
    EXPECT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Tree()) == nullptr; }));
    EXPECT_FALSE(Tree()->topLevelItem(0)->flags() & Qt::ItemIsEditable);
}

TEST_F(TNorvexaEditorTree, A_rebuilt_tree_has_nothing_selected_and_writes_nothing)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Repeatability");

    d_editor.Update_BudgetTree();

    EXPECT_EQ(Selected_Entries(), QStringList());
    EXPECT_EQ(Usable(), "");
    EXPECT_EQ(Usable_Pages(), "");
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, A_tree_rebuilt_while_an_entry_is_edited_drops_the_edit)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    QTest::keyClick(Tree(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Tree()), nullptr);
    Replace_Text(Open_Editor(Tree()), "Other");

    d_editor.Update_BudgetTree();

    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

// Selection

struct TSelectionRow
{
    const char* name;
    QStringList entries;
    QString usable;
    QString pages;
};

void PrintTo(const TSelectionRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorTreeSelection : public TNorvexaEditorTree, public ::testing::WithParamInterface<TSelectionRow>
{};

TEST_P(TNorvexaEditorTreeSelection, Decides_what_can_be_used)
{
    Open_Budget(Workshop_Budget());

    Select_Entries(GetParam().entries);

    EXPECT_EQ(Usable(), GetParam().usable);
    EXPECT_EQ(Usable_Pages(), GetParam().pages);
    Expect_Unmodified();
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorTree, TNorvexaEditorTreeSelection,
    ::testing::Values(TSelectionRow{"root", {"Norvexa Data"}, "add", ""},
                      TSelectionRow{"component", {"Probe"}, "add, remove", "component"},
                      TSelectionRow{"item", {"Drift"}, "add, remove", "component and item"},
                      TSelectionRow{"two_components", {"Probe", "Scale"}, "remove", ""},
                      TSelectionRow{"two_items", {"Repeatability", "Resolution"}, "remove", ""},
                      TSelectionRow{"component_and_its_item", {"Probe", "Resolution"}, "remove", ""},
                      TSelectionRow{"root_and_component", {"Norvexa Data", "Probe"}, "remove", ""},
                      TSelectionRow{"nothing", {"Probe", "Probe"}, "", ""},
                      TSelectionRow{"one_of_two", {"Probe", "Scale", "Probe"}, "add, remove", "component"}),
    Row_Name<TSelectionRow>);

TEST_F(TNorvexaEditorTree, The_arrow_keys_select_and_show_the_next_entry)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Norvexa Data");

    Press(Qt::Key_Down);
    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined");
    EXPECT_EQ(Item_Page(), "disabled");

    Press(Qt::Key_Down);
    EXPECT_EQ(Item_Page(), "Identifier: [Default]; Type B, Normal, 1.000000; 0.003, (default off); independent linear; "
                           "Uc = f(expression) mm");
}

TEST_F(TNorvexaEditorTree, Going_through_all_entries_changes_nothing)
{
    Open_Budget(Workshop_Budget());

    for (const char* name : {"Probe", "Repeatability", "Drift", "Resolution", "Scale", "Norvexa Data", "Drift"}) {
        Select_Entry(name);
    }

    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

struct TSelectRow
{
    const char* name;
    QString component;
    QString item;
    QString selected;

    // The depth shows where the next entry is added.
    QString tree_after_adding;
};

void PrintTo(const TSelectRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorTreeSelect : public TNorvexaEditorTree, public ::testing::WithParamInterface<TSelectRow>
{};

TEST_P(TNorvexaEditorTreeSelect, Makes_an_entry_the_current_one)
{
    Open_Budget(Workshop_Budget());
    Select_Entries({"Drift", "Resolution"});

    d_editor.Select_BudgetTree_Item(GetParam().component, GetParam().item);

    EXPECT_EQ(Selected_Entries(), QStringList(GetParam().selected));
    EXPECT_EQ(Tree()->currentItem()->text(0), GetParam().selected);
    d_answer.Type_Name("New");
    Click_Add();
    EXPECT_EQ(Tree_Text(), GetParam().tree_after_adding);
}

const char* const ADDED_TO_ROOT = "Norvexa Data(New(), Probe(Repeatability, Resolution), Scale(Drift))";
const char* const ADDED_TO_PROBE = "Norvexa Data(Probe(New, Repeatability, Resolution), Scale(Drift))";
const char* const ADDED_TO_SCALE = "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift, New))";

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorTree, TNorvexaEditorTreeSelect,
    ::testing::Values(TSelectRow{"no_names", "", "", "Norvexa Data", ADDED_TO_ROOT},
                      TSelectRow{"no_component", "", "Drift", "Norvexa Data", ADDED_TO_ROOT},
                      TSelectRow{"unknown_component", "Anvil", "Drift", "Norvexa Data", ADDED_TO_ROOT},
                      TSelectRow{"component_in_other_case", "scale", "", "Norvexa Data", ADDED_TO_ROOT},
                      TSelectRow{"component", "Scale", "", "Scale", ADDED_TO_SCALE},
                      TSelectRow{"unknown_item", "Scale", "Wear", "Scale", ADDED_TO_SCALE},
                      TSelectRow{"item_in_other_case", "Scale", "drift", "Scale", ADDED_TO_SCALE},
                      TSelectRow{"item_of_another_component", "Probe", "Drift", "Probe", ADDED_TO_PROBE},
                      TSelectRow{"item", "Probe", "Resolution", "Resolution", ADDED_TO_PROBE}),
    Row_Name<TSelectRow>);

TEST_F(TNorvexaEditorTree, Nothing_becomes_current_in_a_tree_without_root_or_with_two)
{
    Tree()->clear();
    d_editor.Select_BudgetTree_Item(QString(), QString());
    EXPECT_EQ(Tree()->currentItem(), nullptr);

    Tree()->addTopLevelItems({new QTreeWidgetItem(QStringList("1")), new QTreeWidgetItem(QStringList("2"))});
    d_editor.Select_BudgetTree_Item(QString(), QString());
    EXPECT_EQ(Selected_Entries(), QStringList());
}

// In sight

TEST_F(TNorvexaEditorTree, An_entry_added_to_a_large_budget_is_in_sight)
{
    Open_Large_Budget();
    Add_Item("Component 150", "Drift");

    EXPECT_EQ(Selected_Entries(), QStringList("Drift"));
    EXPECT_TRUE(Is_In_Sight(Tree()->currentItem()));
}

TEST_F(TNorvexaEditorTree, An_entry_added_while_another_page_is_in_front_is_in_sight_once_its_page_is)
{
    Open_Large_Budget();
    Select_Entry("Component 150");
    Tree()->scrollToTop();
    Click_Tool("action_log");
    d_answer.Type_Name("Drift");
    Choose_In_Menu("Edit", "Add Budget Item");

    Click_Tool("action_components");

    EXPECT_EQ(Selected_Entries(), QStringList("Drift"));
    EXPECT_TRUE(Is_In_Sight(Tree()->currentItem()));
}

TEST_F(TNorvexaEditorTree, The_current_entry_comes_back_into_sight_when_it_is_made_current_again)
{
    Open_Large_Budget();
    d_editor.Select_BudgetTree_Item("Component 150", QString());
    Tree()->scrollToTop();
    ASSERT_FALSE(Is_In_Sight(Tree()->currentItem()));

    d_editor.Select_BudgetTree_Item("Component 150", QString());

    EXPECT_TRUE(Is_In_Sight(Tree()->currentItem()));
}

// Adding

TEST_F(TNorvexaEditorTree, Adding_asks_for_the_name)
{
    d_answer.Cancel_Name();

    Click_Add();

    ASSERT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_EQ(d_answer.Seen(0).title, "New Budget Item");
    EXPECT_EQ(d_answer.Seen(0).text, "");
}

TEST_F(TNorvexaEditorTree, A_component_is_added_to_the_root_and_selected)
{
    Open_Budget(Workshop_Budget());

    Add_Component("Gauge");

    EXPECT_EQ(Selected_Entries(), QStringList("Gauge"));
    EXPECT_EQ(Component_Page(), NEW_COMPONENT_PAGE);
    EXPECT_EQ(Item_Page(), "disabled");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    TNorvexa expected = Workshop_Budget().document;
    expected.Add_Component("Gauge");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, An_item_is_added_to_the_selected_component_and_selected)
{
    Open_Budget(Workshop_Budget());

    Add_Item("Probe", "Wear");

    EXPECT_EQ(Selected_Entries(), QStringList("Wear"));
    EXPECT_EQ(Item_Page(), "Identifier: [Default]; Type B, Normal, 1.000000; 0.0000, (default off); independent "
                           "linear; Uc = f(expression) mm");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    TNorvexa expected = Workshop_Budget().document;
    expected.Add_Component_Item("Probe", "Wear");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, An_item_is_added_beside_the_selected_item)
{
    Open_Budget(Workshop_Budget());

    Add_Item("Drift", "Wear");

    EXPECT_EQ(Selected_Entries(), QStringList("Wear"));
    TNorvexa expected = Workshop_Budget().document;
    expected.Add_Component_Item("Scale", "Wear");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, A_name_that_differs_in_case_alone_is_another)
{
    Open_Budget(Workshop_Budget());

    Add_Component("PROBE");
    Add_Item("Probe", "RESOLUTION");

    TNorvexa expected = Workshop_Budget().document;
    expected.Add_Component("PROBE");
    expected.Add_Component_Item("Probe", "RESOLUTION");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Components_may_have_items_of_the_same_name)
{
    Open_Budget(Workshop_Budget());

    Add_Item("Probe", "Drift");

    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined");
    TNorvexa expected = Workshop_Budget().document;
    expected.Add_Component_Item("Probe", "Drift");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

struct TRefusedRow
{
    const char* name;
    const char* entry;
    QString typed;
};

void PrintTo(const TRefusedRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorTreeRefused : public TNorvexaEditorTree, public ::testing::WithParamInterface<TRefusedRow>
{};

TEST_P(TNorvexaEditorTreeRefused, Is_not_added)
{
    Open_Budget(Workshop_Budget());

    Add_Item(GetParam().entry, GetParam().typed);

    EXPECT_EQ(Selected_Entries(), QStringList(GetParam().entry));
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorTree, TNorvexaEditorTreeRefused,
                         ::testing::Values(TRefusedRow{"component_in_use", "Norvexa Data", "Scale"},
                                           TRefusedRow{"component_of_blanks", "Norvexa Data", "  "},
                                           TRefusedRow{"component_of_a_no_break_space", "Norvexa Data", NO_BREAK_SPACE},
                                           TRefusedRow{"item_in_use", "Probe", "Resolution"},
                                           TRefusedRow{"item_of_blanks", "Probe", "  "},
                                           TRefusedRow{"item_of_a_no_break_space", "Drift", NO_BREAK_SPACE},
                                           TRefusedRow{"item_named_as_itself", "Drift", "Drift"}),
                         Row_Name<TRefusedRow>);

TEST_F(TNorvexaEditorTree, A_cancelled_dialog_adds_nothing)
{
    Open_Budget(Workshop_Budget());
    d_answer.Type_Name_And_Cancel("Gauge");

    Click_Add();

    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, Nothing_is_asked_or_added_unless_exactly_one_entry_is_selected)
{
    Open_Budget(Workshop_Budget());

    Select_Entries({"Probe", "Scale"});
    d_editor.BudgetTree_Add_Item();
    Click_Add();
    Select_Entries({"Probe", "Probe"});
    d_editor.BudgetTree_Add_Item();

    EXPECT_EQ(d_answer.Seen_Count(), 0);
    EXPECT_EQ(Tree_Text(), WORKSHOP_TREE);
}

TEST_F(TNorvexaEditorTree, An_added_component_is_offered_on_the_other_pages)
{
    Open_Budget(Workshop_Budget());

    Add_Component("Gauge");

    EXPECT_EQ(Available_Components(), QStringList({"Probe", "Scale - Drift", "Gauge"}));
    EXPECT_EQ(Offered_To_Variables(), QStringList({"[no selection]", "Probe", "Scale - Drift", "Gauge"}));
}

TEST_F(TNorvexaEditorTree, An_added_item_of_an_individual_component_is_offered_on_the_other_pages)
{
    Open_Budget(Workshop_Budget());

    Add_Item("Scale", "Wear");

    EXPECT_EQ(Available_Components(), QStringList({"Probe", "Scale - Drift", "Scale - Wear"}));
    EXPECT_EQ(Offered_To_Variables(), QStringList({"[no selection]", "Probe", "Scale - Drift", "Scale - Wear"}));
}

TEST_F(TNorvexaEditorTree, The_Edit_menu_adds_and_removes)
{
    d_answer.Type_Name("Gauge");
    Choose_In_Menu("Edit", "Add Budget Item");
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Gauge())");

    d_answer.Click(QMessageBox::Yes);
    Choose_In_Menu("Edit", "Remove Budget Item");
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

TEST_F(TNorvexaEditorTree, The_context_menu_adds_and_removes)
{
    d_answer.Type_Name("Gauge");
    Choose_In_Context_Menu("Add Budget Item");
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Gauge())");

    d_answer.Click(QMessageBox::Yes);
    Choose_In_Context_Menu("Remove Budget Item");
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

TEST_F(TNorvexaEditorTree, A_name_is_no_format_string)
{
    Add_Component("%1 %2 %n");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(%1 %2 %n())");
    EXPECT_EQ(Component_Page(), "%1 %2 %n: ; no dates; 0.00000, 10.00; combined");
}

// Removing

TEST_F(TNorvexaEditorTree, Removing_asks_first)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");

    Remove_Entries(QMessageBox::No);

    const TModalAnswer::TSeen seen = d_answer.Seen(0);
    EXPECT_EQ(seen.title, "Norvexa Editor");
    EXPECT_EQ(seen.text, "Delete Components");
    EXPECT_EQ(seen.informative_text, "Are you sure you want to delete the selected components?");
    EXPECT_EQ(seen.detailed_text, "");
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(seen.default_button, QMessageBox::No);
    EXPECT_EQ(seen.icon, QMessageBox::Question);
}

TEST_F(TNorvexaEditorTree, No_the_default_and_Escape_remove_nothing)
{
    Open_Budget(Workshop_Budget());
    Select_Entries({"Probe", "Drift"});

    Remove_Entries(QMessageBox::No);
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        d_answer.Press(key);
        QTest::mouseClick(Find<QToolButton>("remove_budget_item"), Qt::LeftButton);
    }

    EXPECT_EQ(Selected_Entries(), QStringList({"Probe", "Drift"}));
    EXPECT_EQ(Usable(), "remove");
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

struct TRemovalRow
{
    const char* name;
    QStringList entries;
    QStringList removed_components;

    // Of "Probe".
    QStringList removed_items;
};

void PrintTo(const TRemovalRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TNorvexaEditorTreeRemoval : public TNorvexaEditorTree, public ::testing::WithParamInterface<TRemovalRow>
{};

TEST_P(TNorvexaEditorTreeRemoval, Answered_Yes_removes_what_is_selected_and_selects_the_root)
{
    Open_Budget(Workshop_Budget());
    Select_Entries(GetParam().entries);

    Remove_Entries();

    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_EQ(Usable(), "add");
    EXPECT_EQ(Usable_Pages(), "");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    TNorvexa expected = Workshop_Budget().document;
    expected.Remove_Component_Items("Probe", GetParam().removed_items);
    for (const QString& component : GetParam().removed_components) {
        expected.Remove_Component(component);
    }
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaEditorTree, TNorvexaEditorTreeRemoval,
    ::testing::Values(TRemovalRow{"component", {"Scale"}, {"Scale"}, {}},
                      TRemovalRow{"item", {"Resolution"}, {}, {"Resolution"}},
                      TRemovalRow{"all_items", {"Resolution", "Repeatability"}, {}, {"Resolution", "Repeatability"}},
                      TRemovalRow{"component_and_item_of_another", {"Scale", "Resolution"}, {"Scale"}, {"Resolution"}},
                      TRemovalRow{"component_with_its_item", {"Probe", "Resolution"}, {"Probe"}, {}},
                      TRemovalRow{"item_with_its_component", {"Resolution", "Probe"}, {"Probe"}, {}},
                      TRemovalRow{
                          "root_component_and_its_item", {"Norvexa Data", "Probe", "Repeatability"}, {"Probe"}, {}},
                      TRemovalRow{"everything",
                                  {"Norvexa Data", "Probe", "Repeatability", "Resolution", "Scale", "Drift"},
                                  {"Probe", "Scale"},
                                  {}}),
    Row_Name<TRemovalRow>);

TEST_F(TNorvexaEditorTree, Items_of_different_components_are_removed_together)
{
    Open_Budget(Workshop_Budget());
    Select_Entries({"Resolution", "Drift"});

    Remove_Entries();

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability), Scale())");
    TNorvexa expected = Workshop_Budget().document;
    expected.Remove_Component_Items("Probe", {"Resolution"});
    expected.Remove_Component_Items("Scale", {"Drift"});
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, A_removed_component_is_no_longer_offered_on_the_other_pages)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Scale");

    Remove_Entries();

    EXPECT_EQ(Available_Components(), QStringList("Probe"));
    EXPECT_EQ(Offered_To_Variables(), QStringList({"[no selection]", "Probe"}));
}

TEST_F(TNorvexaEditorTree, After_a_removal_nothing_is_current)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    Select_Identifier("SN 1");
    Select_Entry("Repeatability");
    Remove_Entries();
    TNorvexa expected = Workshop_Budget().document;
    expected.Remove_Component_Items("Probe", {"Repeatability"});
    Save_As(Path("saved.norvexa"));

    d_editor.Component_Data_Changed();
    d_editor.Component_Item_Data_Changed();

    EXPECT_EQ(Saving(), "Save As");
    EXPECT_EQ(Saved_State(), State_Of(expected));
    Select_Entry("Resolution");
    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined");
}

TEST_F(TNorvexaEditorTree, A_component_added_again_starts_afresh)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    Remove_Entries();

    Add_Component("Probe");

    EXPECT_EQ(Component_Page(), "Probe: ; no dates; 0.00000, 10.00; combined");
    TNorvexa expected = Workshop_Budget().document;
    expected.Remove_Component("Probe");
    expected.Add_Component("Probe");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// Renaming

TEST_F(TNorvexaEditorTree, A_component_is_renamed_in_place)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "Zoom");

    EXPECT_EQ(Selected_Entries(), QStringList("Zoom"));
    EXPECT_EQ(Component_Page(), "Zoom: SN 1, SN 2; no dates; 100.00000, 11.50; combined");
    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, An_item_is_renamed_in_place)
{
    Open_Budget(Workshop_Budget());

    Rename("Repeatability", "Zero");

    EXPECT_EQ(Selected_Entries(), QStringList("Zero"));
    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component_Item("Probe", "Repeatability", "Zero"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, A_change_of_case_is_a_rename)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "PROBE");
    Rename("Drift", "drift");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "PROBE"));
    ASSERT_TRUE(expected.Rename_Component_Item("Scale", "Drift", "drift"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, An_item_may_take_the_name_of_an_item_of_another_component)
{
    Open_Budget(Workshop_Budget());

    Rename("Drift", "Resolution");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component_Item("Scale", "Drift", "Resolution"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Renaming_is_no_change_and_leaves_the_other_pages_alone)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "Zoom");
    Rename("Drift", "Zero");

    Expect_Unmodified();
    EXPECT_EQ(Available_Components(), QStringList({"Probe", "Scale - Drift"}));
    EXPECT_EQ(Offered_To_Variables(), QStringList({"[no selection]", "Probe", "Scale - Drift"}));
}

class TNorvexaEditorTreeRefusedRename : public TNorvexaEditorTree, public ::testing::WithParamInterface<TRefusedRow>
{};

TEST_P(TNorvexaEditorTreeRefusedRename, Shows_the_old_name_again)
{
    Open_Budget(Workshop_Budget());

    Rename(GetParam().entry, GetParam().typed);

    EXPECT_EQ(Selected_Entries(), QStringList(GetParam().entry));
    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorTree, TNorvexaEditorTreeRefusedRename,
                         ::testing::Values(TRefusedRow{"component_in_use", "Probe", "Scale"},
                                           TRefusedRow{"component_to_nothing", "Probe", ""},
                                           TRefusedRow{"component_to_blanks", "Probe", "  "},
                                           TRefusedRow{"component_to_a_no_break_space", "Probe", NO_BREAK_SPACE},
                                           TRefusedRow{"component_to_itself", "Probe", "Probe"},
                                           TRefusedRow{"item_in_use", "Repeatability", "Resolution"},
                                           TRefusedRow{"item_to_nothing", "Repeatability", ""},
                                           TRefusedRow{"item_to_blanks", "Repeatability", "  "},
                                           TRefusedRow{"item_to_a_no_break_space", "Repeatability", NO_BREAK_SPACE},
                                           TRefusedRow{"item_to_itself", "Drift", "Drift"}),
                         Row_Name<TRefusedRow>);

TEST_F(TNorvexaEditorTree, After_a_refused_rename_both_entries_show_their_own_records)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "Scale");

    Click(Component_Entry(0));
    EXPECT_EQ(Component_Page(), "Probe: SN 1, SN 2; no dates; 100.00000, 11.50; combined");
    Click(Component_Entry(1));
    EXPECT_EQ(Component_Page(), "Scale: ; no dates; 0.00000, 10.00; individual, hint, limit");
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, After_a_refused_rename_of_an_item_both_show_their_own_records)
{
    Open_Budget(Workshop_Budget());

    Rename("Repeatability", "Resolution");

    Click(Component_Entry(0)->child(0));
    EXPECT_TRUE(Item_Page().contains("; 0.003, "));
    Click(Component_Entry(0)->child(1));
    EXPECT_TRUE(Item_Page().contains("; 0.004, "));
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, The_length_typed_after_a_rename_lands_in_the_renamed_component)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "Zoom");
    Enter("component_length", "7.5");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    Change_Component(&expected, "Zoom", [](TComponent* component) { component->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, The_expression_typed_after_a_rename_lands_in_the_renamed_item)
{
    Open_Budget(Workshop_Budget());

    Rename("Repeatability", "Zero");
    Enter("expression", "0.7");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component_Item("Probe", "Repeatability", "Zero"));
    Change_Item(&expected, "Probe", "Zero", [](TComponentItem* item) { item->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, An_entry_added_after_a_rename_goes_to_the_renamed_component)
{
    Open_Budget(Workshop_Budget());

    Rename("Scale", "Zoom");
    d_answer.Type_Name("Wear");
    Click_Add();

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Scale", "Zoom"));
    expected.Add_Component_Item("Zoom", "Wear");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, A_component_renamed_after_its_item_keeps_both)
{
    Open_Budget(Workshop_Budget());
    Rename("Repeatability", "Zero");

    Rename("Probe", "Zoom");
    Select_Entry("Zero");
    Enter("expression", "0.7");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    ASSERT_TRUE(expected.Rename_Component_Item("Zoom", "Repeatability", "Zero"));
    Change_Item(&expected, "Zoom", "Zero", [](TComponentItem* item) { item->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// The component has the focus of the tree, its item is selected: an edit would be of another entry than the pages show.
TEST_F(TNorvexaEditorTree, A_component_cannot_be_renamed_while_its_item_is_the_selected_entry)
{
    Open_Budget(Workshop_Budget());
    Select_Entries({"Repeatability", "Probe", "Probe"});
    ASSERT_EQ(Tree()->currentItem()->text(0), "Probe");
    ASSERT_EQ(Selected_Entries(), QStringList("Repeatability"));

    QTest::keyClick(Tree(), Qt::Key_F2);

    EXPECT_EQ(Open_Editor(Tree()), nullptr);
    EXPECT_TRUE(Item_Page().contains("; 0.003, "));
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, Two_selected_entries_are_not_renamed)
{
    Open_Budget(Workshop_Budget());
    Select_Entries({"Scale", "Probe"});

    QTest::keyClick(Tree(), Qt::Key_F2);
    EXPECT_EQ(Open_Editor(Tree()), nullptr);
    Type_Text(Tree(), "Zoom");
    QTest::keyClick(Tree(), Qt::Key_Return);

    Expect_Unmodified();
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, A_double_click_renames_components_and_items_but_not_the_root)
{
    Open_Budget(Workshop_Budget());
    const auto double_click = [this](const QString& name) {
        Select_Entry(name);
        QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                           Tree()->visualRect(Entry(Tree(), name)).center());
    };

    double_click("Norvexa Data");
    EXPECT_EQ(Open_Editor(Tree()), nullptr);
    for (const char* name : {"Probe", "Drift"}) {
        double_click(name);
        ASSERT_NE(Open_Editor(Tree()), nullptr);
        Replace_Text(Open_Editor(Tree()), "Zoom");
        Press(Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Tree()) == nullptr; }));
    }

    EXPECT_TRUE(Component_Entry(0)->isExpanded());
    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    ASSERT_TRUE(expected.Rename_Component_Item("Scale", "Drift", "Zoom"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Escape_leaves_the_old_name)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    QTest::keyClick(Tree(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Tree()), nullptr);
    Replace_Text(Open_Editor(Tree()), "Zoom");

    Press(Qt::Key_Escape);

    ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Tree()) == nullptr; }));
    EXPECT_EQ(Saved_State(), State_Of(Workshop_Budget().document));
}

TEST_F(TNorvexaEditorTree, Leaving_the_editor_for_another_page_of_the_window_renames)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    QTest::keyClick(Tree(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Tree()), nullptr);
    Replace_Text(Open_Editor(Tree()), "Zoom");

    Enter("component_length", "7.5");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    Change_Component(&expected, "Zoom", [](TComponent* component) { component->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, A_name_being_typed_is_taken_before_the_next_entry_is_added)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    QTest::keyClick(Tree(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Tree()), nullptr);
    Replace_Text(Open_Editor(Tree()), "Zoom");
    d_answer.Type_Name("Wear");

    Click_Add();

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    expected.Add_Component_Item("Zoom", "Wear");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Control_characters_are_taken_out_of_a_new_name)
{
    Open_Budget(Workshop_Budget());
    Select_Entry("Probe");
    QTest::keyClick(Tree(), Qt::Key_F2);
    ASSERT_NE(Open_Editor(Tree()), nullptr);
    Paste_Text(Open_Editor(Tree()), QString("Zo") + QChar(7) + "om");

    Press(Qt::Key_Return);

    ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(Tree()) == nullptr; }));
    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Probe", "Zoom"));
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Entries_that_swap_their_order_by_renames_keep_their_records)
{
    Open_Budget(Workshop_Budget());

    Rename("Probe", "Z");
    Rename("Scale", "A");
    Rename("Z", "Scale");
    Enter("component_length", "7.5");

    TNorvexa expected = Workshop_Budget().document;
    ASSERT_TRUE(expected.Rename_Component("Scale", "A"));
    ASSERT_TRUE(expected.Rename_Component("Probe", "Scale"));
    Change_Component(&expected, "Scale", [](TComponent* component) { component->length = 7.5; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

// Components of one name, which only a file can bring in: every entry of that name shows the first of them.

TEST_F(TNorvexaEditorTree, Of_two_namesakes_one_is_removed)
{
    Open_Namesakes();
    ASSERT_EQ(Tree_Text(), "Norvexa Data(Probe(Tip), Probe(Tip))");
    Click(Component_Entry(1));

    Remove_Entries();

    TNorvexa expected;
    expected.Add_Component("Probe");
    expected.Add_Component_Item("Probe", "Stem");
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_F(TNorvexaEditorTree, Two_selected_namesakes_are_removed)
{
    Open_Namesakes();
    Click(Component_Entry(0));
    Click(Component_Entry(1), Qt::ControlModifier);

    Remove_Entries();

    EXPECT_EQ(Saved_State(), State_Of(TNorvexa()));
}

TEST_F(TNorvexaEditorTree, Of_two_items_of_one_name_one_is_removed)
{
    Open_Item_Namesakes();
    ASSERT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Repeatability), Scale(Drift))");
    Click(Component_Entry(0)->child(1));

    Remove_Entries();

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability), Scale(Drift))");
}

TEST_F(TNorvexaEditorTree, Two_selected_items_of_one_name_are_removed)
{
    Open_Item_Namesakes();
    Click(Component_Entry(0)->child(0));
    Click(Component_Entry(0)->child(1), Qt::ControlModifier);

    Remove_Entries();

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(), Scale(Drift))");
}

class TNorvexaEditorTreeNamesakes : public TNorvexaEditorTree, public ::testing::WithParamInterface<int>
{};

TEST_P(TNorvexaEditorTreeNamesakes, Are_shown_with_their_own_items_once_one_is_renamed)
{
    Open_Namesakes();
    Click(Component_Entry(GetParam()));

    Type_Over_Selected("Zoom");

    EXPECT_EQ(Selected_Entries(), QStringList("Zoom"));
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Stem), Zoom(Tip))");
    Select_Entry("Stem");
    Enter("expression", "0.7");
    TNorvexa expected;
    expected.Add_Component("Zoom");
    expected.Add_Component_Item("Zoom", "Tip");
    expected.Add_Component("Probe");
    expected.Add_Component_Item("Probe", "Stem");
    Change_Item(&expected, "Probe", "Stem", [](TComponentItem* item) { item->expression = "0.7"; });
    EXPECT_EQ(Saved_State(), State_Of(expected));
}

TEST_P(TNorvexaEditorTreeNamesakes, Both_show_the_new_name_of_an_item)
{
    Open_Namesakes();
    Click(Component_Entry(GetParam())->child(0));

    Type_Over_Selected("Ball");

    EXPECT_EQ(Selected_Entries(), QStringList("Ball"));
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Ball), Probe(Ball))");
}

INSTANTIATE_TEST_SUITE_P(TNorvexaEditorTree, TNorvexaEditorTreeNamesakes, ::testing::Values(0, 1),
                         [](const ::testing::TestParamInfo<int>& entry) {
                             return entry.param == 0 ? "first_entry" : "second_entry";
                         });

} // namespace
