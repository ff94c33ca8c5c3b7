#include "core/filewriter.h"

#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

namespace {

const QByteArray OLD_CONTENT = QByteArray(3000, 'o');
const QByteArray NEW_CONTENT = QByteArray(5000, 'n');

QByteArray Content(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QString Result(const QString& name, const QByteArray& bytes)
{
    QString reason;
    return Write_Whole_File(name, bytes, &reason) ? QString("written") : reason;
}

QString Result_Under_Size_Limit(const QString& name, const QByteArray& bytes)
{
    return In_Child([&]() -> QString {
        const struct rlimit limit = {1000, RLIM_INFINITY};
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 ? Result(name, bytes) : QString("no limit set");
    });
}

} // namespace

class Write_Whole_File_Test : public testing::Test
{
protected:
    Write_Whole_File_Test()
    {
        // For the tests that act as another user.
        QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777));
        QFile file(d_name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(OLD_CONTENT);
    }
    ~Write_Whole_File_Test() override { QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777)); }

    QString Path(const QString& name) const { return d_folder.filePath(name); }
    QStringList Files() const { return QDir(d_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    QTemporaryDir d_folder;
    QString d_name = d_folder.filePath("budget.norvexa");
};

TEST_F(Write_Whole_File_Test, Creates_a_file)
{
    EXPECT_EQ(Result(Path("new.norvexa"), NEW_CONTENT), "written");
    EXPECT_EQ(Content(Path("new.norvexa")), NEW_CONTENT);
}

TEST_F(Write_Whole_File_Test, Replaces_a_file_and_leaves_nothing_beside_it)
{
    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(Content(d_name), NEW_CONTENT);
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(Write_Whole_File_Test, Replaces_a_file_in_one_step)
{
    QFile reader(d_name);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));

    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(reader.readAll(), OLD_CONTENT) << "who reads the old file reads it to its end";
}

TEST_F(Write_Whole_File_Test, Writes_an_empty_file)
{
    EXPECT_EQ(Result(d_name, QByteArray()), "written");
    EXPECT_EQ(Content(d_name), QByteArray());
}

TEST_F(Write_Whole_File_Test, Writes_a_large_file)
{
    const QByteArray large(20'000'000, 'x');

    EXPECT_EQ(Result(d_name, large), "written");
    EXPECT_EQ(Content(d_name), large);
}

TEST_F(Write_Whole_File_Test, Writes_to_the_longest_name_there_is)
{
    const QString name = Path(QString(255, 'n'));

    EXPECT_EQ(Result(name, NEW_CONTENT), "written");
    EXPECT_EQ(Content(name), NEW_CONTENT);
}

TEST_F(Write_Whole_File_Test, Keeps_the_permissions)
{
    const QFile::Permissions permissions =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(d_name, permissions));

    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(QFile::permissions(d_name), permissions);
}

TEST_F(Write_Whole_File_Test, Follows_symbolic_links)
{
    ASSERT_TRUE(QFile::link("budget.norvexa", Path("relative")));
    ASSERT_TRUE(QFile::link(Path("relative"), Path("absolute")));

    EXPECT_EQ(Result(Path("absolute"), NEW_CONTENT), "written");
    EXPECT_EQ(Content(d_name), NEW_CONTENT);
    EXPECT_FALSE(QFileInfo(d_name).isSymLink());
    EXPECT_TRUE(QFileInfo(Path("relative")).isSymLink());
    EXPECT_TRUE(QFileInfo(Path("absolute")).isSymLink());
}

TEST_F(Write_Whole_File_Test, Creates_the_target_of_a_dangling_link)
{
    ASSERT_TRUE(QFile::link("target", Path("link")));

    EXPECT_EQ(Result(Path("link"), NEW_CONTENT), "written");
    EXPECT_EQ(Content(Path("target")), NEW_CONTENT);
    EXPECT_TRUE(QFileInfo(Path("link")).isSymLink());
}

