#pragma once

#include <QItemSelectionModel>
#include <QListWidget>

/// A list whose selected entries are the members of something. Only a click or the space bar adds an entry or takes it
/// out: the search by typing moves the cursor and leaves the members as they are.
class TMemberList : public QListWidget
{
public:
    explicit TMemberList(QWidget* parent = nullptr) : QListWidget(parent) { setSelectionMode(MultiSelection); }

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override
    {
        // The search comes without an event, and Qt would toggle what it finds.
        return event == nullptr ? QItemSelectionModel::NoUpdate : QListWidget::selectionCommand(index, event);
    }
};
