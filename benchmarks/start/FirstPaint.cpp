// SPDX-License-Identifier: MIT
#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QWidget>

#include <csignal>

/// Stops the process (SIGSTOP) when a window is first painted, so that it can be measured from outside: the window with
/// the objectName in FIRST_PAINT_OF, or any window when that is empty.
class StopAtFirstPaint : public QObject {
    Q_OBJECT
public:
    StopAtFirstPaint() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Paint && isAwaited(watched)) {
            qApp->removeEventFilter(this);
            // Queued: the painting goes on until the whole window is in its backing store.
            QMetaObject::invokeMethod(
                this, [] { std::raise(SIGSTOP); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool isAwaited(const QObject *object) const {
        return object->isWidgetType() && static_cast<const QWidget *>(object)->isWindow() &&
               (name_.isEmpty() || object->objectName() == name_);
    }

    const QString name_ = qEnvironmentVariable("FIRST_PAINT_OF");
};

class FirstPaintPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpaint.json")

public:
    QObject *create(const QString &, const QString &) override { return new StopAtFirstPaint; }
};

#include "FirstPaint.moc"
