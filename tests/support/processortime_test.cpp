#include "tests/support/processortime.h"

#include "tests/support/childprocess.h"

#include <gtest/gtest-spi.h>

#include <ctime>

namespace {

const double BUSY_SECONDS = 0.05;

void Be_Busy()
{
    const std::clock_t end = std::clock() + static_cast<std::clock_t>(BUSY_SECONDS * CLOCKS_PER_SEC);
    while (std::clock() < end) {
    }
}

const ::testing::TestInfo& This_Test()
{
    return *::testing::UnitTest::GetInstance()->current_test_info();
}

} // namespace

TEST(TProcessorTimeLimit, Fails_a_test_that_takes_longer)
{
    TProcessorTimeLimit limit(BUSY_SECONDS / 2.0);
    limit.OnTestStart(This_Test());
    Be_Busy();

    EXPECT_NONFATAL_FAILURE(limit.OnTestEnd(This_Test()), "seconds of processor time: this is a hang");
}

TEST(TProcessorTimeLimit, Fails_a_test_whose_child_process_takes_longer)
{
    TProcessorTimeLimit limit(BUSY_SECONDS / 2.0);
    limit.OnTestStart(This_Test());
    const QString answer = In_Child([]() -> QString {
        Be_Busy();
        return "done";
    });
    EXPECT_EQ(answer.toStdString(), "done");

    EXPECT_NONFATAL_FAILURE(limit.OnTestEnd(This_Test()), "seconds of processor time: this is a hang");
}

TEST(TProcessorTimeLimit, Counts_no_time_from_before_the_test)
{
    TProcessorTimeLimit limit(BUSY_SECONDS);
    for (int test = 0; test < 3; ++test) {
        Be_Busy();
        limit.OnTestStart(This_Test());
        limit.OnTestEnd(This_Test());
    }
}
