#pragma once

#include <QObject>

/// Cuts the connections from everything below `receiver` to `receiver` itself. To be called in the destructor of a
/// widget with editors: an editor that has the focus commits while it is deleted, when the part of the widget that
/// would take the text is gone already.
inline void Disconnect_Children(QObject* receiver)
{
    for (const QObject* child : receiver->findChildren<QObject*>()) {
        QObject::disconnect(child, nullptr, receiver, nullptr);
    }
}
