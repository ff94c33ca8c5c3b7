#include "src/reporttable.h"

#include "src/tabbedtext.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

/// Whether the keys held make the next row join the selection instead of replacing it.
bool Extends_Selection(Qt::KeyboardModifiers modifiers)
{
    return modifiers.testFlag(Qt::ShiftModifier) || modifiers.testFlag(Qt::ControlModifier);
}

QString Row_Text(const QTreeWidget* table, const QModelIndex& row)
{
    QStringList cells;
    for (int position = 0; position < table->columnCount(); ++position) {
        const int column = table->header()->logicalIndex(position);
        if (!table->isColumnHidden(column)) {
            cells << Tabbed_Cell(row.siblingAtColumn(column).data().toString());
        }
    }
    return cells.join('\t');
}

} // namespace

TReportTable::TReportTable(const QWidget* parent) : TOptionEditorWidget(parent)
{
    auto* copy = new QAction(tr("Copy"), this);

    copy->setObjectName("action_copy");
    copy->setShortcut(QKeySequence::Copy);
    // With an identifier's editor open, too.
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, &TReportTable::Copy_Selection);
    addAction(copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setSelectionMode(ExtendedSelection);
}

void TReportTable::Copy_Selection()
{
    QModelIndexList rows = selectionModel()->selectedRows();
    QStringList lines;

    std::sort(rows.begin(), rows.end());
    for (const QModelIndex& row : rows) {
        lines << Row_Text(this, row);
    }
    if (!lines.isEmpty()) {
        QApplication::clipboard()->setText(lines.join('\n'));
    }
}

// An identifier's editor opens as its cell becomes the current one, and would take the keys that go on selecting.
bool TReportTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const bool is_selecting = d_is_extending || state() == DragSelectingState;

    return !(is_selecting && trigger == CurrentChanged) && TOptionEditorWidget::edit(index, trigger, event);
}

void TReportTable::keyPressEvent(QKeyEvent* event)
{
    const QScopedValueRollback<bool> extending(d_is_extending, Extends_Selection(event->modifiers()));

    TOptionEditorWidget::keyPressEvent(event);
}

void TReportTable::mousePressEvent(QMouseEvent* event)
{
    const QScopedValueRollback<bool> extending(d_is_extending, Extends_Selection(event->modifiers()));

    TOptionEditorWidget::mousePressEvent(event);
}
