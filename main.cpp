#include "src/applicationlook.h"
#include "src/norvexaeditor.h"

#include <QApplication>

#include <memory>

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    Set_Application_Look();

    const auto window = std::make_unique<TNorvexaEditor>();
    window->show();

    return QApplication::exec();
}
