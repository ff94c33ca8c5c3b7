#include "tests/faults/devicecache.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct stat Status(int file)
{
    struct stat status = {};
    fstat(file, &status);
    return status;
}

} // namespace

TDeviceCache::TFile& TDeviceCache::File(int file)
{
    const struct stat status = Status(file);
    return d_files[{status.st_dev, status.st_ino}];
}

void TDeviceCache::Add_Bytes(int file, qint64 offset, qint64 old_size)
{
    TFile& found = File(file);

    if (old_size == 0) {
        found = TFile(); // another file may have had its number before
    }
    if (found.begin == NOTHING) {
        found = {offset, std::max(found.room, old_size)};
    }
    found.begin = std::min(found.begin, offset);
}

void TDeviceCache::Add_Room(int file, qint64 size)
{
    TFile& found = File(file);
    found.room = std::max(found.room, size);
}

void TDeviceCache::Sync(int file)
{
    File(file) = {NOTHING, Status(file).st_size};
}

void TDeviceCache::Lose(int file)
{
    Cut(file, File(file).begin);
}

void TDeviceCache::Lose_Beyond_Room(int file)
{
    const TFile& found = File(file);
    Cut(file, std::max(found.begin, found.room));
}

void TDeviceCache::Cut(int file, qint64 size)
{
    const bool has_bytes = File(file).begin != NOTHING && size < Status(file).st_size;

    if (has_bytes && ftruncate(file, size) != 0) {
        std::perror("loss of what was written"); // it would be taken for safe
        std::abort();
    }
    Sync(file);
}
