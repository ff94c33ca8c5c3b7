#include "tests/monkey/inspection.h"

#include "src/norvexaeditor.h"
#include "tests/monkey/acts.h"
#include "tests/monkey/dialogs.h"
#include "tests/monkey/files.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/memory.h"
#include "tests/monkey/reportconsistency.h"
#include "tests/monkey/reportpage.h"
#include "tests/monkey/reporttwin.h"
#include "tests/monkey/userinput.h"
#include "tests/support/consistency.h"
#include "tests/support/guiacts.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace {

const int VARIABLES_PAGE = 1;

QAction* Entry_Named(const QList<QAction*>& actions, const QString& text)
{
    for (QAction* action : actions) {
        if (action->text().remove('&') == text) {
            return action;
        }
    }
    Fail_Missing("menu entry " + text);
}

void Choose_In_Menu(QMainWindow* window, const QString& menu, const QString& entry)
{
    QMenuBar* bar = window->menuBar();
    QAction* title = Entry_Named(bar->actions(), menu);
    QAction* action = Entry_Named(title->menu()->actions(), entry);

    User_Input::Click(bar, bar->actionGeometry(title).center());
    User_Input::Click(title->menu(), title->menu()->actionGeometry(action).center());
    User_Input::Settle();
}

// The first differing line of each text, with its place.
QStringList Difference(const QString& what, const QStringList& actual, const QStringList& expected)
{
    if (actual == expected) {
        return {};
    }
    int line = 0;
    while (line < actual.size() && line < expected.size() && actual.at(line) == expected.at(line)) {
        ++line;
    }
    return {QString("%1: line %2 is <%3> instead of <%4>")
                .arg(what, QString::number(line), actual.value(line), expected.value(line))};
}

} // namespace

TInspection::TInspection(QMainWindow* window, TDialogs* dialogs, const TFiles* files, TMemory* memory)
    : d_window(window), d_dialogs(dialogs), d_files(files), d_memory(memory), d_path(files->Path("inspected.norvexa")),
      d_page(Child<QTabWidget>(window, "pages")->currentIndex())
{}

bool TInspection::Save()
{
    d_has_report = Report_Page::Show_Rows(d_window);
    return Save_As(d_window, d_path);
}

QStringList TInspection::Findings(bool lists_are_stale)
{
    QString error;
    const TBudget saved = Loaded_Budget(d_path, &error);
    if (!error.isEmpty()) {
        return {"not loaded: " + error};
    }
    const QStringList found = d_memory->Missing_In(saved) +
                              TConsistency(d_window, saved, lists_are_stale).Differences() +
                              TReportConsistency(d_window, saved).Differences() + Reopened(saved) + Left_Open();
    Child<QTabWidget>(d_window, "pages")->setCurrentIndex(d_page);
    return found;
}

// A window without changes since its last New offers no saving. Typing does, and the start of the range is not saved.
void TInspection::Enable_Saving()
{
    auto* pages = Child<QTabWidget>(d_window, "pages");
    const int page = pages->currentIndex();
    auto* field = Child<QLineEdit>(d_window, "start_position");

    pages->setCurrentIndex(VARIABLES_PAGE);
    User_Input::Settle();
    User_Input::Click(field, field->rect().center());
    User_Input::Type(d_window, "0");
    User_Input::Press(d_window, Qt::Key_Backspace);
    pages->setCurrentIndex(page);
}

bool TInspection::Save_As(QMainWindow* window, const QString& path)
{
    QFile::remove(path);
    Journal::Note("save as");
    if (!Child<QAction>(window, "action_save_as")->isEnabled()) {
        Enable_Saving();
    }
    d_dialogs->Choose_File(path);
    Choose_In_Menu(window, "File", "Save As");
    d_dialogs->Choose_At_Random();
    return QFile::exists(path);
}

// The file opened in a window of its own.
QStringList TInspection::Reopened(const TBudget& saved)
{
    TNorvexaEditor window;

    User_Input::Make_Timeless(&window);
    Show_Active(&window);
    window.Load_Data(d_path);
    TReportTwin twin(d_window, &window);
    QStringList found = twin.Differences(!d_memory->Has_Fine_Numbers());
    d_has_values = d_has_report && twin.Has_Values();
    found += Saved_Again(&window, saved);
    window.hide();
    User_Input::Activate(d_window);
    return found;
}

// Saved from the other window, where all texts are escaped once more.
QStringList TInspection::Saved_Again(QMainWindow* window, const TBudget& saved)
{
    const QString copy = d_files->Path("reopened.norvexa");
    QString error;

    if (!Save_As(window, copy)) {
        return {"not saved again: " + Child<QPlainTextEdit>(window, "log")->toPlainText()};
    }
    const TBudget saved_again = Loaded_Budget(copy, &error);
    return error.isEmpty() ? Difference("saved again", Description(saved_again), Description(As_Saved(saved)))
                           : QStringList("not loaded again: " + error);
}

QStringList TInspection::Left_Open() const
{
    QStringList found;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const bool is_tool_tip = widget->windowType() == Qt::ToolTip;
        if (widget->isVisible() && widget != d_window && !is_tool_tip) {
            found << QString("left open: %1 %2").arg(widget->metaObject()->className(), widget->windowTitle());
        }
    }
    return found;
}
