// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SleepGuard.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QThread;

namespace ostrel {

/// One lock of logind's, taken and dropped without waiting for the answer. One that is refused is done without.
class LogindLock : public QObject {
public:
    /// `what` and `mode` are logind's own words.
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

/// Asks logind over the system bus. Nothing waits for an answer; without a bus or logind the guard does nothing.
class LogindSleepGuard : public QObject, public SleepGuard {
    Q_OBJECT
public:
    /// `openBus` is called at the first need, on a thread of its own.
    explicit LogindSleepGuard(std::function<QDBusConnection()> openBus = &QDBusConnection::systemBus);
    ~LogindSleepGuard() override;

    void setHeld(bool held) override;

private Q_SLOTS:
    void PrepareForSleep(bool start);

private:
    void openBus();
    void setLocks();

    std::function<QDBusConnection()> openBus_;
    std::optional<QDBusConnection> bus_;
    std::unique_ptr<QThread> opening_;

    bool held_ = false;
    bool goingToSleep_ = false;
    // Two locks rather than one on both: a user from afar may be refused the first.
    LogindLock againstSleep_{QStringLiteral("sleep"), QStringLiteral("block")};
    LogindLock againstIdleness_{QStringLiteral("idle"), QStringLiteral("block")};
    LogindLock beforeSleep_{QStringLiteral("sleep"), QStringLiteral("delay")};
};

} // namespace ostrel
