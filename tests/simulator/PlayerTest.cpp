// SPDX-License-Identifier: MIT
#include "simulator/Player.h"

#include "simulator/Replay.h"

#include <QDirIterator>
#include <QFile>
#include <gmock/gmock.h>

using namespace ostrel;

namespace {

const Player::Settings letters{.kind = InstrumentKind::Letters};

std::string hex(const QByteArray &bytes) { return bytes.toHex(' ').toStdString(); }

/// A script played to its end as fast as it goes.
struct Played {
    explicit Played(const QString &script, const Player::Settings &settings = {}) {
        Player player{parseRunScript(script), settings};
        while (const std::optional<LineTick> tick = player.next()) {
            ticks.push_back(*tick);
            bytes += tick->bytes;
        }
    }

    /// In order, when no value holds the byte that begins a block. Of a pair, the UV letter is enough: "R1 V E2 M U".
    std::string blocks() const {
        QStringList found;
        for (const QByteArray &block : bytes.split('\x96')) {
            if (!block.isEmpty() && block[0] != 'C' && block[0] != 'F')
                found += block.first(1) + (block.size() == 2 ? QByteArray::number(block[1]) : QByteArray{});
        }
        return found.join(' ').toStdString();
    }

    std::vector<LineTick> ticks;
    QByteArray bytes;
};

/// What a detector showed, by its column in the record of the truth.
std::vector<float> shown(int column, const QString &script) {
    std::vector<float> values;
    TruthRecord truth{[&](const QByteArray &row) {
        if (row.contains("\tsample\t"))
            values.push_back(row.split('\t')[column].toFloat());
    }};
    Played{script, {.truth = &truth}};
    return values;
}

TEST(Player, sendsPairsAndASignOfLifeEachSecond) {
    EXPECT_EQ(hex(Played{"uv 1\ncond 2\nstart\nwait 0.2s"}.bytes),
              "96 52 01 96 56 3f 80 00 00 96 43 40 00 00 00 96 46 00 00 00 00");
    EXPECT_EQ(hex(Played{"uv 1\ncond 2\nstart\nwait 0.2s", letters}.bytes),
              "96 45 04 96 56 3f 80 00 00 96 43 40 00 00 00");
    EXPECT_EQ(Played{"wait 10s"}.bytes.size(), 10 * (60 + 6));
}

TEST(Player, tellsTheSameRunInTheWayOfEitherKind) {
    const QString run =
        "wait 0.2s\npen on\nstart\nwait 0.4s\nevent\nhold\nwait 0.2s\ncontinue\nwait 0.2s\npause\nwait 0.2s\n"
        "resume\nlabel M\nwait 0.2s\nend\nwait 0.2s\nmethod\n| text\npen off\n";
    EXPECT_EQ(Played{run}.blocks(), "U P1 R1 V V E2 R3 V R1 V R2 U R1 E8 V R0 U M P0");
    EXPECT_EQ((Played{run, letters}.blocks()), "U E4 V V E2 H1 V H2 V U E8 V E3 U M");
}

TEST(Player, aGradientStandsStillInAHoldAndAPeakOnlyInAPause) {
    EXPECT_THAT(shown(7, "gradient 0 to 5 over 1s\nwait 0.4s\nhold\nwait 0.4s\ncontinue\nwait 1s"),
                testing::ElementsAre(0, 1, 2, 2, 2, 3, 4, 5, 5));
    EXPECT_THAT(shown(6, "peak at 0.4s height 1 width 0.4s\nwait 0.4s\nhold\nwait 0.2s\npause\nwait 0.4s\nresume\n"
                         "wait 0.4s"),
                testing::Pointwise(testing::FloatNear(1e-6F), {0.0625F, 0.5F, 1.0F, 0.5F, 0.5F, 0.5F, 0.0625F}));
}

TEST(Player, theSeedDecidesTheNoiseAndNotANumberIsSentAsItIs) {
    const QString noisy = "noise uv 0.1\ngarbage 9\nwait 1s";
    EXPECT_EQ(Played{noisy}.bytes, Played{noisy}.bytes);
    EXPECT_NE(Played{noisy}.bytes, (Played{noisy, {.seed = 2}}.bytes));
    EXPECT_TRUE(hex(Played{"uv nan\nwait 0.2s"}.bytes).starts_with("96 55 7f c0 00 00"));
}

TEST(Player, faultsStandBeforeThePairTheyDisturb) {
    EXPECT_EQ(hex(Played{"half U\nbad E 9\nunknown G\nraw 96 00 ff"}.bytes), "96 55 3f 80 96 45 09 96 47 96 00 ff");
    EXPECT_EQ(Played{"garbage 500"}.bytes.size(), 500);
    EXPECT_FALSE(hex(Played{"half M"}.bytes).ends_with("96"));
}

TEST(Player, silenceAndAPulledPlugTakeTheirTimeAndSendNothing) {
    EXPECT_EQ(shown(0, "wait 0.2s\nsilence 1s\nwait 0.2s"), (std::vector{0.0F, 1.2F}));
    const Played unplugged{"half U\nunplug 0.6s\nwait 0.2s", letters};
    ASSERT_EQ(unplugged.ticks.size(), 4);
    EXPECT_TRUE(unplugged.ticks[0].plugged); // the half block still gets out
    EXPECT_FALSE(unplugged.ticks[2].plugged);
    EXPECT_EQ(unplugged.ticks[3].bytes.size(), 12);
}

TEST(Player, aScriptThatSendsMoreThanTheLineCarriesStandsStill) {
    int told = 0;
    TruthRecord truth{[&](const QByteArray &row) { told += row.contains("garbage") ? 1 : 0; }};
    Player player{parseRunScript("garbage 1000000\nwait 0.2s\nloop"), {.loops = true, .truth = &truth}};
    for (int ticks = 0; ticks < 100; ++ticks)
        EXPECT_EQ(player.next()->bytes.size(), 192); // 9600 baud
    EXPECT_EQ(told, 3);
}

TEST(Player, everyRunThatIsShippedCanBePlayed) {
    for (QDirIterator runs{RUNS_FOLDER, {"*.velquin"}}; runs.hasNext();) {
        QFile file{runs.next()};
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(Played{decodeScript(file.readAll())}.ticks.empty());
    }
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
    for (const qsizetype size : {12, 12, 6})
        EXPECT_EQ(replay.next()->bytes.size(), size);
    EXPECT_FALSE(replay.next());
}

} // namespace
