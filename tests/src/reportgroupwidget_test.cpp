#include "src/reportgroupwidget.h"

#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

testing::Matcher<const TGroup&> Is_Group(const QString& name, const QStringList& items)
{
    return AllOf(Field("name", &TGroup::name, name), Field("items", &TGroup::items, items));
}

const QStringList COMPONENTS = {"Probe", "Scale", "Scale - Error", "Thermometer"};

const std::vector<TGroup> TWO_GROUPS = {{"Tape", {"Probe", "Thermometer"}}, {"Gauge", {"Scale"}}};

class ReportGroupWidget : public ::testing::Test
{
protected:
    ReportGroupWidget()
    {
        d_page.resize(1077, 640);
        d_page.show();
        QApplication::setActiveWindow(&d_page);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&d_page));
    }

    void Fill()
    {
        d_page.Update_Reportable_Components(COMPONENTS);
        d_page.Set_Groups(TWO_GROUPS);
    }

    QListWidget* Group_List() const { return d_page.findChild<QListWidget*>("group_list"); }

    QListWidget* Component_List() const { return d_page.findChild<QListWidget*>("component_list"); }

    QToolButton* Button(const QString& name) const { return d_page.findChild<QToolButton*>(name); }

    QLabel* Label(const QString& text) const
    {
        for (QLabel* label : d_page.findChildren<QLabel*>()) {
            if (label->text() == text) {
                return label;
            }
        }
        return nullptr;
    }

    // Where the user sees it on the page.
    QRect Place(const QWidget* widget) const { return {widget->mapTo(&d_page, QPoint()), widget->size()}; }

    static void Click(QListWidget* list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, list->visualItemRect(list->item(row)).center());
    }

    void Click_Group(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { Click(Group_List(), row, modifiers); }

    void Click_Component(int row) { Click(Component_List(), row); }

    void Click_Button(const QString& name) { QTest::mouseClick(Button(name), Qt::LeftButton); }

    // Clicks the add button, whose name dialog then gets `name` and Return.
    void Enter_New_Group(const QString& name)
    {
        TModalAnswer answer;

        answer.Type_Name(name);
        Click_Button("add_group");
    }

    QLineEdit* Open_Editor() const { return Group_List()->viewport()->findChild<QLineEdit*>(); }

    // Opens the editor of the group in `row` and types a name that is not committed yet.
    void Begin_Rename(int row, const QString& name)
    {
        Click_Group(row);
        QTest::keyClick(Group_List(), Qt::Key_F2);
        ASSERT_NE(Open_Editor(), nullptr);
        QTest::keyClicks(Open_Editor(), name);
    }

    // Renames the group in `row` in its entry, as a user does: a click, F2, the new name, Return.
    void Rename_In_Place(int row, const QString& name)
    {
        Click_Group(row);
        QTest::keyClick(Group_List(), Qt::Key_F2);
        ASSERT_NE(Open_Editor(), nullptr);
        Open_Editor()->selectAll();
        Open_Editor()->insert(name);
        QTest::keyClick(Open_Editor(), Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([this] { return Open_Editor() == nullptr; }));
    }

    static QStringList Texts(const QListWidget* list)
    {
        QStringList texts;

        for (int row = 0; row < list->count(); ++row) {
            texts.append(list->item(row)->text());
        }
        return texts;
    }

    QStringList Selected_Components() const
    {
        QStringList texts;

        for (int row = 0; row < Component_List()->count(); ++row) {
            if (Component_List()->item(row)->isSelected()) {
                texts.append(Component_List()->item(row)->text());
            }
        }
        return texts;
    }

    QStringList Entries() const { return Texts(Group_List()); }

    int Changes() const { return d_changes.count(); }

    // No dialog may open unless a test expects it.
    TModalAnswer d_watchdog;

    TReportGroupWidget d_page;
    QSignalSpy d_changes{&d_page, &TReportGroupWidget::Report_Groups_Changed};
};

// The page

