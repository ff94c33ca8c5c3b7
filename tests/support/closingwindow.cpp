#include "tests/support/closingwindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

namespace {

class TClosingWindow : public QObject
{
public:
    TClosingWindow() { QGuiApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* window = qobject_cast<QWindow*>(object);

        if (event->type() == QEvent::Expose && window != nullptr && window->isExposed()) {
            // Once it is done with being shown.
            QMetaObject::invokeMethod(
                window, [window] { window->close(); }, Qt::QueuedConnection);
        }
        return QObject::eventFilter(object, event);
    }
};

} // namespace

QObject* TClosingWindowPlugin::create(const QString& /*key*/, const QString& /*settings*/)
{
    return new TClosingWindow;
}
