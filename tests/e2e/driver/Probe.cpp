// SPDX-License-Identifier: MIT
#include "Probe.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QThread>

#include <stdexcept>

namespace {

constexpr int patience = 10000; // ms

} // namespace

Probe::Probe(const QString &socket) {
    QElapsedTimer waiting;
    waiting.start();
    for (socket_.connectToServer(socket); !socket_.waitForConnected(100); socket_.connectToServer(socket)) {
        if (waiting.hasExpired(patience))
            throw std::runtime_error("the program does not listen to its probe");
        QThread::msleep(20);
    }
}

QJsonValue Probe::ask(const QJsonObject &question) {
    const QByteArray line = QJsonDocument(question).toJson(QJsonDocument::Compact) + '\n';
    socket_.write(line);
    while (!socket_.canReadLine()) {
        if (!socket_.waitForReadyRead(patience))
            throw std::runtime_error("no answer to " + line.toStdString());
    }
    const QJsonObject answer = QJsonDocument::fromJson(socket_.readLine()).object();
    if (answer.contains("error"))
        throw std::runtime_error(answer["error"].toString().toStdString());
    return answer["value"];
}

QJsonValue Probe::get(const QString &object, const QString &property) {
    return ask({{"do", "get"}, {"of", object}, {"property", property}});
}

QJsonValue Probe::call(const QString &object, const QString &method, const QJsonArray &arguments) {
    return ask({{"do", "call"}, {"of", object}, {"method", method}, {"with", arguments}});
}

QJsonArray Probe::windows() { return ask({{"do", "windows"}}).toArray(); }

void Probe::grab(const QString &widget, const QString &pictureFile) {
    ask({{"do", "grab"}, {"of", widget}, {"file", pictureFile}});
}

void Probe::trigger(const QString &action) { ask({{"do", "trigger"}, {"of", action}}); }
void Probe::click(const QString &widget) { ask({{"do", "click"}, {"of", widget}}); }
void Probe::drag(const QString &widget, double left, double top, double right, double bottom) {
    ask({{"do", "drag"}, {"of", widget}, {"left", left}, {"top", top}, {"right", right}, {"bottom", bottom}});
}
void Probe::answer(const QString &button) { ask({{"do", "answer"}, {"button", button}}); }
void Probe::key(const QString &sequence) { ask({{"do", "key"}, {"key", sequence}}); }

void Probe::type(const QString &widget, const QString &text) { ask({{"do", "type"}, {"of", widget}, {"text", text}}); }