TEST_F(Write_Whole_File_Test, Writes_a_file_of_several_links_for_all_of_them)
{
    const QString other = Path("other.norvexa");
    ASSERT_EQ(link(QFile::encodeName(d_name).constData(), QFile::encodeName(other).constData()), 0);

    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(Content(other), NEW_CONTENT);

    EXPECT_EQ(Result(other, "short"), "written");
    EXPECT_EQ(Content(d_name), "short");
}

TEST_F(Write_Whole_File_Test, Leaves_a_file_to_its_owner_and_group)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    ASSERT_EQ(chown(QFile::encodeName(d_name).constData(), 65534, 65534), 0);

    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(Content(d_name), NEW_CONTENT);
    EXPECT_EQ(QFileInfo(d_name).ownerId(), 65534U);
    EXPECT_EQ(QFileInfo(d_name).groupId(), 65534U);
}

TEST_F(Write_Whole_File_Test, Writes_a_writable_file_in_a_folder_that_takes_no_new_one)
{
    QFile::setPermissions(d_name, QFile::Permissions(0x6666));
    QFile::setPermissions(d_folder.path(), QFile::Permissions(0x5555));

    EXPECT_EQ(As_Plain_User([&] { return Result(d_name, NEW_CONTENT); }), "written");
    EXPECT_EQ(Content(d_name), NEW_CONTENT);
}

TEST_F(Write_Whole_File_Test, Reports_a_folder_that_cannot_be_written)
{
    QFile::setPermissions(d_folder.path(), QFile::Permissions(0x5555));

    EXPECT_EQ(As_Plain_User([&] { return Result(Path("new.norvexa"), NEW_CONTENT); }), "Permission denied");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(Write_Whole_File_Test, Reports_a_file_that_cannot_be_written)
{
    QFile::setPermissions(d_name, QFile::Permissions(0x4444));
    QFile::setPermissions(d_folder.path(), QFile::Permissions(0x5555));

    EXPECT_EQ(As_Plain_User([&] { return Result(d_name, NEW_CONTENT); }), "Permission denied");
    EXPECT_EQ(Content(d_name), OLD_CONTENT);
}

TEST_F(Write_Whole_File_Test, Reports_a_missing_folder)
{
    EXPECT_EQ(Result(Path("missing/new.norvexa"), NEW_CONTENT), "No such file or directory");
}

TEST_F(Write_Whole_File_Test, Reports_a_folder)
{
    EXPECT_EQ(Result(d_folder.path(), NEW_CONTENT), "Is a directory");
}

TEST_F(Write_Whole_File_Test, Keeps_the_old_file_when_the_new_one_becomes_too_large)
{
    EXPECT_EQ(Result_Under_Size_Limit(d_name, NEW_CONTENT), "File too large");
    EXPECT_EQ(Content(d_name), OLD_CONTENT);
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(Write_Whole_File_Test, Keeps_the_old_file_when_a_small_one_becomes_too_large)
{
    // Small enough to stay in the buffer until it is flushed.
    EXPECT_EQ(Result_Under_Size_Limit(d_name, QByteArray(1001, 'n')), "File too large");
    EXPECT_EQ(Content(d_name), OLD_CONTENT);
}

TEST_F(Write_Whole_File_Test, Keeps_a_file_of_several_links_that_would_become_too_large)
{
    const QString other = Path("other.norvexa");
    ASSERT_EQ(link(QFile::encodeName(d_name).constData(), QFile::encodeName(other).constData()), 0);

    EXPECT_EQ(Result_Under_Size_Limit(d_name, NEW_CONTENT), "File too large");
    EXPECT_EQ(Content(other), OLD_CONTENT);
}

TEST_F(Write_Whole_File_Test, Reports_a_full_device)
{
    if (!QFile::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no device that is always full";
    }
    EXPECT_EQ(As_Plain_User([] { return Result("/dev/full", NEW_CONTENT); }), "No space left on device");
}

TEST_F(Write_Whole_File_Test, Does_not_wait_for_a_pipe_that_nobody_reads)
{
    const QString pipe_name = Path("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe_name).constData(), 0600), 0);

    EXPECT_EQ(Result(pipe_name, NEW_CONTENT), "No such device or address");
}
