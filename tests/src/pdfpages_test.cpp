#include "src/pdfpages.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// Rows 1 to 18 of a page take lines.
constexpr int SLOTS = 20;

TPdfRow Row(const QString& text, int line_count = 1)
{
    TPdfRow row;
    for (int line = 0; line < line_count; ++line) {
        row.lines.push_back({{0, 10, line == 0 ? text : text + '.' + QString::number(line + 1)}});
    }
    return row;
}

TPdfRow Heading(const QString& text, int level, int line_count = 1)
{
    TPdfRow row = Row(text, line_count);
    row.heading_level = level;
    return row;
}

TPdfRow With_Blank_Rows(TPdfRow row, int count)
{
    row.blank_rows = count;
    return row;
}

TPdfRow With_Kept_Rows(TPdfRow row, int count)
{
    row.kept_rows = count;
    return row;
}

std::vector<TPdfRow> Rows(int count)
{
    std::vector<TPdfRow> rows;
    for (int index = 1; index <= count; ++index) {
        rows.push_back(Row("r" + QString::number(index)));
    }
    return rows;
}

std::vector<TPdfRow> operator+(std::vector<TPdfRow> rows, const std::vector<TPdfRow>& added)
{
    rows.insert(rows.end(), added.begin(), added.end());
    return rows;
}

/// Each page as "title: row text, row text".
QStringList Pages(const std::vector<TPdfSection>& sections)
{
    QStringList pages;
    for (const TPdfPage& page : Pdf_Pages(sections, SLOTS)) {
        QStringList lines;
        for (const TPdfPageLine& line : page.lines) {
            lines << QString::number(line.row) + ' ' + line.texts.at(0).text;
        }
        pages << page.title.join('/') + ": " + lines.join(", ");
    }
    return pages;
}

/// Of pages of one section, what stands on them from row 17 of the first on.
QStringList Pages_From_Row_17(const std::vector<TPdfRow>& rows)
{
    QStringList pages = Pages({{{"T"}, 1, rows}});
    pages[0] = pages[0].section(", ", 16);
    return pages;
}

} // namespace

TEST(TPdfPages, Every_section_begins_on_a_page_of_its_own)
{
    EXPECT_EQ(Pages({{{"A"}, 1, Rows(2)}, {{"B"}, 1, {}}, {{"C"}, 1, Rows(1)}}),
              QStringList({"A: 1 r1, 2 r2", "B: ", "C: 1 r1"}));
}

TEST(TPdfPages, Without_sections_there_is_no_page)
{
    EXPECT_EQ(Pages({}), QStringList());
}

TEST(TPdfPages, Rows_begin_lower_under_a_title_of_several_lines)
{
    EXPECT_EQ(Pages({{{"A", "B"}, 3, Rows(17)}}).last(), "A/B: 3 r17");
}

TEST(TPdfPages, Blank_rows_stand_above_a_row_but_not_at_the_top_of_a_page)
{
    EXPECT_EQ(Pages({{{"T"}, 1, {With_Blank_Rows(Row("a"), 2), With_Blank_Rows(Row("b"), 2)}}}),
              QStringList({"T: 1 a, 4 b"}));
    EXPECT_EQ(Pages_From_Row_17(Rows(17) + std::vector<TPdfRow>{With_Blank_Rows(Row("a"), 1)}),
              QStringList({"17 r17", "T: 1 a"}));
}

// Starts of pages

namespace {

struct TStart
{
    std::string name;
    int clearance;
    int next_row;
    bool is_on_new_page;
};

void PrintTo(const TStart& start, std::ostream* stream)
{
    *stream << start.name;
}

class TPdfPagesStart : public ::testing::TestWithParam<TStart>
{};

const std::vector<TStart> STARTS = {
    {"last_row", 0, 18, false},
    {"row_beyond_the_last", 0, 19, true},
    {"block_before_its_clearance", 5, 14, false},
    {"block_at_its_clearance", 5, 15, true},
    {"uncertainty_before_its_clearance", 7, 12, false},
    {"uncertainty_at_its_clearance", 7, 13, true},
    {"clearance_on_a_page_without_rows", 30, 1, false},
};

} // namespace

TEST_P(TPdfPagesStart, Is_where_the_room_that_is_left_allows_it)
{
    std::vector<TPdfRow> rows = Rows(GetParam().next_row - 1);
    rows.push_back(Row("start"));
    rows.back().clearance = GetParam().clearance;

    const QStringList pages = Pages({{{"T"}, 1, rows}});
    EXPECT_EQ(pages.size(), GetParam().is_on_new_page ? 2 : 1);
    EXPECT_TRUE(pages.last().endsWith(QString("%1 start").arg(GetParam().is_on_new_page ? 1 : GetParam().next_row)))
        << pages.last().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Table, TPdfPagesStart, ::testing::ValuesIn(STARTS),
                         [](const ::testing::TestParamInfo<TStart>& row) { return row.param.name; });

TEST(TPdfPages, Blank_rows_above_a_row_count_for_its_clearance)
{
    std::vector<TPdfRow> rows = Rows(13) + std::vector<TPdfRow>{With_Blank_Rows(Row("start"), 1)};
    rows.back().clearance = 5;
    EXPECT_EQ(Pages({{{"T"}, 1, rows}}).last(), "T: 1 start");
}

// What stays together

TEST(TPdfPages, The_lines_of_a_row_stay_together)
{
    EXPECT_EQ(Pages_From_Row_17(Rows(17) + std::vector<TPdfRow>{Row("a", 2)}),
              QStringList({"17 r17", "T: 1 a, 2 a.2"}));
    EXPECT_EQ(Pages_From_Row_17(Rows(16) + std::vector<TPdfRow>{Row("a", 2)}), QStringList({"17 a, 18 a.2"}));
}

