#pragma once

#include <QList>
#include <QWidget>

/// The Tab key goes through `widgets` in their order.
inline void Set_Tab_Order_Of(const QList<QWidget*>& widgets)
{
    for (int index = 1; index < widgets.size(); ++index) {
        QWidget::setTabOrder(widgets.at(index - 1), widgets.at(index));
    }
}
