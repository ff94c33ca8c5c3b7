#pragma once

#include <QString>

class QAbstractItemView;
class QComboBox;
class QModelIndex;
class QWidget;

/// What the tour does on the screen: the acts of a user and the pictures.
namespace Screen {

/// Saves what the screen shows of `window`, its frame included.
bool Take_Picture(QWidget* window, const QString& file);

/// Clicks `widget` in its middle.
void Click(QWidget* widget);

/// Clicks an entry of a list or tree, scrolled into sight.
void Click_Entry(QAbstractItemView* view, const QModelIndex& entry);

/// Opens a combo box with the mouse and chooses the entry `index` with the keyboard.
void Choose_Entry(QComboBox* box, int index);

/// Waits for the file dialog that the next act opens, pastes `path` and clicks "Open" or
/// "Save".
void Answer_File_Dialog(const QString& path);

} // namespace Screen