TEST(TPdfPages, A_row_longer_than_a_page_goes_on_on_the_next)
{
    const QStringList pages = Pages({{{"T"}, 1, Rows(1) + std::vector<TPdfRow>{Row("a", 20)}}});
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages.first().startsWith("T: 1 r1, 2 a, 3 a.2, ")) << pages.first().toStdString();
    EXPECT_EQ(pages.last(), "T: 1 a.18, 2 a.19, 3 a.20");
}

TEST(TPdfPages, Headings_never_stand_alone_at_the_foot_of_a_page)
{
    const std::vector<TPdfRow> block = {Heading("t", 1), Heading("h", 2), Row("a")};
    EXPECT_EQ(Pages_From_Row_17(Rows(16) + block), QStringList({"", "T: 1 t, 2 h, 3 a"}));
    EXPECT_EQ(Pages_From_Row_17(Rows(15) + block), QStringList({"17 h, 18 a"}));
}

TEST(TPdfPages, Headings_stay_with_all_lines_of_the_first_row)
{
    EXPECT_EQ(Pages_From_Row_17(Rows(16) + std::vector<TPdfRow>{Heading("h", 1), Row("a", 2)}),
              QStringList({"", "T: 1 h, 2 a, 3 a.2"}));
}

TEST(TPdfPages, Kept_rows_stay_on_one_page)
{
    const std::vector<TPdfRow> kept = {With_Kept_Rows(Row("a"), 2), Row("b"), With_Blank_Rows(Row("c"), 1)};
    EXPECT_EQ(Pages_From_Row_17(Rows(15) + kept), QStringList({"", "T: 1 a, 2 b, 4 c"}));
    EXPECT_EQ(Pages_From_Row_17(Rows(14) + kept), QStringList({"18 c"}));
}

TEST(TPdfPages, Kept_rows_of_which_one_would_start_a_page_stay_together_too)
{
    std::vector<TPdfRow> kept = {With_Kept_Rows(Row("a"), 2), Row("b"), Row("c")};
    kept.back().clearance = 5;
    EXPECT_EQ(Pages({{{"T"}, 1, Rows(12) + kept}}).last(), "T: 1 a, 2 b, 3 c");
    EXPECT_EQ(Pages({{{"T"}, 1, Rows(11) + kept}}).size(), 1);
}

TEST(TPdfPages, Kept_rows_that_no_page_can_hold_start_where_they_are)
{
    std::vector<TPdfRow> rows = Rows(20);
    rows.insert(rows.begin() + 1, With_Kept_Rows(Row("a"), 19));
    EXPECT_EQ(Pages({{{"T"}, 1, rows}}).last(), "T: 1 r18, 2 r19, 3 r20");
}

// Headings of rows that go on

TEST(TPdfPages, Headings_stand_again_above_rows_that_go_on)
{
    const std::vector<TPdfRow> rows =
        std::vector<TPdfRow>{Heading("p", 1), With_Blank_Rows(Heading("t", 2), 1)} + Rows(16);
    EXPECT_EQ(Pages({{{"T"}, 1, rows}}).last(), "T: 1 p, 3 t, 4 r16");
}

TEST(TPdfPages, A_heading_takes_the_place_of_those_of_its_level)
{
    std::vector<TPdfRow> rows =
        std::vector<TPdfRow>{Heading("p", 1), Heading("t", 2)} + Rows(16) + std::vector<TPdfRow>{Heading("u", 2)};
    rows.push_back(Row("a"));
    EXPECT_EQ(Pages({{{"T"}, 1, rows}}).last(), "T: 1 p, 2 u, 3 a");
}

TEST(TPdfPages, A_higher_heading_ends_the_lower_ones)
{
    std::vector<TPdfRow> rows =
        std::vector<TPdfRow>{Heading("p", 1), Heading("t", 2)} + Rows(16) + std::vector<TPdfRow>{Heading("q", 1)};
    rows.push_back(Row("a"));
    EXPECT_EQ(Pages({{{"T"}, 1, rows}}).last(), "T: 1 q, 2 a");
}

TEST(TPdfPages, Headings_stand_again_within_a_row_longer_than_a_page)
{
    EXPECT_EQ(Pages({{{"T"}, 1, {Heading("h", 1), Row("a", 19)}}}).last(), "T: 1 h, 2 a.18, 3 a.19");
}

TEST(TPdfPages, Headings_that_fill_the_page_do_not_stand_again)
{
    EXPECT_EQ(Pages({{{"T"}, 1, std::vector<TPdfRow>{Heading("h", 1, 10)} + Rows(9)}}).last(), "T: 1 r9");
    EXPECT_EQ(Pages({{{"T"}, 1, std::vector<TPdfRow>{Heading("h", 1, 100)} + Rows(1)}}).size(), 6);
}

TEST(TPdfPages, Only_the_last_line_of_a_heading_has_its_rule)
{
    TPdfRow heading = Heading("h", 1, 2);
    heading.has_rule = true;
    const std::vector<TPdfPage> pages = Pdf_Pages({{{"T"}, 1, {heading, Row("a")}}}, SLOTS);

    std::vector<std::pair<bool, bool>> lines;
    for (const TPdfPageLine& line : pages.at(0).lines) {
        lines.emplace_back(line.is_heading, line.has_rule);
    }
    EXPECT_EQ(lines, (std::vector<std::pair<bool, bool>>{{true, false}, {true, true}, {false, false}}));
}
