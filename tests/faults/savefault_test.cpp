#include "tests/faults/faultycalls.h"
#include "tests/faults/savedfile.h"
#include "tests/faults/saveplace.h"
#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

// Every call by which a budget, a CSV file and a PDF are saved fails in turn, or is the last one of its process.
// Printing takes its time, so that a part of what can happen to a PDF is left to a long run, one with NORVEXA_LONG_RUN
// set.

namespace {

/// Larger than what a printer writes at once.
constexpr int COMPONENTS = 20;

struct TFaultRow
{
    const char* name;
    TFault::TKind kind;
    int code;
};

/// That the code of a fault hardly matters shows from the files that are saved quickly.
const TFaultRow FAULTS[] = {
    {"no space", TFault::FAILURE, ENOSPC},
    {"I/O error", TFault::FAILURE, EIO},
    {"quota", TFault::FAILURE, EDQUOT},
    {"interrupted", TFault::FAILURE, EINTR},
    {"not supported", TFault::FAILURE, ENOSYS},
    {"no space from there on", TFault::FAILURE_FROM_THERE, ENOSPC},
    {"I/O error from there on", TFault::FAILURE_FROM_THERE, EIO},
    {"quota from there on", TFault::FAILURE_FROM_THERE, EDQUOT},
    {"empty write", TFault::EMPTY, 0},
    {"short write", TFault::SHORT, 0},
    {"short write, no space", TFault::SHORT_THEN_FAILURE, ENOSPC},
    {"short write, I/O error", TFault::SHORT_THEN_FAILURE, EIO},
    {"killed before", TFault::KILL_BEFORE, 0},
    {"killed midway", TFault::KILL_MIDWAY, 0},
    {"killed after", TFault::KILL_AFTER, 0},
};

bool Is_For_Writes(TFault::TKind kind)
{
    return kind == TFault::EMPTY || kind == TFault::SHORT || kind == TFault::SHORT_THEN_FAILURE ||
           kind == TFault::KILL_MIDWAY;
}

/// Whether a signal may interrupt the call, which then fails with EINTR. A close has closed all the same.
bool Can_Be_Interrupted(const QString& call)
{
    static const QRegularExpression CALLS(
        "^(open|create|read|write|sync|close|allocate|truncate|chmod|chown|opendir|closedir) ");
    return call.contains(CALLS);
}

bool Can_Come(const TFaultRow& row, const QString& call)
{
    const bool is_for_call = !Is_For_Writes(row.kind) || call.startsWith("write ");
    return is_for_call && (row.code != EINTR || Can_Be_Interrupted(call));
}

bool Kills(TFault::TKind kind)
{
    return kind == TFault::KILL_BEFORE || kind == TFault::KILL_MIDWAY || kind == TFault::KILL_AFTER;
}

/// Whether a process that survives could not take away its temporary files.
bool Hinders_Removal(const TFault& fault, const QString& call)
{
    const bool is_removal = call.startsWith("remove ") || call.startsWith("opendir ") || call.startsWith("readdir ") ||
                            call.startsWith("stat ");
    return fault.kind == TFault::FAILURE_FROM_THERE ? fault.code == EIO : fault.kind == TFault::FAILURE && is_removal;
}

struct TTally
{
    int runs = 0;
    int saved = 0;
    int refused = 0;
    int killed = 0;
    int damaged = 0;
    int cut_in_place = 0;
    int false_successes = 0;
    int strays = 0;
};

class TSaveFault : public ::testing::TestWithParam<TSaveCase>
{
protected:
    TSaveFault() : d_file(std::get<TFileKind>(GetParam()), 2, COMPONENTS), d_place(std::get<TScene>(GetParam())) {}

    void SetUp() override
    {
        if (!d_place.Is_Possible()) {
            GTEST_SKIP() << "only root can act as another user";
        }
    }

    TReport Save(const TFault& fault)
    {
        d_place.Set_Up();
        return d_place.Save(d_file, [&] { Watch_Calls(d_place.Folder(), fault, &d_log); });
    }

    /// The calls of a save that nothing hinders.
    QStringList Calls()
    {
        EXPECT_EQ(Save(TFault()), TReport::Saved);
        EXPECT_EQ(d_place.Found(d_file), TFound::New);
        return d_log.Calls();
    }

    TFound Before() const { return std::get<TScene>(GetParam()) == TScene::Nothing ? TFound::Nothing : TFound::Old; }

    /// Where a file is written in place, no more can be promised after the end of the process or of the device. A disk
    /// that is merely full is not its end.
    bool May_Be_Cut(const TFault& fault) const
    {
        return d_place.Is_Written_In_Place() &&
               (Kills(fault.kind) || (fault.kind == TFault::FAILURE_FROM_THERE && fault.code == EIO));
    }

