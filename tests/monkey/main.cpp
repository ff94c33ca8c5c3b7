#include "core/readablestyle.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/monkey.h"
#include "tests/monkey/warnings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

int Number(const QCommandLineParser& parser, const QString& option)
{
    return parser.value(option).toInt();
}

int Report(quint32 seed, const QStringList& findings)
{
    if (findings.isEmpty()) {
        return 0;
    }
    Journal::Write();
    std::fprintf(stderr, "\nFound with seed %u:\n%s\n", seed, qPrintable(findings.join('\n')));
    return 1;
}

int Play(const QCommandLineParser& parser)
{
    const auto seed = quint32(Number(parser, "seed"));
    const int events = Number(parser, "events");

    Journal::Start(seed, Number(parser, "from"));
    try {
        TMonkey monkey(seed);
        const QStringList findings = monkey.Play(events, std::max(1, Number(parser, "look")));
        if (findings.isEmpty()) {
            std::printf("seed %u: %d events, nothing wrong in %s\n", seed, events, qPrintable(monkey.Seen()));
        }
        return Report(seed, findings);
    } catch (const std::exception& error) {
        return Report(seed, QStringList(error.what()) + Warnings::Take());
    }
}

} // namespace

int main(int argc, char* argv[])
{
    // Nothing of the user's settings plays a part, and nothing of the user's files is in reach.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qunsetenv("XDG_CONFIG_HOME");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Warnings::Catch();

    const QApplication application(argc, argv);
    QApplication::setStyle(new TReadableStyle);
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.setApplicationDescription("Plays with the main window at random and looks whether all agrees.");
    parser.addHelpOption();
    parser.addOptions({{"seed", "The same seed does the same.", "number", "1"},
                       {"events", "How many events.", "number", "1000"},
                       {"look", "Looks whether all agrees after every so many events.", "number", "100"},
                       {"from", "Writes the events from that one on as they come.", "event", "0"}});
    parser.process(application);
    return Play(parser);
}
