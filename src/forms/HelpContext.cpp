// SPDX-License-Identifier: MIT
#include "forms/HelpContext.h"

#include "base/HelpContexts.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>

#include <utility>

namespace ostrel {

namespace {

int topicOf(const QWidget &at) {
    if (const auto *menu = qobject_cast<const QMenu *>(&at); menu != nullptr && menu->activeAction() != nullptr) {
        if (const QVariant item = menu->activeAction()->property(HelpContext::property); item.isValid())
            return item.toInt();
    }
    for (const QWidget *widget = &at; widget != nullptr; widget = widget->parentWidget()) {
        if (const QVariant own = widget->property(HelpContext::property); own.isValid())
            return own.toInt();
    }
    return HelpContext::Index;
}

} // namespace

void setHelpContext(QObject &object, int HelpContextID) { object.setProperty(HelpContext::property, HelpContextID); }

HelpKey::HelpKey(std::function<void(int)> showTopic) : showTopic_(std::move(showTopic)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject *receiver, QEvent *event) {
    if (event->type() != QEvent::KeyPress || !receiver->isWidgetType())
        return false;
    const auto &key = static_cast<const QKeyEvent &>(*event);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier)
        return false;
    event->accept();
    if (!key.isAutoRepeat())
        showTopic_(topicOf(static_cast<const QWidget &>(*receiver)));
    return true;
}

} // namespace ostrel
