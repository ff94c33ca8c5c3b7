#pragma once

#include <QString>

/// `text` as one cell of tab-separated lines, character for character: what would part it into several cells or lines,
/// and every other control character, becomes a blank.
QString Tabbed_Cell(const QString& text);

/// Appends `text` to `line` as such a cell.
void Append_Tabbed_Cell(const QString& text, QString* line);
