#include "core/entrydelegate.h"

#include "core/describe.h"
#include "core/xmltext.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

// The key by which a view deselects the entry and goes to one that begins with a blank. It takes the name that is being
// typed on leaving, but without the signal for the rename slot: the name would be shown and in no record.
bool Is_Selecting_Key(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* press = static_cast<const QKeyEvent*>(event);
    const bool has_control = press->modifiers().testFlag(Qt::ControlModifier);
    // With both of them the line editor takes it for a blank.
    return press->key() == Qt::Key_Space && has_control && !press->modifiers().testFlag(Qt::AltModifier);
}

} // namespace

TEntryDelegate::TEntryDelegate(QAbstractItemView* view) : QStyledItemDelegate(view), d_view(view)
{
    view->setItemDelegate(this);
}

QString TEntryDelegate::Edited_Name() const
{
    return d_edited_name;
}

QString TEntryDelegate::Entered_Name() const
{
    return d_edited_index.data(Qt::DisplayRole).toString();
}

QModelIndex TEntryDelegate::Edited_Index() const
{
    return d_edited_index;
}

void TEntryDelegate::Accept_Rename()
{
    // The view may commit the same editor once more, when the editor loses the focus on closing.
    d_edited_name = Entered_Name();
}

void TEntryDelegate::Refuse_Rename()
{
    if (d_edited_index.isValid()) {
        d_view->model()->setData(d_edited_index, d_edited_name, Qt::EditRole);
    }
}

QWidget* TEntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    if (!Is_Sole_Selection(index)) {
        return nullptr;
    }
    d_edited_index = index;
    d_edited_name = index.data(Qt::DisplayRole).toString();

    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    editor->setAccessibleName(tr("New name of %1").arg(d_edited_name));
    // File managers offer a file's name as text too, which would become part of the name instead of being loaded.
    editor->setAcceptDrops(false);
    Describe(
        editor, tr("Return takes the new name, Escape keeps the old one"),
        tr("The new name of the entry. Return takes it, Escape keeps the old one. A name that is empty or already in "
           "use is refused: the entry then keeps its old name."));
    return editor;
}

void TEntryDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto* line_edit = qobject_cast<QLineEdit*>(editor);

    if (line_edit != nullptr) {
        model->setData(index, Xml_Clean(line_edit->text()), Qt::EditRole);
    } else {
        QStyledItemDelegate::setModelData(editor, model, index);
    }
}

// The line editor leaves some keys to the view behind it.
bool TEntryDelegate::eventFilter(QObject* editor, QEvent* event)
{
    return Is_Selecting_Key(event) || QStyledItemDelegate::eventFilter(editor, event);
}

bool TEntryDelegate::Is_Sole_Selection(const QModelIndex& index) const
{
    return d_view->selectionModel()->selectedRows(index.column()) == QModelIndexList{index};
}
