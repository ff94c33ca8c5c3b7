// Compares TExpression with the literal rules on expressions at random: compare_expressions SEED COUNT.
// Every difference is printed; any makes the program fail.

#include "fuzz/expressioncomparison.h"
#include "tests/support/randomexpression.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace {

constexpr qint64 PROGRESS_STEP = 1'000'000;
constexpr int EXAMPLES = 10;
constexpr int POOL_SIZE = 1000;
constexpr int CASES_PER_TABLE = 8;

struct TCounts
{
    qint64 cases = 0;
    qint64 skipped = 0;
    qint64 valid = 0;
    qint64 endless = 0;
    qint64 differences = 0;
    double slowest = 0.0;
};

/// Cases at random: several texts for each table of variables, some of them changed from earlier ones.
class TCaseMaker
{
public:
    explicit TCaseMaker(unsigned int seed) : d_random(seed) {}

    TExpressionCase Next();

private:
    void New_Variables();
    QString Text();

    TRandomExpression d_random;
    std::vector<TExpression::TVariable> d_variables;
    QStringList d_pool;
    int d_cases_left = 0;
};

TExpressionCase TCaseMaker::Next()
{
    if (d_cases_left-- == 0) {
        New_Variables();
        d_cases_left = CASES_PER_TABLE - 1;
    }
    const QString text = Text();

    if (d_pool.size() < POOL_SIZE) {
        d_pool.append(text);
    } else {
        d_pool[d_random.Below(POOL_SIZE)] = text;
    }
    return {text, d_variables};
}

void TCaseMaker::New_Variables()
{
    QStringList names = {d_random.Below(4) == 0 ? "X" : "3"};

    d_variables = d_random.Variables();
    for (const TExpression::TVariable& variable : d_variables) {
        names.append(variable.name);
    }
    d_random.Set_Names(names);
}

QString TCaseMaker::Text()
{
    switch (d_random.Below(8)) {
    case 0:
        return d_random.Jumble();
    case 1:
    case 2:
        return d_random.Mutated(d_random.Text());
    case 3:
        return d_pool.isEmpty() ? QString() : d_random.Mutated(d_pool.at(d_random.Below(d_pool.size())));
    default:
        return d_random.Text();
    }
}

void Count(const TComparison& comparison, TCounts* counts)
{
    ++counts->cases;
    counts->skipped += comparison.is_comparable ? 0 : 1;
    counts->valid += comparison.is_valid ? 1 : 0;
    counts->endless += comparison.is_endless ? 1 : 0;
    counts->differences += comparison.is_comparable && !comparison.is_equal ? 1 : 0;
    counts->slowest = std::max(counts->slowest, comparison.seconds);
}

void Print(const TCounts& counts)
{
    std::printf("%lld compared: %lld valid, %lld invalid, %lld of these endless by the literal rules; %lld too long; "
                "%lld differences; slowest evaluation %.6f s\n",
                counts.cases - counts.skipped, counts.valid, counts.cases - counts.skipped - counts.valid,
                counts.endless, counts.skipped, counts.differences, counts.slowest);
    std::fflush(stdout);
}

void Show(const char* heading, const TExpressionCase& expression_case)
{
    std::printf("%s\n%s\n\n", heading, qUtf8Printable(Description(expression_case)));
    std::fflush(stdout);
}

TCounts Run(unsigned int seed, qint64 count)
{
    TCaseMaker maker(seed);
    TCounts counts;

    while (counts.cases - counts.skipped < count) {
        const TExpressionCase expression_case = maker.Next();
        const TComparison comparison = Compare(expression_case);

        Count(comparison, &counts);
        if (comparison.is_comparable && !comparison.is_equal) {
            Show("DIFFERENT", expression_case);
        } else if (comparison.is_endless && counts.endless <= EXAMPLES) {
            Show("Endless", expression_case);
        }
        if (counts.cases % PROGRESS_STEP == 0) {
            Print(counts);
        }
    }
    return counts;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const unsigned int seed = arguments.value(1).toUInt();
    const qint64 count = arguments.value(2).toLongLong();

    if (count <= 0) {
        std::fprintf(stderr, "usage: compare_expressions SEED COUNT\n");
        return 2;
    }
    const TCounts counts = Run(seed, count);

    Print(counts);
    return counts.differences == 0 ? 0 : 1;
}
