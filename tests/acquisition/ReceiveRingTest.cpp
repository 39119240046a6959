// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"

#include <random>
#include <vector>

using namespace std::chrono_literals;

TEST(ReceiveRing, ACountBeyond16BitsIsAnOverflow) {
    ReceiveRing ring;
    ring.put(std::vector<std::uint8_t>(32767));
    EXPECT_EQ(errorNumberOf([&] { ring.put(std::vector<std::uint8_t>(1)); }), ErrorNumber::Overflow);
    EXPECT_EQ(ring.ByteCount(), 32767);
}

TEST(ReceiveRing, DumpsTheBytes33To2PlacesBehindAcrossItsEnd) {
    std::vector<std::uint8_t> bytes(ReceiveRing::size);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = std::uint8_t(i % 251);
    ReceiveRing ring;
    ring.put(bytes);
    ring.discard(10);
    QString text = QStringLiteral("before");
    ring.AddDebugBytes(ReceiveRing::AroundTake, text);
    EXPECT_TRUE(text.startsWith(QStringLiteral("before\r\n 188 189 190 ")));
    EXPECT_TRUE(text.endsWith(QStringLiteral(" 209 210 0 1 2 3 4 5 6 7 8")));
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
