// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include "simulator/Player.h"

#include <QCoreApplication>
#include <QThread>
#include <fcntl.h>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

/// A script is played to a listener that reads every 10 ms and so receives all of it.
class TransmitterTest : public testing::Test {
protected:
    TransmitterTest() {
        plug.newPort = [this](const QString &path) {
            line = SystemFile{::open(qPrintable(path), O_RDONLY | O_NOCTTY | O_NONBLOCK)};
            ++ports;
        };
        reading.callOnTimeout([this] {
            char piece[4096];
            for (ssize_t count = 0; (count = ::read(line.number(), piece, sizeof piece)) > 0;)
                received.append(piece, count);
        });
        reading.start(10);
    }

    /// Answers how long it took, in ms.
    qint64 play(const QString &script, double speed) {
        Player player{parseRunScript(script), {}};
        Player same{parseRunScript(script), {}};
        QByteArray recorded;
        Transmitter transmitter{player, plug, {speed, [&](const QByteArray &taken) { recorded += taken; }}};
        transmitter.finished = [] { QCoreApplication::exit(); };
        plug.set(true);
        QElapsedTimer clock;
        clock.start();
        transmitter.start();
        QCoreApplication::exec();
        QByteArray all;
        while (const std::optional<LineTick> tick = same.next())
            all += tick->bytes;
        EXPECT_EQ(received, all);
        EXPECT_EQ(recorded, all);
        return clock.elapsed();
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    Plug plug;
    SystemFile line;
    QTimer reading;
    QByteArray received;
    int ports = 0;
};

TEST_F(TransmitterTest, aFastPlayComesInBurstsThatTheRecorderCanTakeAndLosesNothing) {
    // The first tick, two bursts of the garbage, the plug out, the plug in, the end: a second lies between each two.
    EXPECT_GE(play("garbage 5760\nsilence 6s\nunplug 0.4s\ngarbage 576\nwait 0.6s", 20), 5 * 990);
    EXPECT_EQ(ports, 2);
}

TEST_F(TransmitterTest, aBurstBeyondWhatTheLineHoldsWaitsForTheListener) {
    EXPECT_LT(play("garbage 115200", 1000), 10'000); // in bursts of 4000 bytes it would take half a minute
}

TEST_F(TransmitterTest, afterAStandstillItGoesOnWhereItStood) {
    QTimer::singleShot(0, [] { QThread::msleep(4000); });
    EXPECT_GT(play("wait 2.8s", 1), 4000 + 400); // two seconds are caught up, the rest comes in its time
}

} // namespace
