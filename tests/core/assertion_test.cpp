// Assertions hold in release builds too.
#ifndef NDEBUG
#define NDEBUG
#endif

#include "core/assertion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

using ::testing::Eq;
using ::testing::KilledBySignal;

namespace {

int Checked_Half(int number)
{
    NORVEXA_ASSERT(number % 2 == 0);
    return number / 2;
}

bool Is_Known(int index)
{
    return index < 3;
}

int Checked_Index(int index)
{
    NORVEXA_ASSERT_TEXT(Is_Known(index), "index < names.size()");
    return index;
}

} // namespace

TEST(Assertion, A_condition_that_holds_lets_the_program_go_on)
{
    EXPECT_EQ(Checked_Half(8), 4);
    EXPECT_EQ(Checked_Index(2), 2);
}

TEST(Assertion, A_condition_is_evaluated_once)
{
    int evaluations = 0;

    NORVEXA_ASSERT(++evaluations == 1);
    EXPECT_EQ(evaluations, 1);
}

TEST(Assertion, A_condition_that_fails_prints_one_line_and_aborts_with_ndebug_too)
{
    EXPECT_EXIT(Checked_Half(7), KilledBySignal(SIGABRT),
                Eq("../tests/core/assertion.cpp: Checked_Half: number % 2 == 0\n"));
}

TEST(Assertion, A_stated_text_stands_for_the_condition)
{
    EXPECT_EXIT(Checked_Index(3), KilledBySignal(SIGABRT),
                Eq("../tests/core/assertion.cpp: Checked_Index: index < names.size()\n"));
}

TEST(Assertion, A_failure_in_a_topic_file_names_the_source_of_the_class)
{
    EXPECT_EXIT(Assertion_Failed("../src/norvexa_file.cpp", "Load", "variables"), KilledBySignal(SIGABRT),
                Eq("../src/norvexa.cpp: Load: variables\n"));
}

struct TSourceRow
{
    const char* name;
    const char* file;
    const char* source;
};

class Assertion_Sources : public ::testing::TestWithParam<TSourceRow>
{};

TEST_P(Assertion_Sources, Name_the_source_of_the_class)
{
    EXPECT_EQ(Assertion_Source(GetParam().file), GetParam().source);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Assertion_Sources,
    ::testing::Values(TSourceRow{"Plain", "../core/expression.cpp", "../core/expression.cpp"},
                      TSourceRow{"Topic", "../src/norvexa_evaluation.cpp", "../src/norvexa.cpp"},
                      TSourceRow{"Two_topics", "../src/window_tree_menu.cpp", "../src/window.cpp"},
                      TSourceRow{"Header", "../src/norvexa_file.h", "../src/norvexa.h"},
                      TSourceRow{"Bare_name", "norvexa_file.cpp", "norvexa.cpp"},
                      TSourceRow{"Underscore_in_folder", "/my_work/core/vector2.h", "/my_work/core/vector2.h"},
                      TSourceRow{"No_suffix", "../src/norvexa_file", "../src/norvexa_file"},
                      TSourceRow{"Bare_name_without_suffix", "norvexa_file", "norvexa_file"},
                      TSourceRow{"Underscore_in_suffix", "../src/norvexa.c_x", "../src/norvexa.c_x"},
                      TSourceRow{"Empty", "", ""}),
    [](const auto& row) { return row.param.name; });
