// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"

#include <bit>

class StreamDecoderTest : public LinkedTest {
protected:
    void feedHex(const char *bytes) { feed(QByteArray::fromHex(bytes)); }

    /// The code that the last error told, and where its text begins.
    QString lastError() const {
        return QString::number(errors.codes.back()) + QLatin1Char(' ') +
               link.DebugText.section(QLatin1String("\r\n"), 0, 0);
    }
};

TEST_F(StreamDecoderTest, ASearchThrowsAwayWhatIsNoStream) {
    link.FirstSyncFound = false;
    // 3 single bytes, then 2 for a letter that starts no search, then 7 for a letter without a sync behind it.
    feed(QByteArray::fromHex("01 02 03 96 43 96 55 05 05 05 05 05") + stream("."));
    EXPECT_TRUE(link.FirstSyncFound);
    EXPECT_EQ(ring.ByteCount(), 12);
    EXPECT_TRUE(errors.codes.empty());
}

TEST_F(StreamDecoderTest, ASearchInTooFewBytesIsToldAtOnce) {
    link.FirstSyncFound = false;
    feedHex("96 55");
    EXPECT_TRUE(errors.codes.empty());
    feedHex("00");
    EXPECT_EQ(errors.codes, std::vector<qint32>{-13});
    EXPECT_EQ(ring.ByteCount(), 3);
    clock.advance(std::chrono::seconds(60)); // once, not with every tick
    EXPECT_EQ(errors.codes.size(), 1);
    feedHex("00");
    EXPECT_EQ(errors.codes.size(), 2);
}

TEST_F(StreamDecoderTest, AnErrorOnTheWayCostsThePassNothing) {
    errors.reaction = [](qint32) { throw RunTimeError(ErrorNumber::DiskFull); };
    ComPort.arrive(stream("E5 . E5 . Mtext"));
    EXPECT_EQ(errorNumberOf([&] { tick(); }), ErrorNumber::DiskFull);
    EXPECT_EQ(errors.codes.size(), 2U);
    EXPECT_EQ(count(log), 3);
    EXPECT_EQ(log.data().methodTexts.size(), 1U);
    EXPECT_TRUE(TimerProcess.Enabled() && !link.DataBusy);

    play("R1 .");
    run.ChartEventNumber = 32767; // a number further raises in the recorder: the log takes its pair all the same
    ComPort.arrive(stream("E2 . ."));
    EXPECT_EQ(errorNumberOf([&] { tick(); }), ErrorNumber::Overflow);
    EXPECT_EQ(count(log), 6);

    run.ChartEventNumber = 0;
    const int seen = window.liveUpdates;
    ComPort.arrive(stream("R0 . . E5")); // the last samples of the run come into view all the same
    EXPECT_EQ(errorNumberOf([&] { tick(); }), ErrorNumber::DiskFull);
    EXPECT_FALSE(run.Recording);
    EXPECT_EQ(window.liveUpdates, seen + 1);
}

TEST_F(StreamDecoderTest, AfterAnErrorARingThatCannotBeTrustedIsEmptied) {
    ComPort.arrive(stream(". ."));
    decoder.backToWork();
    EXPECT_EQ(ring.ByteCount(), 24);
    link.DataBusy = true; // a pass waits for the operator
    decoder.backToWork();
    link.DataBusy = false;
    ring.put(std::vector<std::uint8_t>(ReceiveRing::size));
    decoder.backToWork();
    EXPECT_EQ(ring.ByteCount(), 0);
    EXPECT_FALSE(link.FirstSyncFound);
    play(".");
    EXPECT_TRUE(link.FirstSyncFound);
}

TEST_F(StreamDecoderTest, ErrorsThatKeepComingFromElsewhereDoNotPutThePassOff) {
    tick();
    ComPort.arrive(stream(". ."));
    for (int i = 0; i < 5; ++i) {
        clock.advance(Milliseconds(300));
        decoder.backToWork();
    }
    EXPECT_EQ(ring.ByteCount(), 0);
}

TEST_F(StreamDecoderTest, RefusesWhatIsNoBlockWithoutConsumingIt) {
    feedHex("07 08 09");
    EXPECT_EQ(lastError(), "-10 Sub PeekDataBlock; Sync Byte Expected; Actual Byte Received: 7");
    EXPECT_EQ(link.DebugText.section("\r\n", 1).count(' '), 32);
    EXPECT_EQ(ring.ByteCount(), 3);
    ring.empty();
    link.FirstSyncFound = true;
    feedHex("96 47 09");
    EXPECT_EQ(lastError(), "-12 Sub PeekDataBlock; Data Type Byte Expected; Actual Byte Received: 71");
    EXPECT_EQ(ring.ByteCount(), 3);
}

TEST_F(StreamDecoderTest, AWrongParameterDoesNotEndThePass) {
    const QString texts[] = {"E5 Sub HandelEventData; Event", "H0 Sub HandelHoldData; Hold",
                             "P2 Sub HandelPenStatusData; Pen", "R4 Sub HandelRunStatusData; Run"};
    for (const QString &text : texts) {
        const auto before = count(log);
        play(text.section(' ', 0, 0) + " .");
        EXPECT_EQ(lastError(), "-11 " + text.section(' ', 1) + " Byte Expected; Actual Byte Received: " + text.at(1));
        EXPECT_EQ(count(log), before + 1);
        link.FirstSyncFound = true;
    }
    EXPECT_TRUE(link.StatusBlocksSeen); // also by a value that turned out to be wrong
}

TEST_F(StreamDecoderTest, AnUnfinishedBlockWaits) {
    for (const QByteArray &whole : {stream("."), stream("Mlong"), stream("R1"), stream("M")}) {
        const auto last = whole.right(1);
        feed(whole.chopped(1));
        tick();
        EXPECT_GT(ring.ByteCount(), 0);
        feed(last);
        EXPECT_EQ(ring.ByteCount(), 0);
    }
    EXPECT_EQ(count(log), 2);
    EXPECT_EQ(log.data().methodTexts.size(), 2);
    EXPECT_TRUE(errors.codes.empty());
}

TEST_F(StreamDecoderTest, AnFBlockRunsAheadOfItsBytes) {
    feedHex("96 46 01");
    EXPECT_EQ(ring.ByteCount(), -3);
    EXPECT_TRUE(link.StatusBlocksSeen);
    feed(QByteArray::fromHex("02 03 04") + stream("."));
    EXPECT_EQ(count(log), 2);
}

TEST_F(StreamDecoderTest, TakesValuesAsSentHighByteFirst) {
    const float odd = std::bit_cast<float>(0x7FA00001U); // a signalling not-a-number
    feed(QByteArray::fromHex("96 56 3F 80 00 00") + sampleBlock('D', -2.5F));
    EXPECT_EQ(lastLogged().uv, 1.0F);
    EXPECT_EQ(lastLogged().cond, -2.5F);
    feed(sampleBlock('C', odd));
    EXPECT_EQ(lastLogged().uv, 1.0F); // the UV value of before
    EXPECT_EQ(std::bit_cast<std::uint32_t>(lastLogged().cond), 0x7FA00001U);
}

TEST_F(StreamDecoderTest, DrawsOncePerPassWhileRecording) {
    play("P1 . . .");
    EXPECT_EQ(window.liveUpdates, 1);
    play("P0 .");
    EXPECT_EQ(window.liveUpdates, 1);
}
