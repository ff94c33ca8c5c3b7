#include "benchmarks/ratioreporter.h"
#include "core/readablestyle.h"

#include <QApplication>
#include <QLocale>

#include <benchmark/benchmark.h>

#include <cstdlib>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    QLocale::setDefault(QLocale::c());
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    QApplication::setStyle(new TReadableStyle);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    TRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.Print_Table();
    return reporter.Has_Failed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
