// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/PortFinder.h"
#include "desktop/PortLocks.h"
#include "desktop/QtSerialControl.h"
#include "desktop/SerialPorts.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFolder.h"
#include "files/Descriptor.h"

#include <QDateTime>
#include <QProcess>
#include <QTest>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {

TEST(SerialPortsTest, realPortsComeInNaturalOrderOnBoardFirstAndThoseOfTheSettingsBeforeThem) {
    const TestFolder folder; // as the kernel lists terminals; only an on-board port has a type
    for (const char *name : {"ttyUSB10", "ttyUSB2", "ttyACM0", "tty1", "ttyS10", "ttyS2", "ttyS3"})
        QDir().mkpath(folder.at(name) + "/device");
    QDir().mkpath(folder.at("ttyUSB9")); // no device
    folder.lay("ttyS10/type", "4\n");
    folder.lay("ttyS3/type", "0\n");
    FakeSettingsStore store;
    store.rows[{"Ports", "1"}] = store.rows[{"Ports", "11"}] = "/tmp/instrument";
    SerialPorts ports(store, folder.path());
    EXPECT_EQ(ports.installed().join(' '), "/dev/ttyS2 /dev/ttyS10 /dev/ttyACM0 /dev/ttyUSB2 /dev/ttyUSB10");
    QStringList devices;
    for (const int number : {0, 1, 2, 5, 6, 11})
        devices << ports.device(number);
    EXPECT_EQ(devices, (QStringList{"", "/tmp/instrument", "/dev/ttyS10", "/dev/ttyUSB10", "", ""}));
}

constexpr int held = ErrorNumber::PortAlreadyOpen;
const QByteArray living = QByteArray::number(::getppid());
const QByteArray dead = "2000000000"; // beyond all that the system gives out

/// What a lock file usually holds.
QByteArray padded(const QByteArray &process) { return process.rightJustified(10) + "\n"; }

struct PortLocksTest : testing::Test {
    int takeOver() const {
        return errorNumberOf([&] {
            PortLocks::takeOver({"/dev/serial/by-id/usb-1", "/dev/ttyUSB0"}, {folder.path()});
        });
    }
    /// A lock of the dead is taken away, one of the living stays and keeps everybody out.
    void expectMet(const QByteArray &content, int number, const QString &name = "LCK..ttyUSB0") const {
        folder.lay(name, content);
        EXPECT_EQ(takeOver(), number) << content.constData();
        EXPECT_EQ(QFile::remove(folder.at(name)), number != 0) << content.constData();
    }

    TestFolder folder;
    const QByteArray lock = folder.native("LCK..ttyUSB0");
};

TEST_F(PortLocksTest, theOwnersLifeDecides) {
    const QByteArray name = folder.content("/proc/" + living + "/comm").trimmed();
    const pid_t process = ::getppid();
    const QByteArray binary(reinterpret_cast<const char *>(&process), sizeof process);
    expectMet("", held); // is being written
    for (const QByteArray &kept : {padded(living), living + " tool anna\n", binary, living + "\n" + name + "\nhost\n"})
        expectMet(kept, held);
    const QByteArray givenAnew = living + "\nanother program\nhost\n";
    for (const QByteArray &taken : {givenAnew, padded(dead), padded(QByteArray::number(::getpid()))})
        expectMet(taken, 0);
    for (const char *other : {"LCK..serial_by-id_usb-1", "LCK..serial:by-id:usb-1", "LCK..usb-1"})
        expectMet(padded(living), held, other);
    folder.lay("LCK..ttyUSB1", padded(living)); // another device's
    EXPECT_EQ(takeOver(), 0);
}

TEST_F(PortLocksTest, whatIsHeldOpenOrMayNotBeReadIsALivingOnesAndWhatIsNoFileIsNobodys) {
    folder.lay("LCK..ttyUSB0", padded(dead));
    Descriptor owner(::open(lock.constData(), O_RDONLY));
    ASSERT_EQ(::flock(owner.get(), LOCK_EX), 0);
    EXPECT_EQ(takeOver(), held);
    owner.reset();
    ::chmod(lock.constData(), 0600);
    ::chmod(folder.native(".").constData(), 0777);
    const int root = ::setfsuid(12345); // opens files as another user; only root can
    EXPECT_TRUE(root != 0 || takeOver() == held);
    ::setfsuid(uid_t(root));
    EXPECT_EQ(takeOver(), 0);
    QFile old(folder.at("LCK..ttyUSB0")); // left behind before its number was written
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    old.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    EXPECT_EQ(takeOver(), 0);
    ASSERT_EQ(::mkfifo(lock.constData(), 0644), 0); // where the old one was
    EXPECT_EQ(takeOver(), 0);
    EXPECT_EQ(folder.names(), QStringList{"LCK..ttyUSB0"});
}

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

    Descriptor master;
};

using Events = std::vector<int>;

