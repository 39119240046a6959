// SPDX-License-Identifier: MIT
#include "ProbeServer.h"

#include "LiveObjects.h"
#include "OperatorHand.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

namespace {

/// A question with its parts by name.
struct Question {
    QJsonObject parts;

    QString text(const char *part) const { return parts[QLatin1String(part)].toString(); }
    QString of() const { return text("of"); }
    QRectF rectangle() const {
        const auto number = [this](const char *part) { return parts[QLatin1String(part)].toDouble(); };
        return {QPointF(number("left"), number("top")), QPointF(number("right"), number("bottom"))};
    }
};

QJsonValue colour(const QString &name) {
    const QImage image = LiveObjects::find<QWidget>(name).grab().toImage();
    return image.pixelColor(image.rect().center()).name();
}

QJsonValue grab(const QString &name, const QString &file) {
    if (!LiveObjects::find<QWidget>(name).grab().save(file))
        throw ProbeError("cannot write " + file);
    return file;
}

QJsonValue quit() {
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    return {};
}

template <typename Work>
QJsonValue done(Work work) {
    work();
    return {};
}

struct Answer {
    const char *name;
    QJsonValue (*give)(const Question &);
};

// clang-format off
constexpr Answer answers[] = {
    {"names",   [](const Question &) { return QJsonValue{LiveObjects::names()}; }},
    {"windows", [](const Question &) { return QJsonValue{LiveObjects::shownWindows()}; }},
    {"get",     [](const Question &q) { return LiveObjects::property(LiveObjects::find(q.of()), q.text("property").toUtf8()); }},
    {"call",    [](const Question &q) { return LiveObjects::call(LiveObjects::find(q.of()), q.text("method").toUtf8(), q.parts["with"].toArray()); }},
    {"colour",  [](const Question &q) { return colour(q.of()); }},
    {"grab",    [](const Question &q) { return grab(q.of(), q.text("file")); }},
    {"trigger", [](const Question &q) { return done([&] { OperatorHand::trigger(q.of()); }); }},
    {"click",   [](const Question &q) { return done([&] { OperatorHand::click(q.of()); }); }},
    {"drag",    [](const Question &q) { return done([&] { OperatorHand::drag(q.of(), q.rectangle()); }); }},
    {"answer",  [](const Question &q) { return done([&] { OperatorHand::answer(q.text("button")); }); }},
    {"key",     [](const Question &q) { return done([&] { OperatorHand::key(q.text("key")); }); }},
    {"type",    [](const Question &q) { return done([&] { OperatorHand::type(q.of(), q.text("text")); }); }},
    {"pick",    [](const Question &q) { return done([&] { OperatorHand::pick(q.of(), q.parts["index"].toInt()); }); }},
    {"quit",    [](const Question &) { return quit(); }},
};
// clang-format on

QJsonObject answerTo(const Question &question) {
    try {
        for (const Answer &answer : answers) {
            if (question.text("do") == QLatin1String(answer.name))
                return {{"value", answer.give(question)}};
        }
        throw ProbeError("no such question");
    } catch (const ProbeError &error) {
        return {{"error", QString::fromUtf8(error.what())}};
    }
}

} // namespace

ProbeServer::ProbeServer(const QString &path) {
    QFile::remove(path);
    if (!listen(path))
        qFatal("The probe cannot listen at %s: %s", qUtf8Printable(path), qUtf8Printable(errorString()));
    connect(this, &QLocalServer::newConnection, this, [this] {
        QLocalSocket *socket = nextPendingConnection();
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { answerLines(*socket); });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    });
}

void ProbeServer::answerLines(QLocalSocket &socket) {
    while (socket.canReadLine()) {
        const Question question{QJsonDocument::fromJson(socket.readLine()).object()};
        socket.write(QJsonDocument(answerTo(question)).toJson(QJsonDocument::Compact) + '\n');
    }
    socket.flush();
}
