#pragma once

#include <QList>
#include <QRandomGenerator>

/// The one source of chance of a run: the same seed draws the same numbers in the same order.
class TRandom
{
public:
    explicit TRandom(quint32 seed) : d_generator(seed) {}

    int Below(int bound) { return d_generator.bounded(bound); }
    bool Chance(int percent) { return Below(100) < percent; }

    template <typename TEntry>
    TEntry Pick(const QList<TEntry>& entries)
    {
        return entries.at(Below(entries.size()));
    }

private:
    QRandomGenerator d_generator;
};
