// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include "Played.h"
#include "base/RunTimeError.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// Whoever listens on the line.
class Listener {
public:
    explicit Listener(const QString &path) : file_(::open(qPrintable(path), O_RDONLY | O_NOCTTY | O_NONBLOCK)) {}
    ~Listener() { ::close(file_); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    bool isOpen() const { return file_ >= 0; }
    QByteArray read() const {
        char bytes[4096];
        const ssize_t count = ::read(file_, bytes, sizeof bytes);
        return {bytes, std::max<ssize_t>(0, count)};
    }

private:
    int file_;
};

class OnALine : public testing::Test {
protected:
    /// Plays with a listener on every port that is plugged in, and answers what was heard.
    QByteArray heard(const QString &script) {
        QByteArray bytes;
        Player player{parseRunScript(script), {}};
        Transmitter transmitter{player, {link, 200, [this](const QByteArray &taken) { sent += taken; }}};
        std::optional<Listener> listener;
        const auto listen = [&] { bytes += listener->read(); };
        transmitter.plugged = [&](const QString &path) {
            EXPECT_EQ(QFile::symLinkTarget(link), path);
            listener.emplace(link);
        };
        transmitter.finished = [&] { QTimer::singleShot(20, [] { QCoreApplication::exit(); }); };
        transmitter.failed = [](const RunTimeError &error) { FAIL() << error.what(); };
        transmitter.start();
        QTimer often;
        often.callOnTimeout(listen);
        often.start(1);
        QCoreApplication::exec();
        return bytes;
    }

    int argc = 1;
    char name[5] = "test";
    char *argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QTemporaryDir folder;
    QString link = folder.filePath("instrument");
    QByteArray sent;
};

TEST_F(OnALine, theListenerHearsWhatThePlayerSaysAtItsPace) {
    const QString run = "noise uv 0.1\nwait 2s\nstart\nwait 190s\nmethod\n| Text\nend\nwait 8s";
    QElapsedTimer clock;
    clock.start();
    const QByteArray bytes = heard(run);
    EXPECT_GE(clock.elapsed(), 995); // 200 times as fast
    EXPECT_EQ(bytes, Played{run}.bytes());
    EXPECT_EQ(sent, bytes);
    EXPECT_FALSE(QFileInfo{link}.isSymLink());
}

TEST(PseudoTerminal, withoutAListenerTheBytesAreLostAndTheLineGoesOn) {
    PseudoTerminal port;
    EXPECT_EQ(port.send("early"), 0);
    {
        const Listener first{port.path()};
        EXPECT_EQ(port.send("one"), 3);
        EXPECT_EQ(first.read(), "one");
    }
    EXPECT_EQ(port.send("between"), 0);
    const Listener second{port.path()};
    EXPECT_EQ(port.send("two"), 3);
    EXPECT_EQ(second.read(), "two");
}

TEST(PseudoTerminal, aListenerThatNeverReadsCannotHoldItUp) {
    PseudoTerminal port;
    const Listener idle{port.path()};
    const QByteArray minute{3600, 'x'};
    for (int minutes = 0; minutes < 60; ++minutes)
        port.send(minute);
    EXPECT_EQ(port.send(minute), 0);
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
