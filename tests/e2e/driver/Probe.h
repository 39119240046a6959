// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QLocalSocket>

/// Questions to a running program into which the probe was put. Whatever cannot be answered, or is not answered within
/// ten seconds, throws std::runtime_error.
class Probe {
public:
    /// Waits until the program listens at the socket.
    explicit Probe(const QString &socket);

    QJsonValue get(const QString &object, const QString &property);
    QJsonValue call(const QString &object, const QString &method, const QJsonArray &arguments = {});
    QJsonArray windows(); ///< that are shown: name, text
    void grab(const QString &widget, const QString &pictureFile);

    // As an operator; what comes of it shows a little later.
    void trigger(const QString &action);
    void click(const QString &widget);
    void drag(const QString &widget, double left, double top, double right, double bottom); ///< shares of its size
    void answer(const QString &button);
    void key(const QString &sequence);
    void type(const QString &widget, const QString &text);

    QJsonValue ask(const QJsonObject &question);

private:
    QLocalSocket socket_;
};
