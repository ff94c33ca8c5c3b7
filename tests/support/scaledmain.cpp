#include "core/readablestyle.h"
#include "tests/support/processortime.h"

#include <QApplication>

#include <gtest/gtest.h>

// As guimain.cpp, on a screen of the scale that the program is built for.
int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", NORVEXA_SCALE_FACTOR);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new TProcessorTimeLimit);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    QApplication::setStyle(new TReadableStyle);
    return RUN_ALL_TESTS();
}
