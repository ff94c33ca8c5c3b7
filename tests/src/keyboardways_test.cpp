#include "tests/support/filledpages.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QTabBar>
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

    // Renames the entry that has the focus.
    void Rename_Entry_To(const QString& name)
    {
        Press(Qt::Key_F2);
        const QPointer<QWidget> editor = QApplication::focusWidget();
        Type_Text(editor, name);
        Press(Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return editor.isNull(); }));
    }

    // Opens a menu of the menu bar and goes down to that entry of it, without choosing it.
    void Go_To_In_Menu(const QString& menu, const QString& entry)
    {
        QTest::keyClick(&d_editor, Qt::Key_Alt);
        Press(Qt::Key_Down);
        for (int step = 0; step < 3 && Open_Menu_Title() != menu; ++step) {
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Right);
        }
        ASSERT_EQ(Open_Menu_Title(), menu);
        for (int step = 0; step < 10 && Active_Entry() != entry; ++step) {
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
        }
        ASSERT_EQ(Active_Entry(), entry);
    }

    static void Choose_Active_Entry() { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return); }

    static QMenu* Open_Menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    static QString Open_Menu_Title() { return Open_Menu() == nullptr ? QString() : Open_Menu()->title(); }

    static QString Active_Entry()
    {
        const QAction* action = Open_Menu() == nullptr ? nullptr : Open_Menu()->activeAction();
        return action == nullptr ? QString() : action->text().remove('&');
    }

    // The names in the first column of the list of variables.
    QStringList Own_Variables() const
    {
        const auto* list = Find<QTreeWidget>("variable_list");
        QStringList names;
        for (int row = 10; row < list->topLevelItemCount(); ++row) {
            names << list->topLevelItem(row)->text(0);
        }
        return names;
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
    EXPECT_EQ(QApplication::focusWidget(), Tree());

    d_answer.Press(Qt::Key_Y);
    Go_To("remove_budget_item");
    Press(Qt::Key_Space);
    EXPECT_FALSE(Tree_Text().contains("Anvil"));
    EXPECT_EQ(QApplication::focusWidget(), Tree());
}

TEST_F(TKeyboardWays, F2_renames_an_identifier)
{
    Tree()->setFocus();
    Go_To("identifier_list");
    Rename_Entry_To("CMM 3");

    const auto* list = Find<QListWidget>("identifier_list");
    EXPECT_EQ(list->item(0)->text(), "CMM 1");
    EXPECT_EQ(list->item(1)->text(), "CMM 3");
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

// The menus

struct TMenuEntry
{
    const char* menu;
    const char* entry;
};

class TKeyboardMenu : public TKeyboardWays, public ::testing::WithParamInterface<TMenuEntry>
{};

TEST_P(TKeyboardMenu, Is_opened_by_the_Alt_key_and_left_by_Escape)
{
    Go_To_In_Menu(GetParam().menu, GetParam().entry);

    QTest::keyClick(Open_Menu(), Qt::Key_Escape);

    EXPECT_EQ(Open_Menu(), nullptr);
}

const TMenuEntry MENU_ENTRIES[] = {
    {"File", "New..."},
    {"File", "Save As"},
    {"File", "Exit Program"},
    {"Edit", "Add Budget Item"},
    {"Edit", "Remove Budget Item"},
    {"View", "Budget Components"},
    {"View", "Log"},
};

INSTANTIATE_TEST_SUITE_P(, TKeyboardMenu, ::testing::ValuesIn(MENU_ENTRIES), [](const auto& row) {
    return QString("%1_%2").arg(row.param.menu, row.param.entry).remove(' ').remove('.').toStdString();
});

TEST_F(TKeyboardWays, A_budget_is_saved_under_a_name_by_the_menu)
{
    Go_To_In_Menu("File", "Save As");
    d_answer.Choose_File(Path("copy.norvexa"));

    Choose_Active_Entry();

    EXPECT_FALSE(Read_Budget(Path("copy.norvexa")).groups.empty());
}

TEST_F(TKeyboardWays, A_component_is_added_by_the_menu)
{
    Tree()->setFocus();
    Press(Qt::Key_Home);
    Go_To_In_Menu("Edit", "Add Budget Item");
    d_answer.Type_Name("Anvil");

    Choose_Active_Entry();

    EXPECT_EQ(Selected_Entries(), QStringList("Anvil"));
}

// The other controls

TEST_F(TKeyboardWays, The_arrow_keys_turn_the_pages)
{
    Tree()->setFocus();
    Go_To("qt_tabwidget_tabbar");

    Press(Qt::Key_Right);
    EXPECT_EQ(Page(), "Variables");
    Press(Qt::Key_Left);
    EXPECT_EQ(Page(), "Budget Components");
}

TEST_F(TKeyboardWays, F2_renames_an_entry_of_the_tree)
{
    Tree()->setFocus();
    Rename_Entry_To("Error of indication");

    EXPECT_EQ(Selected_Entries(), QStringList("Error of indication"));
}

TEST_F(TKeyboardWays, The_buttons_of_the_identifiers_work_with_the_space_bar)
{
    const auto* list = Find<QListWidget>("identifier_list");
    Tree()->setFocus();
    d_answer.Type_Name("CMM 3");
    Go_To("add_identifier");
    Press(Qt::Key_Space);
    EXPECT_EQ(list->count(), 3);

    d_answer.Press(Qt::Key_Y);
    Go_To("identifier_list");
    Press(Qt::Key_Home);
    Go_To("remove_identifier");
    Press(Qt::Key_Space);
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), "CMM 2");
    EXPECT_EQ(QApplication::focusWidget(), list);
}

