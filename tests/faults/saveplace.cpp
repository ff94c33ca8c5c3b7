#include "tests/faults/saveplace.h"

#include "tests/support/childprocess.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStorageInfo>

#include <cstdio>
#include <cstdlib>
#include <grp.h>
#include <ostream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned NOBODY = 65534;

/// No save takes nearly as long.
constexpr unsigned PATIENCE_SECONDS = 30;

constexpr int SAVED = 0;
constexpr int REFUSED = 1;

void Require(bool is_done, const char* what)
{
    if (!is_done) {
        std::perror(what);
        std::abort();
    }
}

void Change_Mode(const QString& path, mode_t mode)
{
    Require(chmod(QFile::encodeName(path).constData(), mode) == 0, "chmod");
}

TReport Report_Of(int status)
{
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) {
        return TReport::Killed;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == SAVED) {
        return TReport::Saved;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == REFUSED ? TReport::Refused : TReport::Crashed;
}

} // namespace

TSavePlace::TSavePlace(TScene scene) : d_scene(scene)
{
    Require(d_folder.isValid(), "folder");
    Change_Mode(d_folder.path(), 0755);
}

bool TSavePlace::Is_Possible() const
{
    return d_scene != TScene::A_Locked_Folder || geteuid() == 0;
}

bool TSavePlace::Is_Written_In_Place() const
{
    return Has_Two_Names() || d_scene == TScene::A_Locked_Folder;
}

bool TSavePlace::Has_Two_Names() const
{
    return d_scene == TScene::A_File_Of_Two_Names || d_scene == TScene::A_Shared_File;
}

QString TSavePlace::Target() const
{
    return Path(d_scene == TScene::A_Symbolic_Link ? "target/link" : "target/file");
}

const QByteArray& TSavePlace::Old_Content()
{
    static const QByteArray CONTENT(3000, 'o');
    return CONTENT;
}

void TSavePlace::Set_Up() const
{
    for (const char* name : {"target", "temporary"}) {
        if (QDir(Path(name)).exists()) {
            Change_Mode(Path(name), 0755);
            QDir(Path(name)).removeRecursively();
        }
        Require(QDir(d_folder.path()).mkdir(name), "mkdir");
    }
    Change_Mode(Path("temporary"), 01777);
    if (d_scene != TScene::Nothing) {
        Make_Target();
    }
}

void TSavePlace::Make_Target() const
{
    const QString name = Path("target/file");
    QFile file(name);

    Require(file.open(QIODevice::WriteOnly) && file.write(Old_Content()) == Old_Content().size(), "old file");
    file.close();
    if (d_scene == TScene::A_Symbolic_Link) {
        Require(QFile::link("file", Target()), "symbolic link");
    }
    if (Has_Two_Names()) {
        Require(link(QFile::encodeName(name).constData(), QFile::encodeName(Path("target/other")).constData()) == 0,
                "link");
    }
    if (d_scene == TScene::A_Locked_Folder) {
        Change_Mode(name, 0666);
        Change_Mode(Path("target"), 0555);
    }
}

TReport TSavePlace::Save(const TSavedFile& file, const std::function<void()>& prepare) const
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(PATIENCE_SECONDS);
        qputenv("TMPDIR", QFile::encodeName(Path("temporary")));
        if (d_scene == TScene::A_Locked_Folder) {
            Become_A_Plain_User();
        }
        if (d_scene == TScene::A_Shared_File) {
            Reserve_No_Room();
        }
        prepare();
        const bool is_saved = file.Save(Target()).isEmpty();
        Watch_No_Calls();
        Hand_Over_Counts();
        _exit(is_saved ? SAVED : REFUSED);
    }
    int status = -1;
    Require(child > 0 && waitpid(child, &status, 0) == child, "child process");
    return Report_Of(status);
}

