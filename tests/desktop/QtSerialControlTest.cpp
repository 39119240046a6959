// SPDX-License-Identifier: MIT
#include "desktop/QtSerialControl.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/PortLocks.h"
#include "fakes/TestFolder.h"

#include <QTest>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

using namespace ostrel;

namespace {

/// Long enough for all that was sent to arrive.
void settle() { QTest::qWait(60); }

/// The instrument's end of a pseudo-terminal.
struct Instrument {
    Instrument() : master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(master.get());
        ::unlockpt(master.get());
    }
    QString path() const { return QString::fromLocal8Bit(::ptsname(master.get())); }
    void send(const QByteArray &bytes) const {
        EXPECT_EQ(::write(master.get(), bytes.constData(), std::size_t(bytes.size())), bytes.size());
    }
    termios settings() const {
        termios now{};
        ::tcgetattr(master.get(), &now);
        return now;
    }
    void unplug() {
        master.reset();
        settle();
    }

    Descriptor master;
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
    void leaveLock(pid_t owner) const { folder.lay(lockFile, QByteArray::number(owner).rightJustified(10) + "\n"); }
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

TEST_F(QtSerialControlTest, theTerminalCountsToTheThresholdAndTheLinesPastIsNotHeard) {
    instrument.send("stale\n");
    ComPort.setRThreshold(50);
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(countsTo(), 50);
    EXPECT_EQ(eventsAfter(QByteArray(49, 'a')), Events{});
    EXPECT_EQ(ComPort.InBufferCount(), 49);
    EXPECT_EQ(eventsAfter("\x96\r\n"), Events{ErrorNumber::ReceiveEvent});
    EXPECT_EQ(countsTo(), 1);
    EXPECT_EQ(eventsAfter("c"), Events{ErrorNumber::ReceiveEvent}); // what is not taken raises an event at each arrival
    EXPECT_EQ(ComPort.Input(), QByteArray(49, 'a') + "\x96\r\nc");
    EXPECT_EQ(countsTo(), 50);
    EXPECT_EQ(eventsAfter("rest"), Events{});
    EXPECT_EQ(ComPort.Input(), "rest");
    const termios now = instrument.settings();
    EXPECT_EQ(::cfgetispeed(&now), speed_t(B9600));
    EXPECT_EQ(now.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t(CS8));
    EXPECT_EQ(now.c_iflag & (IXON | IXOFF), 0U);
    ComPort.setPortOpen(false);
    EXPECT_EQ(eventsAfter("unheard"), Events{});
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

TEST_F(QtSerialControlTest, aPortIsHeldByOneAloneAsLongAsThatLives) {
    plugIn(instrument);
    leaveLock(::getppid());
    EXPECT_EQ(open(ComPort, 2), ErrorNumber::PortAlreadyOpen);
    leaveLock(2'000'000'000); // nobody's number
    EXPECT_EQ(open(ComPort, 2), 0);
    EXPECT_TRUE(folder.content(lockFile).startsWith(QByteArray::number(::getpid()) + '\n'));
    EXPECT_EQ(open(CommTmp), ErrorNumber::PortAlreadyOpen);
    EXPECT_EQ(open(CommTmp, 2), ErrorNumber::PortAlreadyOpen);
    EXPECT_EQ(eventsAfter("x"), Events{ErrorNumber::ReceiveEvent});
    ComPort.setPortOpen(false);
    EXPECT_FALSE(QFile::exists(lockFile));
    ASSERT_TRUE(QDir().mkdir(lockFile)); // like a dead one's that cannot be taken away
    EXPECT_EQ(open(CommTmp), 0);
    QDir().rmdir(lockFile);
}

TEST_F(QtSerialControlTest, whatIsMissingOrNoTerminalIsAnInvalidPort) {
    ASSERT_EQ(::mkfifo(folder.native("fifo").constData(), 0666), 0);
    ASSERT_TRUE(QFile::link(folder.at("loop"), folder.at("loop")));
    for (const char *other : {"/dev/ttyNone", "/dev/null", "fifo", "loop"}) {
        devices[3] = folder.at(other);
        EXPECT_EQ(open(ComPort, 3), ErrorNumber::InvalidPortNumber) << other;
    }
    devices[3].clear();
    EXPECT_EQ(open(ComPort, 3), ErrorNumber::InvalidPortNumber);
    EXPECT_FALSE(ComPort.PortOpen());
}

TEST_F(QtSerialControlTest, anUnpluggedDeviceIsSilentAndIsLetGoOfWithThePort) {
    plugIn(instrument);
    ASSERT_EQ(open(ComPort, 2), 0);
    instrument.unplug();
    EXPECT_TRUE(ComPort.PortOpen());
    EXPECT_EQ(events, Events{});
    ComPort.setPortOpen(false);
    const Instrument other;
    plugIn(other);
    QTest::qWait(1300);
    EXPECT_EQ(open(CommTmp, 2), 0);
}

TEST_F(QtSerialControlTest, whatIsCountedBecomesEventsAtEachLookWhateverTheHandlerRaises) {
    counters = LineCounters{7, 7, 7, 7, 7, 7, 7, 7, 7};
    ASSERT_EQ(open(ComPort), 0);
    EXPECT_EQ(look(), Events{});
    counters->breaks = 9; // a break without bytes is found by the slow look
    QTest::qWait(2300);
    EXPECT_EQ(events, Events{ErrorNumber::Break});
    const auto seeEvent = ComPort.OnComm;
    ComPort.OnComm = [&] {
        seeEvent();
        throw RunTimeError(ErrorNumber::Overflow);
    };
    counters = LineCounters{10, 9, 8, 8, 8, 8, 8, 8, 8};
    instrument.send("a");
    EXPECT_EQ(errorNumberOf([this] { look(); }), ErrorNumber::Overflow);
    EXPECT_EQ(events, (Events{3, 4, 5, 6, 1001, 1004, 1006, 1008, 1009, ErrorNumber::ReceiveEvent}));
    counters.reset(); // the driver does not answer
    EXPECT_EQ(look(), Events{});
    ComPort.setPortOpen(false);
    EXPECT_EQ(look(), Events{});
}

TEST_F(QtSerialControlTest, theLineLivesOnUnderADialogOfTheHandler) {
    QByteArray input;
    ComPort.OnComm = [&] {
        input += ComPort.Input();
        if (input.size() > 1)
            return;
        instrument.send("b");
        settle();
        EXPECT_EQ(input, "ab");
        instrument.unplug();
        EXPECT_EQ(ComPort.InBufferCount(), 0);
        ComPort.setPortOpen(false);
    };
    ASSERT_EQ(open(ComPort), 0);
    eventsAfter("a");
    EXPECT_EQ(ComPort.Input(), "");
    EXPECT_EQ(input, "ab");
}

} // namespace
