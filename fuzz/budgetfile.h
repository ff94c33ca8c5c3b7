#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

/// The one file that a program writes its budgets to, in memory where the system has such a place. It is gone when the
/// program ends.
inline QString Budget_File()
{
    static const QString memory = "/dev/shm";
    static const QTemporaryDir folder((QDir(memory).exists() ? memory : QDir::tempPath()) + "/norvexa-fuzz-XXXXXX");

    return folder.filePath("budget.norvexa");
}

inline void Write_Budget_File(const QByteArray& bytes)
{
    QFile file(Budget_File());

    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("The file cannot be written: %s", qUtf8Printable(file.errorString()));
    }
}
