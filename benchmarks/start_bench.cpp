#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Starts a program with nothing to write to: Qt's remarks about the platform would fill the screen. 0 on failure.
pid_t Started(std::string path)
{
    char* arguments[] = {path.data(), nullptr};
    posix_spawn_file_actions_t actions;
    pid_t child = 0;

    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (posix_spawn(&child, path.c_str(), &actions, nullptr, arguments, environ) != 0) {
        child = 0;
    }
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

/// Runs a program of this folder to its end and returns the time that it took of the processor, in seconds; a negative
/// number if it could not be run or failed.
double Run(const std::string& program)
{
    const std::string folder = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
    const pid_t child = Started(folder + "/" + program);
    int status = 0;
    rusage usage = {};

    if (child == 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != EXIT_SUCCESS) {
        return -1.0;
    }
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

void Start(benchmark::State& state, const char* program)
{
    while (state.KeepRunning()) {
        const double seconds = Run(program);
        if (seconds < 0.0) {
            state.SkipWithError("The program did not show a window.");
            break;
        }
        state.SetIterationTime(seconds);
    }
}

void Editor(benchmark::State& state)
{
    Start(state, "norvexa_first_window");
}

void Empty_Window(benchmark::State& state)
{
    Start(state, "norvexa_empty_window");
}

// A start takes more or less time whatever the program does, so there are many, and the fastest counts.
constexpr int STARTS = 15;

BENCHMARK(Editor)->Name("Start/first_paint/program")->UseManualTime()->Iterations(1)->Repetitions(STARTS);
BENCHMARK(Empty_Window)->Name("Start/first_paint/bare")->UseManualTime()->Iterations(1)->Repetitions(STARTS);

} // namespace
