// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"
#include "driver/LiveOstrel.h"

#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <deque>

using namespace std::chrono_literals;

namespace {

constexpr auto tick = 20s;
constexpr int samplesOfATick = 100;
constexpr int onTheirWay = 10; // samples that the line has brought and the log has not yet taken

const QByteArray run = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 5s\n"
                       "start\nwait 7s\nevent\nwait 10m\n";

struct Recorder {
    LiveOstrel live{run};
    std::optional<std::chrono::steady_clock::time_point> firstTick = {};
    int heldAtFirstTick = 0; ///< that are on the disk since then
    int held = 0;            ///< when it was last seen

    bool isLoggedFor(std::chrono::milliseconds time) {
        const auto now = std::chrono::steady_clock::now();
        held = live.held(5);
        if (!firstTick && live.isEnabled("mnuSaveLog"))
            firstTick = now;
        heldAtFirstTick = firstTick ? heldAtFirstTick : held;
        return firstTick && now - *firstTick >= time;
    }
};

/// A log file holds a stretch of what was sent, without a gap, with so many samples at the least.
void expectStretch(const LiveOstrel &live, const QString &name, qint64 least) {
    ChartData data;
    AxisValues axes;
    EXPECT_TRUE(loadChartFile(live.file(name), data, axes).good());
    EXPECT_GE(data.samples.size(), least);
    const QStringList stretch = LiveOstrel::texts(data.samples);
    const QStringList sent = live.meant().filter("\t");
    EXPECT_NE(std::ranges::search(sent, stretch).begin(), sent.end());
}

// The recorders run side by side, so that all moments together take as long as the last.
TEST(Recovery, EverythingUpToTheLastTickSurvivesAKillAtAnyMoment) {
    constexpr std::chrono::milliseconds moments[] = {0ms,     40ms,    3700ms,  11s,     19800ms, 20050ms,
                                                     27300ms, 39900ms, 40200ms, 46600ms, 59950ms, 60100ms};
    std::deque<Recorder> recorders(std::size(moments));
    const auto killAllDue = [&] {
        bool anyRuns = false;
        for (std::size_t i = 0; i < recorders.size(); ++i) {
            Child &process = recorders[i].live.recorder();
            anyRuns |= process.runs();
            if (process.runs() && recorders[i].isLoggedFor(moments[i])) {
                process.signal(SIGKILL);
                EXPECT_TRUE(process.endsWithin(10s)); // not at once, and no longer answers
            }
        }
        return !anyRuns;
    };
    ASSERT_TRUE(within(150s, killAllDue));
    for (Recorder &killed : recorders) {
        SCOPED_TRACE(killed.held);
        killed.live.recover("saved.chl");
        expectStretch(killed.live, "saved.chl",
                      std::max(killed.heldAtFirstTick, killed.held - samplesOfATick - onTheirWay));
        EXPECT_EQ(killed.live.entries("Log").size(), 1);
    }
}

TEST(Recovery, ARecorderThatIsToldToEndLosesNothing) {
    LiveOstrel live(run);
    EXPECT_TRUE(within(30s, [&] { return live.held(5) > 20; }));
    const int held = live.held(5); // before the first tick
    live.recorder().signal(SIGTERM);
    EXPECT_TRUE(live.recorder().endsWithin(5s));
    live.startRecorder("frmDataRecovery"); // and once more, over the question what becomes of it
    live.recorder().signal(SIGTERM);
    EXPECT_TRUE(live.recorder().endsWithin(5s));
    live.recover("saved.chl");
    expectStretch(live, "saved.chl", held);
}

TEST(Recovery, ACopyThatIsKilledLeavesTheOtherUntouched) {
    Recorder first;
    LiveOstrel second(run, first.live);
    EXPECT_TRUE(within(40s, [&] { return first.isLoggedFor(0s) && second.isEnabled("mnuSaveLog"); }));
    EXPECT_EQ(first.live.entries("Log").size(), 2);
    second.recorder().signal(SIGKILL);

    within(tick, [] { return false; });
    EXPECT_EQ(first.live.marks(5), "S 1");
    first.live.press("mnuSaveLog");
    first.live.nameFile("first.chl");
    EXPECT_TRUE(within(10s, [&] { return QFile::exists(first.live.file("first.chl")); }));
    expectStretch(first.live, "first.chl", first.heldAtFirstTick);
}

} // namespace
