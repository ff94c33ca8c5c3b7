#include "tests/faults/faultycalls.h"
#include "tests/faults/savedfile.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <unistd.h>

// Whether the calls that can be made to fail are all that the kernel sees of a save.

namespace {

/// The family of a system call, under its names on all kinds of machines.
QString Family(const QString& call, const QString& line)
{
    static const std::map<QString, QString> FAMILIES = {
        {"open", "open"},          {"openat", "open"},        {"creat", "create"},      {"write", "write"},
        {"pwrite64", "write"},     {"writev", "write"},       {"sendfile", "write"},    {"fsync", "sync"},
        {"fdatasync", "sync"},     {"close", "close"},        {"read", "read"},         {"lseek", "seek"},
        {"fallocate", "allocate"}, {"ftruncate", "truncate"}, {"truncate", "truncate"}, {"rename", "rename"},
        {"renameat", "rename"},    {"renameat2", "rename"},   {"link", "link"},         {"linkat", "link"},
        {"symlink", "link"},       {"symlinkat", "link"},     {"unlink", "remove"},     {"unlinkat", "remove"},
        {"rmdir", "remove"},       {"mkdir", "mkdir"},        {"mkdirat", "mkdir"},     {"chmod", "chmod"},
        {"fchmod", "chmod"},       {"fchmodat", "chmod"},     {"chown", "chown"},       {"fchown", "chown"},
        {"fchownat", "chown"},     {"utimensat", "chtime"},   {"stat", "stat"},         {"lstat", "stat"},
        {"fstat", "stat"},         {"newfstatat", "stat"},    {"fstatat", "stat"},      {"statx", "stat"},
        {"access", "access"},      {"faccessat", "access"},   {"faccessat2", "access"}, {"getdents64", "readdir"},
    };
    const auto found = FAMILIES.find(call);
    if (found == FAMILIES.end()) {
        return call + " (unknown)";
    }
    const bool creates = found->second == "open" && line.contains(QRegularExpression("O_CREAT|O_TMPFILE"));
    return creates ? QString("create") : found->second;
}

/// The library reads a folder by calls within itself, of which only the first can be watched. All that they can do is
/// to find no file to remove.
bool Is_Of_Reading_A_Folder(const QString& call, const QString& line)
{
    static const QRegularExpression OPEN_FOLDER("^(newfstatat|fstat|getdents64|close)\\(\\d+<[^>]*/\\.export-\\w+>");
    return call == "getdents64" || line.contains(OPEN_FOLDER);
}

class TSavedCalls : public ::testing::TestWithParam<TFileKind>
{
protected:
    void SetUp() override
    {
        if (QProcess::execute("strace", {"-o", Trace_Name(), "true"}) != 0) {
            GTEST_SKIP() << "there is no strace, or it may not trace";
        }
        QFile file(Target());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write("old"), 3);
    }

    QString Target() const { return d_folder.filePath("file"); }
    QString Trace_Name() const { return d_trace.filePath("trace"); }

    /// The calls that the wrappers saw, as families.
    QStringList Watched()
    {
        QProcess saver;
        // Leaks cannot be looked for in a process that is traced.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":detect_leaks=0");
        saver.setProcessEnvironment(environment);
        saver.start("strace",
                    {"-f", "-y", "-s", "200", "-o", Trace_Name(), NORVEXA_SAVER, Name_Of(GetParam()), Target()});
        EXPECT_TRUE(saver.waitForFinished(60'000));
        EXPECT_EQ(saver.exitCode(), 0) << saver.readAllStandardError().toStdString();
        QStringList families;
        for (const QString& line : QString::fromLocal8Bit(saver.readAllStandardOutput()).split('\n')) {
            const QString family = line.section(' ', 0, 0);
            if (!QStringList({"", "realpath", "opendir", "readdir", "closedir"}).contains(family)) {
                families << family;
            }
        }
        return families;
    }

    /// The calls that the kernel saw, as families.
    QStringList Seen() const
    {
        QFile trace(Trace_Name());
        EXPECT_TRUE(trace.open(QIODevice::ReadOnly));
        const QString text = QString::fromLocal8Bit(trace.readAll());
        const QString saving = text.section("/.begin", 1).section("/.end", 0, 0);
        EXPECT_FALSE(saving.isEmpty());
        QStringList families;
        for (const QString& line : saving.split('\n').mid(1)) {
            families << Seen(line.section(QRegularExpression("\\s+"), 1));
        }
        families.removeAll(QString());
        families.removeLast(); // the mark
        return families;
    }

private:
    QString Seen(const QString& line) const
    {
        static const QRegularExpression CALL("^(\\w+)\\(");
        const QString call = CALL.match(line).captured(1);
        // The library follows links by calls within itself, and the wrappers ask what file a descriptor means.
        const bool is_link = call.startsWith("readlink");
        const bool is_of_folder = line.contains("O_DIRECTORY") || Is_Of_Reading_A_Folder(call, line);

        return line.contains(d_folder.path()) && !is_link && !is_of_folder ? Family(call, line) : QString();
    }

    QTemporaryDir d_folder;
    QTemporaryDir d_trace;
};

} // namespace

TEST_P(TSavedCalls, Are_all_that_the_kernel_sees)
{
    const QStringList watched = Watched();

    EXPECT_GT(watched.size(), 10);
    EXPECT_EQ(Seen(), watched);
}

TEST_P(TSavedCalls, Bring_the_bytes_to_the_disk_before_they_take_the_place_of_the_file)
{
    const QString watched = Watched().join(' ');

    EXPECT_TRUE(watched.contains(" write sync ")) << watched.toStdString();
    EXPECT_TRUE(watched.endsWith(" rename")) << watched.toStdString();
}

TEST_P(TSavedCalls, Bring_the_bytes_to_the_disk_of_a_file_written_in_place)
{
    ASSERT_EQ(link(QFile::encodeName(Target()).constData(), QFile::encodeName(Target() + ".other").constData()), 0);

    const QString watched = Watched().join(' ');

    EXPECT_TRUE(watched.endsWith(" write truncate sync close")) << watched.toStdString();
}

TEST_P(TSavedCalls, Are_all_that_the_kernel_sees_of_writing_in_place)
{
    ASSERT_EQ(link(QFile::encodeName(Target()).constData(), QFile::encodeName(Target() + ".other").constData()), 0);
    const QStringList watched = Watched();

    EXPECT_TRUE(watched.contains("allocate"));
    EXPECT_EQ(Seen(), watched);
}

INSTANTIATE_TEST_SUITE_P(Every, TSavedCalls, ::testing::Values(TFileKind::Budget, TFileKind::CSV, TFileKind::PDF),
                         [](const auto& row) { return std::string(Name_Of(row.param)); });
