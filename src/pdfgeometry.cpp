#include "src/pdfgeometry.h"

namespace {

constexpr double MARGIN_PER_WIDTH = 0.03;

/// The page title takes two rows of height.
constexpr int TITLE_ROWS = 2;

} // namespace

TPdfGeometry::TPdfGeometry(const QRect& paint_rectangle, int cell_row_height) : row_height(cell_row_height)
{
    const int margin = static_cast<int>(paint_rectangle.width() * MARGIN_PER_WIDTH);

    left = paint_rectangle.left() + margin;
    right = paint_rectangle.right() - margin;
    top = paint_rectangle.top() + 2 * margin;
    bottom = paint_rectangle.bottom();

    const double exact_step = (right - left + 1) / static_cast<double>(COLUMNS) + 0.5;
    column_step = static_cast<int>(exact_step);
}

int TPdfGeometry::Column_Left(int column) const
{
    return left + column * column_step;
}

int TPdfGeometry::Row_Top(int row) const
{
    return top + (TITLE_ROWS + row - 1) * row_height;
}

int TPdfGeometry::Foot_Top() const
{
    return bottom - row_height;
}

int TPdfGeometry::Row_Slots() const
{
    return (Foot_Top() - (top + (TITLE_ROWS + 1) * row_height)) / row_height;
}
