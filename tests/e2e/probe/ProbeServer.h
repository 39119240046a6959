// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QLocalServer>

/// Answers a test that drives the running program: a line with a JSON object for each question, another for its answer,
/// {"value": ...} or {"error": "why"}. What an operator would do ("trigger", "click", "key", ...) is done after the
/// answer, from the event loop, since it may open a dialog.
class ProbeServer : public QLocalServer {
    Q_OBJECT
public:
    /// Listens at the path of a Unix socket.
    explicit ProbeServer(const QString &path);

private:
    void answerLines(QLocalSocket &socket);
};
