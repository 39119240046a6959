// SPDX-License-Identifier: MIT
#include "Played.h"

#include <QDirIterator>
#include <QFile>
#include <gmock/gmock.h>

#include <algorithm>

namespace {

QString textOf(const QString &path) {
    QFile file{path};
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

class Demonstration : public testing::TestWithParam<InstrumentKind> {
protected:
    static QString script() { return textOf(":/simulator/demo.velquin"); }

    Played run{script(), {.kind = GetParam()}};
};

TEST_P(Demonstration, lastsSomeMinutesAndBeginsItsRunSoon) {
    const double minutes = double(run.ticks.size()) / 300;
    EXPECT_GT(minutes, 12);
    EXPECT_LT(minutes, 15);
    const auto pairsBeforeRun = run.blocks().find('V') / 2;
    EXPECT_NEAR(double(pairsBeforeRun), 100, 10);
    EXPECT_TRUE(parseRunScript(script()).loops);
}

TEST_P(Demonstration, fillsTheChartWithoutLeavingIt) {
    const auto [lowUv, highUv] = std::ranges::minmax(run.values("UV"));
    EXPECT_GT(lowUv, -0.02F);
    EXPECT_GT(highUv, 1.5F);
    EXPECT_LT(highUv, 1.9F);
    const auto [lowCond, highCond] = std::ranges::minmax(run.values("C"));
    EXPECT_NEAR(lowCond, 5, 1);
    EXPECT_NEAR(highCond, 180, 1);
}

TEST_P(Demonstration, showsAllThatAnInstrumentCanTell) {
    const bool status = GetParam() == InstrumentKind::Status;
    EXPECT_EQ(run.news(), status ? "P1 R1 E2 E2 E2 R3 R1 E2 R2 R1 E8 E2 R0 M P0" : "E4 E2 E2 E2 H1 H2 E2 E8 E2 E3 M");
    const QByteArray method = run.bytes();
    EXPECT_GT(method.mid(method.lastIndexOf("\x96M")).count("\r\n"), 10);
}

INSTANTIATE_TEST_SUITE_P(EitherKind, Demonstration, testing::Values(InstrumentKind::Status, InstrumentKind::Letters));

TEST(SampleRuns, canAllBePlayed) {
    for (QDirIterator runs{RUNS_FOLDER, {"*.velquin"}}; runs.hasNext();)
        EXPECT_FALSE(Played{textOf(runs.next())}.ticks.empty());
}

} // namespace