    /// The old file cannot be put back where nothing can be written any more.
    bool May_Stay_New(const TFault& fault) const
    {
        return d_place.Is_Written_In_Place() && fault.kind == TFault::FAILURE_FROM_THERE;
    }

    void Check(const TFault& fault, const QString& call, TTally* tally)
    {
        const TReport report = Save(fault);
        const TFound found = d_place.Found(d_file);
        const QStringList strays = d_place.Strays();
        const bool is_whole = found == TFound::New || found == Before();

        EXPECT_TRUE(d_log.Is_Met());
        EXPECT_EQ(report == TReport::Killed, Kills(fault.kind));
        EXPECT_NE(report, TReport::Crashed);
        EXPECT_TRUE(report != TReport::Saved || found == TFound::New) << "false success";
        EXPECT_TRUE(is_whole || May_Be_Cut(fault)) << "damaged";
        EXPECT_TRUE(report != TReport::Refused || found == Before() || May_Stay_New(fault)) << "false failure";
        if (report != TReport::Killed && !Hinders_Removal(fault, call)) {
            EXPECT_EQ(strays, QStringList());
        }
        ++tally->runs;
        tally->saved += report == TReport::Saved;
        tally->refused += report == TReport::Refused;
        tally->killed += report == TReport::Killed;
        tally->damaged += !is_whole && !May_Be_Cut(fault);
        tally->cut_in_place += !is_whole && May_Be_Cut(fault);
        tally->false_successes += report == TReport::Saved && found != TFound::New;
        tally->strays += !strays.isEmpty();
    }

    static bool Is_Taken(const TFaultRow& row)
    {
        const bool is_repetition =
            row.code == EDQUOT || (row.kind == TFault::FAILURE && row.code != ENOSPC && row.code != EINTR);
        return Is_Long_Run() || std::get<TFileKind>(GetParam()) != TFileKind::PDF || !is_repetition;
    }

    TTally Check_Every_Call(const TFaultRow& row, const QStringList& calls)
    {
        TTally tally;
        for (int index = 0; index < calls.size(); ++index) {
            if (Can_Come(row, calls.at(index))) {
                SCOPED_TRACE(std::string(row.name) + " at call " + std::to_string(index) + ", " +
                             calls.at(index).toStdString());
                Check({row.kind, index, row.code}, calls.at(index), &tally);
            }
        }
        return tally;
    }

    TSavedFile d_file;
    TSavePlace d_place;
    TCallLog d_log;
};

void Print(const char* name, const TTally& tally)
{
    std::printf("%-24s %6d %6d %8d %7d %8d %13d %16d %7d\n", name, tally.runs, tally.saved, tally.refused, tally.killed,
                tally.damaged, tally.cut_in_place, tally.false_successes, tally.strays);
}

/// What the user is told where a file was opened but not written.
QString Refusal(TFileKind kind, const TSavePlace& place, const QString& reason)
{
    return kind == TFileKind::PDF ? reason
                                  : QString("ERR:  Cannot write file '%1'.  Reason: %2").arg(place.Target(), reason);
}

/// The families of the calls of a save that nothing hinders.
QStringList Families(const TSavePlace& place, const TSavedFile& file)
{
    TCallLog log;
    place.Set_Up();
    EXPECT_EQ(place.Save(file, [&] { Watch_Calls(place.Folder(), TFault(), &log); }), TReport::Saved);
    return log.Calls().replaceInStrings(QRegularExpression(" .*"), "");
}

/// What the user is told of a save with a fault.
QString Told(const TSavePlace& place, const TSavedFile& file, const TFault& fault, void (*prepare)() = nullptr)
{
    TCallLog log;
    place.Set_Up();
    const QString told = In_Child([&] {
        if (prepare != nullptr) {
            prepare();
        }
        Watch_Calls(place.Folder(), fault, &log);
        const QString text = file.Save(place.Target());
        Watch_No_Calls();
        return text;
    });
    EXPECT_TRUE(log.Is_Met());
    return told;
}

} // namespace

