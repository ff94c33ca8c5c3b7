#include "src/budgettree.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

const char* const TWO_LINES = "Probe\u2028of the machine";

// A root "Budget" with the entry "Probe" and, below it, "Drift".
class TBudgetTreeTest : public ::testing::Test
{
protected:
    TBudgetTreeTest()
    {
        d_tree.resize(300, 300);
        d_tree.addTopLevelItem(New_Branch("Probe"));
        d_tree.expandAll();
        Show_Active(&d_tree);
    }

    static QTreeWidgetItem* New_Branch(const QString& component)
    {
        auto* root = new QTreeWidgetItem(QStringList("Budget"));
        root->addChild(new QTreeWidgetItem(QStringList(component)));
        root->child(0)->addChild(new QTreeWidgetItem(QStringList("Drift")));
        return root;
    }

    QTreeWidgetItem* Root() const { return d_tree.topLevelItem(0); }

    int Height(const QTreeWidgetItem* entry) const { return d_tree.visualItemRect(entry).height(); }

    // Whether that entry alone is higher than one line, and the next one stands below it.
    bool Has_Two_Lines(const QTreeWidgetItem* entry)
    {
        const QTreeWidgetItem* next = d_tree.itemBelow(entry);
        return Height(entry) > Height(Root()) && Height(next) == Height(Root()) &&
               d_tree.visualItemRect(next).top() > d_tree.visualItemRect(entry).bottom();
    }

    TBudgetTree d_tree;
};

TEST_F(TBudgetTreeTest, Does_not_measure_each_entry_of_latin_letters)
{
    Root()->addChild(new QTreeWidgetItem(QStringList("M\u00fcller's 2 \u00b5m ~")));

    EXPECT_TRUE(d_tree.uniformRowHeights());
}

TEST_F(TBudgetTreeTest, Measures_the_entries_when_another_script_is_among_them)
{
    Root()->child(0)->addChild(new QTreeWidgetItem(QStringList("\u03bb")));

    EXPECT_FALSE(d_tree.uniformRowHeights());
}

TEST_F(TBudgetTreeTest, An_added_entry_of_two_lines_is_so_high)
{
    Root()->insertChild(0, new QTreeWidgetItem(QStringList(TWO_LINES)));

    EXPECT_TRUE(Has_Two_Lines(Root()->child(0)));
}

TEST_F(TBudgetTreeTest, An_entry_of_two_lines_that_comes_with_its_root_is_so_high)
{
    d_tree.clear();
    d_tree.addTopLevelItem(New_Branch(TWO_LINES));
    d_tree.expandAll();

    EXPECT_TRUE(Has_Two_Lines(Root()->child(0)));
}

TEST_F(TBudgetTreeTest, An_entry_that_gets_a_second_line_grows)
{
    Root()->child(0)->setText(0, TWO_LINES);

    EXPECT_TRUE(Has_Two_Lines(Root()->child(0)));
}

TEST_F(TBudgetTreeTest, An_entry_that_gets_a_second_line_pushes_the_last_one_out_of_sight)
{
    d_tree.resize(300, 3 * Height(Root()) + 2 * d_tree.frameWidth());
    ASSERT_EQ(d_tree.verticalScrollBar()->maximum(), 0);

    Root()->child(0)->setText(0, TWO_LINES);

    EXPECT_TRUE(QTest::qWaitFor([this] { return d_tree.verticalScrollBar()->maximum() > 0; }));
}

TEST_F(TBudgetTreeTest, An_open_editor_shows_the_second_line_that_its_entry_gets)
{
    QTreeWidgetItem* entry = Root()->child(0);
    entry->setFlags(entry->flags() | Qt::ItemIsEditable);
    d_tree.editItem(entry);
    auto* editor = Open_Editor(&d_tree);
    ASSERT_NE(editor, nullptr);

    entry->setText(0, TWO_LINES);

    EXPECT_EQ(editor->text(), TWO_LINES);
}

TEST_F(TBudgetTreeTest, Measures_no_more_once_it_was_cleared)
{
    Root()->child(0)->setText(0, TWO_LINES);
    d_tree.clear();
    d_tree.addTopLevelItem(New_Branch("Probe"));

    EXPECT_TRUE(d_tree.uniformRowHeights());
}

} // namespace
