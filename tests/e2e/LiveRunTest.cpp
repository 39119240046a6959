// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

struct Instrument {
    const char *kind;
    const char *script;
    const char *marks;
    int pairsBehindNews; ///< that the recorder still takes after a pause or the end
    QStringList options = {};
};

std::ostream &operator<<(std::ostream &out, const Instrument &instrument) { return out << instrument.kind; }

/// What the recorder must hold of what the instrument meant.
QStringList recordedOf(const QStringList &meant, int pairsBehindNews) {
    QStringList recorded;
    int left = 0; // pairs that are still taken
    for (const QString &what : meant) {
        if (what == "start" || what == "resume")
            left = std::numeric_limits<int>::max();
        else if (what == "pause" || what == "end")
            left = pairsBehindNews;
        else if (what.contains('\t') && left-- > 0)
            recorded += what;
        left = std::max(left, 0);
    }
    return recorded;
}

class WholeRun : public testing::TestWithParam<Instrument> {};

// clang-format off
const Instrument instruments[] = {
    {"status",  "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 8s\n"
                "start\nwait 2s\nevent\nwait 2s\npause\nwait 1s\nresume\nwait 1s\nhold\nwait 1s\ncontinue\nwait 1s\n"
                "event\nwait 1s\nend\nmethod\n| Load 5 ml\n| Wash\nwait 10m\n",
                "S 1 P H C 2 E", 1},
    {"letters", "kind letters\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 8s\n"
                "start\nwait 2s\nevent\nwait 2s\npause\nwait 1s\nresume\nwait 1s\nlabel M\nwait 1s\n"
                "end\nmethod\n| Load 5 ml\n| Wash\nwait 10m\n",
                "S 1 P M E", 2},
    {"fast",    "noise uv 0.01\ncond 20\nnoise cond 0.5\nwait 5m\n"
                "start\nwait 2m\nevent\nwait 2m\nend\nmethod\n| Wash\nwait 60m\n",
                "S 1 E",     1, {"--speed", "20"}},
};
// clang-format on

TEST_P(WholeRun, IsRecordedAsTheInstrumentMeantIt) {
    LiveOstrel live{GetParam().script, GetParam().options};
    EXPECT_FALSE(live.isEnabled("mnuStop"));
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_TRUE(within(15s, [&] { return live.isEnabled("mnuStop"); }));
    EXPECT_TRUE(within(40s, [&] { return !live.isEnabled("mnuStop"); }));
    EXPECT_EQ(live.marks(0), GetParam().marks);
    EXPECT_EQ(live.samples(0), recordedOf(live.meant(), GetParam().pairsBehindNews));
    EXPECT_TRUE(within(20s, [&] { return live.methodText(0).contains("Wash"); }));
}

INSTANTIATE_TEST_SUITE_P(Of, WholeRun, testing::ValuesIn(instruments),
                         [](const auto &tested) { return std::string{tested.param.kind}; });

class LostLink : public testing::TestWithParam<const char *> {};

TEST_P(LostLink, StopsTheRecordingIsToldAndComesBack) {
    LiveOstrel live{QByteArray{"wait 10s\n"} + GetParam() + " 15s\nwait 10m\n"};
    live.press("mnuStart");
    ASSERT_TRUE(within(5s, [&] { return live.held(0) > 0; }));
    live.await("frmNoData");
    EXPECT_FALSE(live.isLinked() || live.isEnabled("mnuStart") || live.isEnabled("mnuStop"));
    live.press("Ok");
    EXPECT_TRUE(within(20s, [&] { return live.isLinked() && live.isEnabled("mnuStart"); }));
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
}

INSTANTIATE_TEST_SUITE_P(By, LostLink, testing::Values("silence", "unplug"),
                         [](const auto &tested) { return std::string{tested.param}; });

bool records(LiveOstrel &live, int samples, std::chrono::milliseconds patience) {
    return within(patience, [&] { return live.held(0) >= samples; });
}

TEST(LiveRun, AnErrorThatNobodyHandlesEndsNeitherTheRecordingNorTheProgram) {
    LiveOstrel live("kind status\nwait 8s\nbad E 5\nwait 2s\nbad E 5\nwait 2s\nbad E 5\nwait 10m\n");
    ASSERT_TRUE(QDir(live.file("data/ostrel")).mkdir("ChartErr.log")); // which cannot be written
    live.press("mnuStart");
    live.await("Run-time error '75':");
    const int held = live.held(0);
    EXPECT_TRUE(records(live, held + 30, 10s)); // under the box, past the other errors
    live.press("OK");
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
    EXPECT_EQ(live.entries("Log/" + live.entries("Log").value(0)).size(), 1); // the log was written at once
    EXPECT_TRUE(records(live, held + 40, 5s));
}

TEST(LiveRun, ALineThatNeverPausesIsDecodedAndNoiseIsSurvived) {
    // Sixteen pairs in each fifth of a second, without a pause for the decoder, and then noise.
    const QByteArray pairs = QByteArray("raw 96 55 3e 80 00 00 96 43 41 48 00 00\n").repeated(15) + "wait 0.2s\n";
    LiveOstrel live("kind letters\n" + pairs.repeated(75) + QByteArray("garbage 190\nwait 0.2s\n").repeated(25) +
                    "wait 10m\n");
    live.press("mnuStart");
    ASSERT_TRUE(records(live, 1, 5s));
    for (int second = 0; second < 5; ++second)
        EXPECT_TRUE(records(live, live.held(0) + 40, 1500ms));
    EXPECT_TRUE(within(20s, [&] { return !live.isLinked() || live.held(0) > 1100; }));
    within(7s, [] { return false; }); // the noise passes
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
}

} // namespace
