#pragma once

#include <QStringList>

#include <vector>

/// Where a field stands in its line, without the blanks that pad it to the next stop: from `begin` up to before `end`.
struct TLogField
{
    int begin = 0;
    int end = 0;
};

/// One line of the log: the fields on stops of 20 characters.
struct TLogLine
{
    QString text;
    std::vector<TLogField> fields;
};

/// The first field is always written, the others only when they hold a text; a field that is too long shifts the next
/// one as far as it must. Line breaks and tabs in a field become blanks.
TLogLine Log_Line(const QStringList& fields);

/// What of a line is copied when the characters from `begin` up to before `end` are selected (they may lie beyond the
/// line's own): the selected parts of the fields, with one tab for each step from one field to the next that is
/// selected whole. The blanks that pad fields are left out.
QString Tabbed_Part(const QString& text, const std::vector<TLogField>& fields, int begin, int end);
