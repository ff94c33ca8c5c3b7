#include "src/csvcells.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct TCell
{
    const char* name;
    QString text;
    QString cell;
};

const TCell CELLS[] = {
    {"Plain", "Length error", "Length error"},
    {"Empty", "", ""},
    {"Blanks_are_kept", "  a  ", "  a  "},
    {"Comma", "a,b", R"("a,b")"},
    {"Quote", R"(5" gauge)", R"("5"" gauge")"},
    {"Only_a_quote", R"(")", R"("""")"},
    {"Comma_and_quotes", R"("a","b")", R"("""a"",""b""")"},
    {"Line_feed", "a\nb", "\"a\nb\""},
    {"Carriage_return", "a\rb", "\"a\rb\""},
    {"Semicolon_and_apostrophe", "a;b'c", "a;b'c"},
    {"Format_string", "%1 %2", "%1 %2"},
};

std::string Name_Of(const ::testing::TestParamInfo<TCell>& row)
{
    return row.param.name;
}

class TCSVCell : public ::testing::TestWithParam<TCell>
{};

TEST_P(TCSVCell, Is_enclosed_only_where_it_must)
{
    EXPECT_EQ(CSV_Cell(GetParam().text), GetParam().cell);
}

TEST_P(TCSVCell, Reads_back_as_its_text)
{
    EXPECT_EQ(CSV_Texts(CSV_Cell(GetParam().text)), QStringList(GetParam().text));
}

TEST_P(TCSVCell, Reads_back_as_its_text_between_others)
{
    const QStringList texts = CSV_Texts("first," + CSV_Cell(GetParam().text) + ",last");

    EXPECT_EQ(texts, QStringList({"first", GetParam().text, "last"}));
}

TEST_P(TCSVCell, Reads_back_as_its_text_when_enclosed_anyway)
{
    EXPECT_EQ(CSV_Texts(',' + Enclosed_CSV_Cell(GetParam().text)), QStringList({"", GetParam().text}));
}

INSTANTIATE_TEST_SUITE_P(Table, TCSVCell, ::testing::ValuesIn(CELLS), Name_Of);

struct TLine
{
    const char* name;
    QString line;
    QStringList texts;
};

const TLine LINES[] = {
    {"An_empty_line_has_one_empty_cell", "", {""}},
    {"A_comma_parts_two_empty_cells", ",", {"", ""}},
    {"A_last_comma_opens_an_empty_cell", "a,", {"a", ""}},
    {"Empty_enclosed_cells", R"("","")", {"", ""}},
    {"A_quote_inside_a_cell_is_a_character", R"(a"b,c)", {R"(a"b)", "c"}},
    {"What_follows_a_closing_quote_belongs_to_the_cell", R"("a"b,c)", {"ab", "c"}},
    {"A_quote_that_is_never_closed", R"(a,"b,c)", {"a", "b,c"}},
    {"A_lone_quote", R"(")", {""}},
    {"A_row_of_a_budget_definition",
     R"csv(,Drift,Constant,"SUMSQ(1,2)",Type B,1.000000,Normal,1.000000)csv",
     {"", "Drift", "Constant", "SUMSQ(1,2)", "Type B", "1.000000", "Normal", "1.000000"}},
};

class TCSVLine : public ::testing::TestWithParam<TLine>
{};

TEST_P(TCSVLine, Is_split_into_the_texts_of_its_cells)
{
    EXPECT_EQ(CSV_Texts(GetParam().line), GetParam().texts);
}

INSTANTIATE_TEST_SUITE_P(Table, TCSVLine, ::testing::ValuesIn(LINES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TCSVCells, A_cell_is_enclosed_on_demand)
{
    EXPECT_EQ(Enclosed_CSV_Cell("0.001"), R"("0.001")");
    EXPECT_EQ(Enclosed_CSV_Cell(""), R"("")");
    EXPECT_EQ(Enclosed_CSV_Cell(R"(a"b)"), R"("a""b")");
}

} // namespace
