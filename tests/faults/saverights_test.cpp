#include "tests/faults/savedfile.h"
#include "tests/faults/saveplace.h"
#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

// What becomes of a file that is saved by a user whom its permissions or those of its folder bind.

namespace {

constexpr uid_t ROOT = 0;
constexpr uid_t SOMEBODY = 54321;
constexpr uid_t NOBODY = 65534;

struct TRights
{
    const char* name;
    uid_t folder_owner;
    mode_t folder_mode;
    uid_t file_owner;
    mode_t file_mode; ///< 0: there is no file
    bool is_allowed;
    bool is_replaced; ///< by a new file, not written in place
};

const TRights RIGHTS[] = {
    {"Own_file_in_own_folder", NOBODY, 0755, NOBODY, 0644, true, true},
    {"Own_file_in_locked_folder", ROOT, 0755, NOBODY, 0644, true, false},
    {"Own_file_in_folder_for_all", ROOT, 01777, NOBODY, 0644, true, true},
    {"Own_file_that_is_locked", NOBODY, 0755, NOBODY, 0444, false, false},
    {"Own_file_that_is_locked_in_locked_folder", ROOT, 0755, NOBODY, 0444, false, false},
    {"File_of_root_that_all_may_write", NOBODY, 0755, ROOT, 0666, true, false},
    {"File_of_root_that_all_may_read", NOBODY, 0755, ROOT, 0644, false, false},
    {"File_of_root_that_all_may_write_in_locked_folder", ROOT, 0755, ROOT, 0666, true, false},
    {"File_of_root_that_all_may_write_in_folder_for_all", ROOT, 01777, ROOT, 0666, true, false},
    {"File_of_somebody_that_all_may_write_in_folder_for_all", ROOT, 01777, SOMEBODY, 0666, true, false},
    {"File_of_somebody_that_all_may_read_in_folder_for_all", ROOT, 01777, SOMEBODY, 0644, false, false},
    {"File_that_can_be_written_but_not_read", ROOT, 0755, ROOT, 0622, true, false},
    {"No_file_in_own_folder", NOBODY, 0755, NOBODY, 0, true, true},
    {"No_file_in_locked_folder", ROOT, 0755, NOBODY, 0, false, false},
};

using TParameter = std::tuple<TFileKind, TRights>;

class TSaveRights : public ::testing::TestWithParam<TParameter>
{
protected:
    void SetUp() override
    {
        if (geteuid() != ROOT) {
            GTEST_SKIP() << "only root can give files away";
        }
        ASSERT_EQ(chmod(Name(d_folder.path()).constData(), 0755), 0);
        ASSERT_TRUE(QDir(d_folder.path()).mkdir("folder"));
        Make_Target();
        Set_Rights(Folder(), Rights().folder_owner, Rights().folder_mode);
    }

    static TFileKind Kind() { return std::get<0>(GetParam()); }
    static const TRights& Rights() { return std::get<1>(GetParam()); }
    static bool Is_There() { return Rights().file_mode != 0; }

    QString Folder() const { return d_folder.filePath("folder"); }
    QString Target() const { return d_folder.filePath("folder/file"); }

    /// What the user is told.
    QString Save() const
    {
        return In_Child([this] {
            Become_A_Plain_User();
            return d_file.Save(Target());
        });
    }

    /// What each kind of file says that cannot be opened.
    QString Refusal() const
    {
        switch (Kind()) {
        case TFileKind::Budget:
            return Is_There() ? QString("ERR:  Cannot open file '%1' for writing").arg(Target())
                              : QString("ERR:  Cannot write file '%1'.  Reason: Permission denied").arg(Target());
        case TFileKind::CSV:
            return "ERR:  Permission denied";
        default:
            return "Permission denied";
        }
    }

    QByteArray Bytes() const
    {
        QFile file(Target());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    struct stat Status() const
    {
        struct stat status = {};
        EXPECT_EQ(stat(Name(Target()).constData(), &status), 0);
        return status;
    }

    QStringList Entries() const
    {
        return QDir(Folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    const TSavedFile d_file = TSavedFile(Kind(), 2, 5);
    const QByteArray d_old = QByteArray(50'000, 'o');

private:
    static QByteArray Name(const QString& path) { return QFile::encodeName(path); }

    static void Set_Rights(const QString& path, uid_t owner, mode_t mode)
    {
        ASSERT_EQ(chown(Name(path).constData(), owner, owner), 0);
        ASSERT_EQ(chmod(Name(path).constData(), mode), 0);
    }

    void Make_Target() const
    {
        QFile file(Target());
        if (Is_There()) {
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            ASSERT_EQ(file.write(d_old), d_old.size());
            Set_Rights(Target(), Rights().file_owner, Rights().file_mode);
        }
    }

    QTemporaryDir d_folder;
};

std::string Name_Of_Row(const ::testing::TestParamInfo<TParameter>& row)
{
    return std::string(Name_Of(std::get<0>(row.param))) + "_to_" + std::get<1>(row.param).name;
}

std::vector<TRights> Rights_Of_Files()
{
    std::vector<TRights> rights;
    std::copy_if(std::begin(RIGHTS), std::end(RIGHTS), std::back_inserter(rights),
                 [](const TRights& row) { return row.file_mode != 0; });
    return rights;
}

const auto KINDS = ::testing::Values(TFileKind::Budget, TFileKind::CSV, TFileKind::PDF);

class TSaveRightsOfAFile : public TSaveRights
{};

} // namespace

TEST_P(TSaveRights, Decide_between_the_new_file_and_a_refusal_that_says_why)
{
    EXPECT_EQ(Save(), Rights().is_allowed ? QString() : Refusal());

    EXPECT_EQ(d_file.Is_Whole_In(Bytes()), Rights().is_allowed);
    EXPECT_TRUE(Rights().is_allowed || Bytes() == (Is_There() ? d_old : QByteArray()));
    EXPECT_EQ(Entries(), Rights().is_allowed || Is_There() ? QStringList("file") : QStringList());
}

INSTANTIATE_TEST_SUITE_P(Table, TSaveRights, ::testing::Combine(KINDS, ::testing::ValuesIn(RIGHTS)), Name_Of_Row);

TEST_P(TSaveRightsOfAFile, Stay_as_they_are)
{
    const struct stat before = Status();
    Save();
    const struct stat after = Status();

    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_ino != before.st_ino, Rights().is_replaced);
}

INSTANTIATE_TEST_SUITE_P(Table, TSaveRightsOfAFile, ::testing::Combine(KINDS, ::testing::ValuesIn(Rights_Of_Files())),
                         Name_Of_Row);
