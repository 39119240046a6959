// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QString>

#include <type_traits>

namespace ostrel {

/// Makes a control for a form that a Qt layout arranges; `name` becomes its objectName.
template <typename Control>
Control *namedControl(const char *name, const char *caption, QWidget *parent) {
    auto *control = new Control(parent);
    control->setObjectName(QString::fromLatin1(name));
    if constexpr (std::is_base_of_v<QLabel, Control>)
        control->setTextFormat(Qt::PlainText);
    control->setText(QString::fromUtf8(caption));
    return control;
}

} // namespace ostrel
