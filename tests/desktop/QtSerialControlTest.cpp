// SPDX-License-Identifier: MIT
#include "desktop/QtSerialControl.h"

#include "OtherProcess.h"
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/PortLocks.h"
#include "desktop/QtProcess.h"
#include "fakes/TestFolder.h"

#include <QTest>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

namespace {

/// The instrument's end of a pseudo-terminal.
class Instrument {
public:
    Instrument() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(master_.get());
        ::unlockpt(master_.get());
    }
    QString path() const { return QString::fromLocal8Bit(::ptsname(master_.get())); }
    void send(const QByteArray &bytes) const {
        EXPECT_EQ(::write(master_.get(), bytes.constData(), std::size_t(bytes.size())), bytes.size());
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

using Events = std::vector<int>;

/// Port 1 is the instrument, port 2 a link to it or to another one, port 3 whatever.
class QtSerialControlTest : public testing::Test {
protected:
    QtSerialControlTest() {
        ComPort.OnComm = [this] { events.push_back(ComPort.CommEvent()); };
    }

    static int open(QtSerialControl &control, qint16 number = 1) {
        control.setCommPort(number);
        return errorNumberOf([&] { control.setPortOpen(true); });
    }
    void plugIn(const Instrument &plugged) const {
        QFile::remove(devices[2]);
        QFile::link(plugged.path(), devices[2]);
    }
    /// Long enough for all that was sent to arrive.
    static void settle() { QTest::qWait(60); }
    void leaveLock(pid_t owner) const { folder.lay(lockFile, QByteArray::number(owner).rightJustified(10) + "\n"); }
    /// 0 when an ordinary user can open the port.
    int openedByUser() const {
        ::chmod(instrument.path().toLocal8Bit().constData(), 0666);
        return exitStatusOfUser([this] {
            QtSerialControl control(nullptr, "ComPort", device);
            return open(control) == 0 ? 0 : 1;
        });
    }
    Events eventsAfter(const QByteArray &bytes) {
        events.clear();
        instrument.send(bytes);
        settle();
        return events;
    }
    Events look() {
        events.clear();
        ComPort.lookAtLine();
        return events;
    }
    int countsTo() const { return instrument.settings().c_cc[VMIN]; }

    TestFolder folder;
    Instrument instrument;
    QString lockFile = PortLocks::fileOfQSerialPort(instrument.path());
    QString devices[4]{{}, instrument.path(), folder.at("instrument"), {}};
    std::optional<LineCounters> counters;
    const QtSerialControl::DeviceOfPort device = [this](int number) { return devices[number]; };
    QtSerialControl ComPort{nullptr, "ComPort", device, [this](const SerialDevice &) { return counters; }};
    QtSerialControl CommTmp{nullptr, "CommTmp", device};
    Events events;
};

TEST_F(QtSerialControlTest, theTerminalCountsToTheThreshold) {
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(countsTo(), 50);
    EXPECT_EQ(eventsAfter(QByteArray(30, 'a')), Events{});
    EXPECT_EQ(ComPort.InBufferCount(), 30);
    EXPECT_EQ(eventsAfter(QByteArray(19, 'b')), Events{});
    EXPECT_EQ(eventsAfter("\x96\r\n"), Events{ErrorNumber::ReceiveEvent});
    EXPECT_EQ(countsTo(), 1);
    EXPECT_EQ(eventsAfter("c"), Events{ErrorNumber::ReceiveEvent}); // what is not taken raises an event at each arrival
    EXPECT_EQ(ComPort.Input(), QByteArray(30, 'a') + QByteArray(19, 'b') + "\x96\r\nc");
    EXPECT_EQ(countsTo(), 50);
    EXPECT_EQ(eventsAfter("rest"), Events{});
    EXPECT_EQ(ComPort.Input(), "rest");
    EXPECT_EQ(ComPort.InBufferCount(), 0);
    ComPort.OnComm = [this] { EXPECT_EQ(ComPort.Input().size(), 60); };
    eventsAfter(QByteArray(60, 'd'));
    EXPECT_EQ(countsTo(), 50);
}

TEST_F(QtSerialControlTest, bytesBeyondTheBufferAreLostWithOneEventABurst) {
    ComPort.setInBufferSize(100);
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    for (const char first : {'a', 'c'}) {
        eventsAfter(QByteArray(90, first));
        EXPECT_EQ(eventsAfter(QByteArray(20, 'b')),
                  (Events{ErrorNumber::ReceiveBufferOverflow, ErrorNumber::ReceiveEvent}));
        EXPECT_EQ(eventsAfter("c"), Events{ErrorNumber::ReceiveEvent});
        EXPECT_EQ(ComPort.InBufferCount(), 100);
        EXPECT_EQ(ComPort.Input(), QByteArray(90, first) + QByteArray(10, 'b'));
    }
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

TEST_F(QtSerialControlTest, aPortIsHeldByOneAloneAsLongAsThatLives) {
    plugIn(instrument);
    leaveLock(::getppid());
    EXPECT_EQ(open(ComPort, 2), ErrorNumber::PortAlreadyOpen);
    EXPECT_FALSE(instrument.isExclusive());
    leaveLock(deadProcess);
    EXPECT_EQ(open(ComPort, 2), 0);
    EXPECT_TRUE(folder.content(lockFile).startsWith(QByteArray::number(::getpid()) + '\n'));
    EXPECT_EQ(open(CommTmp), ErrorNumber::PortAlreadyOpen);
    EXPECT_EQ(open(CommTmp, 2), ErrorNumber::PortAlreadyOpen);
    EXPECT_FALSE(CommTmp.PortOpen());
    EXPECT_TRUE(instrument.isExclusive());
    EXPECT_EQ(eventsAfter("x"), Events{ErrorNumber::ReceiveEvent});
    ComPort.setPortOpen(false);
    EXPECT_FALSE(QFile::exists(lockFile));
    EXPECT_FALSE(instrument.isExclusive());
    EXPECT_EQ(open(CommTmp), 0);
}

TEST_F(QtSerialControlTest, whatIsMissingOrNoTerminalIsAnInvalidPort) {
    ASSERT_EQ(::mkfifo(folder.native("fifo").constData(), 0666), 0);
    folder.lay("file");
    ASSERT_TRUE(QFile::link(folder.at("loop"), folder.at("loop")));
    for (const char *other : {"/dev/ttyNone", "/dev/null", ".", "fifo", "file", "loop"}) {
        devices[3] = folder.at(other);
        EXPECT_EQ(open(ComPort, 3), ErrorNumber::InvalidPortNumber) << other;
        EXPECT_FALSE(QFile::exists(PortLocks::fileOfQSerialPort(devices[3]))) << other;
    }
    devices[3].clear();
    EXPECT_EQ(open(ComPort, 3), ErrorNumber::InvalidPortNumber);
    EXPECT_FALSE(ComPort.PortOpen());
}

/// Runs first, while no thread stands that an exit in a copy of the process would wait for.
using QtSerialControlDeathTest = QtSerialControlTest;

TEST_F(QtSerialControlDeathTest, anExitLetsGoOfThePortForAnotherUser) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    const int status = statusOfProcess([this]() -> int {
        const QtProcess process;
        std::exit(open(ComPort) == 0 && QFile::exists(lockFile) && openedByUser() != 0 ? 0 : 1);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(openedByUser(), 0);
    EXPECT_FALSE(QFile::exists(lockFile));
    leaveLock(deadProcess); // of a user who has died with it
    EXPECT_EQ(openedByUser(), 0);
    EXPECT_TRUE(QFile::remove(lockFile)); // whose folder keeps it for its owner
}

TEST_F(QtSerialControlTest, anUnpluggedDeviceIsSilentAndIsTakenUpAgainUnlessThePortWasClosed) {
    plugIn(instrument);
    ComPort.setRThreshold(3);
    ASSERT_EQ(open(ComPort, 2), 0);
    ComPort.setCommPort(1); // only from the next opening on
    instrument.unplug();
    settle();
    EXPECT_TRUE(ComPort.PortOpen());
    EXPECT_EQ(events, Events{});

    Instrument back;
    plugIn(back);
    QTest::qWait(1300);
    back.send("abc");
    settle();
    EXPECT_EQ(events, Events{ErrorNumber::ReceiveEvent});
    EXPECT_EQ(ComPort.Input(), "abc");
    EXPECT_EQ(open(CommTmp, 2), ErrorNumber::PortAlreadyOpen);
    const termios now = back.settings();
    EXPECT_EQ(::cfgetispeed(&now), speed_t(B9600));

    back.unplug();
    settle();
    ComPort.setPortOpen(false);
    EXPECT_FALSE(ComPort.PortOpen());
    const Instrument third;
    plugIn(third);
    QTest::qWait(1300);
    EXPECT_EQ(open(CommTmp, 2), 0);
}

TEST_F(QtSerialControlTest, whatIsCountedBecomesEventsAtEachLook) {
    ComPort.setRThreshold(3);
    counters = LineCounters{7, 7, 7, 7, 7};
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(look(), Events{});
    counters = LineCounters{8, 9, 8, 8, 8};
    EXPECT_EQ(look(), (Events{1001, 1004, 1006, 1008, 1009}));
    counters->cts = counters->dsr = counters->carrier = counters->ring = 8;
    EXPECT_EQ(look(), (Events{3, 4, 5, 6}));
    instrument.send("ab");
    EXPECT_EQ(look(), Events{});
    instrument.send("c");
    EXPECT_EQ(look(), Events{ErrorNumber::ReceiveEvent});
    EXPECT_EQ(ComPort.Input(), "abc");
    counters->breaks = 9; // a break without bytes is found by the slow look
    QTest::qWait(2300);
    EXPECT_EQ(events, (Events{ErrorNumber::ReceiveEvent, ErrorNumber::Break}));
    counters.reset(); // the driver does not answer
    EXPECT_EQ(look(), Events{});
    ComPort.setPortOpen(false);
    EXPECT_EQ(look(), Events{});
}

TEST_F(QtSerialControlTest, anErrorOfTheHandlerKeepsNoEventFromIt) {
    counters = LineCounters{};
    ComPort.OnComm = [this] {
        events.push_back(ComPort.CommEvent());
        throw RunTimeError(ErrorNumber::Overflow);
    };
    ASSERT_EQ(open(ComPort), 0);
    counters->breaks = 1;
    instrument.send("a");
    EXPECT_EQ(errorNumberOf([this] { look(); }), ErrorNumber::Overflow);
    EXPECT_EQ(events, (Events{ErrorNumber::Break, ErrorNumber::ReceiveEvent}));
    EXPECT_EQ(ComPort.Input(), "a");
}

TEST_F(QtSerialControlTest, theLineLivesOnUnderADialogOfTheHandler) {
    plugIn(instrument);
    bool dialog = false;
    QByteArray input;
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
