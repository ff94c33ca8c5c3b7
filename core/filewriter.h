#pragma once

#include <QByteArray>
#include <QString>

/// What came of writing a file.
enum class TFileWrite
{
    Done,
    Not_Opened,
    Not_Written ///< not every byte arrived
};

/// Replaces the file `name` by `bytes` in one step: afterwards it is the old file whole or the new one whole. A target
/// that has several links, belongs to another user or group, is no regular file, or stands in a folder that takes no
/// new file, is written in place; a symbolic link is followed, the permissions are kept. On failure
/// `reason` receives the system's error text and the old file is still there; one that was written in place is put back
/// as it was, as far as the device still writes and the file can be read; where it cannot be read, a new content that
/// got in whole stays, with what was behind it if the device does not even cut. Only the end of the process while it
/// writes in place leaves a file that is neither. Calls Ignore_Write_Signals.
TFileWrite Write_Whole_File(const QString& name, const QByteArray& bytes, QString* reason);

/// Makes the process ignore SIGXFSZ and SIGPIPE, so that a file size limit or a reader that has gone arrives as an
/// error of the write and does not end the program.
void Ignore_Write_Signals();
