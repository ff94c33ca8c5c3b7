#include "src/pdfgeometry.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

struct TPaper
{
    std::string name;
    QRect paint_rectangle;
    int row_height;
    std::array<int, 6> edges;   ///< left, right, top, bottom, column step, top of the foot line
    std::array<int, 3> rows;    ///< tops of the first and second row, row slots
    std::array<int, 3> columns; ///< left edges of the first, second and last
};

void PrintTo(const TPaper& paper, std::ostream* stream)
{
    *stream << paper.name;
}

class TPdfGeometryOf : public ::testing::TestWithParam<TPaper>
{};

const std::vector<TPaper> PAPERS = {
    // 14033 x 0.03 = 420.99; 13193 / 18 + 0.5 = 733.44; (9760 - (840 + 3 x 156)) / 156 = 54.18
    {"A4_landscape",
     {0, 0, 14033, 9917},
     156,
     {420, 13612, 840, 9916, 733, 9760},
     {1152, 1308, 54},
     {420, 1153, 12881}},
    {"paint_rectangle_with_an_offset",
     {100, 50, 14033, 9917},
     156,
     {520, 13712, 890, 9966, 733, 9810},
     {1202, 1358, 54},
     {520, 1253, 12981}},
    // 2000 x 0.03 = 60; 1880 / 18 + 0.5 = 104.94; (1379 - (120 + 3 x 20)) / 20 = 59.95
    {"coarse", {0, 0, 2000, 1400}, 20, {60, 1939, 120, 1399, 104, 1379}, {160, 180, 59}, {60, 164, 1828}},
};

} // namespace

TEST_P(TPdfGeometryOf, Divides_the_paper)
{
    const TPdfGeometry geometry(GetParam().paint_rectangle, GetParam().row_height);
    const std::array<int, 6> edges = {geometry.left,   geometry.right,       geometry.top,
                                      geometry.bottom, geometry.column_step, geometry.Foot_Top()};
    const std::array<int, 3> rows = {geometry.Row_Top(1), geometry.Row_Top(2), geometry.Row_Slots()};
    EXPECT_EQ(edges, GetParam().edges);
    EXPECT_EQ(rows, GetParam().rows);
}

TEST_P(TPdfGeometryOf, Columns_follow_in_equal_steps_from_the_left_edge)
{
    const TPdfGeometry geometry(GetParam().paint_rectangle, GetParam().row_height);
    const std::array<int, 3> columns = {geometry.Column_Left(0), geometry.Column_Left(1),
                                        geometry.Column_Left(TPdfGeometry::COLUMNS - 1)};
    EXPECT_EQ(columns, GetParam().columns);
}

INSTANTIATE_TEST_SUITE_P(Table, TPdfGeometryOf, ::testing::ValuesIn(PAPERS),
                         [](const ::testing::TestParamInfo<TPaper>& row) { return row.param.name; });