bool TSavePlace::Leave_Room(qint64 room) const
{
    const qint64 filling = QStorageInfo(d_folder.path()).bytesFree() - room;
    QFile file(Path("temporary/filling"));

    return filling >= 0 && file.open(QIODevice::WriteOnly) && file.write(QByteArray(int(filling), 'f')) == filling;
}

/// A file that took the place of a link, or of one of two names, has cut it from the other.
bool TSavePlace::Is_Cut() const
{
    struct stat status = {};

    return lstat(QFile::encodeName(Target()).constData(), &status) == 0 &&
           ((d_scene == TScene::A_Symbolic_Link && !S_ISLNK(status.st_mode)) ||
            (Has_Two_Names() && status.st_nlink != 2));
}

TFound TSavePlace::Found(const TSavedFile& file) const
{
    if (Is_Cut()) {
        return TFound::Damaged;
    }
    QFile target(Target());
    if (!target.open(QIODevice::ReadOnly)) {
        return target.exists() ? TFound::Damaged : TFound::Nothing;
    }
    const QByteArray bytes = target.readAll();
    if (bytes == Old_Content()) {
        return TFound::Old;
    }
    return file.Is_Whole_In(bytes) ? TFound::New : TFound::Damaged;
}

QStringList TSavePlace::Strays() const
{
    static const QStringList KNOWN = {"target",      "temporary",    "target/file",
                                      "target/link", "target/other", "temporary/filling"};
    QStringList strays;

    QDirIterator entries(d_folder.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString name = QDir(d_folder.path()).relativeFilePath(entries.next());
        if (!KNOWN.contains(name)) {
            strays << name;
        }
    }
    return strays;
}

std::vector<TSaveCase> Every_Save_Case()
{
    std::vector<TSaveCase> cases;
    for (const TFileKind kind : {TFileKind::Budget, TFileKind::CSV, TFileKind::PDF}) {
        for (const TScene scene : {TScene::A_File, TScene::Nothing, TScene::A_Symbolic_Link,
                                   TScene::A_File_Of_Two_Names, TScene::A_Shared_File, TScene::A_Locked_Folder}) {
            // These two are the ways that a document takes: beside its target, and elsewhere.
            const bool is_way = scene == TScene::A_File || scene == TScene::A_Locked_Folder;
            if (kind != TFileKind::PDF || is_way || Is_Long_Run()) {
                cases.emplace_back(kind, scene);
            }
        }
    }
    return cases;
}

std::string Name_Of(const TSaveCase& save_case)
{
    return std::string(Name_Of(std::get<TFileKind>(save_case))) + "_over_" + Name_Of(std::get<TScene>(save_case));
}

bool Is_Long_Run()
{
    return qEnvironmentVariableIsSet("NORVEXA_LONG_RUN");
}

const char* Name_Of(TScene scene)
{
    constexpr const char* NAMES[] = {"A_file",        "Nothing",        "A_symbolic_link", "A_file_of_two_names",
                                     "A_shared_file", "A_locked_folder"};
    return NAMES[static_cast<int>(scene)];
}

void PrintTo(TScene scene, std::ostream* stream)
{
    *stream << Name_Of(scene);
}

void PrintTo(TReport report, std::ostream* stream)
{
    constexpr const char* NAMES[] = {"saved", "refused", "killed", "crashed"};
    *stream << NAMES[static_cast<int>(report)];
}

void PrintTo(TFound found, std::ostream* stream)
{
    constexpr const char* NAMES[] = {"nothing", "old", "new", "damaged"};
    *stream << NAMES[static_cast<int>(found)];
}

void Become_A_Plain_User()
{
    if (geteuid() == 0) {
        Require(setgroups(0, nullptr) == 0 && setgid(NOBODY) == 0 && setuid(NOBODY) == 0, "plain user");
        // Otherwise the process could not look up its own open files any more.
        Require(prctl(PR_SET_DUMPABLE, 1) == 0, "prctl");
    }
}
