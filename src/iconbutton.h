#pragma once

#include <QIcon>
#include <QString>
#include <QToolButton>

/// The small button under a list: an icon alone. `text` is its tool tip and its name for a screen reader. It is reached
/// with the Tab key; a click leaves the focus where it is.
inline QToolButton* Create_Icon_Button(const QString& object_name, const QString& icon, const QString& text,
                                       QWidget* parent)
{
    auto* button = new QToolButton(parent);

    button->setObjectName(object_name);
    button->setIcon(QIcon(icon));
    button->setIconSize(QSize(16, 16));
    button->setFixedSize(16, 16);
    button->setAutoRaise(true);
    button->setToolTip(text);
    button->setAccessibleName(text);
    return button;
}
