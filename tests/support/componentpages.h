#pragma once

#include "tests/support/editorfixture.h"

#include <QMessageBox>

#include <functional>

class QAbstractItemView;
class QDateEdit;
class QListWidget;

/// Component "Probe", combined: items "Repeatability" (0.003; replaced by 0.001 for "SN 1", while "SN 2" has 0.002 but
/// uses the default) and "Resolution" (0.004; both identifiers use the default), identifiers "SN 1" with dates and
/// "SN 2" with free texts for them. Component "Scale", individual, with all its flags set: item "Drift", whose every
/// field differs from the defaults.
TBudgetFile Workshop_Budget();

/// Change one record of a document in place; the names must exist.
void Change_Component(TNorvexa* document, const QString& component,
                      const std::function<void(TNorvexaData::TComponent*)>& change);
void Change_Identifier(TNorvexa* document, const QString& component, const QString& identifier,
                       const std::function<void(TNorvexaData::TComponentInstance*)>& change);
void Change_Item(TNorvexa* document, const QString& component, const QString& item,
                 const std::function<void(TNorvexaData::TComponentItem*)>& change);

/// What Saved_State() is for a window that shows this document: the tree with sorted entries, then all records.
QStringList State_Of(const TNorvexa& document);

/// The main window with the acts of the budget page: its tree, the component page and the component item page.
class TComponentPagesFixture : public TEditorFixture
{
protected:
    // What is there

    /// The tree as shown, then all records as a fresh document reads them from the file that is saved here.
    QStringList Saved_State();

    /// Tries to leave, and stays: modified data are asked about, others not.
    void Expect_Modified();
    void Expect_Unmodified();

    /// The component page in one line, selected identifiers with a star, or "disabled":
    /// "Probe: SN 1*, SN 2; Sun Nov 15 2026, Mon Nov 15 2027; 250.50000, 8.50; combined, hint, limit".
    QString Component_Page() const;

    /// The component item page in one line, what is disabled in parentheses, or "disabled":
    /// "Identifier: SN 1; Type B, Normal, 1.000000; 0.001, default off; independent linear; Uc = f(expression) mm".
    QString Item_Page() const;

    QListWidget* Identifiers() const;

    // Acts

    /// Types over the text of a line editor and presses Return.
    void Enter(const char* field, const QString& text);

    /// Clicks the text of a radio button or check box.
    void Click_Option(const char* option);

    /// Types a year over that of a date editor.
    void Enter_Year(const char* field, const char* year);

    void Rename(const QString& entry, const QString& name);
    void Remove_Entries(QMessageBox::StandardButton answer = QMessageBox::Yes);

    /// Opens the context menu over the selected entry of the tree and clicks an entry of it.
    void Choose_In_Context_Menu(const QString& text);

    /// Selects the entries of the tree: a click on the first, clicks with Ctrl on the others.
    void Select_Entries(const QStringList& names);

    void Select_Identifier(const QString& name);
    void Add_Identifier(const QString& name);
    void Rename_Identifier(const QString& name, const QString& new_name);
    void Remove_Identifiers(QMessageBox::StandardButton answer = QMessageBox::Yes);

private:
    int d_saved_files = 0;
};
