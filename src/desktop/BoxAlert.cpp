// SPDX-License-Identifier: MIT
#include "desktop/BoxAlert.h"

#include <QEvent>

namespace ostrel {

namespace {

/// The window that has an entry in the task bar: a box over another window has none.
QWidget *inTaskBar(QWidget *window) {
    while (window->parentWidget() != nullptr && window->parentWidget()->window()->isVisible())
        window = window->parentWidget()->window();
    return window;
}

} // namespace

BoxAlert::BoxAlert(std::function<void(QWidget &)> alert) : alert_(std::move(alert)) {
    QCoreApplication::instance()->installEventFilter(this);
    whenUp_.setSingleShot(true);
    connect(&whenUp_, &QTimer::timeout, this, [this] {
        if (alone_)
            alert_(*alone_);
    });
}

bool BoxAlert::eventFilter(QObject *receiver, QEvent *event) {
    if (event->type() != QEvent::Show || event->spontaneous() || !receiver->isWidgetType())
        return false;
    auto *box = static_cast<QWidget *>(receiver);
    if (!box->isWindow() || !box->isModal() || QApplication::activeWindow() != nullptr)
        return false;
    QWidget *window = inTaskBar(box);
    if (window != box) {
        alert_(*window);
    } else {
        alone_ = box; // a window manager hears of no window that is not up yet
        whenUp_.start();
    }
    return false;
}

} // namespace ostrel
