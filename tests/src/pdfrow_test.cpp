#include "src/pdfrow.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// Every character is 10 wide, a column 104.
const TPdfGeometry GEOMETRY(QRect(0, 0, 2000, 1400), 20);
constexpr int GAP = 20;

int Width(const QString& text)
{
    return 10 * text.size();
}

/// Each line as its texts with their places: "60 Source, 164 Name".
QStringList Lines(const QStringList& cells, const std::vector<TPdfCellBox>& boxes)
{
    QStringList lines;
    for (const TPdfLine& line : Placed_Cells(cells, boxes, GEOMETRY, Width, GAP)) {
        QStringList texts;
        for (const TPdfText& text : line) {
            EXPECT_EQ(text.width, Width(text.text));
            texts << QString::number(text.x) + ' ' + text.text;
        }
        lines << texts.join(", ");
    }
    return lines;
}

const std::vector<TPdfCellBox> NAME_AND_NUMBERS = {{0, 1}, {1, 2}, {15, 1}, {16, 1}, {17, 1}};

struct TPlacing
{
    std::string name;
    QStringList cells;
    QStringList lines;
};

void PrintTo(const TPlacing& placing, std::ostream* stream)
{
    *stream << placing.cells.join('|').toStdString();
}

class TPlacedCells : public ::testing::TestWithParam<TPlacing>
{};

// A name has room for 188 / 10 characters, a number for 84 / 10, the last one for 92 / 10 with the right edge behind.
const std::vector<TPlacing> PLACINGS = {
    {"cells_at_their_columns",
     {"", "Name", "1.00000", "2.00000", "3.00000"},
     {"164 Name, 1620 1.00000, 1724 2.00000, 1828 3.00000"}},
    {"no_cells", {"", "", ""}, {}},
    {"a_cell_behind_empty_ones", {"", "", "", "", "3.00000"}, {"1828 3.00000"}},
    {"long_name_is_wrapped",
     {"", "Repeatability of the probing system", "1.00000"},
     {"164 Repeatability of, 1620 1.00000", "164 the probing system"}},
    {"wide_numbers_take_further_columns_in_turn",
     {"", "N", "1234567.89", "2234567.89", "3.00000"},
     {"164 N, 1828 3.00000, 1620 1234567.89", "1724 2234567.89"}},
    {"wide_number_in_the_last_column_ends_at_the_edge",
     {"", "N", "1.00000", "", "12345678901.89"},
     {"164 N, 1620 1.00000, 1800 12345678901.89"}},
    {"very_wide_number_stays_whole",
     {"", "N", "1.00000", "2.00000", QString(40, '9')},
     {"164 N, 1620 1.00000, 1724 2.00000", "1540 " + QString(40, '9')}},
    {"text_that_is_no_number_keeps_to_its_box", {"", "N", "1.00000x2.00000"}, {"164 N, 1620 1.00000x", "1620 2.00000"}},
};

} // namespace

TEST_P(TPlacedCells, Stand_as_in_the_table)
{
    EXPECT_EQ(Lines(GetParam().cells, NAME_AND_NUMBERS), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Table, TPlacedCells, ::testing::ValuesIn(PLACINGS),
                         [](const ::testing::TestParamInfo<TPlacing>& row) { return row.param.name; });

TEST(TPlacedCells, Cells_without_a_box_stand_below_the_last_one)
{
    EXPECT_EQ(Lines({"a", "b", "c"}, {{0, 1}, {1, 1}}), QStringList({"60 a, 164 b", "164 c"}));
}

TEST(TPlacedCells, A_number_wider_than_the_page_is_wrapped_in_its_own_columns)
{
    const QString digits(300, '7');
    const std::vector<TPdfLine> lines = Placed_Cells({digits}, {{10, 8}}, GEOMETRY, Width, GAP);

    QString whole;
    for (const TPdfLine& line : lines) {
        ASSERT_EQ(line.size(), 1U);
        EXPECT_EQ(line[0].x, GEOMETRY.Column_Left(10));
        EXPECT_LE(line[0].x + line[0].width, GEOMETRY.right + 1);
        whole += line[0].text;
    }
    EXPECT_EQ(whole, digits);
}

// To measure a text takes as long as to draw it.
TEST(TPlacedCells, Measures_each_text_that_fits_once)
{
    QStringList measured;
    const auto width = [&measured](const QString& text) {
        measured << text;
        return Width(text);
    };

    Placed_Cells({"", "Name", "1.00000", "2.00000"}, NAME_AND_NUMBERS, GEOMETRY, width, GAP);

    EXPECT_EQ(measured, QStringList({"Name", "1.00000", "2.00000"}));
}
