// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"

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

TEST(ReceiveRing, OverwritesTheOldestAndGoesOnCounting) {
    ReceiveRing ring;
    putMany(ring, ReceiveRing::size + 3);
    EXPECT_EQ(ring.PutIndex(), 3);
    EXPECT_EQ(ring.ByteCount(), ReceiveRing::size + 3);
    EXPECT_EQ(ring.TakeByte(), ReceiveRing::size % 251);
}

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
    EXPECT_EQ(errorNumberOf([&] { putMany(ring, 1); }), RunTimeError::Overflow);
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

TEST_F(DataReceiverTest, EachArrivalStartsTheDecodersCountdownAnew) {
    using namespace std::chrono_literals;
    ComPort.arrive(stream("."));
    clock.advance(500ms);
    ComPort.arrive(stream("."));
    clock.advance(500ms);
    ComPort.raise(SerialControl::Receive); // nothing waits: the countdown goes on
    EXPECT_EQ(ring.ByteCount(), 24);
    clock.advance(200ms);
    EXPECT_EQ(ring.ByteCount(), 0);
}

TEST_F(DataReceiverTest, OtherEventsGoToTheErrorRoute) {
    ComPort.raise(SerialControl::Framing);
    EXPECT_EQ(errors.codes, std::vector<qint32>{SerialControl::Framing});
}
