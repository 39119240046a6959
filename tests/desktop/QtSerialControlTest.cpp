// SPDX-License-Identifier: MIT
#include "desktop/QtSerialControl.h"

#include "OtherProcess.h"
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/PortLocks.h"
#include "desktop/QtProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <map>

namespace {

/// The instrument's end of a pseudo-terminal.
class Instrument {
public:
    Instrument() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(master_.get());
        ::unlockpt(master_.get());
    }
    QString path() const { return QString::fromLocal8Bit(::ptsname(master_.get())); }
    bool send(const QByteArray &bytes) const {
        return ::write(master_.get(), bytes.constData(), std::size_t(bytes.size())) == bytes.size();
    }
    termios settings() const {
        termios now{};
        ::tcgetattr(master_.get(), &now);
        return now;
    }
    bool isExclusive() const {
        int exclusive = 0;
        const Descriptor other(::open(path().toLocal8Bit().constData(), O_RDONLY | O_NOCTTY));
        return other ? ::ioctl(other.get(), TIOCGEXCL, &exclusive) == 0 && exclusive != 0 : errno == EBUSY;
    }
    void unplug() { master_.reset(); }

private:
    Descriptor master_;
};

class QtSerialControlTest : public testing::Test {
protected:
    QtSerialControlTest() {
        ComPort.OnComm = [this] {
            events.push_back(ComPort.CommEvent());
            if (taking)
                input += ComPort.Input();
        };
    }

