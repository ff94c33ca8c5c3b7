#include "tests/monkey/monkey.h"

#include "tests/monkey/acts.h"
#include "tests/monkey/inspection.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/userinput.h"
#include "tests/monkey/warnings.h"
#include "tests/support/guiacts.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>

namespace {

const int MOST_COMPONENTS = 15;
const int MOST_TREE_ENTRIES = 80;
const int MOST_OTHERS = 30;
const int EVENTS_THAT_SHOW_ALL = 1000;

int Entry_Count(const QTreeWidgetItem* entry)
{
    int count = 1;
    for (int row = 0; row < entry->childCount(); ++row) {
        count += Entry_Count(entry->child(row));
    }
    return count;
}

} // namespace

TMonkey::TMonkey(quint32 seed) : d_random(seed), d_memory(&d_files), d_dialogs(&d_random, &d_files, &d_memory)
{
    User_Input::Make_Timeless();
}

QStringList TMonkey::Play(int events, int events_between_looks)
{
    for (int event = 1; event <= events; ++event) {
        Journal::Begin(event);
        d_memory.Begin_Event();
        Do_Event();
        QStringList findings = d_memory.End_Event();
        d_memory.Begin_Event();
        Keep_It_Small();
        findings += d_memory.End_Event();
        if (event % events_between_looks == 0 || event == events) {
            findings += Look();
        }
        findings += Warnings::Take();
        if (!findings.isEmpty()) {
            return findings;
        }
    }
    d_window.reset();
    Journal::Rest();
    return Unseen(events) + Warnings::Take();
}

QString TMonkey::Seen() const
{
    return QString("%1 reports, %2 of them with values, %3 edits")
        .arg(d_reports_seen)
        .arg(d_values_seen)
        .arg(d_memory.Found());
}

// A run of some length that never had anything to look at proves nothing.
QStringList TMonkey::Unseen(int events) const
{
    QStringList unseen;
    if (events >= EVENTS_THAT_SHOW_ALL) {
        if (d_reports_seen == 0) {
            unseen << "never a report with rows";
        }
        if (d_values_seen == 0) {
            unseen << "never a report with values to compare";
        }
        if (d_memory.Found() == 0) {
            unseen << "never an edit in a saved budget";
        }
    }
    return unseen;
}

void TMonkey::Open_Window()
{
    Journal::Note("new window");
    d_window = std::make_unique<TNorvexaEditor>();
    User_Input::Make_Timeless(d_window.get());
    Show_Active(d_window.get());

    QObject::connect(Child<QTreeWidget>(d_window.get(), "budget_tree"), &QTreeWidget::itemChanged, d_window.get(),
                     [this]() { d_lists_are_stale = true; });
    QObject::connect(Child<QListWidget>(d_window.get(), "component_list")->model(), &QAbstractItemModel::modelReset,
                     d_window.get(), [this]() { d_lists_are_stale = false; });
    d_lists_are_stale = false;
    d_memory.Watch(d_window.get());
}

void TMonkey::Do_Event()
{
    if (d_window == nullptr || !d_window->isVisible()) {
        Open_Window();
        Open_Budget();
    } else if (Is_Empty() && d_random.Chance(10)) {
        Open_Budget();
    } else {
        TActs(d_window.get(), &d_random, &d_files, &d_memory).Do_One();
    }
    Finish_Event();
}

bool TMonkey::Is_Empty() const
{
    return Child<QTreeWidget>(d_window.get(), "budget_tree")->topLevelItem(0)->childCount() == 0;
}

// One with which there is something to play.
void TMonkey::Open_Budget()
{
    static const QStringList NAMES = {"workshop.norvexa",  "workshop.norvexa", "sample.norvexa", "sample.norvexa",
                                      "namesakes.norvexa", "odd1.norvexa",     "odd2.norvexa",   "odd3.norvexa"};

    TActs(d_window.get(), &d_random, &d_files, &d_memory).Drop(d_files.Path(d_random.Pick(NAMES)));
}

void TMonkey::Finish_Event()
{
    User_Input::Settle();
    d_dialogs.Deal_With_Popups();
    User_Input::Activate(d_window.get());
}

// Budgets that grow without end would make the run slow and nothing else.
void TMonkey::Keep_It_Small()
{
    if (!d_window->isVisible()) {
        return;
    }
    const QTreeWidgetItem* root = Child<QTreeWidget>(d_window.get(), "budget_tree")->topLevelItem(0);
    const int others = Child<QTreeWidget>(d_window.get(), "variable_list")->topLevelItemCount() +
                       Child<QListWidget>(d_window.get(), "group_list")->count() +
                       Child<QListWidget>(d_window.get(), "identifier_list")->count();

    if (root->childCount() > MOST_COMPONENTS || Entry_Count(root) > MOST_TREE_ENTRIES) {
        Remove_Components();
        Finish_Event();
    } else if (others > MOST_OTHERS) {
        TActs(d_window.get(), &d_random, &d_files, &d_memory).Drop(d_files.Path("sample.norvexa"));
        Finish_Event();
    }
}

// All but the first few. The question may be answered by No; then there is a next time.
void TMonkey::Remove_Components()
{
    TActs acts(d_window.get(), &d_random, &d_files, &d_memory);
    auto* tree = Child<QTreeWidget>(d_window.get(), "budget_tree");
    auto* button = Child<QToolButton>(d_window.get(), "remove_budget_item");
    const QTreeWidgetItem* root = tree->topLevelItem(0);
    const int first = d_random.Below(root->childCount());
    const QModelIndex root_index = tree->model()->index(0, 0);

    Journal::Note("remove components");
    Child<QTabWidget>(d_window.get(), "pages")->setCurrentIndex(0);
    acts.Select(tree, tree->model()->index(first, 0, root_index));
    acts.Select(tree, tree->model()->index(root->childCount() - 1, 0, root_index), Qt::ShiftModifier);
    User_Input::Click(button, button->rect().center());
}

QStringList TMonkey::Look()
{
    if (!d_window->isVisible()) {
        return {};
    }
    TInspection inspection(d_window.get(), &d_dialogs, &d_files, &d_memory);
    if (!inspection.Save()) {
        return {"not saved: " + Child<QPlainTextEdit>(d_window.get(), "log")->toPlainText()};
    }
    const QStringList findings = inspection.Findings(d_lists_are_stale);
    d_reports_seen += inspection.Has_Report() ? 1 : 0;
    d_values_seen += inspection.Has_Values() ? 1 : 0;
    d_files.Restore();
    return findings;
}
