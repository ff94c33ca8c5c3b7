#include "tests/monkey/dialogs.h"

#include "src/namedialog.h"
#include "tests/monkey/files.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/memory.h"
#include "tests/monkey/random.h"
#include "tests/monkey/texts.h"
#include "tests/monkey/userinput.h"
#include "tests/support/guiacts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace {

const int POLL_INTERVAL_MS = 1;

/// A dialog that none of that many answers closes is rejected.
const int MOST_ANSWERS = 4;

int Loop_Level()
{
    return QThread::currentThread()->loopLevel();
}

void Close(QWidget* widget)
{
    if (auto* dialog = qobject_cast<QDialog*>(widget)) {
        dialog->reject();
    } else {
        widget->close();
    }
}

QList<QAction*> Choices(const QMenu* menu)
{
    QList<QAction*> choices;
    for (QAction* action : menu->actions()) {
        if (action->isVisible() && action->isEnabled() && !action->isSeparator() && action->menu() == nullptr) {
            choices << action;
        }
    }
    return choices;
}

QAbstractButton* File_Button(const QFileDialog* dialog, QDialogButtonBox::ButtonRole role)
{
    auto* box = Child<QDialogButtonBox>(dialog, "buttonBox");

    for (QAbstractButton* button : box->buttons()) {
        if (box->buttonRole(button) == role) {
            return button;
        }
    }
    Fail_Missing("button of the file dialog");
}

} // namespace

TDialogs::TDialogs(TRandom* random, const TFiles* files, TMemory* memory)
    : d_random(random), d_files(files), d_memory(memory)
{
    Schedule_Poll();
}

void TDialogs::Choose_File(const QString& path)
{
    d_chosen_path = path;
}

void TDialogs::Choose_At_Random()
{
    d_chosen_path.clear();
}

void TDialogs::Deal_With_Popups()
{
    for (QWidget* widget = Open_Widget(); widget != nullptr; widget = Open_Widget()) {
        Answer(widget);
    }
}

void TDialogs::Schedule_Poll()
{
    // A new single shot each time: a repeating timer stays silent in the event loop that its own slot has started.
    QTimer::singleShot(POLL_INTERVAL_MS, this, &TDialogs::Poll);
}

void TDialogs::Poll()
{
    Schedule_Poll();
    if (Loop_Level() > d_level) {
        Deal_With_Popups();
    }
}

// Null if all that is open has its answer.
QWidget* TDialogs::Open_Widget() const
{
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* open = popup != nullptr ? popup : QApplication::activeModalWidget();
    const bool is_in_hand =
        std::any_of(d_in_hand.begin(), d_in_hand.end(), [open](const auto& widget) { return widget == open; });

    return open != nullptr && open->isVisible() && !is_in_hand ? open : nullptr;
}

void TDialogs::Answer(QWidget* widget)
{
    const QScopedValueRollback<int> level(d_level, Loop_Level());
    const QPointer<QWidget> guard(widget);
    const QPointer<QWidget> behind(widget->parentWidget() != nullptr ? widget->parentWidget()->window() : nullptr);

    d_in_hand.push_back(guard);
    User_Input::Settle();
    for (int answers = 0; answers < MOST_ANSWERS && !guard.isNull() && guard->isVisible(); ++answers) {
        Answer_Once(guard);
        User_Input::Settle();
    }
    if (!guard.isNull() && guard->isVisible()) {
        Journal::Note("closed");
        Close(guard);
    }
    d_in_hand.pop_back();
    if (!behind.isNull()) {
        User_Input::Activate(behind);
    }
}

void TDialogs::Answer_Once(QWidget* widget)
{
    if (auto* menu = qobject_cast<QMenu*>(widget)) {
        Answer_Menu(menu);
    } else if (auto* calendar = widget->findChild<QCalendarWidget*>()) {
        Answer_Calendar(calendar);
    } else if (qobject_cast<QDialog*>(widget) == nullptr) {
        Answer_List(widget);
    } else {
        User_Input::Activate(widget);
        if (auto* name = qobject_cast<TNameDialog*>(widget)) {
            Answer_Name(name);
        } else if (auto* box = qobject_cast<QMessageBox*>(widget)) {
            Answer_Message(box);
        } else if (auto* file = qobject_cast<QFileDialog*>(widget)) {
            Answer_File(file);
        } else {
            End_By_Key(widget, Qt::Key_Escape);
        }
    }
}

void TDialogs::Answer_Name(TNameDialog* dialog)
{
    auto* edit = Child<QLineEdit>(dialog, "name_edit");
    const QString name = Random_Name(d_random);

    Journal::Note("name " + Printable(name));
    edit->selectAll();
    if (d_random->Chance(50)) {
        User_Input::Press_In(edit, Qt::Key_Delete);
        User_Input::Type(edit, name);
    } else {
        User_Input::Paste(edit, name);
    }
    switch (d_random->Below(10)) {
    case 0:
        End_By_Key(edit, Qt::Key_Escape);
        break;
    case 1:
        Journal::Note("Cancel");
        User_Input::Click(Child<QPushButton>(dialog, "cancel_button"), QPoint(5, 5));
        break;
    case 2:
    case 3:
        Journal::Note("Ok");
        User_Input::Click(Child<QPushButton>(dialog, "ok_button"), QPoint(5, 5));
        break;
    default:
        End_By_Key(edit, Qt::Key_Return);
    }
}

