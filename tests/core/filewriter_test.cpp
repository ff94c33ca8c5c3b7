#include "core/filewriter.h"

#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

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
    return Write_Whole_File(name, bytes, &reason) == TFileWrite::Done ? QString("written") : reason;
}

QString Result_Under_Size_Limit(const QString& name, const QByteArray& bytes)
{
    return In_Child([&]() -> QString {
        const struct rlimit limit = {1000, RLIM_INFINITY};
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 ? Result(name, bytes) : QString("no limit set");
    });
}

const QString CANNOT_MOUNT = "cannot mount";

// What `act` returns in a child process that alone sees a file system of its own at `target`.
template <typename TAct>
QString With_Mount(const char* source, const QString& target, const char* type, unsigned long flags,
                   const char* options, TAct act)
{
    return In_Child([&]() -> QString {
        const bool is_mounted = unshare(CLONE_NEWNS) == 0 &&
                                mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                                mount(source, QFile::encodeName(target).constData(), type, flags, options) == 0;
        return is_mounted ? act() : CANNOT_MOUNT;
    });
}

// Two names of one file with the old content.
bool Make_Linked_Files(const QString& name, const QString& other)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(OLD_CONTENT) == OLD_CONTENT.size() &&
           link(QFile::encodeName(name).constData(), QFile::encodeName(other).constData()) == 0;
}

// What became of a file: the result and whose content it has.
QString Outcome(const QString& name, const QString& result)
{
    const QByteArray content = Content(name);
    return result + (content == OLD_CONTENT ? ", old" : content == NEW_CONTENT ? ", new" : ", neither");
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
    void TearDown() override { QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777)); }

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

