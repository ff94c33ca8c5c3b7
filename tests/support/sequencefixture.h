#pragma once

#include "tests/support/exportfixture.h"

#include <QStringList>

class QComboBox;
struct TBudget;

/// The main window for whole sequences of acts, on every page. After each sequence Check() proves that nothing was lost
/// or broken on the way:
///
///     Open_Budget(budget);
///     Rename("Probe", "Feeler");
///     EXPECT_EQ(Check(), Model_Of(expected));
class TSequenceFixture : public TExportFixture
{
protected:
    // What is there

    /// Whether the lists of components on the pages of variables and groups name the components as the tree does. A
    /// rename in the tree leaves them as they were until they are filled anew.
    enum class TLists
    {
        Filled,
        Stale
    };

    /// After a sequence that ends with an edit: the budget as the window saves it, in lines like those of Model_Of().
    /// Expects on the way that
    /// - the window is there, takes input and offers to save;
    /// - every page shows what is saved, that of a selected component or item its values;
    /// - a fresh window loads the file, shows the same and saves it again with nothing lost. Each save escapes the
    ///   signs & < > " in texts once more.
    QStringList Check(TLists lists = TLists::Filled);

    /// The same after a sequence that leaves the budget as it was opened or saved last.
    QStringList Check_Unchanged(TLists lists = TLists::Filled);

    /// The same after a sequence that leaves a new budget.
    QStringList Check_New();

    /// What Check() gives for a budget whose texts need no escape.
    static QStringList Model_Of(const TBudgetFile& budget);

    /// Workshop_Budget() with "Probe" alone in its group, so that the group can be reported.
    static TBudgetFile Linear_Workshop();

    QTreeWidget* Variables() const;
    QTreeWidget* Report_Rows() const;

    /// The rows of the variables that are the user's own: "Wear: Probe".
    QStringList User_Variables() const;

    /// The rows of the report, their columns separated by bars.
    QStringList Report_Table() const;

    /// The selected entries of the groups page: group names, then a bar, then components.
    QString Selected_On_Groups_Page() const;

    // Acts

    void Add_Variable(const QString& name);
    void Rename_Variable(const QString& name, const QString& new_name);
    void Remove_Variable(const QString& name);

    /// Opens the selection list of a variable's row.
    QComboBox* Open_Selection(const QString& variable);
    void Choose_Component(const QString& variable, const QString& component);

    void Add_Group(const QString& name);
    void Select_Group(const QString& name);

    /// Turns to each page and clicks each entry of the tree, of the identifiers of each, of the variables, and of the
    /// groups.
    void Click_Everything();

private:
    QString Save_A_Copy(TNorvexaEditor* window, const QString& name);
    static void Expect_Shown(const TNorvexaEditor* window, const TBudget& saved, TLists lists);
    QStringList Checked(TLists lists);

    int d_checks = 0;
};

void Write_Bytes(const QString& path, const QByteArray& bytes);
