#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/mount.h>

/// A small file system in a folder, where mounting is allowed.
class TTinyDisk
{
public:
    explicit TTinyDisk(const QString& folder, int size = 4096) : d_folder(QFile::encodeName(folder))
    {
        const QByteArray options = "mode=0755,size=" + QByteArray::number(size);
        d_is_mounted = mount("tmpfs", d_folder.constData(), "tmpfs", 0, options.constData()) == 0;
    }
    ~TTinyDisk()
    {
        if (d_is_mounted) {
            umount2(d_folder.constData(), MNT_DETACH);
        }
    }
    Q_DISABLE_COPY(TTinyDisk)

    bool Is_Mounted() const { return d_is_mounted; }

private:
    QByteArray d_folder;
    bool d_is_mounted;
};
