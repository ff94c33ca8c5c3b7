#include "core/expression.h"

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <QString>

#include <cmath>
#include <string>
#include <vector>

namespace {

/// The values are short decimals and none is negative: such a value means the same to the program and to muParser.
struct TNamedValue
{
    std::string name;
    double value;
};

const std::vector<TNamedValue> NAMED_VALUES = {
    {"CTEm", 0.0115},     {"CTEc", 0.0103},   {"CTEd", 0.0012},     {"Sr", 0.0005},      {"Td", 1.25},
    {"Tr", 2.5},          {"Tg", 0.5},        {"Sdev", 0.00035},    {"Lc", 4.0},         {"L", 725.0},
    {"Probe", 0.0004},    {"Drift", 0.00025}, {"Flatness", 0.0003}, {"Squareness", 4.8}, {"Cal_U95", 0.0006},
    {"Cosine", 0.000125}, {"Sensor_T", 0.03}, {"Wear", 0.0002},     {"Abbe", 12.5},      {"Pitch_error", 3.2},
};

constexpr int MANY_VARIABLES = 60;

const std::vector<std::string> TEXTS = {
    "0.0017+L/1000000",
    "0.5*L/1000000",
    "Sr/2",
    "Sr/(2*SQRT(3))",
    "Sr*SQRT(2)/SQRT(12)",
    "Sdev",
    "Sdev/SQRT(Lc)",
    "Sdev/SQRT(10)*1.06",
    "CTEm*L*Td/1000",
    "CTEc*L*Td/1000",
    "CTEd*L*Td/1000",
    "CTEd * L * Tr / 2000",
    "SUMSQ(CTEm*Sensor_T, CTEc*0.05)",
    "SUMSQ(0.0003, L/1000000)",
    "SUMSQ(Sr/2, Sdev, Probe)",
    "SUMSQ(Probe, Drift, Wear)*2",
    "SUMSQ(Probe, Drift*Lc, Wear)",
    "SQRT(Probe^2+Drift^2+Wear^2)",
    "SQRT(Probe*Probe+Sr*Sr/12)",
    "Probe*SQRT(Lc)",
    "Probe/(2*SQRT(Lc))",
    "Cal_U95/2",
    "Cal_U95/2+Drift",
    "(Cal_U95/2)^2+Drift^2",
    "SQRT(Cal_U95^2/4+Drift^2)",
    "0.1*CTEm*Tr*L/1000",
    "0.1*CTEc*Tr*L/1000",
    "L*CTEd*(Td+Tr/2)/1000",
    "L*(CTEm-CTEc)*Td/1000",
    "L*CTEm*Sensor_T/1000",
    "L*Pitch_error/1000000",
    "Tg*L/1000*CTEm",
    "Tg*CTEm/SQRT(12)",
    "Tr/2",
    "Tr/SQRT(2)",
    "Tg/(2*SQRT(3))",
    "SUMSQ(Tr/2, Tg/2, Sensor_T)",
    "Sensor_T/2*CTEm*L/1000",
    "0.0002+0.0000005*L",
    "0.0003+L/500000",
    "(0.9+L/400)/1000",
    "(1.2+3*L/1000)/2000",
    "0.00025+1.5*10^(-6)*L",
    "Squareness/1000000*L/2",
    "Squareness*10^(-6)*L",
    "Abbe*4.85*0.000001*2",
    "Flatness/2",
    "Abbe*Pitch_error/206265",
    "L*(1-Cosine^2)^0.5",
    "L*Cosine^2/2",
    "Probe",
    "Flatness/SQRT(3)",
    "Flatness*(L/1000)^2",
    "Flatness*SQRT(L/1000)",
    "Wear*Lc/2",
    "(Probe+Drift)/2",
    "SUMSQ(Sr, Sdev/SQRT(5), Probe, 0.0001)",
    "SQRT(0.3^2+(0.001*L)^2)/1000",
    "0.5*(Sr+Sdev)*(1+L/1000)",
    "SUMSQ(0.00012, CTEd*L*Td/1732)/2",
};

std::string Other_Name(int number)
{
    return "Machine_" + std::to_string(number) + "_axis";
}

TExpression Program_With(int variables)
{
    TExpression expression;

    for (const TNamedValue& variable : NAMED_VALUES) {
        expression.Add_Variable(QString::fromStdString(variable.name), variable.value);
    }
    for (int number = expression.Variable_Count(); number < variables; ++number) {
        expression.Add_Variable(QString::fromStdString(Other_Name(number)), 0.25 * number);
    }
    return expression;
}

double Sum_Of_Squares(const double* values, int count)
{
    double sum = 0.0;
    for (int index = 0; index < count; ++index) {
        sum += values[index] * values[index];
    }
    return std::sqrt(sum);
}

double Square_Root(double value)
{
    return std::sqrt(value);
}

/// muParser with the program's variables and functions. It works on the values themselves, so they come along.
class TBaseline
{
public:
    TBaseline()
    {
        d_parser.DefineFun("SUMSQ", Sum_Of_Squares);
        d_parser.DefineFun("SQRT", Square_Root);
        for (TNamedValue& variable : d_variables) {
            d_parser.DefineVar(variable.name, &variable.value);
        }
    }

