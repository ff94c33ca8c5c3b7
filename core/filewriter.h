#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the file `name` by `bytes` in one step: afterwards it is the old file whole or the new one whole. A target
/// that has several links, belongs to another user or group, is no regular file, or stands in a folder that takes no
/// new file, is written in place; a symbolic link is followed, the permissions are kept. Returns whether every byte
/// arrived; on failure `reason` receives the system's error text and the old file is still there, unless a device
/// failed while it was written in place. The first call makes the process ignore SIGXFSZ and SIGPIPE.
bool Write_Whole_File(const QString& name, const QByteArray& bytes, QString* reason);
