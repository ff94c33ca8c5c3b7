#include "tests/tour/tour.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QTextStream>
#include <QTimer>

namespace {

const int TIME_LIMIT_MS = 5 * 60 * 1000;

} // namespace

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QApplication::setStyle("fusion");
    QApplication::setWindowIcon(QIcon(":/icons/norvexaeditor.png"));

    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "usage: norvexa_tour <folder of examples> <folder for the results>\n";
        return 2;
    }
    // A dialog that nobody answers would wait for ever.
    QTimer::singleShot(TIME_LIMIT_MS, [] { qFatal("The tour takes too long"); });

    TTour tour(arguments.at(1), arguments.at(2));
    const bool succeeded = tour.Run();

    QTextStream(stdout) << "Pictures of every page and the figures (figures.txt) are in "
                        << QDir(arguments.at(2)).absolutePath() << '\n';
    return succeeded ? 0 : 1;
}
