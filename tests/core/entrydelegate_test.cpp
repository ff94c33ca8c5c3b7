#include "core/entrydelegate.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace {

// A list as the pages have one: it keeps the names of its records and renames them in place.
class TEntryDelegateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        d_list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        d_list.setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
        for (const QString& name : d_names) {
            auto* item = new QListWidgetItem(name, &d_list);
            item->setFlags(item->flags() | Qt::ItemIsEditable);
        }
        QObject::connect(d_delegate, &TEntryDelegate::commitData, &d_list, [this]() { Rename(); });
        Show_Active(&d_list);
    }

    // The rename slot of a page: refuses a name that another record has.
    void Rename()
    {
        const QString old_name = d_delegate->Edited_Name();
        const QString new_name = d_delegate->Entered_Name();

        if (new_name == old_name) {
            return;
        }
        if (d_names.contains(new_name)) {
            d_delegate->Refuse_Rename();
            return;
        }
        d_renames += old_name + " -> " + new_name;
        d_names.replaceInStrings(old_name, new_name);
        d_delegate->Accept_Rename();
    }

    QStringList Shown() const
    {
        QStringList names;
        for (int row = 0; row < d_list.count(); ++row) {
            names += d_list.item(row)->text();
        }
        return names;
    }

    // Opens the editor of the selected entry by F2, and returns it, or null.
    QLineEdit* Edit()
    {
        QTest::keyClick(&d_list, Qt::Key_F2);
        return Open_Editor(&d_list);
    }

    /// Types the new name of an entry, and leaves its editor open.
    QLineEdit* Type_Over(const QString& name, const QString& new_name)
    {
        Click_Entry(&d_list, name);
        QLineEdit* editor = Edit();
        if (editor == nullptr) {
            Fail_Missing("editor of " + name);
        }
        Replace_Text(editor, new_name);
        return editor;
    }

    QListWidget d_list;
    TEntryDelegate* d_delegate = new TEntryDelegate(&d_list);
    QStringList d_names{"Alpha", "Beta", "Gamma"};
    QStringList d_renames;
};

TEST_F(TEntryDelegateTest, Is_the_delegate_and_the_child_of_its_view)
{
    EXPECT_EQ(d_list.itemDelegate(), d_delegate);
    EXPECT_EQ(d_delegate->parent(), &d_list);
}

TEST_F(TEntryDelegateTest, Renames_the_selected_entry)
{
    Rename_Entry(&d_list, "Beta", "Delta");

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Delta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
    EXPECT_EQ(d_delegate->Edited_Index(), d_list.model()->index(1, 0));
}

TEST_F(TEntryDelegateTest, The_editor_starts_with_the_name)
{
    Click_Entry(&d_list, "Beta");
    const auto* editor = Edit();
    ASSERT_NE(editor, nullptr);

    EXPECT_EQ(editor->text(), "Beta");
    EXPECT_EQ(d_delegate->Edited_Name(), "Beta");
    EXPECT_EQ(d_delegate->Entered_Name(), "Beta");
}

TEST_F(TEntryDelegateTest, Escape_keeps_the_name)
{
    auto* editor = Type_Over("Beta", "Delta");
    QTest::keyClick(editor, Qt::Key_Escape);

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList());
}

TEST_F(TEntryDelegateTest, A_refused_rename_shows_the_old_name_again)
{
    Rename_Entry(&d_list, "Beta", "Gamma");

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList());
}

TEST_F(TEntryDelegateTest, An_entry_is_not_edited_while_several_are_selected)
{
    Click_Entry(&d_list, "Alpha");
    Click_Entry(&d_list, "Gamma", Qt::ControlModifier);

    EXPECT_EQ(Edit(), nullptr);
}

TEST_F(TEntryDelegateTest, An_entry_is_not_edited_while_none_is_selected)
{
    Click_Entry(&d_list, "Alpha");
    Click_Entry(&d_list, "Alpha", Qt::ControlModifier);
    ASSERT_EQ(d_list.currentItem()->text(), "Alpha");

    EXPECT_EQ(Edit(), nullptr);
}

TEST_F(TEntryDelegateTest, The_current_entry_is_not_edited_while_another_one_is_selected)
{
    Click_Entry(&d_list, "Alpha");
    d_list.setCurrentRow(2, QItemSelectionModel::NoUpdate);

    EXPECT_EQ(Edit(), nullptr);
}

TEST_F(TEntryDelegateTest, A_sorted_list_moves_the_row_and_the_entry_is_still_known)
{
    d_list.setSortingEnabled(true);

    Rename_Entry(&d_list, "Alpha", "Zeta");

    EXPECT_EQ(Shown(), QStringList({"Beta", "Gamma", "Zeta"}));
    EXPECT_EQ(d_renames, QStringList("Alpha -> Zeta"));
    EXPECT_EQ(d_delegate->Edited_Index(), d_list.model()->index(2, 0));
}

TEST_F(TEntryDelegateTest, A_refused_rename_moves_the_row_of_a_sorted_list_back)
{
    d_list.setSortingEnabled(true);

    Rename_Entry(&d_list, "Alpha", "Gamma");

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(d_delegate->Edited_Index(), d_list.model()->index(0, 0));
}

TEST_F(TEntryDelegateTest, A_second_commit_of_the_same_editor_is_harmless)
{
    auto* editor = Type_Over("Beta", "Delta");

    emit d_delegate->commitData(editor);
    emit d_delegate->commitData(editor);
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Delta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
}

