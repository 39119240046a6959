// SPDX-License-Identifier: MIT
#include "desktop/LogindSleepGuard.h"

#include "files/Descriptor.h"

#include <QDBusContext>
#include <QProcess>
#include <QTest>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>

namespace {

/// logind as far as locks go: a lock stands until the other end of its pipe is closed.
class Logind : public QObject, protected QDBusContext {
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

    QString refused;
    int calls = 0;

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &, const QString &, const QString &mode) {
        ++calls;
        if (what + ":" + mode == refused) {
            sendErrorReply(QDBusError::AccessDenied);
            return {};
        }
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

/// A bus of the test's own with a logind on it, and a guard.
class LogindSleepGuardTest : public testing::Test {
protected:
    void SetUp() override {
        daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        if (!daemon.waitForStarted())
            GTEST_SKIP() << "no dbus-daemon";
        ASSERT_TRUE(daemon.waitForReadyRead());
        address = QString::fromUtf8(daemon.readLine()).trimmed();
        QDBusConnection bus = QDBusConnection::connectToBus(address, "logind at " + address);
        ASSERT_TRUE(bus.registerObject("/org/freedesktop/login1", &logind,
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        ASSERT_TRUE(bus.registerService("org.freedesktop.login1"));
    }
    void TearDown() override {
        daemon.kill();
        daemon.waitForFinished();
    }
    void expectLocked(const QString &expected) {
        static_cast<void>(QTest::qWaitFor([&] { return logind.locks() == expected; }, 3000));
        EXPECT_EQ(logind.locks(), expected);
    }

    QProcess daemon;
    QString address;
    Logind logind;
    LogindSleepGuard guard{[this] { return QDBusConnection::connectToBus(address, "recorder at " + address); }};
};

TEST_F(LogindSleepGuardTest, theLocksStandWhileHeldAndTheLastWordComesBeforeSleep) {
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
    EXPECT_EQ(logind.calls, 4);

    guard.setHeld(false);
    expectLocked("");
    guard.setHeld(true);
    guard.setHeld(false); // before the answers
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.calls == 7; }, 3000));
    expectLocked("");
}

TEST_F(LogindSleepGuardTest, whatIsRefusedIsDoneWithout) {
    logind.refused = "sleep:block";
    guard.setHeld(true);
    expectLocked("idle:block sleep:delay ");
    EXPECT_EQ(logind.calls, 3);
}

} // namespace

#include "LogindSleepGuardTest.moc"