    QString device(int number) const { return devices.count(number) > 0 ? devices.at(number) : QString(); }
    int open(QtSerialControl &control, qint16 number = 1) {
        control.setCommPort(number);
        return errorNumberOf([&] { control.setPortOpen(true); });
    }
    void plugIn(const Instrument &plugged) {
        QFile::remove(link);
        QFile::link(plugged.path(), link);
    }
    /// Long enough for all that was sent to arrive.
    static void settle() { QTest::qWait(60); }
    void leaveLock(pid_t owner) const {
        QFile lock(lockFile);
        ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
        lock.write(QByteArray::number(owner).rightJustified(10) + "\n");
    }
    /// What opening by the link says to a lock of this owner.
    int lockedBy(pid_t owner) {
        leaveLock(owner);
        return open(ComPort, 2);
    }
    QByteArray lock() const {
        QFile file(lockFile);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// 0 when an ordinary user can open the port.
    int openedByUser() const {
        ::chmod(instrument.path().toLocal8Bit().constData(), 0666);
        return exitStatusOfUser([this] {
            QtSerialControl control(nullptr, "ComPort", [this](int number) { return device(number); });
            return errorNumberOf([&] { control.setPortOpen(true); }) == 0 ? 0 : 1;
        });
    }
    std::vector<int> eventsAfter(const QByteArray &bytes) {
        events.clear();
        EXPECT_TRUE(instrument.send(bytes));
        settle();
        return events;
    }

    QTemporaryDir folder;
    QString link = folder.filePath("instrument");
    Instrument instrument;
    QString lockFile = PortLocks::fileOfQSerialPort(instrument.path());
    std::map<int, QString> devices{{1, instrument.path()}, {2, link}};
    std::optional<LineCounters> counters;
    QtSerialControl ComPort{nullptr, "ComPort", [this](int number) { return device(number); },
                            [this](const SerialDevice &) { return counters; }};
    QtSerialControl CommTmp{nullptr, "CommTmp", [this](int number) { return device(number); }};
    std::vector<int> events;
    QByteArray input;
    bool taking = true; ///< the handler takes what waits
};

using Events = std::vector<int>;

TEST_F(QtSerialControlTest, theTerminalCountsToTheThreshold) {
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(eventsAfter(QByteArray(30, 'a')), Events{});
    EXPECT_EQ(ComPort.InBufferCount(), 30);
    EXPECT_EQ(eventsAfter(QByteArray(19, 'b')), Events{});
    EXPECT_EQ(eventsAfter("\x96\r\n"), Events{SerialControl::Receive});
    EXPECT_EQ(input, QByteArray(30, 'a') + QByteArray(19, 'b') + "\x96\r\n");

    eventsAfter("rest");
    EXPECT_EQ(ComPort.Input(), "rest");
    EXPECT_EQ(ComPort.InBufferCount(), 0);

    // 20 bytes at a time, as a line that hands over each of its small pieces.
    events.clear();
    for (int piece = 0; piece < 25; ++piece) {
        instrument.send(QByteArray(20, 'c'));
        QTest::qWait(3);
    }
    settle();
    EXPECT_LE(events.size(), 10U);
    EXPECT_GE(events.size(), 5U);
}

TEST_F(QtSerialControlTest, whatIsNotTakenRaisesAnEventAtEachArrival) {
    taking = false;
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(eventsAfter(QByteArray(60, 'a')).size(), 1U);
    EXPECT_EQ(eventsAfter("b").size(), 1U);
    EXPECT_EQ(ComPort.Input(), QByteArray(60, 'a') + "b");
    EXPECT_EQ(eventsAfter("c"), Events{});
}

TEST_F(QtSerialControlTest, bytesBeyondTheBufferAreLostWithOneEventABurst) {
    taking = false;
    ComPort.setInBufferSize(100);
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    eventsAfter(QByteArray(90, 'a'));
    EXPECT_EQ(eventsAfter(QByteArray(20, 'b')), (Events{SerialControl::ReceiveBufferOverflow, SerialControl::Receive}));
    EXPECT_EQ(eventsAfter("c"), Events{SerialControl::Receive});
    EXPECT_EQ(ComPort.InBufferCount(), 100);
    EXPECT_EQ(ComPort.Input(), QByteArray(90, 'a') + QByteArray(10, 'b'));
    eventsAfter(QByteArray(90, 'a'));
    EXPECT_EQ(eventsAfter(QByteArray(20, 'b')).front(), SerialControl::ReceiveBufferOverflow);
}

TEST_F(QtSerialControlTest, theLineIsRawAndItsPastIsNotHeard) {
    instrument.send("stale\n");
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(ComPort.InBufferCount(), 0);
    const termios now = instrument.settings();
    EXPECT_EQ(::cfgetispeed(&now), speed_t(B9600));
    EXPECT_EQ(now.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t(CS8));
    EXPECT_EQ(now.c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(now.c_iflag & (IXON | IXOFF | ICRNL), 0U);
    ComPort.setPortOpen(false);
    EXPECT_EQ(eventsAfter("unheard"), Events{});
}

TEST_F(QtSerialControlTest, aPortIsHeldByOneAlone) {
    plugIn(instrument);
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_TRUE(instrument.isExclusive());
    EXPECT_EQ(open(CommTmp), RunTimeError::PortAlreadyOpen);
    EXPECT_EQ(open(CommTmp, 2), RunTimeError::PortAlreadyOpen);
    EXPECT_FALSE(CommTmp.PortOpen());
    EXPECT_TRUE(instrument.isExclusive());
    EXPECT_EQ(eventsAfter("x"), Events{SerialControl::Receive});
    ComPort.setPortOpen(false);
    EXPECT_EQ(open(CommTmp, 2), 0);
}

TEST_F(QtSerialControlTest, whatIsMissingOrNoTerminalIsAnInvalidPort) {
    const auto lay = [this](int number, const char *name) { return devices[number] = folder.filePath(name); };
    devices[4] = "/dev/ttyNone";
    devices[5] = "/dev/null";
    devices[6] = folder.path();
    ASSERT_EQ(::mkfifo(lay(7, "fifo").toLocal8Bit().constData(), 0666), 0);
    ASSERT_TRUE(QFile(lay(8, "file")).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(lay(9, "loop"), lay(9, "loop")));
    for (const qint16 number : {3, 4, 5, 6, 7, 8, 9}) {
        EXPECT_EQ(open(ComPort, number), RunTimeError::InvalidPortNumber) << number;
        EXPECT_FALSE(QFile::exists(PortLocks::fileOfQSerialPort(device(number)))) << number;
    }
    EXPECT_FALSE(ComPort.PortOpen());
}

TEST_F(QtSerialControlTest, aLockOfALivingProgramIsHonouredAndADeadOnesTakenOver) {
    plugIn(instrument);
    EXPECT_EQ(lockedBy(::getppid()), RunTimeError::PortAlreadyOpen);
    EXPECT_FALSE(instrument.isExclusive());
    EXPECT_EQ(lockedBy(deadProcess()), 0);
    EXPECT_TRUE(lock().startsWith(QByteArray::number(::getpid()) + '\n'));
    ComPort.setPortOpen(false);
    EXPECT_FALSE(QFile::exists(lockFile));
    EXPECT_FALSE(instrument.isExclusive());
}

/// Runs first, while no thread stands that an exit in a copy of the process would wait for.
using QtSerialControlDeathTest = QtSerialControlTest;

TEST_F(QtSerialControlDeathTest, everyEndLetsGoOfThePortForAnotherUser) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    const std::pair<const char *, std::function<void()>> ends[] = {
        {"end", [] { QtProcess().end(); }},    {"exit", [] { std::exit(1); }},
        {"abort", [] { std::abort(); }},       {"terminate", [] { std::terminate(); }},
        {"quit", [] { std::raise(SIGQUIT); }}, {"pipe", [] { std::raise(SIGPIPE); }},
    };
    std::signal(SIGPIPE, SIG_DFL);
    for (const auto &[name, end] : ends) {
        const int status = statusOfProcess([&, &end = end] {
            const QtProcess process;
            if (open(ComPort) != 0 || !QFile::exists(lockFile) || openedByUser() == 0)
                return 99;
            end();
            return 98;
        });
        EXPECT_NE(WIFEXITED(status) ? WEXITSTATUS(status) : 0, 99) << name;
        EXPECT_EQ(openedByUser(), 0) << name;
        EXPECT_FALSE(QFile::exists(lockFile)) << name;
    }
}

TEST_F(QtSerialControlTest, theLockOfADeadUserKeepsNobodyOut) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    leaveLock(deadProcess());
    EXPECT_EQ(openedByUser(), 0);
    EXPECT_TRUE(QFile::exists(lockFile)); // whose folder keeps it for its owner
    QFile::remove(lockFile);
}

