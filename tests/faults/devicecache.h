#pragma once

#include <QtGlobal>

#include <map>
#include <utility>

#include <sys/types.h>

/// What a device has taken of the files of one process and not yet brought to the disk. A device that fails to bring it
/// there forgets it and tells so once: the next sync succeeds, and what was written is gone. Files are told apart by
/// what they are, not by name. None of the calls made here may be watched.
class TDeviceCache
{
public:
    /// Bytes were written from `offset` on; `old_size` is what the file had before.
    void Add_Bytes(int file, qint64 offset, qint64 old_size);
    /// The file has its room on the disk as far as `size`.
    void Add_Room(int file, qint64 size);
    /// All is on the disk.
    void Sync(int file);

    /// The file is cut where the first byte stands that is not on the disk.
    void Lose(int file);
    /// The same for a full disk, which loses only what has no room yet: neither what was reserved nor what overwrites
    /// bytes that are on the disk.
    void Lose_Beyond_Room(int file);

private:
    struct TFile
    {
        qint64 begin = NOTHING; ///< of what is not on the disk
        qint64 room = 0;
    };

    static constexpr qint64 NOTHING = -1;

    TFile& File(int file);
    void Cut(int file, qint64 size);

    std::map<std::pair<dev_t, ino_t>, TFile> d_files;
};
