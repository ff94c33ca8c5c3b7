#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

/// Mouse and keyboard as the window system hands them to the program: the window finds out which widget they meet, what
/// they open blocks, and what a click starts after a while has started when it returns.
namespace User_Input {

/// Makes what depends on time in Qt depend on the number of events instead: a double click takes a moment, and nothing
/// moves slowly.
void Make_Timeless();

/// To be called with every new window.
void Make_Timeless(QWidget* window);

/// The window becomes the active one, if it is not.
void Activate(QWidget* window);

/// Lets everything happen that is due, and what a click starts after the time of a double click.
void Settle();

void Click(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void Double_Click(QWidget* widget, const QPoint& position);

/// Presses the button at one place and releases it at another of the same window.
void Drag(QWidget* from, const QPoint& start, QWidget* to, const QPoint& end);

/// Presses and releases a key in the widget that has the focus, or in `fallback` if none has.
void Press(QWidget* fallback, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void Press_In(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Key by key where there are keys for the text and it is short, otherwise by the clipboard.
void Type(QWidget* fallback, const QString& text);

/// By the clipboard.
void Paste(QWidget* fallback, const QString& text);

} // namespace User_Input
