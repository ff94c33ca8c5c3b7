#include "tests/faults/faultycalls.h"
#include "tests/faults/savedfile.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <map>

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
    const TSavedFile file(kinds.at(argv[1]), 2, 20);
    const QString folder = QFileInfo(argv[2]).absolutePath();
    TCallLog log;

    QFile::exists(folder + "/.begin");
    Watch_Calls(folder, TFault(), &log);
    const QString failure = file.Save(argv[2]);
    Watch_No_Calls();
    QFile::exists(folder + "/.end");

    std::puts(log.Calls().join('\n').toUtf8().constData());
    return failure.isEmpty() ? 0 : 1;
}