    double Evaluate(const std::string& text)
    {
        d_parser.SetExpr(text);
        return d_parser.Eval();
    }

private:
    std::vector<TNamedValue> d_variables = NAMED_VALUES;
    mu::Parser d_parser;
};

std::vector<QString> Texts()
{
    std::vector<QString> texts;
    texts.reserve(TEXTS.size());
    for (const std::string& text : TEXTS) {
        texts.push_back(QString::fromStdString(text));
    }
    return texts;
}

bool Agree(double program, double baseline)
{
    constexpr double TOLERANCE = 1e-12;

    return std::fabs(program - baseline) <= TOLERANCE * std::fabs(baseline);
}

/// The first text of which the program says something else than muParser, with few variables or with many; empty if
/// there is none.
std::string First_Disagreement()
{
    TBaseline baseline;

    for (const int variables : {0, MANY_VARIABLES}) {
        const TExpression expression = Program_With(variables);
        for (const std::string& text : TEXTS) {
            bool is_valid = false;
            const double value = expression.Evaluate(QString::fromStdString(text), &is_valid);
            if (!is_valid || !Agree(value, baseline.Evaluate(text))) {
                return text;
            }
        }
    }
    return {};
}

// Not parts of their callers, so that valgrind finds them by their name and counts nothing else.

__attribute__((noinline)) void Evaluate_All(const TExpression& expression, const std::vector<QString>& texts)
{
    for (const QString& text : texts) {
        benchmark::DoNotOptimize(expression.Evaluate(text, nullptr));
    }
}

__attribute__((noinline)) void Evaluate_All(TBaseline* baseline)
{
    for (const std::string& text : TEXTS) {
        benchmark::DoNotOptimize(baseline->Evaluate(text));
    }
}

void Count_Texts(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(TEXTS.size()));
}

void Evaluate_With(benchmark::State& state, int variables)
{
    static const std::string disagreement = First_Disagreement();
    const TExpression expression = Program_With(variables);
    const std::vector<QString> texts = Texts();

    if (!disagreement.empty()) {
        state.SkipWithError(("muParser has another value for " + disagreement).c_str());
    }
    while (state.KeepRunning()) {
        Evaluate_All(expression, texts);
    }
    Count_Texts(state);
}

void Few_Variables(benchmark::State& state)
{
    Evaluate_With(state, static_cast<int>(NAMED_VALUES.size()));
}

void Many_Variables(benchmark::State& state)
{
    Evaluate_With(state, MANY_VARIABLES);
}

void Mu_Parser(benchmark::State& state)
{
    TBaseline baseline;

    while (state.KeepRunning()) {
        Evaluate_All(&baseline);
    }
    Count_Texts(state);
}

QString Terms(int count)
{
    return "0.5" + QString("+L*0.25").repeated(count - 1);
}

QString Groups(int count)
{
    return QString("(L+").repeated(count) + "1" + QString(")").repeated(count);
}

/// Evaluates a text as many times as it fits into the longest one.
void Evaluate_Long_Text(benchmark::State& state, const QString& text, int times)
{
    const TExpression expression = Program_With(0);
    bool is_valid = false;

    expression.Evaluate(text, &is_valid);
    if (!is_valid) {
        state.SkipWithError("The text is no expression.");
    }
    while (state.KeepRunning()) {
        for (int time = 0; time < times; ++time) {
            benchmark::DoNotOptimize(expression.Evaluate(text, nullptr));
        }
    }
}

void Many_Terms(benchmark::State& state)
{
    Evaluate_Long_Text(state, Terms(10'000), 1);
}

void Fewer_Terms(benchmark::State& state)
{
    Evaluate_Long_Text(state, Terms(1'000), 10);
}

void Many_Groups(benchmark::State& state)
{
    Evaluate_Long_Text(state, Groups(100'000), 1);
}

void Fewer_Groups(benchmark::State& state)
{
    Evaluate_Long_Text(state, Groups(10'000), 10);
}

BENCHMARK(Few_Variables)->Name("Expressions/20_variables/program");
BENCHMARK(Mu_Parser)->Name("Expressions/20_variables/bare");
BENCHMARK(Many_Variables)->Name("Expressions/60_variables/program");
BENCHMARK(Few_Variables)->Name("Expressions/60_variables/bare");
BENCHMARK(Many_Terms)->Name("Expressions/10000_terms/program");
BENCHMARK(Fewer_Terms)->Name("Expressions/10000_terms/bare");
BENCHMARK(Many_Groups)->Name("Expressions/100000_groups/program");
BENCHMARK(Fewer_Groups)->Name("Expressions/100000_groups/bare");

} // namespace
