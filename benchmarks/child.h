#pragma once

#include <QObject>

#include <stdexcept>

/// The child of that name, which must be there: a benchmark without its widget measures nothing.
template <typename T>
T* Child(const QObject& parent, const QString& name)
{
    T* const child = parent.findChild<T*>(name);
    if (child == nullptr) {
        throw std::runtime_error("no child " + name.toStdString());
    }
    return child;
}
