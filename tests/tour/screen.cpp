#include "tests/tour/screen.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QWidget>

namespace {

// What is still to be painted, on the other side of the display's wire too.
const int PAINTING_MS = 150;

const int ACTIVATION_MS = 500;
const int ACTIVATION_ATTEMPTS = 20;

// What the window manager needs to change its mind after a dialog has closed.
const int SETTLING_MS = 100;

// Smallest file, slowest to write; a PNG loses nothing by it.
const int BEST_COMPRESSION = 0;

QRect With_Tool_Tips(QRect area)
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->windowType() == Qt::ToolTip && window->isVisible()) {
            area |= window->geometry();
        }
    }
    return area;
}

} // namespace

namespace Screen {

bool Make_Active(QWidget* window)
{
    for (int attempt = 0; attempt < ACTIVATION_ATTEMPTS; ++attempt) {
        if (QTest::qWaitForWindowActive(window, ACTIVATION_MS)) {
            QTest::qWait(SETTLING_MS);
        }
        if (window->isActiveWindow()) {
            return true;
        }
        window->activateWindow();
    }
    return false;
}

bool Take_Picture(const QWidget* widget, const QString& file)
{
    return Take_Picture(widget, widget->rect(), file);
}

bool Take_Picture(const QWidget* widget, const QRect& part, const QString& file)
{
    QTest::qWait(PAINTING_MS);
    QScreen* screen = widget->screen();
    const QRect area = With_Tool_Tips(QRect(widget->mapToGlobal(part.topLeft()), part.size())) & screen->geometry();

    return screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(file, "PNG", BEST_COMPRESSION);
}

} // namespace Screen
