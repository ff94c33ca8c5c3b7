#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>

/// Stands between the program that it is linked into and the C library: every call by which files are saved passes
/// here, and one of those that concern files below a watched folder can be made to fail, to write less than it was
/// given, or to be the process's last. A sync that fails loses what the file had not brought to the disk before. As
/// long as nothing is watched all calls pass as they are.

/// What happens at one of the watched calls.
struct TFault
{
    enum TKind
    {
        NONE,
        FAILURE,            ///< this call fails with the code
        FAILURE_FROM_THERE, ///< this one and all later ones; of room alone if the code says that there is none left
        EMPTY,              ///< a write takes none of its bytes and gives no reason
        SHORT,              ///< a write takes half of its bytes
        SHORT_THEN_FAILURE, ///< a write takes half of its bytes, and the next one fails with the code
        KILL_BEFORE,        ///< the process ends before the call
        KILL_MIDWAY,        ///< the process ends when half of the bytes are written
        KILL_AFTER          ///< the process ends after the call
    };

    TKind kind = NONE;
    int call = -1; ///< counted from 0
    int code = 0;  ///< such as ENOSPC
};

/// The watched calls of one process, where another one can read them, even after the first was killed.
class TCallLog
{
public:
    TCallLog();
    ~TCallLog();
    Q_DISABLE_COPY(TCallLog)

    void Clear();
    void Add(const char* name, const QByteArray& path);
    /// "name path" for each call in order. The name is that of the family: all kinds of opening are "open", or "create"
    /// where a new file may come about.
    QStringList Calls() const;

    void Set_Met() { d_shared->is_met = true; }
    /// Whether the call at which the fault was due has come.
    bool Is_Met() const { return d_shared->is_met; }

private:
    static constexpr int CAPACITY = 1000;
    static constexpr int LONGEST = 300;

    struct TShared
    {
        std::atomic_int count;
        std::atomic_bool is_met;
        char calls[CAPACITY][LONGEST];
    };

    TShared* d_shared;
};

/// From now on the calls of this process that concern files below `folder` (an absolute path without links) are
/// logged, and the fault comes at its call.
void Watch_Calls(const QString& folder, const TFault& fault, TCallLog* log);
void Watch_No_Calls();

/// From now on no file system of this process reserves room for a file.
void Reserve_No_Room();

/// From now on no watched file of this process is read beyond its half, as if another one had cut it meanwhile.
void Read_Only_Half();

/// As long as it lives, nothing that takes room succeeds below a folder.
class TFullDisk
{
public:
    explicit TFullDisk(const QString& folder);
    ~TFullDisk() { Watch_No_Calls(); }
    Q_DISABLE_COPY(TFullDisk)

private:
    TCallLog d_log;
};
