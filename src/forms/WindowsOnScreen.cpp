// SPDX-License-Identifier: MIT
#include "forms/WindowsOnScreen.h"

#include "forms/ScreenPlace.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QScreen>

namespace ostrel {

namespace {

bool isShown(const QWidget *window) { return window != nullptr && window->isVisible() && !window->isMinimized(); }

/// Moves and shrinks the window until its frame, too, is within the screens.
void bringIn(QWidget &window, const QMargins &frame) {
    const QRect outer = QRect(window.pos(), window.size().grownBy(frame));
    const QRect place = ScreenPlace::onScreens(outer, ScreenPlace::screens());
    if (place == outer)
        return;
    window.resize(place.size().shrunkBy(frame)); // no less than its contents need
    window.move(ScreenPlace::onScreens({place.topLeft(), window.size().grownBy(frame)}, {place}).topLeft());
}

QMargins frameOf(const QWidget &window) {
    const QRect outer = window.frameGeometry();
    const QRect inner = window.geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

} // namespace

WindowsOnScreen::WindowsOnScreen() { QCoreApplication::instance()->installEventFilter(this); }

bool WindowsOnScreen::eventFilter(QObject *receiver, QEvent *event) {
    if ((event->type() != QEvent::Show && event->type() != QEvent::WindowActivate) || event->spontaneous())
        return false;
    auto *window = qobject_cast<QWidget *>(receiver);
    if (window == nullptr || (window->windowType() != Qt::Window && window->windowType() != Qt::Dialog))
        return false;
    if (event->type() == QEvent::Show) {
        comesUp(*window);
        framed_.emplace_back(window);
    } else if (std::erase(framed_, window) > 0 && !window->isMaximized()) {
        bringIn(*window, frameOf(*window));
    }
    std::erase(framed_, nullptr);
    return false;
}

void WindowsOnScreen::comesUp(QWidget &window) {
    if (window.windowState() != Qt::WindowNoState)
        return;
    const QWidget *parent = window.parentWidget() != nullptr ? window.parentWidget()->window() : nullptr;
    const bool wasMoved = window.testAttribute(Qt::WA_Moved);
    if (qobject_cast<QDialog *>(&window) != nullptr && !wasMoved && !isShown(parent))
        window.move(ScreenPlace::centred(window.size(), window.screen()->availableGeometry()).topLeft());
    bringIn(window, isShown(parent) ? frameOf(*parent) : QMargins());
    window.setAttribute(Qt::WA_Moved, wasMoved); // the next time it is placed anew
}

} // namespace ostrel
