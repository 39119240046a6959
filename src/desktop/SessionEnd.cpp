// SPDX-License-Identifier: MIT
#include "desktop/SessionEnd.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QSessionManager>

#include <chrono>

namespace ostrel {

namespace {

// When another program keeps the session after our operator agreed, we are not told: so the agreement expires.
constexpr std::chrono::minutes agreementLasts(5);

/// A recorder restarted by the session would take the instrument's port and ask for a name before anybody is there.
void stayAway(QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); }

} // namespace

SessionEnd::SessionEnd() {
    // The session waits until these return.
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
    if (asking_) // the first question is still on the screen
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
    // The session ends the application by a Quit event.
    if (watched != qGuiApp || event->type() != QEvent::Quit)
        return QObject::eventFilter(watched, event);
    ends(!agreement_.hasExpired());
    return true;
}

} // namespace ostrel
