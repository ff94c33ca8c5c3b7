#pragma once

#include <QAbstractButton>
#include <QList>
#include <QWidget>

/// The Tab key goes through `widgets` in their order.
inline void Set_Tab_Order_Of(const QList<QWidget*>& widgets)
{
    for (int index = 1; index < widgets.size(); ++index) {
        QWidget::setTabOrder(widgets.at(index - 1), widgets.at(index));
    }
}

/// Of radio buttons that exclude each other the Tab key stops at the checked one alone, whichever way it comes; the
/// arrow keys go on from there. (Without this it would stop at each of them until the first one has had the focus.)
inline void Stop_At_The_Checked_One(const QList<QAbstractButton*>& buttons)
{
    for (QAbstractButton* button : buttons) {
        const auto Follow = [button](bool is_checked) {
            button->setFocusPolicy(is_checked ? Qt::StrongFocus : Qt::ClickFocus);
        };
        Follow(button->isChecked());
        QObject::connect(button, &QAbstractButton::toggled, button, Follow);
    }
}
