#pragma once

#include "tests/support/randombudget.h"

#include <QStringList>

class QMainWindow;
class TDialogs;
class TFiles;
class TMemory;

/// What must hold at any time: the budget can be saved, the pages show it, it comes back from its file, and no dialog
/// is left open. What the budget is, is what a save writes.
class TInspection
{
public:
    /// Keeps all of them.
    TInspection(QMainWindow* window, TDialogs* dialogs, const TFiles* files, TMemory* memory);

    /// Brings a report with rows to the front, if any group has them, and saves the budget of the window into a file of
    /// its own, which ends what is being edited. False if it could not be saved.
    bool Save();

    /// After saving: what is wrong, one line each; empty if nothing is.
    QStringList Findings(bool lists_are_stale);

    /// Whether there was a report with rows to look at.
    bool Has_Report() const { return d_has_report; }

    /// Whether its values were compared.
    bool Has_Values() const { return d_has_values; }

private:
    void Enable_Saving();
    bool Save_As(QMainWindow* window, const QString& path);
    QStringList Reopened(const TBudget& saved);
    QStringList Saved_Again(QMainWindow* window, const TBudget& saved);
    QStringList Left_Open() const;

    QMainWindow* d_window;
    TDialogs* d_dialogs;
    const TFiles* d_files;
    TMemory* d_memory;
    QString d_path;
    int d_page;
    bool d_has_report = false;
    bool d_has_values = false;
};
