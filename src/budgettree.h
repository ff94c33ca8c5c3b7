#pragma once

#include <QHeaderView>
#include <QTreeWidget>

#include <algorithm>

/// A tree of one column without header. Long entries are scrolled to, not cut, and short ones take the whole width, so
/// that a click beside the text meets the entry.
///
/// As long as all entries are surely of one height, the view need not measure those that are out of sight.
class TBudgetTree : public QTreeWidget
{
public:
    explicit TBudgetTree(QWidget* parent = nullptr) : QTreeWidget(parent)
    {
        setHeaderHidden(true);
        setUniformRowHeights(true);
        header()->setStretchLastSection(false);
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    }

    /// Adds an entry with everything below it, and expands all.
    void Add_Expanded(QTreeWidgetItem* entry)
    {
        // The column is measured once, when all is there, and not again whenever the layout goes a step further.
        header()->setSectionResizeMode(QHeaderView::Interactive);
        addTopLevelItem(entry);
        expandAll();
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    }

    void reset() override
    {
        setUniformRowHeights(true);
        QTreeWidget::reset();
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        header()->setMinimumSectionSize(viewport()->width());
        QTreeWidget::resizeEvent(event);
    }

    void rowsInserted(const QModelIndex& parent, int start, int end) override
    {
        const QTreeWidgetItem* entry = parent.isValid() ? itemFromIndex(parent) : invisibleRootItem();
        for (int row = start; row <= end && uniformRowHeights(); ++row) {
            setUniformRowHeights(Is_Usual_Height(entry->child(row)));
        }
        QTreeWidget::rowsInserted(parent, start, end);
    }

    void dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right, const QVector<int>& roles) override
    {
        // With a layout pending it would leave the rest undone, and an open editor as it was.
        QTreeWidget::dataChanged(top_left, bottom_right, roles);

        const QTreeWidgetItem* entry = itemFromIndex(top_left);
        if (uniformRowHeights() && entry != nullptr && !Is_Usual_Height(entry)) {
            setUniformRowHeights(false);
            scheduleDelayedItemsLayout();
        }
    }

private:
    // Other characters may come from a larger font, or break the line.
    static bool Is_Latin(QChar character)
    {
        const ushort code = character.unicode();

        return (code >= 0x20 && code <= 0x7e) || (code >= 0xa0 && code <= 0xff);
    }

    // Of the entry and all that is below it.
    static bool Is_Usual_Height(const QTreeWidgetItem* entry)
    {
        const QString text = entry->text(0);
        bool is_usual = std::all_of(text.begin(), text.end(), Is_Latin);

        for (int row = 0; row < entry->childCount() && is_usual; ++row) {
            is_usual = Is_Usual_Height(entry->child(row));
        }
        return is_usual;
    }
};
