#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class QAbstractItemView;

/// The delegate of a list or tree whose entries are renamed in place. An entry can be edited only while it is the one
/// selected entry of the view. The delegate remembers which entry is edited and how it was called, because a sorted
/// view has moved the entry by the time that its commitData(QWidget*) arrives: the rename slot finds its record by
/// Edited_Name(), never by a row, and then either accepts or refuses the rename.
class TEntryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Makes itself the item delegate of `view`, which also becomes its parent.
    explicit TEntryDelegate(QAbstractItemView* view);

    /// The name of the edited entry before this edit.
    QString Edited_Name() const;

    /// The name that the edited entry shows now: after commitData the new one, without characters that no file can
    /// carry.
    QString Entered_Name() const;

    /// The edited entry, invalid once it is gone.
    QModelIndex Edited_Index() const;

    /// The edited entry keeps its new name.
    void Accept_Rename();

    /// The edited entry shows its old name again.
    void Refuse_Rename();

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

private:
    bool Is_Sole_Selection(const QModelIndex& index) const;

    QAbstractItemView* d_view;

    // Qt creates editors through a const member, which is also where an edit begins.
    mutable QPersistentModelIndex d_edited_index;
    mutable QString d_edited_name;
};
