#include "tests/faults/faultycalls.h"

#include "tests/faults/devicecache.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <type_traits>
#include <unistd.h>
#include <utility>

// Log

TCallLog::TCallLog()
{
    void* memory = mmap(nullptr, sizeof(TShared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        std::abort();
    }
    d_shared = static_cast<TShared*>(memory);
}

TCallLog::~TCallLog()
{
    munmap(d_shared, sizeof(TShared));
}

void TCallLog::Clear()
{
    d_shared->count = 0;
    d_shared->is_met = false;
}

void TCallLog::Add(const char* name, const QByteArray& path)
{
    const int index = d_shared->count;
    if (index < CAPACITY) {
        std::snprintf(d_shared->calls[index], LONGEST, "%s %s", name, path.constData());
        d_shared->count = index + 1;
    }
}

QStringList TCallLog::Calls() const
{
    QStringList calls;
    for (int index = 0; index < d_shared->count; ++index) {
        calls << QFile::decodeName(d_shared->calls[index]);
    }
    return calls;
}

// Watching

namespace {

/// What a call does to the disk. A full one refuses only what takes room.
enum class TEffect
{
    Reads,
    Takes_Room,
    Gives_Back
};

struct TWatch
{
    QByteArray folder;
    TFault fault;
    TCallLog* log = nullptr;
    int count = 0;
    bool is_next_write_refused = false;
    TDeviceCache cache;
};

/// A plain pointer, so that calls that come before or after all constructors meet it, too.
TWatch* g_watch = nullptr;

bool g_reserves_room = true;
bool g_reads_half = false;

/// What the watching itself calls is not watched and leaves `errno` to the watched call.
class TUnwatched
{
public:
    TUnwatched() = default;
    ~TUnwatched()
    {
        g_watch = d_watch;
        errno = d_code;
    }
    Q_DISABLE_COPY(TUnwatched)

    TDeviceCache* Cache() const { return &d_watch->cache; }

private:
    int d_code = errno;
    TWatch* d_watch = std::exchange(g_watch, nullptr);
};

qint64 Size_Of(int file)
{
    const TUnwatched unwatched;
    struct stat status = {};
    return fstat(file, &status) == 0 ? status.st_size : 0;
}

qint64 Place_In(int file)
{
    const TUnwatched unwatched;
    return lseek(file, 0, SEEK_CUR);
}

bool Is_Below(const QByteArray& path)
{
    return path.startsWith(g_watch->folder);
}

QByteArray Path_Of(int descriptor)
{
    std::array<char, 4096> path = {};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    // Not by readlink(), which is watched.
    const ssize_t size = readlinkat(AT_FDCWD, link.constData(), path.data(), path.size());
    return size > 0 ? QByteArray(path.data(), static_cast<int>(size)) : QByteArray();
}

/// The path that a call with a folder and a name means; relative ones are not watched.
QByteArray Path_Of(int folder, const char* name)
{
    const bool is_whole = name != nullptr && name[0] == '/';
    const bool has_folder = folder != AT_FDCWD && !is_whole;
    return has_folder ? Path_Of(folder) + '/' + name : QByteArray(name);
}

[[noreturn]] void Die()
{
    kill(getpid(), SIGKILL);
    std::abort();
}

bool Refuses_Only_Room(int code)
{
    return code == ENOSPC || code == EDQUOT;
}

bool Fails(const TFault& fault, int call, TEffect effect)
{
    if (fault.kind == TFault::FAILURE_FROM_THERE) {
        return call >= fault.call && (effect == TEffect::Takes_Room || !Refuses_Only_Room(fault.code));
    }
    return fault.kind == TFault::FAILURE && call == fault.call;
}

/// Logs the call and says whether the fault is due at it.
bool Is_Due(const char* name, const QByteArray& path)
{
    const bool is_due = g_watch->count++ == g_watch->fault.call;

    g_watch->log->Add(name, path);
    if (is_due) {
        g_watch->log->Set_Met();
    }
    return is_due;
}

template <typename TResult, typename TAct>
TResult Watched(const char* name, TEffect effect, const QByteArray& path, TResult failure, TAct act)
{
    const bool is_due = Is_Due(name, path);
    const TFault& fault = g_watch->fault;

    if (is_due && fault.kind == TFault::KILL_BEFORE) {
        Die();
    }
    if (Fails(fault, g_watch->count - 1, effect)) {
        errno = fault.code;
        return failure;
    }
    const TResult result = act();
    if (is_due && fault.kind == TFault::KILL_AFTER) {
        Die();
    }
    return result;
}

size_t Half(size_t size)
{
    return std::max<size_t>(size / 2, 1);
}

/// How many of its bytes a write takes.
size_t Taken_Size(TFault::TKind kind, size_t size)
{
    if (kind == TFault::EMPTY) {
        return 0;
    }
    return kind == TFault::SHORT || kind == TFault::SHORT_THEN_FAILURE ? Half(size) : size;
}

/// Where no fault comes the kernel is to see no other calls than those of the save.
bool Has_Cache()
{
    return g_watch->fault.kind != TFault::NONE;
}

/// `act` writes at `offset` and returns how many bytes.
template <typename TAct>
ssize_t Cached_Write(int file, qint64 offset, TAct act)
{
    const qint64 old_size = Size_Of(file);
    const ssize_t count = act();

    if (count > 0) {
        const TUnwatched unwatched;
        unwatched.Cache()->Add_Bytes(file, offset, old_size);
    }
    return count;
}

/// `write` writes as many of its bytes as it is told, at `offset` or, if that is negative, at the file's own place.
template <typename TAct>
ssize_t Watched_Write(int descriptor, size_t size, qint64 offset, TAct write)
{
    const TFault& fault = g_watch->fault;
    const auto act = [&](size_t part) -> ssize_t {
        return Has_Cache()
                   ? Cached_Write(descriptor, offset < 0 ? Place_In(descriptor) : offset, [&] { return write(part); })
                   : write(part);
    };
    const bool is_refused = std::exchange(g_watch->is_next_write_refused, false);

    return Watched<ssize_t>("write", TEffect::Takes_Room, Path_Of(descriptor), -1, [&]() -> ssize_t {
        const bool is_due = g_watch->count - 1 == fault.call;
        if (is_refused) {
            errno = fault.code;
            return -1;
        }
        if (is_due && fault.kind == TFault::KILL_MIDWAY) {
            act(Half(size));
            Die();
        }
        g_watch->is_next_write_refused = is_due && fault.kind == TFault::SHORT_THEN_FAILURE;
        return act(is_due ? Taken_Size(fault.kind, size) : size);
    });
}

bool Is_Watched(int descriptor)
{
    return g_watch != nullptr && Is_Below(Path_Of(descriptor));
}

bool Is_Watched(const char* path)
{
    return g_watch != nullptr && path != nullptr && Is_Below(path);
}

bool Is_Watched(int folder, const char* name)
{
    return g_watch != nullptr && Is_Below(Path_Of(folder, name));
}

bool Creates(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

template <typename TAct>
int Watched_Opening(const QByteArray& path, int flags, TAct act)
{
    return Creates(flags) ? Watched("create", TEffect::Takes_Room, path, -1, act)
                          : Watched("open", TEffect::Reads, path, -1, act);
}

mode_t Mode_Argument(int flags, va_list arguments)
{
    return Creates(flags) ? va_arg(arguments, mode_t) : 0;
}

template <typename TAct>
int Watched_Reservation(int file, qint64 end, TAct act)
{
    const auto reserve = [&] {
        if (g_reserves_room) {
            return act();
        }
        errno = EOPNOTSUPP;
        return -1;
    };
    if (!Is_Watched(file)) {
        return reserve();
    }
    const int result = Watched("allocate", TEffect::Takes_Room, Path_Of(file), -1, reserve);
    if (result == 0 && Has_Cache()) {
        const TUnwatched unwatched;
        unwatched.Cache()->Add_Room(file, end);
    }
    return result;
}

/// What a sync loses that fails with the code. One that was interrupted has brought nothing to the disk yet and keeps
/// it all.
void Lose(int file, int code)
{
    const TUnwatched unwatched;
    if (Refuses_Only_Room(code)) {
        unwatched.Cache()->Lose_Beyond_Room(file);
    } else if (code != EINTR) {
        unwatched.Cache()->Lose(file);
    }
}

/// What is written under faults need not outlive the machine, and waiting for the disk takes most of a save. But what a
/// sync fails to bring there is gone, so that who takes no notice of the failure is left with a file that is cut.
template <typename TAct>
int Watched_Sync(int file, TAct act)
{
    const int result =
        Watched("sync", TEffect::Takes_Room, Path_Of(file), -1, [&] { return Has_Cache() ? 0 : act(file); });
    if (result != 0) {
        Lose(file, errno);
    } else if (Has_Cache()) {
        const TUnwatched unwatched;
        unwatched.Cache()->Sync(file);
    }
    return result;
}

/// How much of a file that becomes shorter can still be read at its place.
size_t Readable_Size(int file, size_t size)
{
    if (!g_reads_half) {
        return size;
    }
    const qint64 rest = std::max<qint64>(Size_Of(file) / 2 - Place_In(file), 0);
    return std::min(size, static_cast<size_t>(rest));
}

} // namespace

void Watch_Calls(const QString& folder, const TFault& fault, TCallLog* log)
{
    static TWatch watch;
    watch = {QFile::encodeName(folder), fault, log, 0, false, {}};
    log->Clear();
    g_watch = &watch;
}

void Watch_No_Calls()
{
    g_watch = nullptr;
}

void Reserve_No_Room()
{
    g_reserves_room = false;
}

void Read_Only_Half()
{
    g_reads_half = true;
}

TFullDisk::TFullDisk(const QString& folder)
{
    Watch_Calls(folder, {TFault::FAILURE_FROM_THERE, 0, ENOSPC}, &d_log);
}

// Calls

/// The C library's own one, or what else stands before it, such as a sanitizer.
#define NEXT(call)                                                                                                     \
    ([] {                                                                                                              \
        static const auto next = reinterpret_cast<decltype(&(call))>(dlsym(RTLD_NEXT, #call));                         \
        return next;                                                                                                   \
    }())

#define WATCH_OPEN(call)                                                                                               \
    int call(const char* path, int flags, ...)                                                                         \
    {                                                                                                                  \
        va_list arguments;                                                                                             \
        va_start(arguments, flags);                                                                                    \
        const mode_t mode = Mode_Argument(flags, arguments);                                                           \
        va_end(arguments);                                                                                             \
        const auto act = [=] { return NEXT(call)(path, flags, mode); };                                                \
        return Is_Watched(path) ? Watched_Opening(path, flags, act) : act();                                           \
    }

#define WATCH_OPEN_AT(call)                                                                                            \
    int call(int folder, const char* path, int flags, ...)                                                             \
    {                                                                                                                  \
        va_list arguments;                                                                                             \
        va_start(arguments, flags);                                                                                    \
        const mode_t mode = Mode_Argument(flags, arguments);                                                           \
        va_end(arguments);                                                                                             \
        const auto act = [=] { return NEXT(call)(folder, path, flags, mode); };                                        \
        return Is_Watched(folder, path) ? Watched_Opening(Path_Of(folder, path), flags, act) : act();                  \
    }
// NOLINTBEGIN(bugprone-macro-parentheses): the names have them already.
/// `parameters` and `names` in parentheses, `key` that of them that tells the file.
#define WATCH(result, call, family, effect, parameters, names, key, specifier)                                         \
    result call parameters specifier                                                                                   \
    {                                                                                                                  \
        const auto act = [=] { return NEXT(call) names; };                                                             \
        return Is_Watched(key) ? Watched<result>(family, TEffect::effect, Key_Path(key), Failure<result>(), act)       \
                               : act();                                                                                \
    }

/// The same for two paths of which either may be below the folder.
#define WATCH_MOVE(call, family, parameters, names, from, to)                                                          \
    int call parameters noexcept                                                                                       \
    {                                                                                                                  \
        const auto act = [=] { return NEXT(call) names; };                                                             \
        return Is_Watched(from) || Is_Watched(to) ? Watched(family, TEffect::Takes_Room, QByteArray(to), -1, act)      \
                                                  : act();                                                             \
    }

// NOLINTEND(bugprone-macro-parentheses)

namespace {

QByteArray Key_Path(const char* path)
{
    return path;
}

QByteArray Key_Path(int descriptor)
{
    return Path_Of(descriptor);
}

QByteArray Key_Path(DIR* folder)
{
    return Path_Of(dirfd(folder));
}

bool Is_Watched(DIR* folder)
{
    return g_watch != nullptr && folder != nullptr && Is_Watched(dirfd(folder));
}

template <typename TResult>
TResult Failure()
{
    if constexpr (std::is_pointer_v<TResult>) {
        return nullptr;
    } else {
        return static_cast<TResult>(-1);
    }
}

} // namespace

extern "C" {

// clang-format off
WATCH_OPEN(open)
WATCH_OPEN(open64)
WATCH_OPEN_AT(openat)
WATCH_OPEN_AT(openat64)
WATCH(int, creat, "create", Takes_Room, (const char* path, mode_t mode), (path, mode), path, )
WATCH(int, creat64, "create", Takes_Room, (const char* path, mode_t mode), (path, mode), path, )

ssize_t write(int file, const void* bytes, size_t size)
{
    const auto act = [=](size_t part) { return NEXT(write)(file, bytes, part); };
    return Is_Watched(file) ? Watched_Write(file, size, -1, act) : act(size);
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset)
{
    const auto act = [=](size_t part) { return NEXT(pwrite)(file, bytes, part, offset); };
    return Is_Watched(file) ? Watched_Write(file, size, offset, act) : act(size);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    const auto act = [=](size_t part) { return NEXT(pwrite64)(file, bytes, part, offset); };
    return Is_Watched(file) ? Watched_Write(file, size, offset, act) : act(size);
}

// No save writes by these two; what they wrote no sync could lose.
WATCH(ssize_t, writev, "write", Takes_Room, (int file, const struct iovec* parts, int count), (file, parts, count), file, )
WATCH(ssize_t, sendfile, "write", Takes_Room, (int file, int from, off_t* offset, size_t size),
      (file, from, offset, size), file, noexcept)

int fsync(int file)
{
    return Is_Watched(file) ? Watched_Sync(file, NEXT(fsync)) : NEXT(fsync)(file);
}

int fdatasync(int file)
{
    return Is_Watched(file) ? Watched_Sync(file, NEXT(fdatasync)) : NEXT(fdatasync)(file);
}

/// A close that fails has closed all the same.
int close(int file)
{
    if (!Is_Watched(file)) {
        return NEXT(close)(file);
    }
    const QByteArray path = Path_Of(file);
    bool is_closed = false;
    const int result = Watched("close", TEffect::Takes_Room, path, -1, [&] {
        is_closed = true;
        return NEXT(close)(file);
    });
    const int code = errno;
    if (!is_closed) {
        NEXT(close)(file);
    }
    errno = code;
    return result;
}

ssize_t read(int file, void* bytes, size_t size)
{
    if (!Is_Watched(file)) {
        return NEXT(read)(file, bytes, size);
    }
    return Watched<ssize_t>("read", TEffect::Reads, Path_Of(file), -1,
                            [=] { return NEXT(read)(file, bytes, Readable_Size(file, size)); });
}

WATCH(off_t, lseek, "seek", Reads, (int file, off_t offset, int from), (file, offset, from), file, noexcept)
WATCH(off64_t, lseek64, "seek", Reads, (int file, off64_t offset, int from), (file, offset, from), file, noexcept)

int fallocate(int file, int mode, off_t offset, off_t size)
{
    return Watched_Reservation(file, offset + size, [=] { return NEXT(fallocate)(file, mode, offset, size); });
}

int fallocate64(int file, int mode, off64_t offset, off64_t size)
{
    return Watched_Reservation(file, offset + size, [=] { return NEXT(fallocate64)(file, mode, offset, size); });
}

WATCH(int, ftruncate, "truncate", Gives_Back, (int file, off_t size), (file, size), file, noexcept)
WATCH(int, ftruncate64, "truncate", Gives_Back, (int file, off64_t size), (file, size), file, noexcept)
WATCH(int, truncate, "truncate", Gives_Back, (const char* path, off_t size), (path, size), path, noexcept)
WATCH(int, truncate64, "truncate", Gives_Back, (const char* path, off64_t size), (path, size), path, noexcept)

WATCH_MOVE(rename, "rename", (const char* from, const char* to), (from, to), from, to)
WATCH_MOVE(renameat, "rename", (int from_folder, const char* from, int to_folder, const char* to),
           (from_folder, from, to_folder, to), from, to)
WATCH_MOVE(renameat2, "rename", (int from_folder, const char* from, int to_folder, const char* to, unsigned flags),
           (from_folder, from, to_folder, to, flags), from, to)
WATCH_MOVE(link, "link", (const char* from, const char* to), (from, to), from, to)
WATCH_MOVE(linkat, "link", (int from_folder, const char* from, int to_folder, const char* to, int flags),
           (from_folder, from, to_folder, to, flags), from, to)
WATCH_MOVE(symlink, "link", (const char* from, const char* to), (from, to), to, to)
WATCH(int, unlink, "remove", Gives_Back, (const char* path), (path), path, noexcept)
WATCH(int, rmdir, "remove", Gives_Back, (const char* path), (path), path, noexcept)
WATCH(int, remove, "remove", Gives_Back, (const char* path), (path), path, noexcept)
WATCH(int, mkdir, "mkdir", Takes_Room, (const char* path, mode_t mode), (path, mode), path, noexcept)

WATCH(int, chmod, "chmod", Gives_Back, (const char* path, mode_t mode), (path, mode), path, noexcept)
WATCH(int, fchmod, "chmod", Gives_Back, (int file, mode_t mode), (file, mode), file, noexcept)
WATCH(int, chown, "chown", Takes_Room, (const char* path, uid_t owner, gid_t group), (path, owner, group), path, noexcept)
WATCH(int, fchown, "chown", Takes_Room, (int file, uid_t owner, gid_t group), (file, owner, group), file, noexcept)
WATCH(int, futimens, "chtime", Takes_Room, (int file, const struct timespec* times), (file, times), file, noexcept)

WATCH(int, stat, "stat", Reads, (const char* path, struct stat* status), (path, status), path, noexcept)
WATCH(int, stat64, "stat", Reads, (const char* path, struct stat64* status), (path, status), path, noexcept)
WATCH(int, lstat, "stat", Reads, (const char* path, struct stat* status), (path, status), path, noexcept)
WATCH(int, lstat64, "stat", Reads, (const char* path, struct stat64* status), (path, status), path, noexcept)
WATCH(int, fstat, "stat", Reads, (int file, struct stat* status), (file, status), file, noexcept)
WATCH(int, fstat64, "stat", Reads, (int file, struct stat64* status), (file, status), file, noexcept)
WATCH(int, access, "access", Reads, (const char* path, int mode), (path, mode), path, noexcept)
WATCH(ssize_t, readlink, "readlink", Reads, (const char* path, char* link, size_t size), (path, link, size), path, noexcept)
WATCH(char*, realpath, "realpath", Reads, (const char* path, char* resolved), (path, resolved), path, noexcept)

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    const auto act = [=] { return NEXT(statx)(folder, path, flags, mask, status); };
    return Is_Watched(folder, path) ? Watched("stat", TEffect::Reads, Path_Of(folder, path), -1, act) : act();
}

WATCH(DIR*, opendir, "opendir", Reads, (const char* path), (path), path, )
WATCH(struct dirent*, readdir, "readdir", Reads, (DIR* folder), (folder), folder, )
WATCH(struct dirent64*, readdir64, "readdir", Reads, (DIR* folder), (folder), folder, )
WATCH(int, closedir, "closedir", Reads, (DIR* folder), (folder), folder, )
// clang-format on

} // extern "C"
