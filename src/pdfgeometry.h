#pragma once

#include <QRect>

/// Where things stand on the pages of the PDF report, in pixels of the printer. Columns are counted from 0, the rows of
/// a page from 1.
struct TPdfGeometry
{
    static constexpr int COLUMNS = 18;

    /// Page margins are part of the paint rectangle; the row height is that of the cell font.
    TPdfGeometry(const QRect& paint_rectangle, int cell_row_height);

    int Column_Left(int column) const;
    int Row_Top(int row) const;

    /// The top of the line at the foot of the page.
    int Foot_Top() const;

    /// How many rows the height of a page has room for; the last ones stay empty.
    int Row_Slots() const;

    int left;
    int right; ///< the last pixel that belongs to the columns
    int top;   ///< of the page title
    int bottom;
    int column_step;
    int row_height;
};
