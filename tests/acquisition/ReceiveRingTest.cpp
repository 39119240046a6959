// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"

#include <random>

using namespace std::chrono_literals;

namespace {

void putMany(ReceiveRing &ring, int count) {
    std::vector<std::uint8_t> bytes(count);
    for (int i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>(i % 251);
    ring.put(bytes);
}

/// The dump of a ring whose take position stands at `position` and whose cells hold their number modulo 251.
QString dumpAt(int position) {
    ReceiveRing ring;
    putMany(ring, ReceiveRing::size);
    for (int i = 0; i < position; ++i)
        ring.TakeByte();
    QString text = QStringLiteral("before");
    ring.AddDebugBytes(ReceiveRing::AroundTake, text);
    return text;
}

} // namespace

TEST(ReceiveRing, AnEmptyRingGivesStaleBytesAndCountsBelowZero) {
    ReceiveRing ring;
    ring.TakeByte();
    ring.rebase();
    ring.GetLastBytes();
    EXPECT_EQ(ring.ByteCount(), -1);
    EXPECT_EQ(ring.LookByteCount(), -2);
    EXPECT_EQ(ring.LookIndex(), 2);
}

TEST(ReceiveRing, ACountBeyond16BitsIsAnOverflow) {
    ReceiveRing ring;
    putMany(ring, 32767);
    EXPECT_EQ(errorNumberOf([&] { putMany(ring, 1); }), ErrorNumber::Overflow);
    EXPECT_EQ(ring.ByteCount(), 32767);
}

TEST(ReceiveRing, DumpsTheBytes33To2PlacesBehind) {
    EXPECT_TRUE(dumpAt(33).startsWith(QStringLiteral("before\r\n 0 1 2 3 4 ")));
    EXPECT_TRUE(dumpAt(33).endsWith(QStringLiteral(" 30 31")));
    // Position 10: 9977 to 9999, then 0 to 8.
    EXPECT_TRUE(dumpAt(10).startsWith(QStringLiteral("before\r\n 188 189 190 ")));
    EXPECT_TRUE(dumpAt(10).endsWith(QStringLiteral(" 209 210 0 1 2 3 4 5 6 7 8")));
}

class DataReceiverTest : public LinkedTest {};

TEST_F(DataReceiverTest, LeavesTheBytesToThePortWhileTheDecoderIsAtWork) {
    link.DataBusy = true;
    link.ComDataSeen = false;
    ComPort.arrive("abc");
    EXPECT_TRUE(link.ComDataSeen);
    EXPECT_EQ(ComPort.InBufferCount(), 3);
    link.DataBusy = false;
    ComPort.arrive("d");
    EXPECT_EQ(ring.ByteCount(), 4);
}

TEST_F(DataReceiverTest, AnArrivalStartsTheDecodersCountdownAnewButNotForLong) {
    for (const auto after : {250ms, 250ms, 400ms}) { // the second is too late to put the pass off again
        clock.advance(after);
        ComPort.arrive(stream("."));
        ComPort.raise(ErrorNumber::ReceiveEvent); // nothing waits: the countdown goes on
        EXPECT_GT(ring.ByteCount(), 0);
    }
    clock.advance(50ms);
    EXPECT_EQ(ring.ByteCount(), 0);

    clock.advance(100ms);
    ComPort.arrive(QByteArray(ReceiveRing::size / 2 + 1, '\0'));
    clock.advance(100ms);
    ComPort.arrive("a"); // half full: no longer put off
    EXPECT_GT(ring.ByteCount(), ReceiveRing::size / 2);
    clock.advance(600ms);
    EXPECT_LT(ring.ByteCount(), 7);
}

TEST_F(DataReceiverTest, ALineThatNeverPausesIsDecodedAllTheSame) {
    ComPort.setRThreshold(50);
    for (const int bytesPerSecond : {60, 70, 90, 200, 960}) {
        SCOPED_TRACE(bytesPerSecond);
        const auto before = count(log);
        for (int pair = 1; pair <= 2000; ++pair) {
            ComPort.arrive(stream("."));
            clock.advance(std::chrono::milliseconds(12000 / bytesPerSecond));
            const int within = 1500 * bytesPerSecond / 12000; // pairs that come in 1.5 s
            ASSERT_GE(count(log) - before, pair - within - 1);
        }
        ComPort.raise(ErrorNumber::ReceiveEvent);
        clock.advance(1s);
        EXPECT_EQ(count(log) - before, 2000);
    }
}

TEST_F(DataReceiverTest, NoiseOfAnyDensityRaisesNothingAndTheLinkComesBack) {
    ComPort.setRThreshold(50);
    std::mt19937 random(7);
    for (const int oneIn : {1, 2, 20, 300, 5000}) { // bytes, of which one is wrong
        SCOPED_TRACE(oneIn);
        for (int second = 0; second < 600; ++second) {
            QByteArray bytes = stream(". . . . . R1 . . . E2 . . R0 Mtext . . . . . .").repeated(3);
            for (char &byte : bytes)
                byte = random() % unsigned(oneIn) == 0 ? static_cast<char>(random()) : byte;
            ComPort.arrive(bytes);
            ASSERT_NO_THROW(clock.advance(1s));
            ASSERT_LT(ring.ByteCount(), 2000);
        }
        int waited = 0;
        for (; !link.FirstSyncFound && waited < 2000; waited += 200) {
            ComPort.arrive(stream("."));
            clock.advance(200ms);
        }
        EXPECT_LT(waited, 2000);
    }
}

TEST_F(DataReceiverTest, OtherEventsGoToTheErrorRoute) {
    ComPort.raise(ErrorNumber::Framing);
    EXPECT_EQ(errors.codes, std::vector<qint32>{ErrorNumber::Framing});
}
