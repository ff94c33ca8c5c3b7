#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QModelIndex>
#include <QString>
#include <QTabWidget>
#include <QWidget>

class QCalendarWidget;
class QDateEdit;

/// Small acts of a user that several GUI tests need, done with mouse and keyboard on shown widgets. What an act needs
/// and does not find (a widget, an entry, a tab) it reports by std::runtime_error, which fails the test.

/// Shows a window and waits until it is the active one, so that its widgets can take the focus.
void Show_Active(QWidget* window);

[[noreturn]] void Fail_Missing(const QString& what);

/// The one child of that type and object name; never null.
template <typename T>
T* Child(const QWidget* parent, const QString& object_name)
{
    T* child = parent->findChild<T*>(object_name);

    if (child == nullptr) {
        Fail_Missing("child " + object_name);
    }
    return child;
}

/// Types `text` into a widget that has the focus, characters beyond Latin-1 included.
void Type_Text(QWidget* widget, const QString& text);

/// Clicks into the field and replaces its whole text by typing; the focus stays there.
void Replace_Text(QLineEdit* field, const QString& text);

/// The same from the clipboard, which may carry characters that no key types.
void Paste_Text(QLineEdit* field, const QString& text);

/// Chooses the entry `text` with the mouse in the opened list of the combo box.
void Choose_Entry(QComboBox* combo, const QString& text);

/// Clicks the arrow of a date editor, which must be enabled, and returns the calendar that opens.
QCalendarWidget* Open_Calendar(QDateEdit* date);

/// Clicks the tab with that text.
void Select_Tab(QTabWidget* tabs, const QString& text);

/// The first entry of a list or tree, on any level, whose text in `column` is `text`.
QModelIndex Entry(const QAbstractItemView* view, const QString& text, int column = 0);

/// Scrolls to an entry and clicks what can be seen of it.
void Click_Entry(QAbstractItemView* view, const QModelIndex& index, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void Click_Entry(QAbstractItemView* view, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// The in-place editor that is open in the view, or null.
template <typename T = QLineEdit>
T* Open_Editor(const QAbstractItemView* view)
{
    for (T* editor : view->viewport()->template findChildren<T*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (editor->isVisible()) {
            return editor;
        }
    }
    return nullptr;
}

/// Clicks the entry, opens its in-place editor with F2 and types `text` over the old one; the editor stays open.
QLineEdit* Type_In_Entry(QAbstractItemView* view, const QString& entry, const QString& text);

/// The same, and Return.
void Rename_Entry(QAbstractItemView* view, const QString& entry, const QString& text);
