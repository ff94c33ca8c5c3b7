#include "tests/monkey/journal.h"

#include <QByteArray>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <execinfo.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

// What a signal handler needs is static and of fixed size, and is written with write() alone.

namespace {

const int EVENTS_KEPT = 50;
const int LONGEST_EVENT = 1000;
const int DEEPEST_STACK = 60;
const unsigned int PATIENCE_SECONDS = 30;
const int CAUGHT_SIGNALS[] = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL};

char s_heading[100];
char s_events[EVENTS_KEPT][LONGEST_EVENT];
int s_event_count = 0;
int s_spoken_from = 0;
bool s_is_spoken = false;
struct sigaction s_former[NSIG];

void Say(const char* text)
{
    // Nothing can be done about a stderr that takes nothing.
    const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
    static_cast<void>(written);
}

void Write_Stack()
{
    void* frames[DEEPEST_STACK];

    backtrace_symbols_fd(frames, backtrace(frames, DEEPEST_STACK), STDERR_FILENO);
}

// The former handler, of a sanitizer or of the system, has the last word: the fault comes again, or is raised again.
void Restore(int signal)
{
    sigaction(signal, &s_former[signal], nullptr);
}

extern "C" void Handle_End(int signal)
{
    Say("\nThe program ended by a signal.\n");
    Journal::Write();
    Write_Stack();
    Restore(signal);
    if (signal == SIGABRT) {
        raise(signal);
    }
}

extern "C" void Handle_Hang(int /*signal*/)
{
    Say("\nThe last event does not come to an end.\n");
    Journal::Write();
    Write_Stack();
    Restore(SIGABRT);
    std::abort();
}

void Catch(int signal, void (*handler)(int))
{
    struct sigaction action = {};

    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, &s_former[signal]);
}

} // namespace

void Journal::Start(quint32 seed, int spoken_from)
{
    std::snprintf(s_heading, sizeof(s_heading), "Seed %u, the last events:\n", seed);
    s_event_count = 0;
    s_spoken_from = spoken_from;
    void* frame = nullptr;
    backtrace(&frame, 1); // The first call allocates; one in a handler must not.

    for (const int signal : CAUGHT_SIGNALS) {
        Catch(signal, Handle_End);
    }
    Catch(SIGALRM, Handle_Hang);
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(Journal::Write);
#endif
}

void Journal::Begin(int event)
{
    std::snprintf(s_events[s_event_count % EVENTS_KEPT], LONGEST_EVENT, "%6d", event);
    ++s_event_count;
    s_is_spoken = s_spoken_from > 0 && event >= s_spoken_from;
    if (s_is_spoken) {
        std::fprintf(stderr, "\n%6d", event);
    }
    alarm(PATIENCE_SECONDS);
}

void Journal::Note(const QString& text)
{
    if (s_event_count == 0) {
        return;
    }
    const QByteArray note = " | " + text.toLatin1();
    char* event = s_events[(s_event_count - 1) % EVENTS_KEPT];

    std::strncat(event, note.constData(), LONGEST_EVENT - std::strlen(event) - 1);
    if (s_is_spoken) {
        std::fputs(note.constData(), stderr);
    }
}

void Journal::Rest()
{
    alarm(0);
}

void Journal::Write()
{
    const int first = s_event_count > EVENTS_KEPT ? s_event_count - EVENTS_KEPT : 0;

    Say(s_heading);
    for (int event = first; event < s_event_count; ++event) {
        Say(s_events[event % EVENTS_KEPT]);
        Say("\n");
    }
}