void TDialogs::Answer_Message(QMessageBox* box)
{
    const QList<QAbstractButton*> buttons = box->buttons();
    const int choice = d_random->Below(100);
    QAbstractButton* yes = box->button(QMessageBox::Yes);

    if (yes != nullptr && (!d_chosen_path.isEmpty() || choice < 40)) {
        Press_Button(box, yes);
    } else if (choice < 80 && !buttons.isEmpty()) {
        Press_Button(box, d_random->Pick(buttons));
    } else if (choice < 90) {
        End_By_Key(box, Qt::Key_Escape);
    } else {
        Journal::Note("question closed");
        box->close();
    }
}

void TDialogs::Press_Button(QMessageBox* box, QAbstractButton* button)
{
    Journal::Note("button " + button->text());
    if (button == box->button(QMessageBox::Yes) && box->informativeText().contains("will be lost")) {
        d_memory->Loss_Confirmed();
    }
    User_Input::Click(button, button->rect().center());
}

void TDialogs::Answer_File(QFileDialog* dialog)
{
    const bool is_chosen = !d_chosen_path.isEmpty();
    const QString path = is_chosen ? d_chosen_path : d_files->Random_Path(d_random);
    auto* edit = Child<QLineEdit>(dialog, "fileNameEdit");

    if (!is_chosen && d_random->Chance(15)) {
        Journal::Note("no file");
        User_Input::Click(File_Button(dialog, QDialogButtonBox::RejectRole), QPoint(5, 5));
        return;
    }
    if (dialog->acceptMode() == QFileDialog::AcceptOpen) {
        d_memory->File_May_Be_Opened();
    }
    edit->setCompleter(nullptr); // Its list would lie over the buttons.
    Paste_Text(edit, path);
    Journal::Note("file " + d_files->Name(path));
    // The button that opens is enabled once another thread has read the folder, which takes its time.
    if (dialog->acceptMode() == QFileDialog::AcceptSave && d_random->Chance(50)) {
        User_Input::Click(File_Button(dialog, QDialogButtonBox::AcceptRole), QPoint(5, 5));
    } else {
        End_By_Key(edit, Qt::Key_Return);
    }
}

void TDialogs::Answer_Menu(QMenu* menu)
{
    const QList<QAction*> choices = Choices(menu);

    if (choices.isEmpty() || d_random->Chance(20)) {
        End_By_Key(menu, Qt::Key_Escape);
        return;
    }
    QAction* action = d_random->Pick(choices);
    // Work goes on for a while between two starts of the program.
    while (choices.size() > 1 && action->objectName() == "action_exit" && d_random->Chance(90)) {
        action = d_random->Pick(choices);
    }
    Journal::Note("entry " + action->text());
    User_Input::Click(menu, menu->actionGeometry(action).center());
}

void TDialogs::Answer_Calendar(QCalendarWidget* calendar)
{
    QList<QWidget*> places;
    for (QWidget* widget : calendar->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->findChildren<QWidget*>().isEmpty()) {
            places << widget;
        }
    }
    if (places.isEmpty() || d_random->Chance(30)) {
        End_By_Key(calendar, d_random->Chance(50) ? Qt::Key_Escape : Qt::Key_Return);
        return;
    }
    QWidget* place = d_random->Pick(places);
    const QPoint position(d_random->Below(place->width()), d_random->Below(place->height()));
    Journal::Note(QString("calendar %1,%2").arg(position.x()).arg(position.y()));
    User_Input::Click(place, position);
}

void TDialogs::Answer_List(QWidget* popup)
{
    auto* view = popup->findChild<QAbstractItemView*>();
    const int rows = view == nullptr ? 0 : view->model()->rowCount(view->rootIndex());

    if (rows == 0 || d_random->Chance(15)) {
        End_By_Key(popup, Qt::Key_Escape);
    } else if (d_random->Chance(30)) {
        End_By_Key(view, d_random->Chance(50) ? Qt::Key_Down : Qt::Key_Up);
        if (view->isVisible()) {
            End_By_Key(view, Qt::Key_Return);
        }
    } else {
        const QModelIndex index = view->model()->index(d_random->Below(rows), 0, view->rootIndex());
        Journal::Note("choice " + Printable(index.data().toString()));
        view->scrollTo(index);
        User_Input::Click(view->viewport(), view->visualRect(index).center());
    }
}

void TDialogs::End_By_Key(QWidget* widget, Qt::Key key)
{
    Journal::Note(QString("key 0x%1").arg(int(key), 0, 16));
    User_Input::Press_In(widget, key);
}
