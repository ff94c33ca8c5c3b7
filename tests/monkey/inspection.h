#pragma once

#include "tests/support/randombudget.h"

#include <QStringList>

class QMainWindow;
class TDialogs;
class TFiles;

/// What must hold at any time: the budget can be saved, the pages show it, it comes back from its file, and no dialog
/// is left open. What the budget is, is what a save writes.
class TInspection
{
public:
    /// Keeps all of them.
    TInspection(QMainWindow* window, TDialogs* dialogs, const TFiles* files);

    /// Saves the budget of the window into a file of its own, which ends what is being edited. False if it could not.
    bool Save();

    /// After saving: what is wrong, one line each; empty if nothing is.
    QStringList Findings(bool lists_are_stale);

private:
    void Show_Report();
    void Enable_Saving();
    bool Save_As(QMainWindow* window, const QString& path);
    QStringList Reopened(const TBudget& saved);
    QStringList Left_Open() const;

    QMainWindow* d_window;
    TDialogs* d_dialogs;
    const TFiles* d_files;
    QString d_path;
    int d_page;
};
