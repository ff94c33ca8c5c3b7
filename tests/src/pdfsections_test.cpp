#include "src/pdfsections.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using TExportLines = TReportWidget::TExportLines;

/// Every character is 10 wide, in titles 20; a column is 104 wide, the page has room for 94 title characters.
TPdfMetrics Metrics()
{
    const TTextWidth narrow = [](const QString& text) { return 10 * text.size(); };
    const TTextWidth wide = [](const QString& text) { return 20 * text.size(); };
    return {TPdfGeometry(QRect(0, 0, 2000, 1400), 20), narrow, narrow, wide, 25, 10};
}

/// "column text" for each text of the row, all its lines in one.
QString Texts(const TPdfRow& row)
{
    const TPdfGeometry geometry = Metrics().geometry;
    QStringList texts;
    for (const TPdfLine& line : row.lines) {
        for (const TPdfText& text : line) {
            texts << QString::number((text.x - geometry.left) / geometry.column_step) + ' ' + text.text;
        }
    }
    return texts.join(", ");
}

/// How the row stands among the others, without what is usual: "2 blank, level 1, rule, clearance 5, keeps 3: texts".
QString Description(const TPdfRow& row)
{
    QStringList traits;
    const auto add = [&traits](const char* trait, int value) {
        if (value > 0) {
            traits << QString(trait).arg(value);
        }
    };
    add("%1 blank", row.blank_rows);
    add("level %1", row.heading_level);
    if (row.has_rule) {
        traits << "rule";
    }
    add("clearance %1", row.clearance);
    add("keeps %1", row.kept_rows);
    return (traits.isEmpty() ? QString() : traits.join(", ") + ": ") + Texts(row);
}

QStringList Descriptions(const TPdfSection& section)
{
    QStringList descriptions;
    for (const TPdfRow& row : section.rows) {
        descriptions << Description(row);
    }
    return descriptions;
}

std::vector<TPdfSection> Sections(const TExportLines& lines, const QString& group = "Group")
{
    return Pdf_Sections(lines, group, Metrics());
}

/// The row of positions, a component with one item, and the combined uncertainty, at so many lengths.
std::vector<QString> Data_Lines(int lengths)
{
    QString position = ",,Position (mm)";
    QString item = ",Source,Drift";
    QString combined = ",,Combined";
    for (int length = 1; length <= lengths; ++length) {
        position += ",p" + QString::number(length);
        item += ",i" + QString::number(length);
        combined += ",u" + QString::number(length);
    }
    return {position, "", "Scale Component SN", item, "", "Uncertainty", combined};
}

TExportLines Lines_With_Data(int lengths)
{
    TExportLines lines;
    lines.budget_data.pdf = Data_Lines(lengths);
    lines.formula.pdf = {",,Uc(K=1):,1L", ",,Uc(K=2):,2L"};
    return lines;
}

/// "7 p1, 8 p2, ..." for the lengths from `first` to `last`.
QString Values(const QString& letter, int first, int last)
{
    QStringList values;
    for (int length = first; length <= last; ++length) {
        values << QString("%1 %2%3").arg(7 + length - first).arg(letter).arg(length);
    }
    return values.join(", ");
}

} // namespace

TEST(TPdfSections, Have_the_titles_of_the_report)
{
    QStringList titles;
    for (const TPdfSection& section : Sections({}, "Long scales")) {
        titles << section.title.join('/') + ' ' + QString::number(section.first_row);
    }
    EXPECT_EQ(titles,
              QStringList({"Budget Definition - Long scales 1", "Global Variables 1", "Budget Data - Long scales 1"}));
}

TEST(TPdfSections, Titles_have_the_name_of_the_group_as_it_is_but_in_one_line)
{
    const std::vector<TPdfSection> sections = Sections({}, "The \"long\"\tscales\nof A");
    EXPECT_EQ(sections[0].title, QStringList("Budget Definition - The \"long\" scales of A"));
    EXPECT_EQ(sections[2].title, QStringList("Budget Data - The \"long\" scales of A"));
}

TEST(TPdfSections, A_title_of_several_lines_moves_the_rows_down)
{
    const QString name = QString("Scales_").repeated(20);
    const TPdfSection section = Sections({}, name).front();
    EXPECT_EQ(section.title.join(QString()), "Budget Definition - " + name);
    EXPECT_EQ(section.title.size(), 2);
    // Two lines of 25 end below the two rows of 20 that one line has.
    EXPECT_EQ(section.first_row, 2);
}

TEST(TPdfSections, Only_a_title_that_would_fill_the_page_is_cut_off)
{
    const TPdfSection section = Sections({}, QString(5000, 'x')).front();
    EXPECT_EQ(section.title.size(), 20);
    EXPECT_TRUE(section.title.last().endsWith(QChar(0x2026)));
    EXPECT_LT(section.first_row, 30);
}

