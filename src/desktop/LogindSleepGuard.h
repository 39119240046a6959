// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/LateBus.h"
#include "platform/SleepGuard.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <functional>

namespace ostrel {

/// One lock of logind, taken and released without waiting for the answer. A refused lock is not an error.
class LogindLock : public QObject {
public:
    /// `what` and `mode` as logind defines them.
    LogindLock(QString what, QString mode) : what_(std::move(what)), mode_(std::move(mode)) {}

    void setHeld(bool held, const QDBusConnection &bus);

private:
    void ask(const QDBusConnection &bus);

    QString what_;
    QString mode_;
    bool wanted_ = false;
    bool asked_ = false;           ///< the answer is still to come
    QDBusUnixFileDescriptor lock_; ///< the lock lasts as long as this is open
};

/// Uses logind over the system bus and never waits for an answer. Without a bus or logind it does nothing.
class LogindSleepGuard : public QObject, public SleepGuard {
    Q_OBJECT
public:
    /// `openBus` is called when the bus is first needed, on its own thread.
    explicit LogindSleepGuard(std::function<QDBusConnection()> openBus = &QDBusConnection::systemBus);

    void setHeld(bool held) override;

private Q_SLOTS:
    void PrepareForSleep(bool start);

private:
    void setLocks();

    LateBus bus_;
    bool held_ = false;
    bool goingToSleep_ = false;
    // Two locks rather than one lock for both: logind may refuse a remote user the first.
    LogindLock againstSleep_{QStringLiteral("sleep"), QStringLiteral("block")};
    LogindLock againstIdleness_{QStringLiteral("idle"), QStringLiteral("block")};
    LogindLock beforeSleep_{QStringLiteral("sleep"), QStringLiteral("delay")};
};

} // namespace ostrel