TEST_F(ReportGroupWidget, Shows_two_labelled_lists_side_by_side)
{
    const QLabel* group_label = Label("Current Report Groups:");
    const QLabel* component_label = Label("Available Budget Components:");

    ASSERT_NE(group_label, nullptr);
    ASSERT_NE(component_label, nullptr);
    EXPECT_EQ(group_label->buddy(), Group_List());
    EXPECT_EQ(component_label->buddy(), Component_List());
    EXPECT_LT(Place(group_label).bottom(), Place(Group_List()).top());
    EXPECT_LT(Place(component_label).bottom(), Place(Component_List()).top());
    EXPECT_LT(Place(Group_List()).right(), Place(Component_List()).left());
    EXPECT_EQ(Place(Group_List()).top(), Place(Component_List()).top());
    EXPECT_NEAR(Group_List()->width(), Component_List()->width(), 1);
    EXPECT_GT(Group_List()->height(), d_page.height() * 3 / 4);
}

struct TButtonRow
{
    const char* object_name;
    const char* icon;
    const char* text;
};

void PrintTo(const TButtonRow& row, std::ostream* stream)
{
    *stream << row.object_name;
}

class ReportGroupWidgetButton : public ReportGroupWidget, public ::testing::WithParamInterface<TButtonRow>
{};

TEST_P(ReportGroupWidgetButton, Is_a_small_icon_under_the_groups_that_says_what_it_does)
{
    const QToolButton* button = Button(GetParam().object_name);

    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->size(), QSize(16, 16));
    EXPECT_FALSE(button->icon().pixmap(16, 16).isNull());
    EXPECT_EQ(button->icon().pixmap(16, 16).toImage(), QIcon(GetParam().icon).pixmap(16, 16).toImage());
    EXPECT_EQ(button->toolTip(), GetParam().text);
    EXPECT_EQ(button->accessibleName(), GetParam().text);
    EXPECT_GT(Place(button).top(), Place(Group_List()).bottom());
    EXPECT_LT(Place(button).right(), Place(Group_List()).right());
}

TEST_P(ReportGroupWidgetButton, Shows_that_it_has_the_focus)
{
    Fill();
    Click_Group(0);
    Group_List()->setFocus();
    const QImage without_focus = Button(GetParam().object_name)->grab().toImage();

    while (!Button(GetParam().object_name)->hasFocus()) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_NE(Button(GetParam().object_name)->grab().toImage(), without_focus);
}

INSTANTIATE_TEST_SUITE_P(, ReportGroupWidgetButton,
                         ::testing::Values(TButtonRow{"add_group", ":/gui/add.png", "Add report group"},
                                           TButtonRow{"remove_group", ":/gui/remove.png",
                                                      "Remove selected report groups"}),
                         [](const auto& row) { return row.param.object_name; });

TEST_F(ReportGroupWidget, Starts_empty_with_nothing_to_remove_and_nothing_to_select)
{
    EXPECT_THAT(d_page.Groups(), IsEmpty());
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(Texts(Component_List()), QStringList());
    EXPECT_TRUE(Button("add_group")->isEnabled());
    EXPECT_FALSE(Button("remove_group")->isEnabled());
    EXPECT_FALSE(Component_List()->isEnabled());
}

TEST_F(ReportGroupWidget, Is_walked_down_with_the_tab_key)
{
    Fill();
    Click_Group(0);
    Group_List()->setFocus();
    QStringList walked;

    for (int step = 0; step < 4; ++step) {
        walked.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(walked, QStringList({"group_list", "add_group", "remove_group", "component_list"}));
    EXPECT_EQ(QApplication::focusWidget(), Group_List());
}

// Records

using ReportGroupWidgetDeathTest = ReportGroupWidget;

TEST_F(ReportGroupWidgetDeathTest, Group_of_an_index_out_of_range)
{
    Fill();

    EXPECT_DEATH(d_page.Group(2), "\\.\\./src/reportgroupwidget\\.cpp: Group: "
                                  "static_cast<unsigned int>\\(index\\) < d_groups.size\\(\\)\n");
    EXPECT_DEATH(d_page.Group(-1), "static_cast<unsigned int>\\(index\\) < d_groups.size\\(\\)");
}

TEST_F(ReportGroupWidget, Returns_groups_by_index_and_members_by_name)
{
    Fill();

    EXPECT_THAT(d_page.Group(0), Is_Group("Tape", {"Probe", "Thermometer"}));
    EXPECT_THAT(d_page.Group(1), Is_Group("Gauge", {"Scale"}));
    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(d_page.Group_List("Tape"), QStringList({"Probe", "Thermometer"}));
    EXPECT_EQ(d_page.Group_Items("Tape"), QStringList({"Probe", "Thermometer"}));
}

TEST_F(ReportGroupWidget, Has_no_members_of_an_unknown_group)
{
    Fill();

    EXPECT_EQ(d_page.Group_List("tape"), QStringList());
    EXPECT_EQ(d_page.Group_Items("tape"), QStringList());
}

TEST_F(ReportGroupWidget, Adds_a_record_unless_its_name_is_in_use)
{
    Fill();

    EXPECT_TRUE(d_page.Add_Group({"tape", {"Scale"}}));
    EXPECT_FALSE(d_page.Add_Group({"Tape", {"Scale"}}));
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"}),
                                             Is_Group("tape", {"Scale"})));
}

