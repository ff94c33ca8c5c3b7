#pragma once

#include <QString>

/// The journal of a run: its last events, kept so that they are written also when the program crashes, ends by a failed
/// assertion or by a sanitizer, or hangs. There is one journal in the program.
namespace Journal {

/// Takes over the signals that end a program. Events from number `spoken_from` on are written to stderr as they come.
void Start(quint32 seed, int spoken_from);

/// Begins the event of that number. It ends with the next one or at Rest(); an event that lasts longer than 30 seconds
/// ends the program.
void Begin(int event);

/// Adds to the event that is going on.
void Note(const QString& text);

/// Nothing is going on until the next event.
void Rest();

/// Writes the seed and the last 50 events to stderr.
void Write();

} // namespace Journal
