// SPDX-License-Identifier: MIT
#include "desktop/LogindSleepGuard.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace ostrel {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString path = QStringLiteral("/org/freedesktop/login1");
const QString interface = QStringLiteral("org.freedesktop.login1.Manager");

} // namespace

void LogindLock::setHeld(bool held, const QDBusConnection &bus) {
    if (held == wanted_)
        return;
    wanted_ = held;
    if (!held)
        lock_ = {};
    else if (!asked_)
        ask(bus);
}

void LogindLock::ask(const QDBusConnection &bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Inhibit"));
    call << what_ << QStringLiteral("Ostrel MS") << QStringLiteral("The instrument's data are being recorded") << mode_;
    asked_ = true;
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        asked_ = false;
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *answer;
        if (wanted_ && reply.isValid())
            lock_ = reply.value();
        // The answer holds a copy of the lock's descriptor and closes it when it is deleted.
        answer->deleteLater();
    });
}

LogindSleepGuard::LogindSleepGuard(std::function<QDBusConnection()> openBus)
    : bus_([this, open = std::move(openBus)] {
          QDBusConnection bus = open();
          bus.connect(service, path, interface, QStringLiteral("PrepareForSleep"), this, SLOT(PrepareForSleep(bool)));
          return bus;
      }) {
    bus_.opened = [this] { setLocks(); };
}

void LogindSleepGuard::setHeld(bool held) {
    if (held == held_)
        return;
    held_ = held;
    setLocks();
}

void LogindSleepGuard::setLocks() {
    const QDBusConnection *bus = bus_.get();
    if (bus == nullptr)
        return;
    againstSleep_.setHeld(held_, *bus);
    againstIdleness_.setHeld(held_, *bus);
    beforeSleep_.setHeld(held_ && !goingToSleep_, *bus);
}

void LogindSleepGuard::PrepareForSleep(bool start) {
    goingToSleep_ = start;
    if (start && held_ && aboutToSleep)
        aboutToSleep();
    setLocks();
}

} // namespace ostrel
