#include "core/readablestyle.h"
#include "tests/support/processortime.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new TProcessorTimeLimit);
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    QApplication::setStyle(new TReadableStyle);
    return RUN_ALL_TESTS();
}
