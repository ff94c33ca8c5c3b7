// Opens what is left of a budget of 3 kB after every truncation and after mutations at random, and the hostile files,
// each of these in a process of its own: open_hostile_budgets SEED MUTATIONS. Fails where a load crashes, is refused
// without a message, takes more than 3 s or more than 1 GB.

#include "fuzz/budgetfile.h"
#include "src/norvexa.h"
#include "tests/support/hostilefiles.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double LONGEST_TIME = 3.0;
constexpr double LARGEST_MEMORY = 1024.0;
constexpr unsigned int HANGING = 60;
// Tells the program to open one file and end.
constexpr char OPEN[] = "--open";

enum TOutcome
{
    OUTCOME_LOADED = 0,
    OUTCOME_REFUSED,
    OUTCOME_WITHOUT_MESSAGE,
    OUTCOME_CRASHED
};

/// What opening one file came to.
struct TMeasurement
{
    TOutcome outcome = OUTCOME_CRASHED;
    double seconds = 0.0;
    double megabytes = 0.0;
};

/// What opening a kind of files came to.
struct TTally
{
    int outcomes[OUTCOME_CRASHED + 1] = {};
    int unexpected = 0;
    TMeasurement worst;

    void Add(const TMeasurement& measurement);
    bool Is_Good() const;
};

void TTally::Add(const TMeasurement& measurement)
{
    ++outcomes[measurement.outcome];
    worst.seconds = std::max(worst.seconds, measurement.seconds);
    worst.megabytes = std::max(worst.megabytes, measurement.megabytes);
}

bool TTally::Is_Good() const
{
    return outcomes[OUTCOME_WITHOUT_MESSAGE] == 0 && outcomes[OUTCOME_CRASHED] == 0 && unexpected == 0 &&
           worst.seconds <= LONGEST_TIME && worst.megabytes <= LARGEST_MEMORY;
}

void Print(const char* kind, const TTally& tally)
{
    std::printf("%s: %d loaded, %d refused, %d without message, %d crashed, %d unexpected; at most %.2f s, %.0f MB\n",
                kind, tally.outcomes[OUTCOME_LOADED], tally.outcomes[OUTCOME_REFUSED],
                tally.outcomes[OUTCOME_WITHOUT_MESSAGE], tally.outcomes[OUTCOME_CRASHED], tally.unexpected,
                tally.worst.seconds, tally.worst.megabytes);
    std::fflush(stdout);
}

// Opening

double Megabytes(const rusage& usage)
{
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

TOutcome Opened(const QString& file_name, QString* error)
{
    TNorvexa document;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;

    if (document.Load(file_name, &variables, &groups, &input_data)) {
        return OUTCOME_LOADED;
    }
    *error = document.Last_Error();
    return Is_Refusal(*error) ? OUTCOME_REFUSED : OUTCOME_WITHOUT_MESSAGE;
}

TMeasurement Measured()
{
    TMeasurement measurement;
    QString error;
    rusage usage = {};
    const auto start = std::chrono::steady_clock::now();

    alarm(HANGING);
    measurement.outcome = Opened(Budget_File(), &error);
    alarm(0);
    getrusage(RUSAGE_SELF, &usage);
    measurement.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    measurement.megabytes = Megabytes(usage);
    return measurement;
}

int Open_And_Print(const QString& file_name)
{
    QString error;

    alarm(HANGING);
    const TOutcome outcome = Opened(file_name, &error);
    std::printf("%s\n", qUtf8Printable(error.left(150).simplified()));
    return outcome;
}

/// In a process that begins anew, so that neither the memory of this one nor other programs at work count. The time is
/// that of the processor.
TMeasurement Measured_In_Child()
{
    TMeasurement measurement;
    rusage usage = {};
    int status = -1;

    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", "open_hostile_budgets", OPEN, qUtf8Printable(Budget_File()), nullptr);
        _exit(OUTCOME_CRASHED);
    }
    if (child > 0 && wait4(child, &status, 0, &usage) == child && WIFEXITED(status)) {
        measurement.outcome = static_cast<TOutcome>(WEXITSTATUS(status));
    }
    measurement.seconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                          1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
    measurement.megabytes = Megabytes(usage);
    return measurement;
}

// Kinds of files

TTally Open_Truncations()
{
    const QByteArray budget = Small_Budget();
    TTally tally;

    for (int size = 0; size <= budget.size(); ++size) {
        Write_Budget_File(budget.left(size));
        tally.Add(Measured());
    }
    return tally;
}

TTally Open_Mutations(unsigned int seed, int count)
{
    const QByteArray budget = Small_Budget();
    std::mt19937 random(seed);
    TTally tally;

    for (; count > 0; --count) {
        Write_Budget_File(Mutated_Bytes(budget, &random));
        tally.Add(Measured());
    }
    return tally;
}

bool Is_Expected(TOutcome outcome, TOpening expected)
{
    switch (expected) {
    case TOpening::Loads:
        return outcome == OUTCOME_LOADED;
    case TOpening::Refused:
        return outcome == OUTCOME_REFUSED;
    default:
        return outcome == OUTCOME_LOADED || outcome == OUTCOME_REFUSED;
    }
}

TTally Open_Hostile_Files(unsigned int seed)
{
    TTally tally;

    for (const THostileFile& file : Hostile_Files(seed)) {
        Write_Budget_File(file.bytes());
        std::printf("%-50s ", qUtf8Printable(file.name));
        const TMeasurement measurement = Measured_In_Child();
        const bool is_expected = Is_Expected(measurement.outcome, file.expected);

        std::printf("%-50s %s %.2f s %.0f MB%s\n", "", measurement.outcome == OUTCOME_LOADED ? "loaded" : "refused",
                    measurement.seconds, measurement.megabytes, is_expected ? "" : " UNEXPECTED");
        tally.unexpected += is_expected ? 0 : 1;
        tally.Add(measurement);
    }
    return tally;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();

    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: open_hostile_budgets SEED MUTATIONS\n");
        return 2;
    }
    if (arguments.at(1) == OPEN) {
        return Open_And_Print(arguments.at(2));
    }
    const unsigned int seed = arguments.at(1).toUInt();
    // First, since their memory is that of this process.
    const TTally truncations = Open_Truncations();
    const TTally mutations = Open_Mutations(seed, arguments.at(2).toInt());
    const TTally hostile = Open_Hostile_Files(seed);

    Print("Truncations", truncations);
    Print("Mutations", mutations);
    Print("Hostile files", hostile);
    return hostile.Is_Good() && truncations.Is_Good() && mutations.Is_Good() ? 0 : 1;
}
