#pragma once

#include "tests/faults/faultycalls.h"
#include "tests/faults/savedfile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <iosfwd>
#include <string>
#include <tuple>
#include <vector>

/// What stands where a file is saved.
enum class TScene
{
    A_File,
    Nothing,
    A_Symbolic_Link,
    A_File_Of_Two_Names, ///< written in place
    A_Shared_File,       ///< the same on a file system that reserves no room, like many of those on a network
    A_Locked_Folder      ///< that takes no new file from the user; its file is written in place
};

/// What a process reported that saved a file.
enum class TReport
{
    Saved,
    Refused,
    Killed,
    Crashed ///< or did not end
};

/// What is found where a file was saved.
enum class TFound
{
    Nothing,
    Old,
    New,
    Damaged
};

/// A folder in which files are saved by child processes, which may come to harm.
class TSavePlace
{
public:
    explicit TSavePlace(TScene scene);

    /// Whether the scene can be set here: only root can act as another user.
    bool Is_Possible() const;
    /// Whether a failure of the device or the end of the process may leave a file that is neither old nor new.
    bool Is_Written_In_Place() const;

    /// The folder below which everything happens, that for temporary files included.
    QString Folder() const { return d_folder.path(); }
    QString Target() const;
    /// What is there before a save.
    static const QByteArray& Old_Content();

    /// Puts everything as it was before any save.
    void Set_Up() const;
    /// Saves in a child process, which calls `prepare` first.
    TReport Save(const TSavedFile& file, const std::function<void()>& prepare) const;

    /// Leaves `room` bytes free on the disk; false if there are fewer already.
    bool Leave_Room(qint64 room) const;

    TFound Found(const TSavedFile& file) const;
    /// Files and folders that were left beside the target.
    QStringList Strays() const;

private:
    QString Path(const QString& name) const { return d_folder.filePath(name); }
    void Make_Target() const;
    bool Has_Two_Names() const;
    bool Is_Cut() const;

    TScene d_scene;
    QTemporaryDir d_folder;
};

/// Which kinds of files are saved over what. Printing takes its time, so that some of it is left to a long run.
using TSaveCase = std::tuple<TFileKind, TScene>;
std::vector<TSaveCase> Every_Save_Case();
/// "Budget_over_A_file"
std::string Name_Of(const TSaveCase& save_case);

/// Whether NORVEXA_LONG_RUN is set.
bool Is_Long_Run();

const char* Name_Of(TScene scene);
void PrintTo(TScene scene, std::ostream* stream);
void PrintTo(TReport report, std::ostream* stream);
void PrintTo(TFound found, std::ostream* stream);

/// Makes this process the user "nobody" where it is root's.
void Become_A_Plain_User();
