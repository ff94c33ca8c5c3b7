#pragma once

#include <QString>
#include <QWidget>

/// Says what a control is for: `tool_tip` in a few words, for the mouse that rests on it; `whats_this` in full, for
/// Shift+F1 while it has the focus.
inline void Describe(QWidget* widget, const QString& tool_tip, const QString& whats_this)
{
    widget->setToolTip(tool_tip);
    widget->setWhatsThis(whats_this);
}