/// Port 1 is the instrument, port 2 a link to it or to another one, port 3 whatever.
struct QtSerialControlTest : testing::Test {
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
    Events eventsAfter(const QByteArray &bytes) {
        events.clear();
        instrument.send(bytes);
        settle();
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
    folder.lay(lockFile, padded(living));
    EXPECT_EQ(open(ComPort, 2), held);
    folder.lay(lockFile, padded(dead));
    EXPECT_EQ(open(ComPort, 2), 0);
    EXPECT_TRUE(folder.content(lockFile).startsWith(QByteArray::number(::getpid()) + '\n'));
    EXPECT_EQ(open(CommTmp), held);
    EXPECT_EQ(open(CommTmp, 2), held);
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

TEST_F(QtSerialControlTest, whatIsCountedBecomesEventsAtEachLookWhateverTheHandlerRaises) {
    counters = LineCounters{7, 7, 7, 7, 7, 7, 7, 7, 7};
    ASSERT_EQ(open(ComPort), 0);
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
    events.clear();
    EXPECT_EQ(errorNumberOf([this] { ComPort.lookAtLine(); }), ErrorNumber::Overflow);
    EXPECT_EQ(events, (Events{3, 4, 5, 6, 1001, 1004, 1006, 1008, 1009, ErrorNumber::ReceiveEvent}));
    events.clear();
    counters.reset(); // the driver does not answer
    ComPort.lookAtLine();
    ComPort.setPortOpen(false);
    ComPort.lookAtLine();
    EXPECT_EQ(events, Events{});
}

TEST_F(QtSerialControlTest, theLineLivesOnUnderADialogOfTheHandlerAndAnUnpluggedDeviceIsLetGoOfWithThePort) {
    QByteArray input;
    int told = 0;
    ComPort.OnComm = [&] {
        input += ComPort.Input();
        if (++told > 1)
            return;
        instrument.send("b");
        settle();
        instrument.master.reset(); // unplugged, which is no sign of life
        settle();
        EXPECT_TRUE(ComPort.PortOpen() && ComPort.InBufferCount() == 0);
        ComPort.setPortOpen(false);
    };
    plugIn(instrument);
    ASSERT_EQ(open(ComPort, 2), 0);
    eventsAfter("a");
    EXPECT_EQ(told, 2);
    EXPECT_EQ(input, "ab");
    const Instrument other;
    plugIn(other);
    QTest::qWait(1300);
    EXPECT_EQ(open(CommTmp, 2), 0); // nobody looks for the device any more
}

using Obstacle = PortFacts::Obstacle;

/// COM 1 is the instrument, COM 2 something else.
struct PortFinderTest : testing::Test {
    QString by(Obstacle obstacle, int refusal = held, int port = 1) {
        const PortFacts facts = finder.factsOf(port, refusal);
        EXPECT_EQ(facts.obstacle, obstacle);
        return facts.by;
    }

    TestFolder folder;
    Instrument instrument;
    QString devices[3]{{}, instrument.path(), {}};
    PortFinder finder{[this](int number) { return devices[number]; }, {folder.path(), {folder.path()}}};
};

TEST_F(PortFinderTest, tellsWhoHoldsAPortThatIsRefused) {
    EXPECT_EQ(by(Obstacle::None, 0), "");
    EXPECT_EQ(by(Obstacle::Held), ""); // nobody who can be seen
    const QString lock = "LCK.." + devices[1].mid(5).replace('/', '_');
    folder.lay(lock, padded(living));
    EXPECT_TRUE(by(Obstacle::Held).endsWith(" (process " + living + ")"));
    folder.lay(lock, padded(dead));
    QProcess other;
    other.setStandardInputFile(devices[1]);
    other.start("sleep", {"60"});
    ASSERT_TRUE(other.waitForStarted());
    const QString name = QStringLiteral("sleep (process %1)").arg(other.processId());
    EXPECT_TRUE(QTest::qWaitFor([&] { return by(Obstacle::Held) == name; }));
    other.kill();
    other.waitForFinished();
    EXPECT_EQ(folder.names(), QStringList{lock}); // looking takes nothing away
}

TEST_F(PortFinderTest, tellsWhatAPortIsAndWhyItCannotBeOpened) {
    by(Obstacle::NoTerminal, ErrorNumber::InvalidPortNumber);
    by(Obstacle::Missing, 0, 2);
    ASSERT_EQ(::mkfifo(folder.native("fifo").constData(), 0666), 0);
    for (const auto &[other, obstacle] : {std::pair("none", Obstacle::Missing), {"fifo", Obstacle::NoTerminal}}) {
        devices[2] = folder.at(other);
        by(obstacle, 0, 2);
    }
    ::chmod(instrument.path().toLocal8Bit().constData(), 0600);
    const int root = ::setfsuid(12345); // only root can
    const PortFacts facts = finder.factsOf(1, held);
    ::setfsuid(uid_t(root));
    EXPECT_TRUE(root != 0 || facts.obstacle == Obstacle::NoPermission);

    folder.lay("usb/manufacturer", "FTDI\n");
    folder.lay("usb/product", "FT232R USB UART\n");
    const QString terminal = QFileInfo(devices[1]).fileName();
    ASSERT_TRUE(QDir().mkpath(folder.at("usb/interface/port")) && QDir().mkpath(folder.at(terminal)));
    ASSERT_TRUE(QFile::link(folder.at("usb/interface/port"), folder.at(terminal) + "/device"));
    EXPECT_EQ(finder.factsOf(1, 0).product, "FTDI FT232R USB UART");
}

} // namespace
