#include "tests/support/processortime.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new TProcessorTimeLimit);
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
