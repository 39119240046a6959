// SPDX-License-Identifier: MIT
#include "OperatorHand.h"

#include "LiveObjects.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QTimer>
#include <QtTest/QTest>

#include <algorithm>

namespace {

/// A widget that is gone by the time is left alone.
template <typename Object, typename Work>
void soon(Object &object, Work work) {
    QTimer::singleShot(0, &object, [&object, work] { work(object); });
}

QWidget &usable(const QString &name) {
    auto &widget = LiveObjects::find<QWidget>(name);
    if (!widget.isVisible() || !widget.isEnabled())
        throw ProbeError(name + " is disabled or not shown");
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && modal != widget.window())
        throw ProbeError(name + " lies behind the window " + modal->objectName() + " \"" + modal->windowTitle() + '"');
    return widget;
}

/// At the left, where an option button's circle is too.
void clickOn(QWidget &widget) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {std::min(10, widget.width() / 2), widget.height() / 2});
}

} // namespace

void OperatorHand::trigger(const QString &name) {
    auto &action = LiveObjects::find<QAction>(name);
    if (!action.isEnabled())
        throw ProbeError(name + " is disabled");
    soon(action, [](QAction &ready) { ready.trigger(); });
}

void OperatorHand::click(const QString &widget) { soon(usable(widget), clickOn); }

void OperatorHand::drag(const QString &widget, const QRectF &rectangle) {
    soon(usable(widget), [rectangle](QWidget &ready) {
        const auto at = [&](const QPointF &share) {
            return QPoint(int(share.x() * ready.width()), int(share.y() * ready.height()));
        };
        QTest::mousePress(&ready, Qt::LeftButton, {}, at(rectangle.topLeft()));
        QTest::mouseMove(&ready, at(rectangle.center()));
        QTest::mouseRelease(&ready, Qt::LeftButton, {}, at(rectangle.bottomRight()));
    });
}

void OperatorHand::answer(const QString &text) {
    const QWidget *modal = QApplication::activeModalWidget();
    if (!modal)
        throw ProbeError("no dialog asks for " + text);
    for (auto *button : modal->findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->isEnabled() && button->text().remove('&') == text)
            return soon(*button, [](QAbstractButton &ready) { clickOn(ready); });
    }
    throw ProbeError(modal->objectName() + " \"" + modal->windowTitle() + "\" has no button " + text);
}

void OperatorHand::key(const QString &sequence) {
    const QKeyCombination key = QKeySequence::fromString(sequence)[0];
    QWidget *widget = QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
    if (!widget)
        throw ProbeError("no window has the keyboard");
    soon(*widget, [key](QWidget &ready) { QTest::keyClick(&ready, key.key(), key.keyboardModifiers()); });
}

void OperatorHand::type(const QString &name, const QString &text) {
    soon(usable(name), [text](QWidget &ready) {
        ready.setFocus();
        QTest::keyClick(&ready, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&ready, text);
    });
}
