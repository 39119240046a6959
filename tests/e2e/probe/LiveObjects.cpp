// SPDX-License-Identifier: MIT
#include "LiveObjects.h"

#include <QApplication>
#include <QColor>
#include <QMessageBox>
#include <QMetaMethod>

#include <algorithm>
#include <array>

namespace {

QJsonValue toJson(const QVariant &value) {
    if (value.userType() == QMetaType::QColor)
        return value.value<QColor>().name();
    return QJsonValue::fromVariant(value);
}

QMetaMethod methodOf(const QObject &object, const QByteArray &name, qsizetype arguments) {
    const QMetaObject *meta = object.metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() == name && method.parameterCount() == arguments)
            return method;
    }
    throw ProbeError(object.objectName() + " has no " + QString::fromLatin1(name) + " with so many arguments");
}

} // namespace

QObject &LiveObjects::find(const QString &name) {
    QObjectList named;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name)
            named += window;
        named += window->findChildren<QObject *>(name);
    }
    if (named.isEmpty())
        throw ProbeError("there is no " + name);
    const auto isShown = [](const QObject *object) {
        return object->isWidgetType() && static_cast<const QWidget *>(object)->isVisible();
    };
    const auto shown = std::ranges::find_if(named, isShown);
    return shown != named.end() ? **shown : *named.first();
}

QJsonArray LiveObjects::shownWindows() {
    QJsonArray windows;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        const auto *box = qobject_cast<const QMessageBox *>(window);
        windows += QJsonObject{{"name", window->objectName()}, {"text", box ? box->text() : QString{}}};
    }
    return windows;
}

QJsonValue LiveObjects::property(const QObject &object, const QByteArray &name) {
    const QVariant value = object.property(name.constData());
    if (!value.isValid())
        throw ProbeError(object.objectName() + " has no property " + QString::fromLatin1(name));
    return toJson(value);
}

QJsonValue LiveObjects::call(QObject &object, const QByteArray &name, const QJsonArray &arguments) {
    const QMetaMethod method = methodOf(object, name, arguments.size());
    QVariantList values = arguments.toVariantList();
    std::array<QGenericArgument, 4> passed;
    if (values.size() > qsizetype(passed.size()))
        throw ProbeError("too many arguments");
    for (int i = 0; i < values.size(); ++i) {
        if (!values[i].convert(method.parameterMetaType(i)))
            throw ProbeError("an argument of another type");
        passed[size_t(i)] = QGenericArgument(values[i].typeName(), values[i].constData());
    }
    QVariant result;
    QGenericReturnArgument returned;
    if (method.returnType() != QMetaType::Void) {
        result = QVariant(method.returnMetaType());
        returned = QGenericReturnArgument(method.typeName(), result.data());
    }
    if (!method.invoke(&object, Qt::DirectConnection, returned, passed[0], passed[1], passed[2], passed[3]))
        throw ProbeError("the call failed");
    return toJson(result);
}
