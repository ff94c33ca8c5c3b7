#include "tests/monkey/warnings.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

QStringList s_warnings;

// The first two are about the platform without a screen, the last one comes with a key that opens an editor on an entry
// that has none.
bool Is_Expected(const QString& message)
{
    static const QStringList EXPECTED = {"This plugin does not support", "QStandardPaths: ", "edit: editing failed"};

    return std::any_of(EXPECTED.begin(), EXPECTED.end(),
                       [&message](const QString& beginning) { return message.startsWith(beginning); });
}

void Note(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    } else if (!Is_Expected(message)) {
        s_warnings << "warning: " + message;
    }
}

} // namespace

void Warnings::Catch()
{
    qInstallMessageHandler(Note);
}

QStringList Warnings::Take()
{
    return std::exchange(s_warnings, {});
}
