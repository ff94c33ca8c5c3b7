#pragma once

#include <QStringList>

#include <vector>

class QWidget;

/// The report page of a window as it is shown.
namespace Report_Page {

/// The columns of a row.
enum TColumn
{
    NAME = 0,
    IDENTIFIER = 1,
    SENSITIVITY = 4,
    VALUE = 6,
    COLUMN_COUNT = 7
};

/// Whether it is in front with a group chosen.
bool Is_Shown(const QWidget* window);

/// The texts of each row, escaped as a saved budget has them.
std::vector<QStringList> Rows(const QWidget* window);

/// Brings the page to the front and, where it shows no rows, chooses groups with the mouse until it does. False if none
/// has any.
bool Show_Rows(QWidget* window);

/// Chooses a group that the box offers with the mouse.
void Choose_Group(const QWidget* window, int index);

} // namespace Report_Page
