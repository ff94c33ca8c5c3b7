#pragma once

#include "src/norvexa.h"
#include "src/norvexaeditor.h"
#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

class QAction;
class QPlainTextEdit;
class QTreeWidget;

/// What a budget file holds.
struct TBudgetFile
{
    TNorvexa document;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;
};

/// Components "Probe" (items "Repeatability" and "Resolution", identifier "SN 1") and "Scale" (item "Drift"), the group
/// "Length" of both, the user variable "Wear" for "Probe", and a report that ends at 500 mm.
TBudgetFile Sample_Budget();

/// The whole file as lines: components with all their records, variables (the built-in ones too, as saving writes
/// them), groups and inputs.
QStringList Budget_File_Text(const TBudgetFile& budget);

/// Writes and reads a file past the window. What fails is reported by std::runtime_error.
void Write_Budget(const TBudgetFile& budget, const QString& path);
TBudgetFile Read_Budget(const QString& path);

/// The main window, shown and active, with a folder for its files. Every act is one of mouse or keyboard on the widgets
/// that the user sees; the dialogs that it opens are answered by `d_answer`, armed before:
///
///     d_answer.Click(QMessageBox::No);
///     Click_Tool("action_new");
///     EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
///
/// A dialog that no answer was armed for, and an answer without its dialog, fail the test.
class TEditorFixture : public ::testing::Test
{
protected:
    TEditorFixture();

    // What is there

    /// The widget of that object name in the window; never null.
    template <typename T>
    T* Find(const QString& object_name) const
    {
        return Child<T>(&d_editor, object_name);
    }

    QAction* Action(const QString& object_name) const;
    QTreeWidget* Tree() const;

    /// The tree as nested names in the order shown: "Norvexa Data(Probe(Repeatability, Resolution), Scale())".
    QString Tree_Text() const;

    /// The names of the selected entries of the tree.
    QStringList Selected_Entries() const;

    /// The label of the page in front.
    QString Page() const;

    /// The labels of the page actions that are checked.
    QStringList Checked_Pages() const;

    QString Log() const;

    /// Which of Save and Save As can be used: "Save, Save As", "Save As" or "".
    QString Saving() const;

    /// The entries of the groups page, of the report page's group box, and of the groups page's available components.
    QStringList Groups() const;
    QStringList Offered_Groups() const;
    QStringList Available_Components() const;

    QString Path(const QString& name) const;

    // Acts

    /// Clicks the button of an action in the tool bar.
    void Click_Tool(const QString& action);

    /// Opens a menu of the menu bar and clicks the entry of that text (without its mnemonic).
    void Choose_In_Menu(const QString& menu, const QString& entry);

    /// Presses a key in the widget that has the focus.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Selects one entry of the tree by a click.
    void Select_Entry(const QString& name);

    /// Selects the root or a component, clicks the add button and types the name. The answer is armed here.
    void Add_Component(const QString& name);
    void Add_Item(const QString& component, const QString& name);

    /// Drags files over `target` (the window if null) and drops them where the drag was accepted. Returns whether it
    /// was.
    bool Drop_Files(const QStringList& paths, QWidget* target = nullptr);
    bool Drop_Data(const QMimeData& data, QWidget* target = nullptr);

    /// Writes a budget into the folder and drops its file on the window.
    QString Open_Budget(const TBudgetFile& budget, const QString& name = "budget.norvexa");

    /// Saves under a name through the tool bar and the dialog.
    void Save_As(const QString& path);

    QTemporaryDir d_folder;
    TNorvexaEditor d_editor;
    TModalAnswer d_answer;
};
