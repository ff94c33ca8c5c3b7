#pragma once

#include <QString>
#include <QStringList>

/// The cells of comma-separated lines as spreadsheets read them: a cell may be enclosed in double quotes, and a double
/// quote inside such a cell is doubled.

/// `text` as one cell, enclosed only if it holds a comma, a double quote or a line break.
QString CSV_Cell(const QString& text);

/// `text` as one cell that is always enclosed.
QString Enclosed_CSV_Cell(const QString& text);

/// The texts of the cells of `line`; an empty line has one empty cell. A quote that is never closed reaches to the end
/// of the line.
QStringList CSV_Texts(const QString& line);
