// Linked to a program, it ends the program as soon as a window has been painted, without the work of closing it.

#include <QCoreApplication>
#include <QEvent>

#include <cstdlib>

namespace {

/// The window is painted with all that stands in it before the next event, so the program ends there.
class TFirstPaint : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* /*object*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QMetaObject::invokeMethod(
                qApp, [] { std::_Exit(EXIT_SUCCESS); }, Qt::QueuedConnection);
        }
        return false;
    }
};

void Watch_Paint_Events()
{
    qApp->installEventFilter(new TFirstPaint(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(Watch_Paint_Events)