TEST_F(TKeyboardWays, The_arrow_keys_change_a_date)
{
    const auto* date = Find<QDateEdit>("calibration_date");
    const QDate before = date->date();
    Tree()->setFocus();
    Go_To("calibration_date");

    Press(Qt::Key_Up);

    EXPECT_NE(date->date(), before);
}

TEST_F(TKeyboardWays, The_arrow_keys_choose_a_type)
{
    Tree()->setFocus();
    Go_To("distribution");
    Press(Qt::Key_Home);

    Press(Qt::Key_Down);

    EXPECT_EQ(Find<QComboBox>("distribution")->currentIndex(), 1);
}

TEST_F(TKeyboardWays, The_arrow_keys_go_to_the_other_radio_button_of_a_pair)
{
    const QList<QPair<const char*, const char*>> pairs = {
        {"mode_single", "mode_sum"}, {"length_independent", "length_dependent"}, {"linear", "temperature"}};

    for (const auto& pair : pairs) {
        auto* first = Find<QRadioButton>(pair.first);
        auto* second = Find<QRadioButton>(pair.second);
        const QRadioButton* unchecked = first->isChecked() ? second : first;
        Tree()->setFocus();
        Go_To(first->isChecked() ? pair.first : pair.second);

        Press(first->isChecked() ? Qt::Key_Down : Qt::Key_Up);

        EXPECT_TRUE(unchecked->isChecked()) << pair.first;
        EXPECT_EQ(QApplication::focusWidget(), unchecked);
    }
}

TEST_F(TKeyboardWays, The_space_bar_ticks_a_box)
{
    for (const char* name : {"mode_export_equipment", "mode_limit_length", "use_default_expression"}) {
        const auto* box = Find<QCheckBox>(name);
        const bool was_ticked = box->isChecked();
        Tree()->setFocus();
        Go_To(name);

        Press(Qt::Key_Space);

        EXPECT_EQ(box->isChecked(), !was_ticked) << name;
    }
}

TEST_F(TKeyboardWays, The_buttons_of_the_variables_work_with_the_space_bar)
{
    Press(Qt::Key_V, Qt::AltModifier);
    ASSERT_EQ(Own_Variables(), QStringList("Tunc"));
    Find<QTreeWidget>("variable_list")->setFocus();
    d_answer.Type_Name("Wear");
    Go_To("add_variable");
    Press(Qt::Key_Space);
    EXPECT_EQ(Own_Variables(), QStringList({"Tunc", "Wear"}));

    Find<QTreeWidget>("variable_list")->setFocus();
    Press(Qt::Key_End);
    d_answer.Type_Name("Drift");
    Go_To("rename_variable");
    Press(Qt::Key_Space);
    EXPECT_EQ(Own_Variables(), QStringList({"Tunc", "Drift"}));

    Go_To("remove_variable");
    Press(Qt::Key_Space);
    EXPECT_EQ(Own_Variables(), QStringList("Tunc"));
}

TEST_F(TKeyboardWays, Groups_are_added_renamed_and_removed)
{
    Press(Qt::Key_G, Qt::AltModifier);
    const QStringList groups = Groups();
    Find<QListWidget>("group_list")->setFocus();
    d_answer.Type_Name("Stylus");
    Go_To("add_group");
    Press(Qt::Key_Space);
    EXPECT_EQ(Groups(), groups + QStringList("Stylus"));

    Go_To("group_list");
    Press(Qt::Key_End);
    Rename_Entry_To("Tip");
    EXPECT_EQ(Groups(), groups + QStringList("Tip"));

    Go_To("remove_group");
    Press(Qt::Key_Space);
    EXPECT_EQ(Groups(), groups);
    EXPECT_EQ(QApplication::focusWidget(), Find<QListWidget>("group_list"));
}

TEST_F(TKeyboardWays, A_report_is_exported_with_the_space_bar)
{
    Press(Qt::Key_R, Qt::AltModifier);
    for (const char* suffix : {"csv", "pdf"}) {
        const QString path = Path(QString("report.%1").arg(suffix));
        Find<QComboBox>("report_group")->setFocus();
        Go_To(QString("export_%1").arg(suffix));
        d_answer.Choose_File(path);

        Press(Qt::Key_Space);

        EXPECT_TRUE(QFile::exists(path)) << suffix;
    }
}

TEST_F(TKeyboardWays, The_log_is_reached_with_Tab)
{
    Press(Qt::Key_L, Qt::AltModifier);
    Find<QTabWidget>("pages")->tabBar()->setFocus();

    Go_To("log");

    EXPECT_TRUE(Find<QPlainTextEdit>("log")->hasFocus());
}

} // namespace
