#pragma once

#include <gtest/gtest.h>

/// Fails each test that takes longer than `longest` seconds of processor time, child processes that it waited for
/// included:
///
///     ::testing::UnitTest::GetInstance()->listeners().Append(new TProcessorTimeLimit);
///
/// This finds hangs and measures no speed: a loop that became quadratic still comes to its end long before the whole
/// program is stopped, but to whoever waits at the window for what the test does, it hangs.
class TProcessorTimeLimit : public ::testing::EmptyTestEventListener
{
public:
    /// The limit for all tests: 30 s, and six times as much with sanitizers or where coverage is counted; 900 s in the
    /// long run of a test that has one.
    TProcessorTimeLimit();
    explicit TProcessorTimeLimit(double longest);

    void OnTestStart(const ::testing::TestInfo& test) override;
    void OnTestEnd(const ::testing::TestInfo& test) override;

private:
    double d_longest;
    double d_start = 0.0;
};
