#include "tests/faults/faultycalls.h"
#include "tests/faults/savedfile.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <exception>
#include <map>

namespace {

bool Save(TFileKind kind, const QString& name)
{
    const TSavedFile file(kind, 2, 20);
    const QString folder = QFileInfo(name).absolutePath();
    TCallLog log;

    QFile::exists(folder + "/.begin");
    Watch_Calls(folder, TFault(), &log);
    const QString failure = file.Save(name);
    Watch_No_Calls();
    QFile::exists(folder + "/.end");

    std::puts(log.Calls().join('\n').toUtf8().constData());
    return failure.isEmpty();
}

} // namespace

// saver Budget|CSV|PDF FILE
// Saves a file and prints the calls below its folder that were watched, so that they can be held against those that
// the kernel saw; for a tracer of the kernel's, looks at ".begin" and ".end" mark the save. Returns 0 if the save was
// reported as a success.
int main(int argc, char* argv[])
{
    const std::map<QString, TFileKind> kinds = {
        {"Budget", TFileKind::Budget}, {"CSV", TFileKind::CSV}, {"PDF", TFileKind::PDF}};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 3 || kinds.count(argv[1]) == 0) {
        std::fputs("usage: saver Budget|CSV|PDF FILE\n", stderr);
        return 2;
    }
    try {
        return Save(kinds.at(argv[1]), argv[2]) ? 0 : 1;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 2;
    }
}
