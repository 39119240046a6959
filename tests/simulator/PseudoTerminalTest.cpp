// SPDX-License-Identifier: MIT
#include "simulator/PseudoTerminal.h"

#include "ChildProcess.h"
#include "base/RunTimeError.h"
#include "simulator/Plug.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

namespace {

/// Whoever listens on the line.
class Listener {
public:
    explicit Listener(const QString &path) : file_(::open(qPrintable(path), O_RDONLY | O_NOCTTY | O_NONBLOCK)) {}

    bool isOpen() const { return bool(file_); }
    bool isRaw() const {
        termios line{};
        ::tcgetattr(file_.number(), &line);
        return line.c_iflag == 0 && (line.c_lflag & (ICANON | ECHO | ISIG)) == 0 && (line.c_cflag & CSIZE) == CS8 &&
               line.c_cc[VMIN] == 1 && ::cfgetispeed(&line) == B9600;
    }
    bool isClaimed() const {
        int claimed = 0;
        return ::ioctl(file_.number(), TIOCGEXCL, &claimed) == 0 && claimed != 0;
    }
    QByteArray read() const {
        char bytes[4096];
        const ssize_t count = ::read(file_.number(), bytes, sizeof bytes);
        return {bytes, std::max<ssize_t>(0, count)};
    }
    QByteArray await(qsizetype count) const {
        QByteArray bytes;
        for (pollfd line{file_.number(), POLLIN, 0}; bytes.size() < count && ::poll(&line, 1, 5000) > 0;)
            bytes += read();
        return bytes;
    }
    /// Keeps others out and sets the line as no recorder would.
    void spoil() const {
        termios line{};
        ::tcgetattr(file_.number(), &line);
        line.c_iflag |= ISTRIP | ICRNL | IXON;
        line.c_lflag |= ICANON | ECHO | ISIG;
        line.c_cc[VMIN] = 200;
        ::cfsetspeed(&line, B1200);
        ::tcsetattr(file_.number(), TCSANOW, &line);
        ::ioctl(file_.number(), TIOCEXCL);
    }

private:
    SystemFile file_;
};

QByteArray everyByte() {
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes += char(value);
    return bytes;
}

/// A listener spoils the line, leaves bytes unread and is killed.
template <typename Port>
void leaveDeadListener(Port &port, const QString &path) {
    ChildProcess listener{[&] {
        const Listener line{path};
        line.spoil();
        ::raise(SIGSTOP);
        return 0;
    }};
    ASSERT_TRUE(listener.isStopped());
    while (port.send(QByteArray{1000, '\n'}) > 0) {
    }
    listener.kill();
}

/// What an ordinary user finds on the line; 0 when all is well.
int ordinaryListener(const QString &path) {
    if (!becomeOrdinaryUser())
        return notOrdinary;
    const Listener line{path};
    if (!line.isOpen() || !line.isRaw())
        return 1;
    ::raise(SIGSTOP);
    return line.await(256) == everyByte() ? 0 : 2;
}

TEST(PseudoTerminal, withoutAListenerTheBytesAreLostAndTheLineGoesOn) {
    PseudoTerminal port;
    const QString path = port.path();
    EXPECT_EQ(port.send("early"), 0);
    for (int times = 0; times < 3; ++times) {
        {
            const Listener first{path};
            EXPECT_FALSE(port.lookAfter());
            EXPECT_EQ(port.send("one"), 3);
        }
        EXPECT_EQ(port.send("between"), 0);
        EXPECT_FALSE(port.lookAfter());
        EXPECT_EQ(port.path(), path);
        const Listener second{path};
        EXPECT_EQ(port.send("two"), 3);
        EXPECT_EQ(second.await(3), "two"); // and nothing that the first has left
    }
}

TEST(PseudoTerminal, aListenerThatNeverReadsCannotHoldItUp) {
    PseudoTerminal port;
    const Listener idle{port.path()};
    const QByteArray minute{3600, 'x'};
    for (int minutes = 0; minutes < 60; ++minutes)
        port.send(minute);
    EXPECT_EQ(port.send(minute), 0);
}

TEST(PseudoTerminal, anOrdinaryListenerFindsAWorkingLineAfterAKilledOne) {
    PseudoTerminal port;
    leaveDeadListener(port, port.path());
    port.lookAfter();

    const ChildProcess next{[&] { return ordinaryListener(port.path()); }};
    if (next.isStopped()) {
        EXPECT_FALSE(port.lookAfter()); // leaves the line of a listener alone
        EXPECT_EQ(port.send(everyByte()), 256);
        next.goOn();
    }
    const int found = next.exitCode();
    SKIP_UNLESS_ORDINARY(found);
    EXPECT_EQ(found, 0);
}

TEST(PseudoTerminal, anInstrumentOfAnOrdinaryUserGetsANewPortInstead) {
    const QTemporaryDir folder;
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0777), 0);
    const ChildProcess user{[&] {
        if (!becomeOrdinaryUser())
            return notOrdinary;
        const QString link = folder.filePath("instrument");
        PseudoTerminal port{link};
        const QString before = port.path();
        leaveDeadListener(port, port.path());
        if (!port.lookAfter() || port.path() == before || QFile::symLinkTarget(link) != port.path())
            return 1;
        const Listener next{link};
        port.send(everyByte());
        return next.isRaw() && next.await(256) == everyByte() ? 0 : 2;
    }};
    const int found = user.exitCode();
    SKIP_UNLESS_ORDINARY(found);
    EXPECT_EQ(found, 0);
}

TEST(Plug, makesALineWorkAgainByItself) {
    int argc = 0;
    const QCoreApplication application{argc, nullptr};
    QString path;
    Plug plug;
    plug.newPort = [&](const QString &made) { path = made; };
    plug.set(true);
    leaveDeadListener(plug, path);
    const auto works = [&] {
        const Listener next{path};
        return next.isOpen() && next.isRaw() && !next.isClaimed();
    };
    EXPECT_FALSE(works());
    for (const QDeadlineTimer limit{10'000}; !works() && !limit.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_TRUE(works());
}

TEST(PseudoTerminal, itsLinkReplacesAnotherLinkAndNothingElse) {
    const QTemporaryDir folder;
    const QString link = folder.filePath("instrument");
    auto older = std::make_unique<PseudoTerminal>(link);
    const PseudoTerminal newer{link};
    EXPECT_EQ(QFile::symLinkTarget(link), newer.path());
    older.reset();
    EXPECT_EQ(QFile::symLinkTarget(link), newer.path());
    EXPECT_THROW(PseudoTerminal{folder.path()}, RunTimeError);
}

} // namespace
