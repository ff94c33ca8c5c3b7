#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

/// Lets GoogleTest print Qt's texts readably. Found by argument-dependent look-up.
QT_BEGIN_NAMESPACE
void PrintTo(const QString& text, std::ostream* stream);
void PrintTo(const QStringList& texts, std::ostream* stream);
QT_END_NAMESPACE
