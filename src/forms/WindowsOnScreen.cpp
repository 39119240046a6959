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
    const bool shown = event->type() == QEvent::Show && !event->spontaneous(); // and not only no longer minimised
    if (!shown && event->type() != QEvent::WindowActivate)
        return false;
    auto *window = qobject_cast<QWidget *>(receiver);
    if (window == nullptr || (window->windowType() != Qt::Window && window->windowType() != Qt::Dialog))
        return false;
    if (shown) {
        comesUp(*window);
        framed_.emplace_back(window);
    } else if (std::erase(framed_, window) > 0 && !window->isMaximized()) {
        bringIn(*window, frameOf(*window));
    }
    std::erase(framed_, nullptr);
    return false;
}

/// Qt places a dialog over its parent after this, by the size that it has then.
void WindowsOnScreen::comesUp(QWidget &window) {
    if (window.windowState() != Qt::WindowNoState)
        return;
    const QWidget *parent = window.parentWidget() != nullptr ? window.parentWidget()->window() : nullptr;
    const QMargins frame = isShown(parent) ? frameOf(*parent) : QMargins();
    if (window.testAttribute(Qt::WA_Moved))
        return bringIn(window, frame); // it may reach over several screens
    const QRect screen = window.screen()->availableGeometry();
    window.resize(window.size().boundedTo(screen.size().shrunkBy(frame)));
    if (qobject_cast<QDialog *>(&window) != nullptr && !isShown(parent))
        window.move(ScreenPlace::centred(window.size(), screen).topLeft());
}

} // namespace ostrel
