#pragma once

#include <QRect>
#include <QString>

class QWidget;

/// What a tour asks of the screen: the active window and the pictures.
namespace Screen {

/// Waits until `window` is the active one, and asks the window manager for it as often as it takes: where a dialog
/// closes soon after it has opened, it may leave no window active. Whether that worked.
bool Make_Active(QWidget* window);

/// Saves what the screen shows of `widget`, without a window's frame and with tool tips that reach beyond it. Whether
/// the file could be written.
bool Take_Picture(const QWidget* widget, const QString& file);

/// The same of a part of `widget`, given in its coordinates.
bool Take_Picture(const QWidget* widget, const QRect& part, const QString& file);

} // namespace Screen
