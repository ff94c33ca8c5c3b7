#pragma once

#include "tests/monkey/random.h"

#include <QHash>
#include <QString>
#include <QTemporaryDir>

/// The files that the monkey opens and writes over: budgets plain, odd, with names twice, cut, and of no kind at all,
/// in a folder of their own.
class TFiles
{
public:
    TFiles();

    /// Makes the files anew, as they were at first.
    void Restore() const;

    QString Path(const QString& name) const;

    /// A file or folder of the set, or one that does not exist; always inside the folder.
    QString Random_Path(TRandom* random) const;

    /// When each file of the folder was written, by its path.
    QHash<QString, qint64> Times() const;

    /// Shorter, for the journal: without the folder.
    QString Name(const QString& path) const;

private:
    void Write(const QString& name, const QByteArray& content) const;

    QTemporaryDir d_folder;
};
