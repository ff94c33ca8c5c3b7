#include "src/logline.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

QString Letters(int count)
{
    return QString(count, 'x');
}

QStringList Fields_Of(const TLogLine& line)
{
    QStringList fields;
    for (const TLogField& field : line.fields) {
        fields << line.text.mid(field.begin, field.end - field.begin);
    }
    return fields;
}

QString Whole_Line(const QStringList& fields)
{
    const TLogLine line = Log_Line(fields);
    return Tabbed_Part(line.text, line.fields, 0, line.text.size());
}

// Whole lines

struct TFields
{
    const char* name;
    QStringList written;
    QStringList found;
};

void PrintTo(const TFields& fields, std::ostream* stream)
{
    *stream << fields.name;
}

class TLogLineFields : public ::testing::TestWithParam<TFields>
{};

TEST_P(TLogLineFields, Are_found_again_in_the_line)
{
    EXPECT_EQ(Fields_Of(Log_Line(GetParam().written)), GetParam().found);
}

TEST_P(TLogLineFields, Are_copied_with_one_tab_between_them)
{
    EXPECT_EQ(Whole_Line(GetParam().written), GetParam().found.join('\t'));
}

const TFields FIELDS[] = {
    {"One", {"Variable"}, {"Variable"}},
    {"Several", {"Variable", "CTEm", "0.011500"}, {"Variable", "CTEm", "0.011500"}},
    {"Eight", {"1", "2", "3", "4", "5", "6", "7", "8"}, {"1", "2", "3", "4", "5", "6", "7", "8"}},
    {"None", {}, {""}},
    {"An_empty_first", {"", "Linear"}, {"", "Linear"}},
    {"Empty_ones_that_leave_no_column", {"A", "", "C", ""}, {"A", "C"}},
    {"Blanks_inside", {"Workpiece thermometry", "a  b"}, {"Workpiece thermometry", "a  b"}},
    {"Blanks_at_the_ends", {"A ", " B ", "C"}, {"A ", " B ", "C"}},
    {"One_as_wide_as_its_column", {Letters(20), "B"}, {Letters(20), "B"}},
    {"One_that_shifts_the_next", {Letters(25), "B", "C"}, {Letters(25), "B", "C"}},
    {"One_that_leaves_the_next_no_padding", {Letters(40), "B", "C"}, {Letters(40), "B", "C"}},
    {"One_that_pads_the_next_on_its_left", {Letters(45), "B", "C"}, {Letters(45), "B", "C"}},
    {"Tabs_and_line_breaks_as_blanks", {"a\tb", "c\nd", "e\r\nf\u2028g\u2029h"}, {"a b", "c d", "e  f g h"}},
    {"Control_characters_beside_the_printable_ones_as_blanks",
     {QString("a") + QChar(0x1f) + QChar(0x7f) + QChar(0x85) + "b"},
     {"a   b"}},
    {"Marks_at_which_a_text_document_begins_a_paragraph",
     {QString("a") + QChar(0xfdd0) + QChar(0xfdd1) + "b"},
     {"a  b"}},
};

INSTANTIATE_TEST_SUITE_P(Table, TLogLineFields, ::testing::ValuesIn(FIELDS),
                         [](const auto& row) { return std::string(row.param.name); });

// Parts of a line

struct TPart
{
    const char* name;
    int begin;
    int end;
    QString copied;
};

void PrintTo(const TPart& part, std::ostream* stream)
{
    *stream << part.name;
}

class TLogLinePart : public ::testing::TestWithParam<TPart>
{};

// The line holds "Probe tip" from 0, "Linear" from 20, twenty letters from 40 and, right behind them, "0.003" from 60.
TEST_P(TLogLinePart, Is_copied_with_the_tabs_between_its_fields)
{
    const TLogLine line = Log_Line({"Probe tip", "Linear", Letters(20), "0.003"});

    EXPECT_EQ(Tabbed_Part(line.text, line.fields, GetParam().begin, GetParam().end), GetParam().copied);
}

const TPart PARTS[] = {
    {"Inside_a_field", 2, 7, "obe t"},
    {"A_whole_field", 0, 9, "Probe tip"},
    {"A_field_and_its_padding", 0, 20, "Probe tip"},
    {"Over_the_padding_into_the_next_field", 6, 23, "tip\tLin"},
    {"All_of_the_padding_and_the_next_field", 9, 26, "\tLinear"},
    {"Some_of_the_padding_and_the_next_field", 15, 26, "Linear"},
    {"The_next_field_alone", 20, 26, "Linear"},
    {"Padding_alone", 10, 18, ""},
    {"Over_a_whole_field", 6, 42, "tip\tLinear\txx"},
    {"Over_a_bound_without_padding", 58, 62, "xx\t0."},
    {"Up_to_a_bound_without_padding", 58, 60, "xx"},
    {"From_a_bound_without_padding", 60, 65, "0.003"},
    {"The_padding_of_the_last_field", 63, 80, "03"},
    {"From_before_the_line_to_behind_it", -30, 200, "Probe tip\tLinear\txxxxxxxxxxxxxxxxxxxx\t0.003"},
    {"Nothing", 5, 5, ""},
    {"Nothing_at_a_bound", 20, 20, ""},
};

INSTANTIATE_TEST_SUITE_P(Table, TLogLinePart, ::testing::ValuesIn(PARTS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TLogLine, A_selection_that_begins_with_an_empty_first_field_begins_with_a_tab)
{
    const TLogLine line = Log_Line({"", "Linear"});

    EXPECT_EQ(Tabbed_Part(line.text, line.fields, 0, 26), "\tLinear");
    EXPECT_EQ(Tabbed_Part(line.text, line.fields, 1, 26), "Linear");
}

} // namespace