TEST_F(TEntryDelegateTest, A_second_commit_of_a_refused_name_is_refused_again)
{
    auto* editor = Type_Over("Beta", "Gamma");

    emit d_delegate->commitData(editor);
    emit d_delegate->commitData(editor);

    EXPECT_EQ(Shown(), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList());
}

struct TMovingKey
{
    const char* case_name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
};

class TEntryDelegateMovingKey : public TEntryDelegateTest, public ::testing::WithParamInterface<TMovingKey>
{};

TEST_P(TEntryDelegateMovingKey, Commits_the_rename)
{
    new QListWidgetItem(" Omega", &d_list);
    auto* editor = Type_Over("Beta", "Delta");

    QTest::keyClick(editor, GetParam().key, GetParam().modifiers);

    EXPECT_NE(d_list.currentItem()->text(), "Delta");
    EXPECT_EQ(Shown(), QStringList({"Alpha", "Delta", "Gamma", " Omega"}));
    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
}

INSTANTIATE_TEST_SUITE_P(, TEntryDelegateMovingKey,
                         ::testing::Values(TMovingKey{"Up", Qt::Key_Up, Qt::NoModifier},
                                           TMovingKey{"Down", Qt::Key_Down, Qt::NoModifier},
                                           TMovingKey{"Shift_Down", Qt::Key_Down, Qt::ShiftModifier},
                                           TMovingKey{"Page_Down", Qt::Key_PageDown, Qt::NoModifier},
                                           TMovingKey{"Ctrl_End", Qt::Key_End, Qt::ControlModifier},
                                           TMovingKey{"Ctrl_Home", Qt::Key_Home, Qt::ControlModifier}),
                         [](const auto& row) { return row.param.case_name; });

// The view would search for an entry that begins with a blank, and go there.
TEST_F(TEntryDelegateTest, The_key_that_selects_is_not_the_views_while_a_name_is_typed)
{
    new QListWidgetItem(" Omega", &d_list);
    auto* editor = Type_Over("Beta", "Delta");

    QTest::keyClick(editor, Qt::Key_Space, Qt::ControlModifier);

    EXPECT_EQ(Open_Editor(&d_list), editor);
    EXPECT_EQ(editor->text(), "Delta");
    EXPECT_EQ(Shown(), QStringList({"Alpha", "Beta", "Gamma", " Omega"}));
    EXPECT_TRUE(d_list.item(1)->isSelected());

    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(&d_list) == nullptr; }));
    EXPECT_EQ(Shown(), QStringList({"Alpha", "Delta", "Gamma", " Omega"}));
    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
}

TEST_F(TEntryDelegateTest, Clicking_another_entry_commits_the_rename_of_the_first)
{
    Type_Over("Alpha", "Delta");

    Click_Entry(&d_list, "Beta");

    EXPECT_EQ(Shown(), QStringList({"Delta", "Beta", "Gamma"}));
    EXPECT_EQ(d_renames, QStringList("Alpha -> Delta"));
}

TEST_F(TEntryDelegateTest, A_rename_is_committed_when_the_focus_is_taken_away)
{
    Type_Over("Beta", "Delta");

    QApplication::focusWidget()->clearFocus();

    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
}

TEST_F(TEntryDelegateTest, Clearing_the_list_while_an_entry_is_edited_renames_nothing)
{
    Type_Over("Beta", "Delta");

    d_list.clear();
    d_delegate->Refuse_Rename(); // must not touch what is gone

    EXPECT_EQ(d_renames, QStringList());
    EXPECT_FALSE(d_delegate->Edited_Index().isValid());
    EXPECT_EQ(d_delegate->Entered_Name(), "");
}

TEST_F(TEntryDelegateTest, Characters_that_no_file_can_carry_are_taken_out)
{
    Click_Entry(&d_list, "Beta");
    auto* editor = Edit();
    ASSERT_NE(editor, nullptr);
    Paste_Text(editor, QString("De") + QChar(0x01) + "lta");
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this]() { return Open_Editor(&d_list) == nullptr; }));

    EXPECT_EQ(d_renames, QStringList("Beta -> Delta"));
    EXPECT_EQ(Shown(), QStringList({"Alpha", "Delta", "Gamma"}));
}

TEST_F(TEntryDelegateTest, An_entry_that_is_a_number_stays_one)
{
    auto* item = d_list.item(1);
    item->setData(Qt::EditRole, 5);
    Click_Entry(&d_list, "5");
    QTest::keyClick(&d_list, Qt::Key_F2);
    auto* editor = Open_Editor<QSpinBox>(&d_list);
    ASSERT_NE(editor, nullptr);

    QTest::keyClick(editor, Qt::Key_Up);
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_TRUE(QTest::qWaitFor([this]() { return Open_Editor<QSpinBox>(&d_list) == nullptr; }));
    EXPECT_EQ(item->data(Qt::EditRole), QVariant(6));
}

TEST(TEntryDelegate, Renames_entries_on_every_level_of_a_tree)
{
    QTreeWidget tree;
    auto* root = new QTreeWidgetItem(&tree, {"Root"});
    auto* leaf = new QTreeWidgetItem(root, {"Leaf"});
    leaf->setFlags(leaf->flags() | Qt::ItemIsEditable);
    tree.expandAll();
    const auto* delegate = new TEntryDelegate(&tree);
    Show_Active(&tree);

    Rename_Entry(&tree, "Leaf", "Twig");

    EXPECT_EQ(leaf->text(0), "Twig");
    EXPECT_EQ(delegate->Edited_Name(), "Leaf");
    EXPECT_EQ(delegate->Entered_Name(), "Twig");
}

} // namespace
