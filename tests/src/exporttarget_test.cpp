#include "src/exporttarget.h"

#include "src/reportwidget.h"
#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Targets

struct TTargetRow
{
    const char* name;
    int mode;
    TExportTarget target;
};

const TTargetRow TARGETS[] = {
    {"PDF", 0, {"Enter the name of the PDF to create", "PDF Files (*.pdf)", ".pdf"}},
    {"CSV", 1, {"Enter the name of the CSV to create", "CSV files (*.csv)", ".csv"}},
    {"Another_mode", 2, {"Enter the name of the file to create", "PDF Files (*.pdf);;CSV files (*.csv)", ""}},
    {"A_negative_mode", -1, {"Enter the name of the file to create", "PDF Files (*.pdf);;CSV files (*.csv)", ""}},
};

class TExportTargetOfMode : public ::testing::TestWithParam<TTargetRow>
{};

TEST_P(TExportTargetOfMode, Has_caption_filter_and_suffix)
{
    const TExportTarget target = Export_Target(GetParam().mode);

    EXPECT_EQ(target.caption, GetParam().target.caption);
    EXPECT_EQ(target.filter, GetParam().target.filter);
    EXPECT_EQ(target.suffix, GetParam().target.suffix);
}

INSTANTIATE_TEST_SUITE_P(Table, TExportTargetOfMode, ::testing::ValuesIn(TARGETS),
                         [](const auto& row) { return std::string(row.param.name); });

// Suffixes

struct TSuffixRow
{
    const char* name;
    const char* file_name;
    bool has_suffix;
};

const TSuffixRow SUFFIXES[] = {
    {"None", "/home/a/budget", false},
    {"Its_own", "/home/a/budget.csv", true},
    {"In_capitals", "/home/a/budget.CSV", true},
    {"Another_kind", "/home/a/budget.txt", true},
    {"With_a_digit", "/home/a/budget.mp4", true},
    {"Only_in_the_folder", "/home/a.b/budget", false},
    {"A_version_number", "/home/a/Machine 2.5", false},
    {"A_date", "/home/a/21.11.2026", false},
    {"An_abbreviation", "/home/a/No. one", false},
    {"A_point_at_the_end", "/home/a/budget.", false},
    {"A_hidden_file", "/home/a/.csv", true},
};

class TFileSuffix : public ::testing::TestWithParam<TSuffixRow>
{};

TEST_P(TFileSuffix, Is_told_from_points_in_the_name)
{
    EXPECT_EQ(Has_File_Suffix(GetParam().file_name), GetParam().has_suffix);
}

INSTANTIATE_TEST_SUITE_P(Table, TFileSuffix, ::testing::ValuesIn(SUFFIXES),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