TEST_P(TSaveFault, Leaves_the_old_file_whole_or_the_new_one_and_tells_which)
{
    const QStringList calls = Calls();
    ASSERT_GT(calls.size(), 5);

    std::printf("%s, %d calls\n", Name_Of(GetParam()).c_str(), static_cast<int>(calls.size()));
    std::printf("%-24s   runs  saved  refused  killed  damaged  cut in place  false successes  strays\n", "fault");
    for (const TFaultRow& row : FAULTS) {
        if (Is_Taken(row)) {
            Print(row.name, Check_Every_Call(row, calls));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, TSaveFault, ::testing::ValuesIn(Every_Save_Case()),
                         [](const auto& row) { return Name_Of(row.param); });

// A folder for all may forbid to create what is another user's, even where that file is there and may be written.
TEST(TSaveInPlace, Opens_the_file_without_the_wish_to_create_it)
{
    const TSavedFile file(TFileKind::CSV, 2, COMPONENTS);
    const TSavePlace place(TScene::A_File_Of_Two_Names);
    TCallLog log;
    place.Set_Up();

    EXPECT_EQ(place.Save(file, [&] { Watch_Calls(place.Folder(), TFault(), &log); }), TReport::Saved);

    EXPECT_EQ(log.Calls().filter(QRegularExpression("^(open|create) ")),
              QStringList({"open " + place.Target(), "open " + place.Target()}));
}

// A disk may have given the room and yet take no byte more, not even those that it holds.
TEST(TSaveInPlace, Leaves_the_old_file_whole_where_nothing_can_be_written_any_more)
{
    const TSavedFile file(TFileKind::CSV, 2, COMPONENTS);
    const TSavePlace place(TScene::A_File_Of_Two_Names);
    TCallLog log;
    place.Set_Up();
    place.Save(file, [&] { Watch_Calls(place.Folder(), TFault(), &log); });
    const int write = log.Calls().indexOf(QRegularExpression("^write .*"));
    ASSERT_GT(write, log.Calls().indexOf(QRegularExpression("^allocate .*")));
    place.Set_Up();

    EXPECT_EQ(place.Save(file,
                         [&] {
                             Watch_Calls(place.Folder(), {TFault::FAILURE_FROM_THERE, write, ENOSPC}, &log);
                         }),
              TReport::Refused);

    EXPECT_EQ(place.Found(file), TFound::Old);
}

TEST(TSaveInPlace, Goes_on_after_an_interrupted_write)
{
    const TSavedFile file(TFileKind::CSV, 2, COMPONENTS);
    const TSavePlace place(TScene::A_File_Of_Two_Names);
    const int write = Families(place, file).indexOf("write");

    EXPECT_EQ(Told(place, file, {TFault::FAILURE, write, EINTR}), "");

    EXPECT_EQ(place.Found(file), TFound::New);
}

// Where there is no room for the new bytes none of the old ones may be touched.
TEST(TSaveInPlace, Is_refused_where_its_room_is_lost_on_the_way_to_the_disk)
{
    const TSavedFile file(TFileKind::CSV, 2, COMPONENTS);
    const TSavePlace place(TScene::A_Shared_File);
    const int sync = Families(place, file).indexOf("sync");

    EXPECT_EQ(Told(place, file, {TFault::FAILURE, sync, ENOSPC}, Reserve_No_Room),
              Refusal(TFileKind::CSV, place, "No space left on device"));

    EXPECT_EQ(place.Found(file), TFound::Old);
}

// Half of the old bytes in front of the new ones would be neither file.
TEST(TSaveInPlace, Leaves_the_new_file_whole_where_the_old_one_cannot_be_read_to_its_end)
{
    const TSavedFile file(TFileKind::CSV, 2, COMPONENTS);
    const TSavePlace place(TScene::A_File_Of_Two_Names);
    const int truncate = Families(place, file).indexOf("truncate");

    EXPECT_EQ(Told(place, file, {TFault::FAILURE, truncate, EIO}, Read_Only_Half),
              Refusal(TFileKind::CSV, place, "Input/output error"));

    EXPECT_EQ(place.Found(file), TFound::New);
}

class TEmptyWrite : public ::testing::TestWithParam<TSaveCase>
{};

// Such a write leaves no error of its own, but an earlier call may have left one.
TEST_P(TEmptyWrite, Is_told_as_a_failure_of_the_device)
{
    const auto [kind, scene] = GetParam();
    const TSavedFile file(kind, 2, COMPONENTS);
    const TSavePlace place(scene);
    const int write = Families(place, file).lastIndexOf("write"); // the earlier ones are the printer's

    EXPECT_EQ(Told(place, file, {TFault::EMPTY, write, 0}), Refusal(kind, place, "Input/output error"));

    EXPECT_EQ(place.Found(file), TFound::Old);
}

INSTANTIATE_TEST_SUITE_P(Every, TEmptyWrite,
                         ::testing::Combine(::testing::Values(TFileKind::Budget, TFileKind::CSV, TFileKind::PDF),
                                            ::testing::Values(TScene::A_File, TScene::A_File_Of_Two_Names)),
                         [](const auto& row) { return Name_Of(row.param); });
