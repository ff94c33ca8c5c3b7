#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <random>
#include <vector>

/// Budget files that nobody would write: what makes parsers crash, hang or swell.

/// What must come of opening a file.
enum class TOpening
{
    Loads,
    Refused,
    Either ///< loads, or is refused with a message
};

struct THostileFile
{
    QString name; ///< of letters, digits and underscores, different from all others
    TOpening expected;
    std::function<QByteArray()> bytes; ///< made when it is asked for: some files are large
};

/// The same files for the same seed; some of them hold random bytes.
std::vector<THostileFile> Hostile_Files(unsigned int seed);

/// A budget of 3 kB with a record of each kind.
QByteArray Small_Budget();

/// `bytes` with some bytes or pieces of them lost, doubled, moved or swapped for others.
QByteArray Mutated_Bytes(QByteArray bytes, std::mt19937* random);

/// Whether `error` is one of the messages with which a load is refused.
bool Is_Refusal(const QString& error);
