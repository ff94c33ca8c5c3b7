#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The width of a text in the font and on the device that it stands for.
using TTextWidth = std::function<int(const QString&)>;

/// `text` as lines that are at most `room` wide. A line ends behind a blank or between the parts of a name or an
/// expression, never within a number or a word unless that alone is too wide. Nothing but the blanks at the ends of
/// lines is left out. The time is linear in the length of the text.
QStringList Wrapped_Text(const QString& text, int room, const TTextWidth& width);
