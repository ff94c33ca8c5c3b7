#include "src/pdfsections.h"

#include "src/csvcells.h"

#include <algorithm>
#include <utility>

namespace {

using TBoxes = std::vector<TPdfCellBox>;

/// The cells of a budget-data line that say what its values are: title, kind of row and name.
constexpr int LABEL_CELLS = 3;

/// The lengths that stand side by side.
constexpr int GROUP_CELLS = 11;

/// The row slots that must be left on a page, the empty ones at its foot included, for the block of a component and for
/// the combined uncertainty to start there.
constexpr int BLOCK_CLEARANCE = 5;
constexpr int UNCERTAINTY_CLEARANCE = 7;

/// Blank rows between groups of lengths that stand on one page.
constexpr int GROUP_DISTANCE = 2;

/// Some 1500 characters. A longer title would leave no room for rows; only it is cut off.
constexpr int MAXIMUM_TITLE_LINES = 20;

// The boxes of the cells of a line, in their order. Titles stand in the first cell and have the line for themselves.

const TBoxes TITLE_BOXES = {{0, TPdfGeometry::COLUMNS}};

/// Source, value, expression, type, sensitivity, distribution and divisor.
const TBoxes DEFINITION_BOXES = {{0, 1}, {1, 4}, {5, 2}, {7, 5}, {12, 1}, {13, 2}, {15, 2}, {17, 1}};

/// Name and value, under source and value of the budget definition.
const TBoxes VARIABLE_BOXES = {{0, 1}, {1, 4}, {5, 13}};

/// The labels of a budget-data line and the values of one group.
TBoxes Data_Boxes()
{
    TBoxes boxes = {{0, 1}, {1, 2}, {3, 4}};
    for (int cell = 0; cell < GROUP_CELLS; ++cell) {
        boxes.push_back({TPdfGeometry::COLUMNS - GROUP_CELLS + cell, 1});
    }
    return boxes;
}

/// Under the labels and the values of the budget data.
const TBoxes FORMULA_BOXES = {{0, 1}, {1, 2}, {3, 4}, {7, GROUP_CELLS}};

// Cells

/// Line breaks, tabs and the like would leave the line.
QString In_One_Line(QString text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) { return character.isSpace() && character.category() != QChar::Separator_Space; }, ' ');
    return text;
}

QStringList Cells(const QString& line)
{
    QStringList cells;
    for (QString text : CSV_Texts(line)) {
        cells << In_One_Line(text.remove('"'));
    }
    return cells;
}

std::vector<QStringList> Table(const std::vector<QString>& lines)
{
    std::vector<QStringList> table;
    table.reserve(lines.size());
    for (const QString& line : lines) {
        table.push_back(Cells(line));
    }
    return table;
}

bool Is_Title(const QStringList& cells)
{
    return !cells.first().isEmpty();
}

bool Is_Blank(const QStringList& cells)
{
    return std::all_of(cells.begin(), cells.end(), [](const QString& cell) { return cell.isEmpty(); });
}

// Rows

/// Makes the rows of a table from its lines, blank ones included.
class TRowMaker
{
public:
    explicit TRowMaker(const TPdfMetrics& metrics) : d_metrics(metrics) {}

    void Add_Blank() { ++d_blank_rows; }

    void Add_Row(const QStringList& cells, const TBoxes& boxes) { Add(cells, boxes, d_metrics.cell_width); }

    void Add_Heading(const QStringList& cells, const TBoxes& boxes, int level, bool has_rule, int clearance)
    {
        Add(cells, boxes, d_metrics.heading_width);
        d_rows.back().heading_level = level;
        d_rows.back().has_rule = has_rule;
        d_rows.back().clearance = clearance;
    }

    /// The rows from the index on stay together.
    void Keep_To_End(std::size_t index)
    {
        if (index < d_rows.size()) {
            d_rows[index].kept_rows = static_cast<int>(d_rows.size() - 1 - index);
        }
    }

    const std::vector<TPdfRow>& Rows() const { return d_rows; }

private:
    void Add(const QStringList& cells, const TBoxes& boxes, const TTextWidth& width)
    {
        TPdfRow row;
        row.lines = Placed_Cells(cells, boxes, d_metrics.geometry, width, d_metrics.gap);
        row.blank_rows = d_blank_rows;
        d_rows.push_back(std::move(row));
        d_blank_rows = 0;
    }

    const TPdfMetrics& d_metrics;
    std::vector<TPdfRow> d_rows;
    int d_blank_rows = 0;
};

// Budget definition: blocks of a title, the heads of the columns, and items

std::vector<TPdfRow> Definition_Rows(const std::vector<QString>& lines, const TPdfMetrics& metrics)
{
    TRowMaker rows(metrics);
    bool is_below_title = false;

    for (const QStringList& cells : Table(lines)) {
        if (Is_Blank(cells)) {
            rows.Add_Blank();
        } else if (Is_Title(cells)) {
            rows.Add_Heading(cells, TITLE_BOXES, 1, false, BLOCK_CLEARANCE);
        } else if (is_below_title) {
            rows.Add_Heading(cells, DEFINITION_BOXES, 2, true, 0);
        } else {
            rows.Add_Row(cells, DEFINITION_BOXES);
        }
        is_below_title = Is_Title(cells);
    }
    return rows.Rows();
}

