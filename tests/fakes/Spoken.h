// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

#include <string>

/// What a screen reader comes to without a name.
inline void collectUnspoken(QAccessibleInterface &at, QStringList &faults) {
    const QObject *object = at.object();
    const QAccessible::State state = at.state();
    if (state.invisible != 0)
        return;
    if (state.focusable != 0 && at.text(QAccessible::Name).trimmed().isEmpty())
        faults << QStringLiteral("%1 %2").arg(object ? object->metaObject()->className() : "item",
                                              object ? object->objectName() : QString::number(at.role()));
    for (int i = 0; i < at.childCount(); ++i) {
        if (QAccessibleInterface *child = at.child(i))
            collectUnspoken(*child, faults);
    }
}

/// The controls of a window that can have the focus and have no name for a screen reader; "" for none.
inline std::string unspoken(QWidget &window) {
    QStringList faults;
    if (QAccessibleInterface *root = QAccessible::queryAccessibleInterface(&window))
        collectUnspoken(*root, faults);
    else
        faults << QStringLiteral("the window itself");
    return faults.join(QStringLiteral(", ")).toStdString();
}
