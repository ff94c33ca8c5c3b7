#include "core/filewriter.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

QString System_Reason(int code)
{
    return QString::fromStdString(std::generic_category().message(code));
}

// A new file in the old one's place would cut its links or change what it is and whose.
bool Must_Stay_In_Place(const struct stat& status)
{
    return !S_ISREG(status.st_mode) || status.st_nlink > 1 || status.st_uid != geteuid() || status.st_gid != getegid();
}

struct TTarget
{
    QString name; // of the file itself if it can be replaced, so that no link to it is taken for it
    bool stays_in_place = false;
    int error = 0; // what hinders from finding out more
};

TTarget Find_Target(const QString& name)
{
    const QByteArray path = QFile::encodeName(name);
    struct stat status = {};

    if (stat(path.constData(), &status) != 0) {
        return {name, false, errno == ENOENT ? 0 : errno};
    }
    if (Must_Stay_In_Place(status)) {
        return {name, true, 0};
    }
    const std::unique_ptr<char, decltype(&std::free)> real_path(realpath(path.constData(), nullptr), &std::free);
    return real_path != nullptr ? TTarget{QFile::decodeName(real_path.get()), false, 0} : TTarget{name, false, errno};
}

class TDescriptor
{
public:
    explicit TDescriptor(int descriptor) : d_descriptor(descriptor) {}
    ~TDescriptor()
    {
        if (d_descriptor >= 0) {
            close(d_descriptor);
        }
    }
    Q_DISABLE_COPY(TDescriptor)

    int Get() const { return d_descriptor; }

private:
    int d_descriptor;
};

// Whether the write that just failed may be tried again: after a signal, or when the reader of a full pipe has made
// room within some seconds.
bool Can_Go_On(int descriptor)
{
    constexpr int PATIENCE_MS = 2000;
    struct pollfd target = {descriptor, POLLOUT, 0};

    return errno == EINTR || (errno == EAGAIN && poll(&target, 1, PATIENCE_MS) != 0);
}

bool Write_Bytes(int descriptor, const QByteArray& bytes)
{
    qint64 done = 0;

    while (done < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count == 0) {
            errno = EIO; // no progress and no reason: trying again might never end
        }
        if (count <= 0 && !Can_Go_On(descriptor)) {
            return false;
        }
        done += qMax<qint64>(count, 0);
    }
    return true;
}

// Takes all the room that the new content needs and leaves the old content as it is.
bool Take_Room(int descriptor, qint64 old_size, const QByteArray& bytes)
{
    if (bytes.isEmpty() || fallocate(descriptor, 0, 0, bytes.size()) == 0) {
        return true;
    }
    if (errno != EOPNOTSUPP && errno != ENOSYS) {
        return false;
    }
    // Many network file systems reserve nothing: there the part beyond the old end is written first.
    const int common_size = static_cast<int>(qMin<qint64>(old_size, bytes.size()));
    return lseek(descriptor, common_size, SEEK_SET) == common_size && Write_Bytes(descriptor, bytes.mid(common_size)) &&
           fsync(descriptor) == 0 && lseek(descriptor, 0, SEEK_SET) == 0;
}

// What a file holds before it is overwritten; without all its bytes if they cannot be read.
struct TOldContent
{
    qint64 size = 0;
    QByteArray bytes;
};

TOldContent Old_Content(const QString& name, qint64 size)
{
    // No larger file is read as a budget, so that one was chosen by mistake.
    constexpr qint64 LARGEST_COPY = 64LL * 1024 * 1024;
    QFile file(name);

    if (size > LARGEST_COPY || !file.open(QIODevice::ReadOnly)) {
        return {size, {}};
    }
    return {size, file.readAll()};
}

void Put_Back(int descriptor, const TOldContent& old, bool is_new_whole)
{
    const bool is_known = old.bytes.size() == old.size;
    const bool is_old_whole = is_known && lseek(descriptor, 0, SEEK_SET) == 0 && Write_Bytes(descriptor, old.bytes);
    // What was taken for the rest of a new content that did not get in is not the old one's, even where nothing of it
    // can be written again.
    const bool is_restored =
        (is_old_whole || !is_new_whole) && ftruncate(descriptor, old.size) == 0 && fsync(descriptor) == 0;
    Q_UNUSED(is_restored)
}