TEST_F(QtSerialControlTest, anUnpluggedDeviceIsSilentAndIsTakenUpAgain) {
    plugIn(instrument);
    ComPort.setRThreshold(3);
    ASSERT_EQ(open(ComPort, 2), 0);
    ComPort.setCommPort(1); // only from the next opening on
    instrument.unplug();
    settle();
    EXPECT_TRUE(ComPort.PortOpen());
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(ComPort.Input(), "");

    const Instrument back;
    plugIn(back);
    QTest::qWait(1300);
    back.send("abc");
    settle();
    EXPECT_EQ(events, Events{SerialControl::Receive});
    EXPECT_EQ(input, "abc");
    EXPECT_EQ(open(CommTmp, 2), RunTimeError::PortAlreadyOpen);
    const termios now = back.settings();
    EXPECT_EQ(::cfgetispeed(&now), speed_t(B9600));
}

TEST_F(QtSerialControlTest, aVanishedPortCanBeClosedAndStaysClosed) {
    plugIn(instrument);
    ASSERT_EQ(open(ComPort, 2), 0);
    instrument.unplug();
    settle();
    ComPort.setPortOpen(false);
    EXPECT_FALSE(ComPort.PortOpen());
    const Instrument back;
    plugIn(back);
    QTest::qWait(1300);
    EXPECT_EQ(open(CommTmp, 2), 0);
}

TEST_F(QtSerialControlTest, countedFaultsBecomeEvents) {
    taking = false;
    counters = LineCounters{7, 7, 7, 7, 7};
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(eventsAfter("x"), Events{SerialControl::Receive});
    counters = LineCounters{8, 9, 8, 8, 8};
    EXPECT_EQ(eventsAfter("x"), (Events{1001, 1004, 1006, 1008, 1009, SerialControl::Receive}));
    counters->ring = 8;
    counters->cts = 8;
    EXPECT_EQ(eventsAfter("x"), (Events{3, 6, SerialControl::Receive}));
    counters->breaks = 9; // a break without bytes is found by the slow look
    events.clear();
    QTest::qWait(2300);
    EXPECT_EQ(events, Events{SerialControl::Break});
}

TEST_F(QtSerialControlTest, whoAsksWhetherTheLineLivesIsToldAtOnce) {
    taking = false;
    counters = LineCounters{};
    ComPort.setRThreshold(3);
    ASSERT_EQ(open(ComPort), 0);
    counters->carrier = counters->dsr = 5;
    ComPort.lookAtLine();
    EXPECT_EQ(events, (Events{SerialControl::DataSetReadyChanged, SerialControl::CarrierChanged}));
    instrument.send("ab");
    ComPort.lookAtLine();
    EXPECT_EQ(events.size(), 2U);
    instrument.send("c");
    ComPort.lookAtLine();
    EXPECT_EQ(events.back(), SerialControl::Receive);
    EXPECT_EQ(ComPort.Input(), "abc");
    counters.reset(); // the driver does not answer
    ComPort.lookAtLine();
    ComPort.setPortOpen(false);
    ComPort.lookAtLine();
    EXPECT_EQ(events.size(), 3U);
}

TEST_F(QtSerialControlTest, anErrorOfTheHandlerLeavesTheLineAlive) {
    counters = LineCounters{};
    ComPort.OnComm = [this] {
        events.push_back(ComPort.CommEvent());
        throw RunTimeError(RunTimeError::Overflow);
    };
    ASSERT_EQ(open(ComPort), 0);
    const int before = qApp->property("caught").toInt();
    counters->breaks = 1;
    EXPECT_EQ(eventsAfter("a"), (Events{SerialControl::Break, SerialControl::Receive}));
    EXPECT_EQ(eventsAfter("b"), Events{SerialControl::Receive});
    EXPECT_EQ(qApp->property("caught").toInt(), before + 2);
    EXPECT_EQ(ComPort.Input(), "ab");
}

TEST_F(QtSerialControlTest, theLineLivesOnUnderADialogOfTheHandler) {
    plugIn(instrument);
    bool dialog = false;
    ComPort.OnComm = [&] {
        input += ComPort.Input();
        if (std::exchange(dialog, true))
            return;
        instrument.send("b");
        settle();
        EXPECT_EQ(input, "ab");
        instrument.unplug();
        settle();
        EXPECT_EQ(ComPort.InBufferCount(), 0);
        ComPort.setPortOpen(false);
    };
    ASSERT_EQ(open(ComPort, 2), 0);
    eventsAfter("a");
    EXPECT_TRUE(dialog);
    EXPECT_EQ(ComPort.Input(), "");
}

} // namespace
