#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QWindow>

namespace {

/// Closes each window that comes up, as by the cross of its frame.
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

/// A program loads it at its start where QT_QPA_GENERIC_PLUGINS names it.
class TClosingWindowPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "closingwindow.json")

public:
    QObject* create(const QString& /*key*/, const QString& /*specification*/) override { return new TClosingWindow; }
};

#include "closingwindow.moc"
