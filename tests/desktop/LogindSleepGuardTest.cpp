// SPDX-License-Identifier: MIT
#include "desktop/LogindSleepGuard.h"

#include "desktop/OwnBus.h"
#include "files/Descriptor.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QTest>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>

using namespace ostrel;

namespace {

/// logind as far as locks go: a lock lasts until the other end of its pipe is closed.
class Logind : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    QString locks() {
        std::erase_if(locks_, [](const auto &lock) {
            char none = 0;
            return ::read(lock.second.get(), &none, 1) == 0;
        });
        QString names;
        for (const auto &[name, pipe] : locks_)
            names += name + ' ';
        return names;
    }

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &, const QString &, const QString &mode) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
        locks_.emplace(what + ":" + mode, ends[0]);
        QDBusUnixFileDescriptor lock;
        lock.giveFileDescriptor(ends[1]);
        return lock;
    }

Q_SIGNALS:
    void PrepareForSleep(bool start);

private:
    std::multimap<QString, Descriptor> locks_;
};

TEST(LogindSleepGuardTest, theLocksStandWhileHeldAndTheLastWordComesBeforeSleep) {
    const OwnBus own;
    if (!own.isUp())
        GTEST_SKIP() << "no dbus-daemon";
    Logind logind;
    QDBusConnection bus = own.with(logind, "/org/freedesktop/login1", "logind");
    ASSERT_TRUE(bus.registerService("org.freedesktop.login1"));
    const auto expectLocked = [&](const QString &expected) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locks() == expected; }, 3000)) << logind.locks().toStdString();
    };

    LogindSleepGuard guard([&] { return own.connection("recorder"); });
    const QString all = "idle:block sleep:block sleep:delay ";
    QString before;
    guard.aboutToSleep = [&] { before = logind.locks(); };
    guard.setHeld(true);
    guard.setHeld(true);
    expectLocked(all);
    Q_EMIT logind.PrepareForSleep(true);
    expectLocked("idle:block sleep:block ");
    EXPECT_EQ(before, all);
    Q_EMIT logind.PrepareForSleep(false);
    expectLocked(all);
    guard.setHeld(false);
    expectLocked("");
}

} // namespace

#include "LogindSleepGuardTest.moc"
