// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>

#include <functional>

class QSessionManager;

namespace ostrel {

/// Handles the end of the operator's session by log-out or shutdown. First the session asks its programs whether it may
/// end; later it ends, unless another program has kept it. Needs the QGuiApplication, and all three functions.
class SessionEnd : public QObject {
public:
    SessionEnd();

    /// The operator may be asked; false keeps the session. It may show boxes but must not close anything yet.
    std::function<bool()> askToEnd;
    /// The operator may not be asked. Must write unsaved data to the disk and go on: some sessions let their programs
    /// save without ending.
    std::function<void()> endsUnasked;
    /// The session ends now, and the program with it; called in place of closing the windows. `agreed`: the operator
    /// has agreed to the end within the last five minutes.
    std::function<void(bool agreed)> ends;

    /// The session's question. False keeps the session.
    bool mayEnd(bool mayAsk);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void commit(QSessionManager &session);

    bool asking_ = false;
    QDeadlineTimer agreement_; ///< expired: no agreement
};

} // namespace ostrel
