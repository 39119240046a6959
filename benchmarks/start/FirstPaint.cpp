// SPDX-License-Identifier: MIT
#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QWidget>

#include <csignal>

/// Stops the process where a window is painted for the first time, to be measured from outside: the window whose
/// objectName is in FIRST_PAINT_OF, or the first of any name.
class StopAtFirstPaint : public QObject {
    Q_OBJECT
public:
    StopAtFirstPaint() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Paint && isAwaited(watched)) {
            qApp->removeEventFilter(this);
            // Behind the painting, which goes on until the whole window is in its backing store.
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
