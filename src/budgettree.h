#pragma once

#include <QHeaderView>
#include <QTreeWidget>

/// A tree of one column without header. Long entries are scrolled to, not cut, and short ones take the whole width, so
/// that a click beside the text meets the entry.
class TBudgetTree : public QTreeWidget
{
public:
    explicit TBudgetTree(QWidget* parent = nullptr) : QTreeWidget(parent)
    {
        setHeaderHidden(true);
        header()->setStretchLastSection(false);
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        header()->setMinimumSectionSize(viewport()->width());
        QTreeWidget::resizeEvent(event);
    }
};
