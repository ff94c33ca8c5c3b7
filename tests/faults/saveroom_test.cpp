#include "tests/faults/savedfile.h"
#include "tests/faults/saveplace.h"
#include "tests/support/qtprinters.h"
#include "tests/support/tinydisk.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstdio>
#include <string>

// Files that are too large for the room that is left: on a disk of 64 kB, and under a limit of the size of a file.

namespace {

constexpr int PAGE = 4096;
constexpr int DISK_SIZE = 16 * PAGE;

/// Makes a budget of 33 kB, a CSV file of 29 kB and a PDF of 49 kB.
int Components(TFileKind kind)
{
    return kind == TFileKind::PDF ? 60 : 80;
}

class TSaveRoom : public ::testing::TestWithParam<TSaveCase>
{
protected:
    TSaveRoom() : d_place(std::get<TScene>(GetParam())) {}

    void SetUp() override
    {
        if (!d_place.Is_Possible()) {
            GTEST_SKIP() << "only root can act as another user";
        }
    }

    TFound Before() const { return std::get<TScene>(GetParam()) == TScene::Nothing ? TFound::Nothing : TFound::Old; }

    void Expect_Honest(TReport report) const
    {
        EXPECT_TRUE(report == TReport::Saved || report == TReport::Refused);
        EXPECT_EQ(d_place.Found(d_file), report == TReport::Saved ? TFound::New : Before());
        EXPECT_EQ(d_place.Strays(), QStringList());
    }

    TSavedFile d_file = TSavedFile(std::get<TFileKind>(GetParam()), 2, Components(std::get<TFileKind>(GetParam())));
    TSavePlace d_place;
};

class TSaveOnATinyDisk : public TSaveRoom
{};

class TSaveUnderASizeLimit : public TSaveRoom
{
protected:
    TReport Save_Under(qint64 limit) const
    {
        d_place.Set_Up();
        return d_place.Save(d_file, [limit] {
            const struct rlimit size = {static_cast<rlim_t>(limit), RLIM_INFINITY};
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &size), 0);
        });
    }
};

std::string Name_Of_Row(const ::testing::TestParamInfo<TSaveCase>& row)
{
    return Name_Of(row.param);
}

} // namespace

TEST_P(TSaveOnATinyDisk, Is_whole_or_refused_at_every_level)
{
    const TTinyDisk disk(d_place.Folder(), DISK_SIZE);
    if (!disk.Is_Mounted()) {
        GTEST_SKIP() << "Mounting is not allowed here.";
    }
    int saved = 0;
    int refused = 0;

    for (int room = 0; room < DISK_SIZE; room += PAGE) {
        d_place.Set_Up();
        if (d_place.Leave_Room(room)) {
            SCOPED_TRACE(std::to_string(room) + " bytes are free");
            const TReport report = d_place.Save(d_file, [] {});
            Expect_Honest(report);
            ++(report == TReport::Saved ? saved : refused);
        }
    }
    std::printf("%s: %d saved, %d refused\n", Name_Of(GetParam()).c_str(), saved, refused);
    EXPECT_GE(saved, 2);
    EXPECT_GE(refused, 6);
}

INSTANTIATE_TEST_SUITE_P(Every, TSaveOnATinyDisk, ::testing::ValuesIn(Every_Save_Case()), Name_Of_Row);

TEST_P(TSaveUnderASizeLimit, Is_refused_when_it_gets_too_large)
{
    const qint64 size = d_file.Content().size();

    for (const qint64 limit :
         {qint64(0), qint64(1), qint64(1000), qint64(TSavePlace::Old_Content().size()), size / 2, size - 1}) {
        SCOPED_TRACE(limit);
        const TReport report = Save_Under(limit);
        EXPECT_EQ(report, TReport::Refused);
        Expect_Honest(report);
    }
}

TEST_P(TSaveUnderASizeLimit, Is_saved_when_it_fits)
{
    constexpr int DATE = 100;
    const TReport report = Save_Under(d_file.Content().size() + DATE);

    EXPECT_EQ(report, TReport::Saved);
    Expect_Honest(report);
}

INSTANTIATE_TEST_SUITE_P(Every, TSaveUnderASizeLimit, ::testing::ValuesIn(Every_Save_Case()), Name_Of_Row);
