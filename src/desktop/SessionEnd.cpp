// SPDX-License-Identifier: MIT
#include "desktop/SessionEnd.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QSessionManager>

#include <chrono>

namespace ostrel {

namespace {

// A session that another program keeps after our operator's yes does not tell so: the yes must not last.
constexpr std::chrono::minutes agreementLasts(5);

/// A recorder that comes back by itself would take the instrument's port, and ask for a name before anyone looks.
void stayAway(QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); }

} // namespace

SessionEnd::SessionEnd() {
    // The session waits for the return from these.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &SessionEnd::commit, Qt::DirectConnection);
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this, stayAway, Qt::DirectConnection);
    qGuiApp->installEventFilter(this);
}

bool SessionEnd::mayEnd(bool mayAsk) {
    agreement_ = QDeadlineTimer();
    if (!mayAsk) {
        endsUnasked();
        return true;
    }
    if (asking_) // and the first question is still on the screen
        return false;
    const QScopedValueRollback<bool> asking(asking_, true);
    if (!askToEnd())
        return false;
    agreement_.setRemainingTime(agreementLasts);
    return true;
}

void SessionEnd::commit(QSessionManager &session) {
    stayAway(session);
    if (!mayEnd(session.allowsInteraction()))
        session.cancel();
    else
        session.release();
}

bool SessionEnd::eventFilter(QObject *watched, QEvent *event) {
    // The session's last word reaches the application as the event to quit.
    if (watched != qGuiApp || event->type() != QEvent::Quit)
        return QObject::eventFilter(watched, event);
    ends(!agreement_.hasExpired());
    return true;
}

} // namespace ostrel