std::vector<TPdfRow> Variable_Rows(const std::vector<QString>& lines, const TPdfMetrics& metrics)
{
    TRowMaker rows(metrics);
    for (const QStringList& cells : Table(lines)) {
        if (!Is_Blank(cells)) {
            rows.Add_Row(cells, VARIABLE_BOXES);
        }
    }
    return rows.Rows();
}

// Budget data: the row of positions, blocks of a title and values, and the combined uncertainty under the last title

int Group_Count(const std::vector<QStringList>& table)
{
    int cells = 0;
    for (const QStringList& line : table) {
        cells = std::max(cells, line.size());
    }
    return std::max(1, (cells - LABEL_CELLS + GROUP_CELLS - 1) / GROUP_CELLS);
}

/// The labels of a line and its values in one group.
QStringList Group_Cells(const QStringList& line, int group)
{
    const int first = LABEL_CELLS + group * GROUP_CELLS;
    QStringList cells = line;

    while (cells.size() < first + GROUP_CELLS) {
        cells << QString();
    }
    return cells.mid(0, LABEL_CELLS) + cells.mid(first, GROUP_CELLS);
}

/// Adds the lines of the budget data to the rows, group by group.
class TDataRows
{
public:
    TDataRows(const std::vector<QString>& lines, TRowMaker* rows)
        : d_table(Table(lines)), d_last_title(Last_Title(d_table)), d_rows(rows)
    {}

    /// With the formula below the last group.
    void Add(const std::vector<QStringList>& formula)
    {
        const int count = Group_Count(d_table);
        for (int group = 0; group < count; ++group) {
            d_group_start = d_rows->Rows().size();
            Add_Group(group);
            if (group == count - 1) {
                Add_Formula(formula);
            }
            d_rows->Keep_To_End(d_group_start);
            d_rows->Keep_To_End(d_uncertainty_start);
        }
    }

private:
    static std::size_t Last_Title(const std::vector<QStringList>& table)
    {
        const auto found = std::find_if(table.rbegin(), table.rend(), Is_Title);
        return static_cast<std::size_t>(table.rend() - found) - 1;
    }

    void Add_Group(int group)
    {
        for (int row = 0; group > 0 && row < GROUP_DISTANCE; ++row) {
            d_rows->Add_Blank();
        }
        for (std::size_t index = 0; index < d_table.size(); ++index) {
            Add_Line(index, Group_Cells(d_table[index], group));
        }
    }

    void Add_Line(std::size_t index, const QStringList& cells)
    {
        if (index == 0) {
            d_rows->Add_Heading(cells, d_boxes, 1, true, UNCERTAINTY_CLEARANCE);
        } else if (index == d_last_title) {
            d_uncertainty_start = d_rows->Rows().size();
            d_rows->Add_Heading(cells, TITLE_BOXES, 2, true, UNCERTAINTY_CLEARANCE);
        } else if (Is_Title(cells)) {
            d_rows->Add_Heading(cells, TITLE_BOXES, 2, true, BLOCK_CLEARANCE);
        } else if (Is_Blank(d_table[index])) {
            d_rows->Add_Blank();
        } else {
            d_rows->Add_Row(cells, d_boxes);
        }
    }

    void Add_Formula(const std::vector<QStringList>& formula)
    {
        const std::size_t start = d_rows->Rows().size();
        d_rows->Add_Blank();
        for (const QStringList& cells : formula) {
            const bool has_formula = static_cast<std::size_t>(cells.size()) <= FORMULA_BOXES.size();
            d_rows->Add_Row(cells, has_formula ? FORMULA_BOXES : d_boxes);
        }
        d_rows->Keep_To_End(start);
    }

    const TBoxes d_boxes = Data_Boxes();
    std::vector<QStringList> d_table;
    std::size_t d_last_title; ///< of the lines
    TRowMaker* d_rows;
    std::size_t d_group_start = 0;
    std::size_t d_uncertainty_start = 0;
};

std::vector<TPdfRow> Data_Rows(const TReportWidget::TExportLines& lines, const TPdfMetrics& metrics)
{
    TRowMaker rows(metrics);
    TDataRows(lines.budget_data.pdf, &rows).Add(Table(lines.formula.pdf));
    return rows.Rows();
}

// Sections

TPdfSection Section(const QString& title, const std::vector<TPdfRow>& rows, const TPdfMetrics& metrics)
{
    const TPdfGeometry& geometry = metrics.geometry;
    TPdfSection section;

    section.title = Wrapped_Text(In_One_Line(title), geometry.right + 1 - geometry.left, metrics.title_width);
    if (section.title.size() > MAXIMUM_TITLE_LINES) {
        section.title = section.title.mid(0, MAXIMUM_TITLE_LINES);
        section.title.last() += QChar(0x2026);
    }
    const int title_bottom = geometry.top + section.title.size() * metrics.title_height;
    while (geometry.Row_Top(section.first_row) < title_bottom) {
        ++section.first_row;
    }
    section.rows = rows;
    return section;
}

} // namespace

std::vector<TPdfSection> Pdf_Sections(const TReportWidget::TExportLines& lines, const QString& group,
                                      const TPdfMetrics& metrics)
{
    return {Section("Budget Definition - " + group, Definition_Rows(lines.budget_definition.pdf, metrics), metrics),
            Section("Global Variables", Variable_Rows(lines.global_variables.pdf, metrics), metrics),
            Section("Budget Data - " + group, Data_Rows(lines, metrics), metrics)};
}