// Takes the room first and cuts last, so that a full disk or a size limit shows before the old content is touched.
bool Overwrite(int descriptor, const TOldContent& old, const QByteArray& bytes)
{
    const bool has_room = Take_Room(descriptor, old.size, bytes);
    const bool is_written = has_room && Write_Bytes(descriptor, bytes);
    if (is_written && ftruncate(descriptor, bytes.size()) == 0 && fsync(descriptor) == 0) {
        return true;
    }
    const int code = errno;
    Put_Back(descriptor, old, is_written);
    errno = code;
    return false;
}

bool Write_Opened(int descriptor, const QString& name, const QByteArray& bytes)
{
    struct stat status = {};

    if (fstat(descriptor, &status) != 0) {
        return false;
    }
    return S_ISREG(status.st_mode) ? Overwrite(descriptor, Old_Content(name, status.st_size), bytes)
                                   : Write_Bytes(descriptor, bytes);
}

// Without O_NONBLOCK a pipe that nobody reads would be waited for. A file that is there is opened without O_CREAT:
// with it, the system refuses the file of another user in a folder for all.
int Open_In_Place(const QString& name)
{
    constexpr int FLAGS = O_WRONLY | O_CLOEXEC | O_NONBLOCK;
    constexpr mode_t READ_WRITE_FOR_ALL = 0666;
    const QByteArray path = QFile::encodeName(name);
    const int descriptor = open(path.constData(), FLAGS);

    return descriptor < 0 && errno == ENOENT ? open(path.constData(), FLAGS | O_CREAT, READ_WRITE_FOR_ALL) : descriptor;
}

TFileWrite Write_In_Place(const QString& name, const QByteArray& bytes, QString* reason)
{
    const TDescriptor file(Open_In_Place(name));
    const bool is_open = file.Get() >= 0;

    // Closing brings no error to light that fsync() has not told.
    if (is_open && Write_Opened(file.Get(), name, bytes)) {
        return TFileWrite::Done;
    }
    *reason = System_Reason(errno);
    return is_open ? TFileWrite::Not_Written : TFileWrite::Not_Opened;
}

bool Takes_All(QSaveFile* file, const QByteArray& bytes)
{
    qint64 done = 0;

    // Taking only some bytes is no error yet: the reason comes with the refusal of the next.
    while (done < bytes.size()) {
        errno = EIO; // what the file gives as the reason where a write takes nothing and gives none
        const qint64 count = file->write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0) {
            return false;
        }
        done += count;
    }
    return file->flush() && file->error() == QFileDevice::NoError;
}

TFileWrite Commit(QSaveFile* file, const QByteArray& bytes, QString* reason)
{
    // On a full disk the commit can report success and put a cut file in place, so all is checked before it. A network
    // disk may tell only now that it is full.
    const bool is_taken = Takes_All(file, bytes);
    const bool is_on_disk = is_taken && fsync(file->handle()) == 0;

    if (is_on_disk && file->commit()) {
        return TFileWrite::Done;
    }
    *reason = is_taken && !is_on_disk ? System_Reason(errno) : file->errorString();
    file->cancelWriting();
    return TFileWrite::Not_Written;
}

} // namespace

TFileWrite Write_Whole_File(const QString& name, const QByteArray& bytes, QString* reason)
{
    Ignore_Write_Signals();

    const TTarget target = Find_Target(name);
    if (target.error != 0) {
        *reason = System_Reason(target.error);
        return TFileWrite::Not_Opened;
    }
    QSaveFile file(target.name);
    // Where the folder takes no new file, the old one may still be written.
    if (target.stays_in_place || !file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return Write_In_Place(target.name, bytes, reason);
    }
    return Commit(&file, bytes, reason);
}

void Ignore_Write_Signals()
{
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}
