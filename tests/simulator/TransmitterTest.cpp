// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include <QCoreApplication>
#include <QThread>
#include <fcntl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>

namespace {

/// Ticks laid ready.
class Ticks : public LineSource {
public:
    void add(int count, bool plugged = true) {
        for (int tick = 0; tick < count; ++tick) {
            const QByteArray bytes{plugged ? 192 : 0, char('a' + int(ticks_.size()) % 26)};
            ticks_.push_back({plugged, bytes});
            all += bytes;
        }
    }
    std::optional<LineTick> next() override {
        if (taken == 0)
            QThread::msleep(stall);
        return taken < ticks_.size() ? std::optional{ticks_[taken++]} : std::nullopt;
    }

    QByteArray all;
    size_t taken = 0;
    unsigned long stall = 0; ///< ms, before the first

private:
    std::vector<LineTick> ticks_;
};

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

    /// Plays all of it to a listener that reads every 10 ms.
    void play(double speed) {
        plug.set(true);
        Transmitter transmitter{source, plug, {speed, [this](const QByteArray &bytes) { noteSent(bytes.size()); }}};
        transmitter.finished = [] { QCoreApplication::exit(); };
        clock.start();
        transmitter.start();
        QCoreApplication::exec();
    }

    void noteSent(qsizetype count) {
        if (bursts.empty() || clock.elapsed() - lastSent > 400) {
            pauses.push_back(bursts.empty() ? 0 : clock.elapsed() - lastSent);
            bursts.push_back(0);
        }
        bursts.back() += count;
        lastSent = clock.elapsed();
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    Ticks source;
    Plug plug;
    SystemFile line;
    QTimer reading;
    QByteArray received;
    int ports = 0;
    QElapsedTimer clock;
    qint64 lastSent = 0;
    std::vector<qsizetype> bursts; // bytes
    std::vector<qint64> pauses;    // ms before each
};

TEST_F(TransmitterTest, aFastPlayComesInBurstsThatTheRecorderCanTakeAndLosesNothing) {
    source.add(30);
    source.add(2, false);
    source.add(3);
    play(20);
    EXPECT_EQ(received, source.all);
    EXPECT_EQ(ports, 2);
    EXPECT_GE(bursts.size(), 4); // as the first has but one tick, and the plug is pulled
    EXPECT_LT(std::ranges::max(bursts), 5000);
    pauses.erase(pauses.begin());
    EXPECT_GE(std::ranges::min(pauses), 795);
}

TEST_F(TransmitterTest, aBurstBeyondWhatTheLineHoldsWaitsForTheListener) {
    source.add(600);
    play(1000);
    EXPECT_GT(std::ranges::max(bursts), 100'000);
    EXPECT_EQ(received, source.all);
}

TEST_F(TransmitterTest, afterAStandstillItGoesOnWhereItStood) {
    source.add(14);
    source.stall = 4000;
    play(1);
    ASSERT_FALSE(bursts.empty());
    EXPECT_EQ(received, source.all);
    EXPECT_GT(clock.elapsed(), 4000 + 400); // two seconds are caught up, the rest comes in its time
}

} // namespace
