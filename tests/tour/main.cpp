#include "src/applicationlook.h"
#include "tests/support/darkpalette.h"
#include "tests/tour/examplestour.h"
#include "tests/tour/manualpictures.h"
#include "tests/tour/screenshots.h"
#include "tests/tour/tutorial.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QTextStream>
#include <QTimer>

#include <memory>

namespace {

const int TIME_LIMIT_MS = 5 * 60 * 1000;

const char* const DARK_SCREENSHOTS = "dark-screenshots";

const char* const USAGE =
    "usage: norvexa_tour examples <folder of examples> <empty folder for the results>\n"
    "       norvexa_tour tutorial <chapter> <folder for pictures> <empty folder for exports>\n"
    "       norvexa_tour manual <folder of examples> <folder for pictures> <empty folder for exports>\n"
    "       norvexa_tour screenshots <folder of examples> <folder for pictures>\n"
    "       norvexa_tour dark-screenshots <folder of examples> <folder for pictures>\n";

/// Null where the arguments name no tour.
std::unique_ptr<TTour> Create_Tour(const QStringList& arguments)
{
    const QString name = arguments.value(1);
    const int count = arguments.size() - 2;

    if (name == "examples" && count == 2) {
        return std::make_unique<TExamplesTour>(arguments.at(2), arguments.at(3));
    }
    if (name == "tutorial" && count == 3) {
        return std::make_unique<TTutorial>(arguments.at(2), arguments.at(3), arguments.at(4));
    }
    if (name == "manual" && count == 3) {
        return std::make_unique<TManualPictures>(arguments.at(2), arguments.at(3), arguments.at(4));
    }
    if ((name == "screenshots" || name == DARK_SCREENSHOTS) && count == 2) {
        return std::make_unique<TScreenshots>(arguments.at(2), arguments.at(3));
    }
    return nullptr;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    Set_Application_Look();
    // A caret that blinks would be in one picture and missing in the next.
    QApplication::setCursorFlashTime(0);

    const std::unique_ptr<TTour> tour = Create_Tour(QApplication::arguments());
    if (tour == nullptr) {
        QTextStream(stderr) << USAGE;
        return 2;
    }
    if (QApplication::arguments().value(1) == DARK_SCREENSHOTS) {
        QPalette palette = Dark_Palette();
        QApplication::style()->polish(palette); // as it is done with the colours of a theme
        QApplication::setPalette(palette);
    }
    // A dialog that nobody answers would wait for ever.
    QTimer::singleShot(TIME_LIMIT_MS, [] { qFatal("The tour takes too long"); });
    return tour->Run() ? 0 : 1;
}