TEST_F(ReportGroupWidget, Removes_a_record_by_name_and_ignores_an_unknown_one)
{
    Fill();

    d_page.Remove_Group("tape");
    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    d_page.Remove_Group("Tape");
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Gauge", {"Scale"})));
}

TEST_F(ReportGroupWidget, Replaces_the_members_by_name_and_ignores_an_unknown_one)
{
    Fill();

    d_page.Modify_Group("gauge", {"Probe"});
    d_page.Modify_Group("Gauge", {"Probe", "Scale - Error"});

    EXPECT_THAT(d_page.Groups(),
                ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Probe", "Scale - Error"})));
}

TEST_F(ReportGroupWidget, Renames_a_record_to_a_free_name_only)
{
    Fill();

    EXPECT_FALSE(d_page.Rename_Group("tape", "Rod"));
    EXPECT_FALSE(d_page.Rename_Group("Tape", "Gauge"));
    EXPECT_FALSE(d_page.Rename_Group("Tape", " "));
    EXPECT_TRUE(d_page.Rename_Group("Tape", "gauge"));
    EXPECT_EQ(d_page.Group_Names(), QStringList({"gauge", "Gauge"}));
}

TEST_F(ReportGroupWidget, Finds_the_entry_of_a_component_by_its_whole_text)
{
    Fill();

    EXPECT_EQ(d_page.Find_Component_Item("Scale - Error"), Component_List()->item(2));
    EXPECT_EQ(d_page.Find_Component_Item("scale"), nullptr);
    EXPECT_EQ(d_page.Find_Component_Item("Sc*"), nullptr);
}

// Filled by the program

TEST_F(ReportGroupWidget, Shows_the_groups_that_it_is_given_in_their_order_silently)
{
    Fill();
    d_page.Set_Groups({{"Rod", {"Scale"}}, {"Ball", {}}});

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Rod", {"Scale"}), Is_Group("Ball", {})));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Ball"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Has_no_group_selected_after_it_is_given_groups)
{
    Fill();
    Click_Group(0);

    d_page.Set_Groups(TWO_GROUPS);

    EXPECT_TRUE(Group_List()->selectedItems().isEmpty());
    EXPECT_FALSE(Button("remove_group")->isEnabled());
    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Clears_groups_and_entries_silently)
{
    Fill();
    Click_Group(0);

    d_page.Clear_Groups();

    EXPECT_THAT(d_page.Groups(), IsEmpty());
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_FALSE(Button("remove_group")->isEnabled());
    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_EQ(Texts(Component_List()), COMPONENTS);
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Replaces_the_available_components_silently)
{
    Fill();
    d_page.Update_Reportable_Components({"Thermometer", "Anvil"});

    EXPECT_EQ(Texts(Component_List()), QStringList({"Thermometer", "Anvil"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Keeps_the_members_of_every_group_when_the_components_change)
{
    Fill();
    Click_Group(0);

    d_page.Update_Reportable_Components({"Thermometer", "Anvil"});

    EXPECT_EQ(Selected_Components(), QStringList("Thermometer"));
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 0);

    d_page.Update_Reportable_Components(COMPONENTS);

    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Thermometer"}));
}

TEST_F(ReportGroupWidget, Shows_no_members_of_two_selected_groups_when_the_components_change)
{
    Fill();
    Click_Group(0);
    Click_Group(1, Qt::ControlModifier);

    d_page.Update_Reportable_Components({"Thermometer", "Scale"});

    EXPECT_EQ(Selected_Components(), QStringList());
    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Leaves_the_list_as_it_is_when_the_same_components_come_again)
{
    Fill();
    Click_Group(1);
    Click_Component(2);

    d_page.Update_Reportable_Components(COMPONENTS);

    EXPECT_EQ(Component_List()->currentRow(), 2);
    EXPECT_EQ(Texts(Component_List()), COMPONENTS);
    EXPECT_EQ(Selected_Components(), QStringList({"Scale", "Scale - Error"}));
    EXPECT_EQ(Changes(), 1); // the click
}

TEST_F(ReportGroupWidget, Shows_no_members_of_two_selected_groups_when_the_same_components_come_again)
{
    Fill();
    Click_Group(0);
    Click_Group(1, Qt::ControlModifier);

    d_page.Update_Reportable_Components(COMPONENTS);

    EXPECT_EQ(Selected_Components(), QStringList());
}

TEST_F(ReportGroupWidget, Goes_while_an_entry_is_edited)
{
    auto* page = new TReportGroupWidget;
    const QSignalSpy changes(page, &TReportGroupWidget::Report_Groups_Changed);
    page->Set_Groups(TWO_GROUPS);
    Show_Active(page);
    auto* list = Child<QListWidget>(page, "group_list");
    Click_Entry(list, "Tape");
    QTest::keyClick(list, Qt::Key_F2);
    QTest::keyClicks(list->viewport()->findChild<QLineEdit*>(), "Rod");

    delete page;

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ReportGroupWidget, Keeps_groups_of_the_same_name_and_removes_one_at_a_time)
{
    d_page.Set_Groups({{"Tape", {"Probe"}}, {"Tape", {"Scale"}}});
    EXPECT_EQ(Entries(), QStringList({"Tape", "Tape"}));

    Click_Group(0);
    Click_Button("remove_group");
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList("Tape"));

    Click_Group(0);
    Click_Button("remove_group");
    EXPECT_THAT(d_page.Groups(), IsEmpty());
    EXPECT_EQ(Entries(), QStringList());
}

// Adding

TEST_F(ReportGroupWidget, Asks_for_the_name_of_a_new_group)
{
    TModalAnswer answer;

    answer.Cancel_Name();
    Click_Button("add_group");

    EXPECT_EQ(answer.Seen(0).title, "Add Report Group");
    EXPECT_EQ(answer.Seen(0).text, "");
}

TEST_F(ReportGroupWidget, Creates_a_group_without_members_while_no_component_is_selected)
{
    d_page.Update_Reportable_Components(COMPONENTS);

    Enter_New_Group("  Tape 1 ");

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape 1", {})));
    EXPECT_EQ(Entries(), QStringList("Tape 1"));
    EXPECT_TRUE(Group_List()->item(0)->flags().testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Creates_a_group_of_the_selected_components_in_the_order_of_the_list)
{
    Fill();
    Click_Group(0);
    Click_Component(3);
    Click_Component(2);
    Click_Component(3);
    const int changes = Changes();

    Enter_New_Group("Rod");

    EXPECT_THAT(d_page.Group(2), Is_Group("Rod", {"Probe", "Scale - Error", "Thermometer"}));
    EXPECT_EQ(Changes(), changes + 1);
}

TEST_F(ReportGroupWidget, Keeps_entries_in_the_order_of_their_creation_and_the_selection_as_it_was)
{
    Fill();
    Click_Group(1);

    Enter_New_Group("Anvil");

    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge", "Anvil"}));
    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge", "Anvil"}));
    EXPECT_EQ(Group_List()->selectedItems(), QList<QListWidgetItem*>{Group_List()->item(1)});
}

TEST_F(ReportGroupWidget, Scrolls_to_a_new_group)
{
    d_page.Set_Groups(std::vector<TGroup>(100, {"Tape", {}}));

    Enter_New_Group("Gauge");

    EXPECT_TRUE(
        Group_List()->viewport()->rect().contains(Group_List()->visualItemRect(Group_List()->item(100)).center()));
}

TEST_F(ReportGroupWidget, Creates_nothing_when_the_dialog_is_cancelled)
{
    TModalAnswer answer;

    answer.Type_Name_And_Cancel("Tape");
    Click_Button("add_group");

    EXPECT_THAT(d_page.Groups(), IsEmpty());
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(Changes(), 0);
}

struct TRefusedName
{
    const char* case_name;
    const char* typed;
};

void PrintTo(const TRefusedName& row, std::ostream* stream)
{
    *stream << '"' << row.typed << '"';
}

class ReportGroupWidgetRefusedName : public ReportGroupWidget, public ::testing::WithParamInterface<TRefusedName>
{};

TEST_P(ReportGroupWidgetRefusedName, Creates_nothing)
{
    Fill();

    Enter_New_Group(GetParam().typed);

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_P(ReportGroupWidgetRefusedName, Renames_nothing_and_the_entry_shows_its_old_name_again)
{
    Fill();

    Rename_In_Place(1, GetParam().typed);

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(, ReportGroupWidgetRefusedName,
                         ::testing::Values(TRefusedName{"in_use", "Tape"}, TRefusedName{"blanks", "   "},
                                           TRefusedName{"no_break_space", "\u00A0"}),
                         [](const auto& row) { return row.param.case_name; });

TEST_F(ReportGroupWidget, Accepts_a_new_name_that_differs_only_in_case)
{
    Fill();

    Enter_New_Group("TAPE");

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge", "TAPE"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Adds_a_group_from_the_keyboard)
{
    Fill();
    TModalAnswer answer;
    answer.Type_Name("Rod");
    Button("add_group")->setFocus();

    QTest::keyClick(Button("add_group"), Qt::Key_Space);

    EXPECT_THAT(d_page.Group(2), Is_Group("Rod", {}));
    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge", "Rod"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Commits_a_rename_before_a_new_group_takes_the_old_name)
{
    Fill();
    Begin_Rename(0, "Rod");

    Enter_New_Group("Tape");

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Rod", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"}),
                                             Is_Group("Tape", {"Probe", "Thermometer"})));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge", "Tape"}));
    EXPECT_EQ(Changes(), 2);
}

// Removing

TEST_F(ReportGroupWidget, Removes_the_selected_group_without_a_question)
{
    Fill();
    Click_Group(0);

    Click_Button("remove_group");

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList("Gauge"));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Removes_all_selected_groups_at_once)
{
    d_page.Set_Groups({{"Tape", {}}, {"Gauge", {"Scale"}}, {"Rod", {}}});
    Click_Group(0);
    Click_Group(2, Qt::ControlModifier);

    Click_Button("remove_group");

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList("Gauge"));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Removes_the_selected_groups_from_the_keyboard)
{
    Fill();
    Click_Group(0);
    QTest::keyClick(Group_List(), Qt::Key_Down, Qt::ShiftModifier);
    Button("remove_group")->setFocus();

    QTest::keyClick(Button("remove_group"), Qt::Key_Space);

    EXPECT_THAT(d_page.Groups(), IsEmpty());
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Leaves_the_shown_components_alone_while_groups_are_removed)
{
    Fill();
    Click_Group(0);
    Click_Group(1, Qt::ControlModifier);

    Click_Button("remove_group");

    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Thermometer"}));
    EXPECT_THAT(d_page.Groups(), IsEmpty());
}

TEST_F(ReportGroupWidget, Has_no_group_selected_after_a_removal)
{
    Fill();
    Click_Group(0);

    Click_Button("remove_group");

    EXPECT_TRUE(Group_List()->selectedItems().isEmpty());
    EXPECT_FALSE(Button("remove_group")->isEnabled());
    EXPECT_FALSE(Component_List()->isEnabled());
}

TEST_F(ReportGroupWidget, Removes_a_group_while_its_entry_is_edited)
{
    Fill();
    Begin_Rename(0, "Rod");

    Click_Button("remove_group");
    QApplication::processEvents();

    EXPECT_EQ(d_page.Group_Names(), QStringList("Gauge"));
    EXPECT_EQ(Entries(), QStringList("Gauge"));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Removes_nothing_while_no_group_is_selected)
{
    Fill();

    d_page.Remove_Selected_Groups();

    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 0);
}

