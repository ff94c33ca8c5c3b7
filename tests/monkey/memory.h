#pragma once

#include "tests/support/shownrecord.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QStringList>

class QMainWindow;
class TFiles;
struct TBudget;

/// What the monkey knows of its own edits, from what it typed and clicked and not from what the window says of them:
/// the last text or choice of each field and record, and whether something was typed that no file has. With it a change
/// that page and document lose together is found, and so is a typed text that goes without a question.
class TMemory
{
public:
    /// Keeps it: the folder in which the budgets are saved.
    explicit TMemory(const TFiles* files);

    /// Follows a new window, and forgets what it knew.
    void Watch(QMainWindow* window);

    // Within an event

    /// A file may take the place of the budget that is open.
    void File_May_Be_Opened();

    /// The loss of what is not saved was confirmed.
    void Loss_Confirmed();

    // Around an event

    void Begin_Event();

    /// What the event lost; empty if nothing.
    QStringList End_Event();

    // After a save

    /// What of the edits is not in the budget that was saved; all of them count as saved from there on.
    QStringList Missing_In(const TBudget& saved);

    /// Whether a number was entered of which the file keeps less than was typed.
    bool Has_Fine_Numbers() const { return d_has_fine_numbers; }

    /// How many edits were found in a saved budget so far.
    int Found() const { return d_found; }

private:
    /// One edit. Choices have the text of the choice, boxes "yes" and "no".
    struct TEdit
    {
        TShownRecord record;
        QString field;
        QString text;
        bool is_found = false; ///< in a budget that was saved
    };

    void Watch_Texts();
    void Watch_Choices();
    void Watch_Boxes();
    void Type(const QString& field, const QString& text);
    void Enter(const QString& field);
    void Keep(const TEdit& edit);
    void Forget_Expressions();
    void Forget_Gone_Records();
    void Forget_All();
    bool Is_Gone(const TEdit& edit) const;
    QString Log() const;
    bool Is_Saving_Offered() const;
    QStringList Look_At_Saved_File();

    const TFiles* d_files;
    QPointer<QMainWindow> d_window;
    QList<TEdit> d_edits;
    QHash<QString, TEdit> d_typed; ///< not entered yet, by the field
    QHash<QString, qint64> d_files_before;
    bool d_is_modified = false;
    bool d_was_saving_offered = false;
    QString d_log_before;
    bool d_may_leave_budget = false;
    bool d_may_open_file = false;
    bool d_is_tree_rebuilt = false;
    bool d_is_loss_confirmed = false;
    bool d_has_fine_numbers = false;
    int d_found = 0;
};
