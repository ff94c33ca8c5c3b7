#include "core/readablestyle.h"
#include "src/norvexaeditor.h"

#include <QApplication>
#include <QIcon>

#include <memory>

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QApplication::setStyle(new TReadableStyle);
    QApplication::setWindowIcon(QIcon(":/icons/norvexaeditor.png"));

    const auto window = std::make_unique<TNorvexaEditor>();
    window->show();

    return QApplication::exec();
}
