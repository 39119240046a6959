// SPDX-License-Identifier: MIT
#include "simulator/PseudoTerminal.h"

#include "base/RunTimeError.h"

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

    QByteArray read() const {
        char bytes[4096];
        const ssize_t count = ::read(file_, bytes, sizeof bytes);
        return {bytes, std::max<ssize_t>(0, count)};
    }

private:
    int file_;
};

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
