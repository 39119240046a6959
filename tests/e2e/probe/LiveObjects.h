// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <stdexcept>

/// A question that cannot be answered.
class ProbeError : public std::runtime_error {
public:
    explicit ProbeError(const QString &reason) : std::runtime_error(reason.toStdString()) {}
};

/// The windows, controls, actions and timers of the running program, by their objectName.
namespace LiveObjects {

/// One that is shown comes before one that is not.
QObject &find(const QString &name);

template <typename Kind>
Kind &find(const QString &name) {
    auto *object = qobject_cast<Kind *>(&find(name));
    if (!object)
        throw ProbeError(name + " is no " + QString::fromLatin1(Kind::staticMetaObject.className()));
    return *object;
}

QJsonArray shownWindows();
QJsonValue property(const QObject &object, const QByteArray &name);
/// Calls a Q_INVOKABLE or a slot with numbers, texts and truth values.
QJsonValue call(QObject &object, const QByteArray &method, const QJsonArray &arguments);

} // namespace LiveObjects
