// SPDX-License-Identifier: MIT
#include "desktop/LogindSleepGuard.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QThread>

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

LogindSleepGuard::LogindSleepGuard(std::function<QDBusConnection()> openBus) : openBus_(std::move(openBus)) {}

LogindSleepGuard::~LogindSleepGuard() {
    if (opening_)
        opening_->wait();
}

void LogindSleepGuard::setHeld(bool held) {
    if (held == held_)
        return;
    held_ = held;
    if (bus_)
        setLocks();
    else if (!opening_)
        openBus();
}

void LogindSleepGuard::openBus() {
    // On a thread, since opening a bus that does not respond takes half a minute.
    const auto opened = std::make_shared<QDBusConnection>(QString());
    opening_.reset(QThread::create([open = openBus_, opened] { *opened = open(); }));
    connect(opening_.get(), &QThread::finished, this, [this, opened] {
        bus_ = *opened;
        bus_->connect(service, path, interface, QStringLiteral("PrepareForSleep"), this, SLOT(PrepareForSleep(bool)));
        setLocks();
    });
    opening_->start();
}

void LogindSleepGuard::setLocks() {
    againstSleep_.setHeld(held_, *bus_);
    againstIdleness_.setHeld(held_, *bus_);
    beforeSleep_.setHeld(held_ && !goingToSleep_, *bus_);
}

void LogindSleepGuard::PrepareForSleep(bool start) {
    goingToSleep_ = start;
    if (start && held_ && aboutToSleep)
        aboutToSleep();
    setLocks();
}

} // namespace ostrel