TEST(TPdfSections, Budget_definition_has_blocks_of_title_column_heads_and_items)
{
    const QString heads = ",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor";
    TExportLines lines;
    lines.budget_definition.pdf = {
        "Scale Component SN 1", heads, ",Drift,Constant,\"a,b\",Type B,1.000000,U,1.414214", "",
        "Probe Component ",     heads, ",Form,Constant,\"c\",Type A,2.000000,U,1.414214",    ""};
    const QString heads_row =
        "level 2, rule: 1 Source, 5 Value, 7 Expression, 12 Type, 13 Sensitivity, 15 Distribution, 17 Divisor";
    EXPECT_EQ(Descriptions(Sections(lines)[0]),
              QStringList({"level 1, clearance 5: 0 Scale Component SN 1", heads_row,
                           "1 Drift, 5 Constant, 7 a,b, 12 Type B, 13 1.000000, 15 U, 17 1.414214",
                           "1 blank, level 1, clearance 5: 0 Probe Component ", heads_row,
                           "1 Form, 5 Constant, 7 c, 12 Type A, 13 2.000000, 15 U, 17 1.414214"}));
}

TEST(TPdfSections, Cells_stand_without_double_quotes_and_line_breaks)
{
    TExportLines lines;
    lines.budget_definition.pdf = {"\"5\"\" probe Component \"\"A\"\"\"", ",Source",
                                   ",Drift\tof\nit,Constant,\"a\"\"b\""};
    EXPECT_EQ(Descriptions(Sections(lines)[0]),
              QStringList({"level 1, clearance 5: 0 5 probe Component A", "level 2, rule: 1 Source",
                           "1 Drift of it, 5 Constant, 7 ab"}));
}

TEST(TPdfSections, Global_variables_have_names_and_values)
{
    TExportLines lines;
    lines.global_variables.pdf = {",CTEm,0.011500", ",Td,0.500000", ""};
    EXPECT_EQ(Descriptions(Sections(lines)[1]), QStringList({"1 CTEm, 5 0.011500", "1 Td, 5 0.500000"}));
}

TEST(TPdfSections, Budget_data_of_up_to_eleven_lengths_are_one_group_with_the_formula)
{
    EXPECT_EQ(
        Descriptions(Sections(Lines_With_Data(11))[2]),
        QStringList({"level 1, rule, clearance 7, keeps 6: 3 Position (mm), " + Values("p", 1, 11),
                     "1 blank, level 2, rule, clearance 5: 0 Scale Component SN",
                     "1 Source, 3 Drift, " + Values("i", 1, 11),
                     "1 blank, level 2, rule, clearance 7, keeps 3: 0 Uncertainty", "3 Combined, " + Values("u", 1, 11),
                     "1 blank, keeps 1: 3 Uc(K=1):, 7 1L", "3 Uc(K=2):, 7 2L"}));
}

TEST(TPdfSections, The_labels_of_budget_data_stand_in_each_group_of_eleven_lengths)
{
    const QStringList rows = Descriptions(Sections(Lines_With_Data(25))[2]);
    ASSERT_EQ(rows.size(), 17);
    EXPECT_EQ(rows.mid(0, 5),
              QStringList({"level 1, rule, clearance 7, keeps 4: 3 Position (mm), " + Values("p", 1, 11),
                           "1 blank, level 2, rule, clearance 5: 0 Scale Component SN",
                           "1 Source, 3 Drift, " + Values("i", 1, 11),
                           "1 blank, level 2, rule, clearance 7, keeps 1: 0 Uncertainty",
                           "3 Combined, " + Values("u", 1, 11)}));
    EXPECT_EQ(rows.mid(5, 5),
              QStringList({"2 blank, level 1, rule, clearance 7, keeps 4: 3 Position (mm), " + Values("p", 12, 22),
                           "1 blank, level 2, rule, clearance 5: 0 Scale Component SN",
                           "1 Source, 3 Drift, " + Values("i", 12, 22),
                           "1 blank, level 2, rule, clearance 7, keeps 1: 0 Uncertainty",
                           "3 Combined, " + Values("u", 12, 22)}));
    EXPECT_EQ(
        rows.mid(10),
        QStringList({"2 blank, level 1, rule, clearance 7, keeps 6: 3 Position (mm), " + Values("p", 23, 25),
                     "1 blank, level 2, rule, clearance 5: 0 Scale Component SN",
                     "1 Source, 3 Drift, " + Values("i", 23, 25),
                     "1 blank, level 2, rule, clearance 7, keeps 3: 0 Uncertainty",
                     "3 Combined, " + Values("u", 23, 25), "1 blank, keeps 1: 3 Uc(K=1):, 7 1L", "3 Uc(K=2):, 7 2L"}));
}

TEST(TPdfSections, A_formula_that_does_not_fit_stands_one_cell_further_right)
{
    TExportLines lines = Lines_With_Data(1);
    lines.formula.pdf = {",,,Uc(K=1):, ERR", ",,,Uc(K=2):, ERR"};
    EXPECT_EQ(Descriptions(Sections(lines)[2]).mid(5),
              QStringList({"1 blank, keeps 1: 7 Uc(K=1):, 8  ERR", "7 Uc(K=2):, 8  ERR"}));
}

TEST(TPdfSections, Without_lengths_the_labels_stand_alone)
{
    EXPECT_EQ(Descriptions(Sections(Lines_With_Data(0))[2]).mid(0, 3),
              QStringList({"level 1, rule, clearance 7, keeps 6: 3 Position (mm)",
                           "1 blank, level 2, rule, clearance 5: 0 Scale Component SN", "1 Source, 3 Drift"}));
}

TEST(TPdfSections, Without_lines_there_are_no_rows)
{
    for (const TPdfSection& section : Sections({})) {
        EXPECT_TRUE(section.rows.empty());
    }
}