TEST_F(Write_Whole_File_Test, Creates_a_file_with_the_permissions_that_the_mask_leaves)
{
    EXPECT_EQ(In_Child([&]() -> QString {
                  umask(027);
                  return Result(Path("new.norvexa"), NEW_CONTENT);
              }),
              "written");
    EXPECT_EQ(QFile::permissions(Path("new.norvexa")) & 0x0777, QFile::Permissions(0x0640));
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
    ASSERT_TRUE(Make_Linked_Files(Path("linked"), Path("other")));
    for (const QString& name : {d_name, Path("linked")}) {
        for (const mode_t permissions : {0600U, 0640U, 0666U, 0755U}) {
            ASSERT_EQ(chmod(QFile::encodeName(name).constData(), permissions), 0);

            struct stat status = {};
            EXPECT_EQ(Result(name, NEW_CONTENT), "written");
            ASSERT_EQ(stat(QFile::encodeName(name).constData(), &status), 0);
            EXPECT_EQ(status.st_mode & 07777U, permissions) << name.toStdString();
        }
    }
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

TEST_F(Write_Whole_File_Test, Follows_a_link_into_another_folder)
{
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("links"));
    ASSERT_TRUE(QFile::link("../budget.norvexa", Path("links/link")));

    EXPECT_EQ(Result(Path("links/link"), NEW_CONTENT), "written");
    EXPECT_EQ(Content(d_name), NEW_CONTENT);
    EXPECT_EQ(QFileInfo(Path("links/link")).symLinkTarget(), QFileInfo(d_name).absoluteFilePath());
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

TEST_F(Write_Whole_File_Test, Empties_a_file_of_several_links_for_all_of_them)
{
    const QString other = Path("other.norvexa");
    ASSERT_EQ(link(QFile::encodeName(d_name).constData(), QFile::encodeName(other).constData()), 0);

    EXPECT_EQ(Result(d_name, QByteArray()), "written");
    EXPECT_EQ(Content(other), QByteArray());
}

TEST_F(Write_Whole_File_Test, Writes_over_a_file_of_several_links_that_is_too_large_for_a_copy)
{
    const QByteArray name = QFile::encodeName(d_name);
    ASSERT_EQ(link(name.constData(), QFile::encodeName(Path("other.norvexa")).constData()), 0);
    ASSERT_EQ(truncate(name.constData(), 70'000'000), 0);

    EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
    EXPECT_EQ(Content(Path("other.norvexa")), NEW_CONTENT);
}

TEST_F(Write_Whole_File_Test, Leaves_a_file_to_its_owner_and_group)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    const std::pair<uid_t, gid_t> others[] = {{65534, 65534}, {65534, getegid()}, {geteuid(), 65534}};
    for (const auto& [owner, group] : others) {
        ASSERT_EQ(chown(QFile::encodeName(d_name).constData(), owner, group), 0);

        EXPECT_EQ(Result(d_name, NEW_CONTENT), "written");
        EXPECT_EQ(Content(d_name), NEW_CONTENT);
        EXPECT_EQ(QFileInfo(d_name).ownerId(), owner);
        EXPECT_EQ(QFileInfo(d_name).groupId(), group);
    }
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

    for (const int folder : {0x7777, 0x5555}) {
        QFile::setPermissions(d_folder.path(), QFile::Permissions(folder));
        EXPECT_EQ(As_Plain_User([&] { return Result(d_name, NEW_CONTENT); }), "Permission denied");
        EXPECT_EQ(Content(d_name), OLD_CONTENT);
    }
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

TEST_F(Write_Whole_File_Test, Keeps_the_old_file_on_a_full_disk)
{
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("disk"));
    const QByteArray large(200'000, 'n');
    const QString result = With_Mount("none", Path("disk"), "tmpfs", 0, "size=64k", [&]() -> QString {
        const bool is_made =
            QFile::copy(d_name, Path("disk/plain")) && Make_Linked_Files(Path("disk/linked"), Path("disk/other"));
        const QStringList outcomes = {Outcome(Path("disk/plain"), Result(Path("disk/plain"), large)),
                                      Outcome(Path("disk/linked"), Result(Path("disk/linked"), large))};
        const QStringList files = QDir(Path("disk")).entryList(QDir::Files | QDir::Hidden);
        return is_made ? (outcomes + files).join("; ") : QString("no files made");
    });

    if (result == CANNOT_MOUNT) {
        GTEST_SKIP() << "only root can mount a small disk";
    }
    EXPECT_EQ(result, "No space left on device, old; No space left on device, old; linked; other; plain");
}

TEST_F(Write_Whole_File_Test, Keeps_a_file_that_cannot_be_replaced)
{
    // The folder's entry is in use as a mount point, so nothing can be renamed over it.
    const QByteArray name = QFile::encodeName(d_name);
    const QString result = With_Mount(name.constData(), d_name, nullptr, MS_BIND, nullptr,
                                      [&] { return Outcome(d_name, Result(d_name, NEW_CONTENT)); });

    if (result == CANNOT_MOUNT) {
        GTEST_SKIP() << "only root can mount a file";
    }
    EXPECT_EQ(result, "Device or resource busy, old");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(Write_Whole_File_Test, Writes_in_place_where_room_cannot_be_reserved)
{
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("disk"));
    const QString name = Path("disk/file");
    const QString result = With_Mount("none", Path("disk"), "ramfs", 0, nullptr, [&]() -> QString {
        const struct rlimit limit = {4000, RLIM_INFINITY};
        const bool is_made = Make_Linked_Files(name, Path("disk/other"));
        const QStringList outcomes = {
            Outcome(name, Result(name, NEW_CONTENT)), Outcome(name, Result(name, OLD_CONTENT)),
            setrlimit(RLIMIT_FSIZE, &limit) == 0 ? Outcome(name, Result(name, NEW_CONTENT)) : QString("no limit set")};
        return is_made ? outcomes.join("; ") : QString("no files made");
    });

    if (result == CANNOT_MOUNT) {
        GTEST_SKIP() << "only root can mount such a disk";
    }
    EXPECT_EQ(result, "written, new; written, old; File too large, old");
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

class Write_Whole_File_Pipe_Test : public Write_Whole_File_Test
{
protected:
    Write_Whole_File_Pipe_Test()
    {
        const QByteArray name = QFile::encodeName(d_pipe);
        EXPECT_EQ(mkfifo(name.constData(), 0600), 0);
        d_reader = open(name.constData(), O_RDONLY | O_NONBLOCK);
        EXPECT_GE(d_reader, 0);
        EXPECT_EQ(fcntl(d_reader, F_SETFL, 0), 0);
    }
    void TearDown() override
    {
        close(d_reader);
        Write_Whole_File_Test::TearDown();
    }

    // The pipe is open without blocking, and nothing may have been written yet.
    ssize_t Read(char* bytes, size_t size) const
    {
        struct pollfd source = {d_reader, POLLIN, 0};
        return poll(&source, 1, -1) == 1 ? read(d_reader, bytes, size) : -1;
    }

    const QByteArray d_large = QByteArray(1'000'000, 'n');
    const QString d_pipe = Path("pipe");
    int d_reader = -1;
};

TEST_F(Write_Whole_File_Pipe_Test, Writes_more_than_the_pipe_holds)
{
    QByteArray received;
    std::thread reader([&] {
        char buffer[4096];
        while (received.size() < d_large.size()) {
            const ssize_t count = Read(buffer, sizeof buffer);
            if (count <= 0) {
                break;
            }
            received.append(buffer, static_cast<int>(count));
        }
    });

    EXPECT_EQ(Result(d_pipe, d_large), "written");
    reader.join();
    EXPECT_EQ(received, d_large);
}

TEST_F(Write_Whole_File_Pipe_Test, Gives_up_on_a_reader_that_does_not_read)
{
    EXPECT_EQ(Result(d_pipe, d_large), "Resource temporarily unavailable");
}

TEST_F(Write_Whole_File_Pipe_Test, Reports_a_reader_that_has_gone)
{
    std::thread reader([&] {
        char first = 0;
        EXPECT_EQ(Read(&first, 1), 1);
        close(d_reader);
    });

    EXPECT_EQ(Result(d_pipe, d_large), "Broken pipe");
    reader.join();
    d_reader = -1;
}
