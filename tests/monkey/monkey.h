#pragma once

#include "src/norvexaeditor.h"
#include "tests/monkey/dialogs.h"
#include "tests/monkey/files.h"
#include "tests/monkey/memory.h"
#include "tests/monkey/random.h"

#include <QStringList>

#include <memory>

/// Plays with the main window at random: the same seed does the same. Every so many events it looks whether the window
/// still agrees with itself and with its files.
class TMonkey
{
public:
    explicit TMonkey(quint32 seed);

    /// Does so many events. Returns what was wrong when it looked, and stops there; empty if nothing was.
    QStringList Play(int events, int events_between_looks);

    /// What it looked at, for who wonders what a run without findings says.
    QString Seen() const;

private:
    void Open_Window();
    void Open_Budget();
    bool Is_Empty() const;
    void Do_Event();
    void Finish_Event();
    void Keep_It_Small();
    void Remove_Components();
    QStringList Look();
    QStringList Unseen(int events) const;

    TRandom d_random;
    TFiles d_files;
    TMemory d_memory;
    TDialogs d_dialogs;
    std::unique_ptr<TNorvexaEditor> d_window;

    // An entry of the tree was renamed after the component lists were filled.
    bool d_lists_are_stale = false;

    int d_reports_seen = 0;
    int d_values_seen = 0;
};
