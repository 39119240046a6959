// SPDX-License-Identifier: MIT
#include "LiveObjects.h"
#include "OperatorHand.h"

#include <QFile>
#include <QGenericPlugin>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPixmap>
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

QJsonValue grab(const QString &name, const QString &file) {
    if (!LiveObjects::find<QWidget>(name).grab().save(file))
        throw ProbeError("cannot write " + file);
    return file;
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
    {"windows", [](const Question &) { return QJsonValue{LiveObjects::shownWindows()}; }},
    {"get",     [](const Question &q) { return LiveObjects::property(LiveObjects::find(q.of()), q.text("property").toUtf8()); }},
    {"call",    [](const Question &q) { return LiveObjects::call(LiveObjects::find(q.of()), q.text("method").toUtf8(), q.parts["with"].toArray()); }},
    {"grab",    [](const Question &q) { return grab(q.of(), q.text("file")); }},
    {"trigger", [](const Question &q) { return done([&] { OperatorHand::trigger(q.of()); }); }},
    {"click",   [](const Question &q) { return done([&] { OperatorHand::click(q.of()); }); }},
    {"drag",    [](const Question &q) { return done([&] { OperatorHand::drag(q.of(), q.rectangle()); }); }},
    {"answer",  [](const Question &q) { return done([&] { OperatorHand::answer(q.text("button")); }); }},
    {"key",     [](const Question &q) { return done([&] { OperatorHand::key(q.text("key")); }); }},
    {"type",    [](const Question &q) { return done([&] { OperatorHand::type(q.of(), q.text("text")); }); }},
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

void answerLines(QLocalSocket &socket) {
    while (socket.canReadLine()) {
        const Question question{QJsonDocument::fromJson(socket.readLine()).object()};
        socket.write(QJsonDocument(answerTo(question)).toJson(QJsonDocument::Compact) + '\n');
    }
    socket.flush();
}

} // namespace

/// Answers a test that drives the running program: a line with a JSON object for each question, another for its answer,
/// {"value": ...} or {"error": "why"}. What an operator would do ("trigger", "click", "key", ...) is done after the
/// answer, from the event loop, since it may open a dialog.
///
/// Loaded by QT_QPA_GENERIC_PLUGINS=ostrelprobe with the folder above generic/ in QT_PLUGIN_PATH. Listens at the path
/// of a Unix socket, OSTREL_PROBE_SOCKET.
class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "ostrelprobe.json")

public:
    QObject *create(const QString &, const QString &) override {
        auto *server = new QLocalServer;
        const QString path = qEnvironmentVariable("OSTREL_PROBE_SOCKET");
        QFile::remove(path);
        if (!server->listen(path))
            qFatal("The probe cannot listen at %s: %s", qUtf8Printable(path), qUtf8Printable(server->errorString()));
        connect(server, &QLocalServer::newConnection, server, [server] {
            QLocalSocket *socket = server->nextPendingConnection();
            connect(socket, &QLocalSocket::readyRead, socket, [socket] { answerLines(*socket); });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        });
        return server;
    }
};

#include "ProbePlugin.moc"