// Renaming in place

TEST_F(ReportGroupWidget, Renames_a_group_in_its_entry_and_keeps_its_members)
{
    Fill();

    Rename_In_Place(0, "Steel tape");

    EXPECT_THAT(d_page.Groups(),
                ElementsAre(Is_Group("Steel tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList({"Steel tape", "Gauge"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Puts_the_next_edit_into_the_renamed_group)
{
    Fill();
    Rename_In_Place(0, "Steel tape");

    Click_Component(1);

    EXPECT_THAT(d_page.Group(0), Is_Group("Steel tape", {"Probe", "Scale", "Thermometer"}));
}

TEST_F(ReportGroupWidget, Renames_the_same_group_twice)
{
    Fill();

    Rename_In_Place(0, "Steel tape");
    Rename_In_Place(0, "Tape");

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 2);
}

TEST_F(ReportGroupWidget, Emits_nothing_when_a_group_is_renamed_to_the_same_text)
{
    Fill();

    Rename_In_Place(0, "Tape");

    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Renames_to_a_name_that_differs_only_in_case)
{
    Fill();

    Rename_In_Place(0, "GAUGE");
    Rename_In_Place(1, "gauge");

    EXPECT_EQ(d_page.Group_Names(), QStringList({"GAUGE", "gauge"}));
    EXPECT_EQ(Changes(), 2);
}

TEST_F(ReportGroupWidget, Takes_control_characters_out_of_a_new_name)
{
    Fill();

    Rename_In_Place(0, QString("Ro\u0001d"));

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge"}));
}

TEST_F(ReportGroupWidget, Renames_nothing_when_the_edit_is_given_up)
{
    Fill();
    Begin_Rename(0, "Rod");

    QTest::keyClick(Open_Editor(), Qt::Key_Escape);

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Entries(), QStringList({"Tape", "Gauge"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Renames_when_another_group_is_clicked_during_the_edit)
{
    Fill();
    Begin_Rename(0, "Rod");

    Click_Group(1);
    QApplication::processEvents();

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Rod", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Selected_Components(), QStringList("Scale"));
    EXPECT_EQ(Changes(), 1);

    Click_Component(3);
    EXPECT_THAT(d_page.Group(1), Is_Group("Gauge", {"Scale", "Thermometer"}));
}

TEST_F(ReportGroupWidget, Keeps_a_group_selected_that_is_being_renamed)
{
    Fill();
    Begin_Rename(0, "Rod");

    QTest::keyClick(Open_Editor(), Qt::Key_Space, Qt::ControlModifier);
    QTest::keyClick(Open_Editor(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Open_Editor() == nullptr; }));

    EXPECT_EQ(d_page.Group_Names(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Thermometer"}));
}

TEST_F(ReportGroupWidget, Puts_a_component_clicked_during_the_edit_into_the_renamed_group)
{
    Fill();
    Begin_Rename(0, "Rod");

    Click_Component(1);

    EXPECT_THAT(d_page.Groups(),
                ElementsAre(Is_Group("Rod", {"Probe", "Scale", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Changes(), 2);
}

struct TLeavingKey
{
    const char* case_name;
    Qt::Key key;
};

void PrintTo(const TLeavingKey& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class ReportGroupWidgetLeavingKey : public ReportGroupWidget, public ::testing::WithParamInterface<TLeavingKey>
{};

TEST_P(ReportGroupWidgetLeavingKey, Renames_the_group_and_goes_on_to_the_next)
{
    Fill();
    Begin_Rename(0, "Rod");

    QTest::keyClick(Open_Editor(), GetParam().key);
    QApplication::processEvents();
    Click_Component(3);

    EXPECT_THAT(d_page.Groups(),
                ElementsAre(Is_Group("Rod", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale", "Thermometer"})));
    EXPECT_EQ(Entries(), QStringList({"Rod", "Gauge"}));
    EXPECT_EQ(Changes(), 2);
}

INSTANTIATE_TEST_SUITE_P(, ReportGroupWidgetLeavingKey,
                         ::testing::Values(TLeavingKey{"Tab", Qt::Key_Tab}, TLeavingKey{"Down", Qt::Key_Down}),
                         [](const auto& row) { return row.param.case_name; });

TEST_F(ReportGroupWidget, Renames_by_a_double_click)
{
    Fill();
    Click_Group(1);
    QTest::mouseDClick(Group_List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       Group_List()->visualItemRect(Group_List()->item(1)).center());
    ASSERT_NE(Open_Editor(), nullptr);
    QTest::keyClicks(Open_Editor(), "Rod");
    QTest::keyClick(Open_Editor(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Open_Editor() == nullptr; }));

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Rod", {"Scale"})));
    EXPECT_EQ(Entries(), QStringList({"Tape", "Rod"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Edits_no_entry_while_two_groups_are_selected)
{
    Fill();
    Click_Group(0);
    Click_Group(1, Qt::ControlModifier);

    QTest::keyClick(Group_List(), Qt::Key_F2);

    EXPECT_EQ(Open_Editor(), nullptr);
}

// Selecting groups

TEST_F(ReportGroupWidget, Shows_the_members_of_the_one_selected_group)
{
    Fill();

    Click_Group(0);
    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Thermometer"}));
    EXPECT_TRUE(Component_List()->isEnabled());
    EXPECT_TRUE(Button("remove_group")->isEnabled());

    Click_Group(1);
    EXPECT_EQ(Selected_Components(), QStringList("Scale"));
    EXPECT_TRUE(Component_List()->isEnabled());
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Disables_the_components_while_two_groups_are_selected)
{
    Fill();
    Click_Group(0);

    Click_Group(1, Qt::ControlModifier);

    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_TRUE(Button("remove_group")->isEnabled());
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Disables_components_and_removal_once_no_group_is_selected)
{
    Fill();
    Click_Group(0);

    Click_Group(0, Qt::ControlModifier);

    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_FALSE(Button("remove_group")->isEnabled());
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Hands_the_focus_of_the_components_to_the_groups_once_none_is_selected)
{
    Fill();
    Click_Group(0);
    Click_Component(1);
    ASSERT_TRUE(Component_List()->hasFocus());

    QTest::mouseClick(Button("remove_group"), Qt::LeftButton);

    EXPECT_FALSE(Component_List()->isEnabled());
    EXPECT_TRUE(Group_List()->hasFocus());
}

// Selecting components

TEST_F(ReportGroupWidget, Adds_a_clicked_component_to_the_selected_group_in_the_order_of_the_list)
{
    Fill();
    Click_Group(1);

    Click_Component(3);
    Click_Component(0);

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}),
                                             Is_Group("Gauge", {"Probe", "Scale", "Thermometer"})));
    EXPECT_EQ(Changes(), 2);
}

TEST_F(ReportGroupWidget, Takes_a_component_clicked_again_out_of_the_selected_group)
{
    Fill();
    Click_Group(0);

    Click_Component(0);

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Lists_a_member_once_although_it_is_offered_twice)
{
    d_page.Update_Reportable_Components({"Probe", "Scale", "Probe"});
    d_page.Set_Groups({{"Tape", {}}});
    Click_Group(0);

    Click_Component(2);
    Click_Component(0);

    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe"})));
}

TEST_F(ReportGroupWidget, Toggles_a_component_from_the_keyboard)
{
    Fill();
    Click_Group(1);
    Component_List()->setFocus();

    QTest::keyClick(Component_List(), Qt::Key_End);
    QTest::keyClick(Component_List(), Qt::Key_Space);

    EXPECT_THAT(d_page.Group(1), Is_Group("Gauge", {"Scale", "Thermometer"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(ReportGroupWidget, Finds_a_component_by_its_first_letters_and_leaves_the_members_alone)
{
    Fill();
    Click_Group(0);
    Component_List()->setFocus();

    QTest::keyClicks(Component_List(), "the");

    EXPECT_EQ(Component_List()->currentRow(), 3);
    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Thermometer"}));
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Clears_a_selection_of_components_that_belongs_to_no_group)
{
    Fill();

    Component_List()->item(1)->setSelected(true);

    EXPECT_EQ(Selected_Components(), QStringList());
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(ReportGroupWidget, Leaves_two_selected_groups_alone_when_the_selection_of_components_changes)
{
    Fill();
    Click_Group(0);
    Click_Group(1, Qt::ControlModifier);

    Component_List()->item(1)->setSelected(true);

    EXPECT_EQ(Selected_Components(), QStringList({"Probe", "Scale", "Thermometer"}));
    EXPECT_THAT(d_page.Groups(), ElementsAre(Is_Group("Tape", {"Probe", "Thermometer"}), Is_Group("Gauge", {"Scale"})));
    EXPECT_EQ(Changes(), 0);
}

} // namespace
