#include "tests/monkey/widgets.h"

#include "tests/monkey/random.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QHeaderView>
#include <QMenuBar>
#include <QTabBar>
#include <QWidget>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace {

/// What orders the widgets: top, left, width, height, name and class.
using TPlace = std::tuple<int, int, int, int, QString, QString>;

bool Is_Reachable(const QWidget* widget)
{
    return widget->isVisible() && widget->isEnabled() && !widget->isWindow() && !widget->visibleRegion().isEmpty();
}

TPlace Place(const QWidget* widget)
{
    const QPoint corner = widget->mapTo(widget->window(), QPoint());

    return {corner.y(),       corner.x(),           widget->width(),
            widget->height(), widget->objectName(), widget->metaObject()->className()};
}

bool Is_Lively(const QWidget* widget)
{
    return widget->focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QMenuBar*>(widget) != nullptr || View_Of(widget) != nullptr;
}

void Collect_Entries(const QAbstractItemModel* model, const QModelIndex& parent, QModelIndexList* entries)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        for (int column = 0; column < model->columnCount(parent); ++column) {
            *entries << model->index(row, column, parent);
        }
        Collect_Entries(model, model->index(row, 0, parent), entries);
    }
}

QPoint Random_Point(const QRect& area, TRandom* random)
{
    return area.isEmpty() ? area.topLeft()
                          : area.topLeft() + QPoint(random->Below(area.width()), random->Below(area.height()));
}

QPoint Random_Title(const QMenuBar* bar, TRandom* random)
{
    return bar->actionGeometry(random->Pick(bar->actions())).center();
}

QPoint Random_Entry_Position(QAbstractItemView* view, TRandom* random)
{
    const QModelIndex entry = Random_Entry(view, random);

    if (!entry.isValid() || random->Chance(15)) {
        return Random_Point(view->viewport()->rect(), random);
    }
    view->scrollTo(entry);
    return Random_Point(view->visualRect(entry).intersected(view->viewport()->rect()), random);
}

} // namespace

QList<QWidget*> Reachable_Widgets(const QWidget* window)
{
    std::vector<std::pair<TPlace, QWidget*>> places;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->window() == window && Is_Reachable(widget)) {
            places.emplace_back(Place(widget), widget);
        }
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });

    QList<QWidget*> widgets;
    for (const auto& place : places) {
        widgets << place.second;
    }
    return widgets;
}

QList<QWidget*> Lively_Widgets(const QWidget* window)
{
    QList<QWidget*> widgets = Reachable_Widgets(window);

    widgets.erase(
        std::remove_if(widgets.begin(), widgets.end(), [](const QWidget* widget) { return !Is_Lively(widget); }),
        widgets.end());
    return widgets;
}

QAbstractItemView* View_Of(const QWidget* viewport)
{
    auto* view = qobject_cast<QAbstractItemView*>(viewport->parentWidget());

    return view != nullptr && view->viewport() == viewport ? view : nullptr;
}

QModelIndex Random_Entry(const QAbstractItemView* view, TRandom* random)
{
    QModelIndexList entries;
    Collect_Entries(view->model(), view->rootIndex(), &entries);

    return entries.isEmpty() ? QModelIndex() : random->Pick(static_cast<QList<QModelIndex>>(entries));
}

QPoint Random_Position(QWidget* widget, TRandom* random)
{
    QAbstractItemView* view = View_Of(widget);

    if (view != nullptr && qobject_cast<QHeaderView*>(view) == nullptr) {
        return Random_Entry_Position(view, random);
    }
    if (const auto* bar = qobject_cast<QMenuBar*>(widget)) {
        return Random_Title(bar, random);
    }
    if (const auto* tabs = qobject_cast<QTabBar*>(widget)) {
        return tabs->tabRect(random->Below(tabs->count())).center();
    }
    if (qobject_cast<QAbstractButton*>(widget) != nullptr) {
        return {std::min(10, widget->width() / 2), widget->height() / 2};
    }
    return Random_Point(widget->visibleRegion().boundingRect(), random);
}

QString Widget_Name(const QWidget* widget)
{
    const QWidget* view = View_Of(widget);
    const QWidget* described = view != nullptr ? view : widget;

    return described->objectName().isEmpty() ? QString(described->metaObject()->className()) : described->objectName();
}
