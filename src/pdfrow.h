#pragma once

#include "src/pdfgeometry.h"
#include "src/textwrap.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The page columns that a cell of a table has for itself.
struct TPdfCellBox
{
    int column = 0;
    int span = 1;
};

struct TPdfText
{
    int x = 0;
    int width = 0;
    QString text;
};

/// Texts side by side.
using TPdfLine = std::vector<TPdfText>;

/// A row of a table. It has more than one line where a cell needs them.
struct TPdfRow
{
    std::vector<TPdfLine> lines;

    int blank_rows = 0; ///< above it, unless it is the first row of a page

    /// 0: no heading. A heading is never parted from the row that it stands above, and stands again where its rows go
    /// on on a further page, until a heading of the same or a lower level takes its place.
    int heading_level = 0;

    bool has_rule = false; ///< a line across the page parts it from the next row

    /// How many of the rows behind it stay on its page if a page can hold them.
    int kept_rows = 0;

    /// How many row slots before the last one of a page it may not start any more.
    int clearance = 0;
};

/// The lines of a row. Texts stand at the left of their boxes and are wrapped there. A number is wrapped only if it is
/// wider than the page: one that its box is too narrow for takes further columns, in the first line where they are
/// free. Texts in one line are at least `gap` apart. Cells that have no box share the last one.
std::vector<TPdfLine> Placed_Cells(const QStringList& cells, const std::vector<TPdfCellBox>& boxes,
                                   const TPdfGeometry& geometry, const TTextWidth& width, int gap);
