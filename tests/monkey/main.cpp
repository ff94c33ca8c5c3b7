#include "core/readablestyle.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/monkey.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

// Qt's warnings would drown what the monkey says; a view warns of every entry that cannot be edited.
void Stay_Silent(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

int Number(const QCommandLineParser& parser, const QString& option)
{
    return parser.value(option).toInt();
}

int Report(quint32 seed, int events, const QStringList& findings)
{
    if (findings.isEmpty()) {
        std::printf("seed %u: %d events, nothing wrong\n", seed, events);
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
        return Report(seed, events, TMonkey(seed).Play(events, std::max(1, Number(parser, "look"))));
    } catch (const std::exception& error) {
        return Report(seed, events, QStringList(error.what()));
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
    qInstallMessageHandler(Stay_Silent);

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
