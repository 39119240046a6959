// SPDX-License-Identifier: MIT
#include "Played.h"
#include "simulator/InstrumentStream.h"
#include "simulator/Replay.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using testing::ElementsAre;
using testing::FloatNear;

const Player::Settings letters{.kind = InstrumentKind::Letters};

std::string hex(const QByteArray &bytes) { return bytes.toHex(' ').toStdString(); }

TEST(Player, sendsPairsAndASignOfLifeEachSecond) {
    EXPECT_EQ(hex(Played{"uv 1\ncond 2\nstart\nwait 0.2s"}.bytes()),
              "96 52 01 96 56 3f 80 00 00 96 43 40 00 00 00 96 46 00 00 00 00");
    EXPECT_EQ(hex(Played{"uv 1\ncond 2\nstart\nwait 0.2s", letters}.bytes()),
              "96 45 04 96 56 3f 80 00 00 96 43 40 00 00 00");
    EXPECT_EQ(Played{"wait 10s"}.bytes().size(), 10 * (60 + 6));
}

TEST(Player, tellsTheSameRunInTheWayOfEitherKind) {
    const QString run =
        "wait 0.2s\npen on\nstart\nwait 0.4s\nevent\nhold\nwait 0.2s\ncontinue\nwait 0.2s\npause\nwait 0.2s\n"
        "resume\nlabel M\nwait 0.2s\nend\nwait 0.2s\nmethod\n| x\npen off\n";
    EXPECT_EQ(Played{run}.blocks(), "U P1 R1 V V E2 R3 V R1 V R2 U R1 E8 V R0 U M P0");
    EXPECT_EQ((Played{run, letters}.blocks()), "U E4 V V E2 H1 V H2 V U E8 V E3 U M");
}

TEST(Player, aGradientStandsStillInAHoldAndAPeakOnlyInAPause) {
    const Played held{"gradient 0 to 5 over 1s\nwait 0.4s\nhold\nwait 0.4s\ncontinue\nwait 1s"};
    EXPECT_THAT(held.values("C"), ElementsAre(0, 1, 2, 2, 2, 3, 4, 5, 5));
    const Played peak{
        "peak at 0.4s height 1 width 0.4s\nwait 0.4s\nhold\nwait 0.2s\npause\nwait 0.4s\nresume\nwait 0.4s"};
    EXPECT_THAT(peak.values("UV"),
                ElementsAre(FloatNear(1.0 / 16, 1e-6), 0.5F, 1, 0.5F, 0.5F, 0.5F, FloatNear(1.0 / 16, 1e-6)));
}

TEST(Player, theSeedDecidesTheNoiseAndNotANumberIsSentAsItIs) {
    const QString noisy = "noise uv 0.1\ngarbage 9\nwait 1s";
    EXPECT_EQ(Played{noisy}.bytes(), Played{noisy}.bytes());
    EXPECT_NE(Played{noisy}.bytes(), (Played{noisy, {.seed = 2}}.bytes()));
    EXPECT_TRUE(std::isnan(Played{"uv nan\nwait 0.2s"}.values("U").front()));
}

TEST(Player, faultsStandBeforeThePairTheyDisturb) {
    EXPECT_EQ(hex(Played{"half U\nbad E 9\nunknown G\nraw 96 00 ff"}.bytes()), "96 55 3f 80 96 45 09 96 47 96 00 ff");
    EXPECT_EQ(Played{"garbage 500"}.bytes().size(), 500);
    EXPECT_FALSE(hex(Played{"half M"}.bytes()).ends_with("96"));
}

TEST(Player, silenceAndAPulledPlugTakeTheirTimeAndSendNothing) {
    const Played silent{"wait 0.2s\nsilence 1s\nwait 0.2s"};
    EXPECT_EQ(silent.ticks.size(), 7);
    EXPECT_EQ(silent.blocks(), "U U");
    const Played unplugged{"half U\nunplug 0.6s\nwait 0.2s", letters};
    ASSERT_EQ(unplugged.ticks.size(), 4);
    EXPECT_TRUE(unplugged.ticks[0].plugged); // the half block still gets out
    EXPECT_FALSE(unplugged.ticks[2].plugged);
    EXPECT_EQ(unplugged.ticks[3].bytes.size(), 12);
}

TEST(Player, aLongBlockTakesTheTimeThatTheLineNeeds) {
    const Played method{"method\n| " + QString{600, 'x'} + "\nwait 1s", letters};
    EXPECT_EQ(method.ticks[0].bytes.size(), 192); // 9600 baud
    EXPECT_EQ(method.ticks.size(), 5);
    EXPECT_EQ(method.bytes().size(), 603 + 60);
    EXPECT_EQ(method.blocks(), "M U U U U U");
}

TEST(Player, aScriptThatSendsMoreThanTheLineCarriesStandsStill) {
    int told = 0;
    TruthRecord truth{[&](const QByteArray &row) { told += row.contains("garbage") ? 1 : 0; }};
    Player player{parseRunScript("garbage 1000000\nwait 0.2s\nloop"), {.loops = true, .truth = &truth}};
    for (int ticks = 0; ticks < 100; ++ticks)
        EXPECT_EQ(player.next()->bytes.size(), 192);
    EXPECT_EQ(told, 3);
}

TEST(TruthRecord, tellsEachPairToTheBitAndAllNewsInOrder) {
    QByteArray rows;
    TruthRecord truth{[&](const QByteArray &bytes) { rows += bytes; }};
    Played{"uv 1\ncond 2\nstart # now\nwait 0.2s\nmethod\n| a\n| b\nend", {.truth = &truth}};
    EXPECT_EQ(rows.mid(rows.indexOf('\n') + 1).toStdString(), "0.0\tstart\n"
                                                              "0.0\tsample\t1\tV\t3f800000\t40000000\t1\t2\n"
                                                              "0.2\tmethod\ta\\r\\nb\n"
                                                              "0.2\tend\n");
}

TEST(Replay, sendsACaptureUnchangedAtThePaceOfPairs) {
    Replay replay{QByteArray{30, 'x'}};
    EXPECT_EQ(replay.next()->bytes.size(), 12);
    EXPECT_EQ(replay.next()->bytes.size(), 12);
    EXPECT_EQ(replay.next()->bytes.size(), 6);
    EXPECT_FALSE(replay.next());
}

} // namespace
