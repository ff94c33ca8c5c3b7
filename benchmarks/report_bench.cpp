#include "benchmarks/reportwindow.h"

#include <QApplication>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

namespace {

QList<QTreeWidgetItem*> Rows(const QList<QStringList>& texts)
{
    QList<QTreeWidgetItem*> rows;
    rows.reserve(texts.size());
    for (const QStringList& row_texts : texts) {
        rows << new QTreeWidgetItem(row_texts);
    }
    return rows;
}

void Report_By_Program(benchmark::State& state)
{
    TReportWindow window;

    while (state.KeepRunning()) {
        window.Show_Report();
    }
}

void Report_Bare(benchmark::State& state)
{
    const QList<QStringList> texts = TReportWindow().Report_Texts();
    QTreeWidget table;
    table.setColumnCount(texts.first().size());
    table.resize(1000, 600);
    table.show();

    while (state.KeepRunning()) {
        table.clear();
        table.addTopLevelItems(Rows(texts));
        for (int column = 0; column < table.columnCount(); ++column) {
            table.resizeColumnToContents(column);
        }
        QApplication::processEvents();
    }
}

void Individual_Report(benchmark::State& state, int items, int times)
{
    TReportWindow window(Individual_Budget(items));

    while (state.KeepRunning()) {
        for (int time = 0; time < times; ++time) {
            window.Show_Report();
        }
    }
}

} // namespace

BENCHMARK(Report_By_Program)->Name("Report/screen_1000_items/program")->Unit(benchmark::kMillisecond);
BENCHMARK(Report_Bare)->Name("Report/screen_1000_items/bare")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Individual_Report, many, 1'000, 1)
    ->Name("Report/individual_1000/program")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Individual_Report, few, 100, 10)->Name("Report/individual_1000/bare")->Unit(benchmark::kMillisecond);
