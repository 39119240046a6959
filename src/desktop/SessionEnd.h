// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>

#include <functional>

class QSessionManager;

namespace ostrel {

/// Meets the end of the operator's session, by log-out or shutdown. First the session asks its programs whether it may
/// end; later it ends, or does not, since another program has kept it. Needs the QGuiApplication, and all three
/// functions.
class SessionEnd : public QObject {
public:
    SessionEnd();

    /// The operator may be asked; false keeps the session. Boxes may be shown, nothing may be torn down yet.
    std::function<bool()> askToEnd;
    /// The operator may not be asked. What is at stake goes to disk, and the program lives on: some sessions have their
    /// programs save without ending.
    std::function<void()> endsUnasked;
    /// The session ends now, and the program with it; it is in place of the closing of the windows. `agreed`: the
    /// operator was asked within the last minutes and let the session end.
    std::function<void(bool agreed)> ends;

    /// The session's question. False keeps the session.
    bool mayEnd(bool mayAsk);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void commit(QSessionManager &session);

    bool asking_ = false;
    QDeadlineTimer agreement_; ///< expired: there is none
};

} // namespace ostrel
