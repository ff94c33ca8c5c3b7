#include "tests/faults/savedfile.h"
#include "tests/faults/saveplace.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <random>
#include <string>
#include <thread>

// Processes that save all the time are killed at times left to chance: 20 of each kind of file, and 400 in a long run,
// one with NORVEXA_LONG_RUN set. NORVEXA_SEED gives another chance.

namespace {

int Kills()
{
    return Is_Long_Run() ? 400 : 20;
}

class TSaveKill : public ::testing::TestWithParam<TFileKind>
{
protected:
    QString Target() const { return d_folder.filePath("file"); }

    /// Saves the one file and the other in turn, and says so after each.
    [[noreturn]] void Save_All_The_Time(int progress) const
    {
        const TSavedFile* file = &d_one;

        // What hinders a save ends the process in another way than the kill.
        while (file->Save(Target()).isEmpty() && write(progress, "", 1) == 1) {
            file = file == &d_one ? &d_other : &d_one;
        }
        _exit(1);
    }

    /// How long a save takes that nothing hinders; afterwards the one file is there.
    std::chrono::duration<double> Save_Time() const
    {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(d_one.Save(Target()), QString());
        return std::chrono::steady_clock::now() - start;
    }

    /// Kills a saver some time after so many saves, however busy the machine is. Returns whether it was the signal that
    /// ended the process.
    bool Kill_A_Saver(int saves, std::chrono::duration<double> rest) const
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0) {
            return false;
        }
        const pid_t child = fork();
        if (child == 0) {
            Save_All_The_Time(ends[1]);
        }
        close(ends[1]);
        char done = 0;
        for (int count = 0; count < saves && read(ends[0], &done, 1) == 1; ++count) {
        }
        std::this_thread::sleep_for(rest);
        kill(child, SIGKILL);
        close(ends[0]);
        int status = 0;
        return waitpid(child, &status, 0) == child && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

    QByteArray Bytes() const
    {
        QFile file(Target());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
    }

    /// Takes away what the killed process left beside the target.
    int Remove_Strays() const
    {
        QDir folder(d_folder.path());
        int count = 0;
        for (const QFileInfo& entry :
             folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
            if (entry.fileName() != "file") {
                ++count;
                EXPECT_TRUE(entry.isDir() ? QDir(entry.filePath()).removeRecursively()
                                          : folder.remove(entry.fileName()));
            }
        }
        return count;
    }

    const TSavedFile d_one = TSavedFile(GetParam(), 1, 10);
    const TSavedFile d_other = TSavedFile(GetParam(), 2, 30);
    QTemporaryDir d_folder;
};

} // namespace

TEST_P(TSaveKill, Leaves_a_whole_file_at_any_time)
{
    const int seed = qEnvironmentVariableIsSet("NORVEXA_SEED") ? qEnvironmentVariableIntValue("NORVEXA_SEED") : 1;
    std::mt19937 chance(static_cast<unsigned>(seed));
    int ones = 0;
    int others = 0;
    int strays = 0;

    std::uniform_int_distribution<int> saves(0, 3);
    std::uniform_real_distribution<double> rest(0.0, 1.0);
    const std::chrono::duration<double> save_time = Save_Time();
    for (int count = 0; count < Kills(); ++count) {
        ASSERT_TRUE(Kill_A_Saver(saves(chance), rest(chance) * save_time));
        const QByteArray bytes = Bytes();
        const bool is_one = d_one.Is_Whole_In(bytes);
        const bool is_other = d_other.Is_Whole_In(bytes);
        ASSERT_TRUE(is_one || is_other) << "kill " << count << " of seed " << seed;
        ones += is_one;
        others += is_other;
        strays += Remove_Strays();
    }
    std::printf("%s: killed %d times; %d times the one file was there, %d times the other, 0 damaged, %d strays\n",
                Name_Of(GetParam()), ones + others, ones, others, strays);
    EXPECT_GT(ones, 0);
    EXPECT_GT(others, 0);
}

INSTANTIATE_TEST_SUITE_P(Every, TSaveKill, ::testing::Values(TFileKind::Budget, TFileKind::CSV, TFileKind::PDF),
                         [](const auto& row) { return std::string(Name_Of(row.param)); });
