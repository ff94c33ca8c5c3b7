#include "src/pdfrow.h"

#include <algorithm>

namespace {

/// No number has more characters than the largest one with its decimals.
constexpr int LONGEST_NUMBER = 400;

bool Is_Number(const QString& text)
{
    bool is_number = false;
    if (text.size() <= LONGEST_NUMBER) {
        text.toDouble(&is_number);
    }
    return is_number;
}

/// Asks only once for the width of a text that comes several times running: whether a cell fits and where it ends are
/// asked of the same text, and to measure it takes as long as to draw it.
TTextWidth Asked_Once(const TTextWidth& width)
{
    return [&width, last_text = QString(), last_width = 0](const QString& text) mutable {
        if (text != last_text) {
            last_width = width(text);
            last_text = text;
        }
        return last_width;
    };
}

class TCellPlacer
{
public:
    TCellPlacer(const TPdfGeometry& geometry, const TTextWidth& width, int gap)
        : d_geometry(geometry), d_width(width), d_gap(gap)
    {}

    std::vector<TPdfLine> Lines() const { return d_lines; }

    /// A number that takes more columns than its own.
    bool Is_Wide_Number(const QString& text, const TPdfCellBox& box) const
    {
        if (!Is_Number(text)) {
            return false;
        }
        const int width = d_width(text);
        return width > Room(box) && width <= d_geometry.right + 1 - d_geometry.left;
    }

    void Place_Wrapped(const QString& text, const TPdfCellBox& box)
    {
        std::size_t line = 0;
        for (const QString& part : Wrapped_Text(text, Room(box), d_width)) {
            line = 1 + Place({d_geometry.Column_Left(box.column), d_width(part), part}, line);
        }
    }

    /// The text ends at the right edge where it would leave the page.
    void Place_Whole(const QString& text, const TPdfCellBox& box)
    {
        const int width = d_width(text);
        Place({std::min(d_geometry.Column_Left(box.column), d_geometry.right + 1 - width), width, text}, 0);
    }

private:
    int Room(const TPdfCellBox& box) const
    {
        const int end = d_geometry.Column_Left(box.column + box.span) - d_gap;
        return std::min(end, d_geometry.right + 1) - d_geometry.Column_Left(box.column);
    }

    /// Returns the line, at or behind `first_line`.
    std::size_t Place(const TPdfText& placed, std::size_t first_line)
    {
        std::size_t line = first_line;
        while (line < d_lines.size() && !Is_Free(d_lines[line], placed)) {
            ++line;
        }
        d_lines.resize(std::max(d_lines.size(), line + 1));
        d_lines[line].push_back(placed);
        return line;
    }

    bool Is_Free(const TPdfLine& line, const TPdfText& placed) const
    {
        return std::all_of(line.begin(), line.end(), [this, &placed](const TPdfText& other) {
            return placed.x + placed.width + d_gap <= other.x || other.x + other.width + d_gap <= placed.x;
        });
    }

    const TPdfGeometry& d_geometry;
    const TTextWidth& d_width;
    int d_gap;
    std::vector<TPdfLine> d_lines;
};

} // namespace

std::vector<TPdfLine> Placed_Cells(const QStringList& cells, const std::vector<TPdfCellBox>& boxes,
                                   const TPdfGeometry& geometry, const TTextWidth& width, int gap)
{
    const TTextWidth width_asked_once = Asked_Once(width);
    TCellPlacer placer(geometry, width_asked_once, gap);
    std::vector<int> wide_numbers;
    const auto box = [&boxes](int cell) { return boxes[std::min(static_cast<std::size_t>(cell), boxes.size() - 1)]; };

    for (int cell = 0; cell < cells.size(); ++cell) {
        if (placer.Is_Wide_Number(cells.at(cell), box(cell))) {
            wide_numbers.push_back(cell);
        } else if (!cells.at(cell).isEmpty()) {
            placer.Place_Wrapped(cells.at(cell), box(cell));
        }
    }
    for (const int cell : wide_numbers) {
        placer.Place_Whole(cells.at(cell), box(cell));
    }
    return placer.Lines();
}
