#pragma once

#include <QString>
#include <QStringList>

class QListWidget;
class QTreeWidgetItem;
class QWidget;

/// The record that the budget page shows, by its names. They are escaped once, as the file has them.
struct TShownRecord
{
    QString component;  ///< empty unless one entry below the root is selected
    QString item;       ///< empty unless that entry is an item
    QString identifier; ///< empty unless one identifier is selected
};

/// What the tree and the list of identifiers of that main window have selected.
TShownRecord Shown_Record(const QWidget* window);

/// The one entry that is selected in the tree; null if none is, or several are.
const QTreeWidgetItem* Sole_Selection(const QWidget* window);

/// As a saved budget has the text that is shown.
QString Escaped(const QString& text);

QString Yes_No(bool value);

/// The entries of a list, or those that are selected.
QStringList Entry_Texts(const QListWidget* list, bool selected_only = false);

/// The same, escaped.
QStringList Escaped_Texts(const QListWidget* list, bool selected_only = false);
