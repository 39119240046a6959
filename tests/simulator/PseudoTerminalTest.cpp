// SPDX-License-Identifier: MIT
#include "simulator/PseudoTerminal.h"

#include "simulator/Plug.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>

using namespace ostrel;

namespace {

/// Whoever listens on the line.
struct Listener {
    explicit Listener(const QString &path) : file(::open(qPrintable(path), O_RDONLY | O_NOCTTY | O_NONBLOCK)) {
        ::tcgetattr(file.number(), &line);
    }
    /// Open, raw, 9600 baud, and claimed by nobody.
    bool findsItReady() const {
        int claimed = 0;
        return ::ioctl(file.number(), TIOCGEXCL, &claimed) == 0 && claimed == 0 && line.c_iflag == 0 &&
               (line.c_lflag & (ICANON | ECHO | ISIG)) == 0 && (line.c_cflag & CSIZE) == CS8 && line.c_cc[VMIN] == 1 &&
               ::cfgetispeed(&line) == B9600;
    }
    QByteArray await(qsizetype count) const {
        QByteArray bytes;
        char byte = 0;
        for (pollfd arrival{file.number(), POLLIN, 0};
             bytes.size() < count && ::poll(&arrival, 1, 5000) > 0 && ::read(file.number(), &byte, 1) == 1;)
            bytes += byte;
        return bytes;
    }

    SystemFile file;
    termios line{};
};

/// A listener keeps others out, sets the line as no recorder would, reads nothing, which cannot hold the instrument up,
/// and ends without a word.
template <typename Port>
void leaveTraces(Port &port, const QString &path) {
    Listener listener{path};
    listener.line.c_lflag |= ICANON | ECHO | ISIG;
    ::tcsetattr(listener.file.number(), TCSANOW, &listener.line);
    ::ioctl(listener.file.number(), TIOCEXCL);
    while (port.send(QByteArray{1000, '\n'}) > 0)
        continue;
}

/// Root has the rights of an ordinary user as long as this lives; anybody else is one anyway.
struct OrdinaryUser {
    ~OrdinaryUser() { EXPECT_EQ(::seteuid(::getuid()), 0); }
    const bool is = ::geteuid() != 0 || ::seteuid(65534) == 0;
};

TEST(PseudoTerminal, withoutAListenerTheBytesAreLostAndTheLineGoesOn) {
    PseudoTerminal port;
    EXPECT_EQ(port.send("early"), 0);
    for (int times = 0; times < 3; ++times) {
        {
            const Listener first{port.path()};
            EXPECT_FALSE(port.lookAfter());
            EXPECT_GT(port.send(QByteArray{3000, 'x'}), 0); // more than is read at once
        }
        EXPECT_EQ(port.send("between"), 0);
        EXPECT_FALSE(port.lookAfter());
        const Listener second{port.path()};
        EXPECT_EQ(port.send("two"), 3);
        EXPECT_EQ(second.await(3), "two"); // and nothing that the first has left
    }
}

TEST(PseudoTerminal, anOrdinaryListenerFindsAWorkingLineAfterASpoiledOne) {
    // A terminal that is not raw takes these for orders.
    const QByteArray orders{"\0\x03\x04\n\x0d\x11\x13\x1a\x1c\x7f\xff\x96", 12};
    PseudoTerminal port;
    leaveTraces(port, port.path());
    port.lookAfter();

    const OrdinaryUser user;
    const Listener next{port.path()};
    EXPECT_TRUE(next.findsItReady());
    EXPECT_FALSE(port.lookAfter()); // leaves the line of a listener alone
    EXPECT_EQ(port.send(orders), 12);
    EXPECT_EQ(next.await(12), orders);
}

TEST(Plug, ofAnOrdinaryUserPutsANewPortInThePlaceOfASpoiledOneByItself) {
    int argc = 0;
    const QCoreApplication application{argc, nullptr};
    const OrdinaryUser user;
    if (!user.is)
        GTEST_SKIP() << "no ordinary user can be made here";
    const QTemporaryDir folder;
    const QString link = folder.filePath("instrument");
    QStringList ports;
    Plug plug{link};
    plug.newPort = [&](const QString &made) { ports += made; };
    plug.set(true);
    leaveTraces(plug, link);
    for (const QDeadlineTimer limit{10'000}; ports.size() < 2 && !limit.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_NE(ports.first(), ports.last());
    EXPECT_EQ(QFile::symLinkTarget(link), ports.last());
    EXPECT_TRUE(Listener{link}.findsItReady());
}

TEST(PseudoTerminal, itsLinkReplacesAnotherLinkAndNothingElse) {
    const QTemporaryDir folder;
    const QString link = folder.filePath("instrument");
    auto older = std::make_unique<PseudoTerminal>(link);
    const PseudoTerminal newer{link};
    EXPECT_EQ(QFile::symLinkTarget(link), newer.path());
    older.reset();
    EXPECT_EQ(QFile::symLinkTarget(link), newer.path());
}

} // namespace
