#include "benchmarks/reportbudget.h"
#include "benchmarks/reportwindow.h"
#include "core/expression.h"

#include <QFile>
#include <QPlainTextEdit>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int LENGTHS = 120;
constexpr double INCREMENT = 10.0; // mm
constexpr int LOG_DECIMALS = 6;
constexpr int FILE_DECIMALS = 9;

// What is left of an export when everything but its four parts is taken away.

std::vector<double> Evaluations(const QStringList& texts)
{
    TExpression expression;
    std::vector<double> values;

    for (const char* const name : {"CTEm", "CTEc", "CTEd", "Sr", "Td", "Tr", "Tg", "Sdev"}) {
        expression.Add_Variable(name, 0.0115);
    }
    for (int index = 0; index < LENGTHS; ++index) {
        expression.Add_Variable("L", index * INCREMENT);
        expression.Add_Variable("Lc", std::floor(index / 30.0));
        for (const QString& text : texts) {
            values.push_back(expression.Evaluate(text, nullptr));
        }
    }
    return values;
}

int Number_Texts(const std::vector<double>& values)
{
    int size = 0;
    for (const double value : values) {
        size += QString::number(value, 'f', LOG_DECIMALS).size();
        size += QString::number(value, 'f', FILE_DECIMALS).size();
    }
    return size;
}

void Write(const QString& file_name, const QByteArray& bytes)
{
    QFile file(file_name);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(bytes);
    }
}

QByteArray Bytes(const QString& file_name)
{
    QFile file(file_name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Export_By_Program(benchmark::State& state)
{
    TReportWindow window;

    while (state.KeepRunning()) {
        state.PauseTiming();
        window.Export_CSV([&state] { state.ResumeTiming(); });
    }
}

void Export_Bare(benchmark::State& state)
{
    TReportWindow window;
    window.Export_CSV([] {});
    const QStringList texts = Expressions(Report_Budget());
    const QString log = window.Log_Text();
    const QByteArray bytes = Bytes(window.Exported_File());

    while (state.KeepRunning()) {
        state.PauseTiming();
        auto view = std::make_unique<QPlainTextEdit>();
        view->setReadOnly(true);
        view->setLineWrapMode(QPlainTextEdit::NoWrap);
        state.ResumeTiming();
        benchmark::DoNotOptimize(Number_Texts(Evaluations(texts)));
        view->appendPlainText(log);
        Write(window.Exported_File(), bytes);
        state.PauseTiming();
        view.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(Export_By_Program)->Name("Export/csv_1000_items/program")->Unit(benchmark::kMillisecond);
BENCHMARK(Export_Bare)->Name("Export/csv_1000_items/bare")->Unit(benchmark::kMillisecond);
