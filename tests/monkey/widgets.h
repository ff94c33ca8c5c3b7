#pragma once

#include <QList>
#include <QModelIndex>
#include <QPoint>

class QAbstractItemView;
class QWidget;
class TRandom;

/// What of a window the mouse can reach, in an order that does not depend on addresses.

/// All widgets of the window that are shown and enabled.
QList<QWidget*> Reachable_Widgets(const QWidget* window);

/// Those of them that do something when they are clicked.
QList<QWidget*> Lively_Widgets(const QWidget* window);

template <typename TWidget>
QList<TWidget*> Reachable(const QWidget* window)
{
    QList<TWidget*> found;
    for (QWidget* widget : Reachable_Widgets(window)) {
        if (auto* match = qobject_cast<TWidget*>(widget)) {
            found << match;
        }
    }
    return found;
}

/// The view that shows its entries in `viewport`, null if that is none.
QAbstractItemView* View_Of(const QWidget* viewport);

/// An entry of the view, on any level; invalid if it has none.
QModelIndex Random_Entry(const QAbstractItemView* view, TRandom* random);

/// A place in the widget: where it does something, if that is known, or anywhere.
QPoint Random_Position(QWidget* widget, TRandom* random);

/// Name or class of the widget, for the journal.
QString Widget_Name(const QWidget* widget);
