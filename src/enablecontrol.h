#pragma once

#include <QWidget>

/// Enables or disables a control of `list`. Qt would hand the focus of a disabled control on to whatever comes next,
/// and the next key would change that, or to nothing at all; so it goes to the list.
inline void Enable_Control(QWidget* control, bool enabled, QWidget* list)
{
    // Not hasFocus(): behind a dialog that has just closed, the window may not be the active one yet.
    if (!enabled && control->window()->focusWidget() == control) {
        list->setFocus();
    }
    control->setEnabled(enabled);
}
