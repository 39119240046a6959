// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include "simulator/Player.h"

#include <QCoreApplication>
#include <QThread>
#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>

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

    void play(const QString &script, double speed) {
        Player player{parseRunScript(script), {}};
        Player same{parseRunScript(script), {}};
        Transmitter transmitter{player, plug, {speed, [this](const QByteArray &taken) { noteSent(taken.size()); }}};
        transmitter.finished = [] { QCoreApplication::exit(); };
        plug.set(true);
        clock.start();
        transmitter.start();
        QCoreApplication::exec();
        QByteArray all;
        while (const std::optional<LineTick> tick = same.next())
            all += tick->bytes;
        EXPECT_EQ(received, all);
    }

    void noteSent(qsizetype count) {
        if (const qint64 pause = clock.elapsed() - lastSent; pause > 400) {
            shortestPause = std::min(shortestPause, pause);
            bursts.push_back(0);
        }
        bursts.back() += count;
        lastSent = clock.elapsed();
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    Plug plug;
    SystemFile line;
    QTimer reading;
    QByteArray received;
    int ports = 0;
    QElapsedTimer clock;
    qint64 lastSent = 0;              // ms
    qint64 shortestPause = 1'000'000; // ms
    std::vector<qsizetype> bursts{0}; // bytes
};

TEST_F(TransmitterTest, aFastPlayComesInBurstsThatTheRecorderCanTakeAndLosesNothing) {
    play("garbage 5760\nsilence 6s\nunplug 0.4s\ngarbage 576\nwait 0.6s", 20);
    EXPECT_EQ(ports, 2);
    EXPECT_GE(bursts.size(), 4); // as the first has but one tick, and the plug is pulled
    EXPECT_LT(std::ranges::max(bursts), 5000);
    EXPECT_GE(shortestPause, 795);
}

TEST_F(TransmitterTest, aBurstBeyondWhatTheLineHoldsWaitsForTheListener) {
    play("garbage 115200", 1000);
    EXPECT_GT(std::ranges::max(bursts), 100'000);
}

TEST_F(TransmitterTest, afterAStandstillItGoesOnWhereItStood) {
    QTimer::singleShot(0, [] { QThread::msleep(4000); });
    play("wait 2.8s", 1);
    EXPECT_GT(clock.elapsed(), 4000 + 400); // two seconds are caught up, the rest comes in its time
}

} // namespace
