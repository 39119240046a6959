// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"
#include "driver/LiveOstrel.h"

#include <QDir>
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <optional>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using testing::SizeIs;

namespace {

const QByteArray run = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 5s\n"
                       "start\nwait 7s\nevent\nwait 10m\n";

constexpr auto tick = 20s;
constexpr qint64 samplesOfATick = 100;
constexpr qint64 onTheirWay = 10; // samples that the line has brought and the chart has not yet taken

std::vector<LiveOstrel::Sample> sent(const LiveOstrel &live) {
    std::vector<LiveOstrel::Sample> samples;
    for (const QStringList &row : live.truth()) {
        if (row[1] == "sample")
            samples.push_back({row[6].toFloat(), row[7].toFloat()});
    }
    return samples;
}

/// A log file's samples, all of which were sent, without a gap.
std::vector<LiveOstrel::Sample> recovered(const QString &path) {
    ChartData data;
    AxisValues axes;
    EXPECT_TRUE(loadChartFile(path, data, axes).good()) << path.toStdString();
    std::vector<LiveOstrel::Sample> samples;
    for (qint64 i = 0; i < data.samples.size(); ++i)
        samples.push_back({data.samples.at(i).uv, data.samples.at(i).cond});
    return samples;
}

bool isStretchOf(const std::vector<LiveOstrel::Sample> &part, const std::vector<LiveOstrel::Sample> &whole) {
    return std::search(whole.begin(), whole.end(), part.begin(), part.end()) != whole.end();
}

/// Watches a recorder until its log is on the disk for the first time, and knows from then on how much of it is safe.
class Logged {
public:
    explicit Logged(LiveOstrel &live) : live_(live) {}

    bool look() {
        if (firstTick_)
            return true;
        const int held = live_->get("Chart(5)", "SampleCount").toInt();
        if (live_.isEnabled("mnuSaveLog"))
            firstTick_ = Clock::now();
        else
            atFirstTick_ = held;
        return firstTick_.has_value();
    }
    bool isFor(std::chrono::milliseconds time) const { return Clock::now() - *firstTick_ >= time; }
    /// At the least, so long after the first tick: those that are just due may still be at work.
    qint64 leastAfter(std::chrono::milliseconds time) const {
        const qint64 ticks = std::max(time - grace, 0ms) / tick;
        return atFirstTick_ + ticks * samplesOfATick - (ticks > 0 ? onTheirWay : 0);
    }

private:
    static constexpr std::chrono::milliseconds grace = 1s;

    LiveOstrel &live_;
    std::optional<Clock::time_point> firstTick_;
    qint64 atFirstTick_ = 0;
};

/// After a start: takes the only log that is offered to a file.
void recover(LiveOstrel &live, const QString &name) {
    live.startRecorder();
    live.await("frmDataRecovery");
    EXPECT_EQ(live->get("lstLogFiles", "count").toInt(), 1);
    live->click("lstLogFiles");
    live->key("Home");
    live->key("Space");
    ASSERT_TRUE(within(5s, [&] { return live.isEnabled("cmdRecoverButton"); }));
    live->click("cmdRecoverButton");
    live.nameFile(name);
    live.takeName(); // with nothing left to recover the dialog goes by itself
}

QStringList logDirectories(const LiveOstrel &live) {
    return QDir(live.file("data/ostrel/Log")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

// The recorders run side by side, so that all moments together take as long as the last.
TEST(Recovery, EverythingUpToTheLastTickSurvivesAKillAtAnyMoment) {
    constexpr std::chrono::milliseconds moments[] = {0ms,     40ms,    3700ms,  11s,     19800ms, 20050ms,
                                                     27300ms, 39900ms, 40200ms, 46600ms, 59950ms, 60100ms};
    std::vector<std::unique_ptr<LiveOstrel>> recorders;
    for ([[maybe_unused]] const auto moment : moments)
        recorders.push_back(std::make_unique<LiveOstrel>(run));
    std::vector<Logged> logged;
    for (const auto &recorder : recorders)
        logged.emplace_back(*recorder);
    const auto killAllDue = [&] {
        bool anyRuns = false;
        for (std::size_t i = 0; i < recorders.size(); ++i) {
            if (!recorders[i]->recorder().runs())
                continue;
            anyRuns = true;
            if (logged[i].look() && logged[i].isFor(moments[i]))
                recorders[i]->recorder().kill();
        }
        return !anyRuns;
    };
    ASSERT_TRUE(within(150s, killAllDue));
    for (std::size_t i = 0; i < logged.size(); ++i) {
        SCOPED_TRACE(moments[i].count());
        recover(*recorders[i], "saved.chl");
        const auto samples = recovered(recorders[i]->file("saved.chl"));
        EXPECT_GE(qint64(samples.size()), logged[i].leastAfter(moments[i]));
        EXPECT_TRUE(isStretchOf(samples, sent(*recorders[i])));
        EXPECT_THAT(logDirectories(*recorders[i]), SizeIs(1));
    }
}

TEST(Recovery, ARecorderThatIsToldToEndLosesNothing) {
    LiveOstrel live(run);
    EXPECT_TRUE(within(30s, [&] { return live->get("Chart(5)", "SampleCount").toInt() > 20; }));
    const int held = live->get("Chart(5)", "SampleCount").toInt(); // before the first tick
    live.recorder().terminate();
    EXPECT_TRUE(live.recorder().endsWithin(5000));
    recover(live, "saved.chl");
    const auto samples = recovered(live.file("saved.chl"));
    EXPECT_GE(samples.size(), std::size_t(held));
    EXPECT_TRUE(isStretchOf(samples, sent(live)));
}

TEST(Recovery, ACopyThatIsKilledLeavesTheOtherUntouched) {
    LiveOstrel first(run);
    LiveOstrel second(run, first);
    Logged logged(first);
    EXPECT_TRUE(within(40s, [&] { return logged.look() && second.isEnabled("mnuSaveLog"); }));
    EXPECT_THAT(logDirectories(first), SizeIs(2));
    second.recorder().kill();
    EXPECT_TRUE(within(5s, [&] { return !second.recorder().runs(); }));

    within(tick, [] { return false; });
    EXPECT_TRUE(first.recorder().runs());
    EXPECT_EQ(first.marks(5), "S 1");
    first.chooseFile("mnuSaveLog", "first.chl");
    EXPECT_TRUE(within(10s, [&] { return first.fileExists("first.chl"); }));
    const auto samples = recovered(first.file("first.chl"));
    EXPECT_GE(qint64(samples.size()), logged.leastAfter(tick));
    EXPECT_TRUE(isStretchOf(samples, sent(first)));
}

} // namespace
