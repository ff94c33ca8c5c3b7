// What Qt needs for a window: the baseline of the program's start.

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);

    QWidget window;
    window.resize(1101, 801); // as large as the editor
    window.show();

    return QApplication::exec();
}
