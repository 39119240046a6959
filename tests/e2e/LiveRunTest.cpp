// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAreArray;

namespace {

struct Instrument {
    const char *kind;
    const char *script;
    const char *marks;
    int pairsBehindNews; ///< that the recorder still takes after a pause or the end
};

std::ostream &operator<<(std::ostream &out, const Instrument &instrument) { return out << instrument.kind; }

/// What the recorder must hold of what the instrument meant.
std::vector<LiveOstrel::Sample> recordedOf(const std::vector<QStringList> &truth, int pairsBehindNews) {
    std::vector<LiveOstrel::Sample> recorded;
    int left = 0; // pairs that are still taken
    for (const QStringList &row : truth) {
        if (row[1] == "start" || row[1] == "resume")
            left = std::numeric_limits<int>::max();
        else if (row[1] == "pause" || row[1] == "end")
            left = pairsBehindNews;
        else if (row[1] == "sample" && left-- > 0)
            recorded.push_back({row[6].toFloat(), row[7].toFloat()});
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
};
// clang-format on

TEST_P(WholeRun, IsRecordedAsTheInstrumentMeantIt) {
    LiveOstrel live{GetParam().script};
    EXPECT_FALSE(live.isEnabled("mnuStop"));
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_TRUE(within(15s, [&] { return live.isEnabled("mnuStop"); }));
    EXPECT_TRUE(within(40s, [&] { return live.marks(0).endsWith('E') && !live.isEnabled("mnuStop"); }));

    EXPECT_EQ(live.marks(0), GetParam().marks);
    EXPECT_THAT(live.samples(0), ElementsAreArray(recordedOf(live.truth(), GetParam().pairsBehindNews)));

    EXPECT_TRUE(within(20s, [&] { return live.methodText(0).contains("Wash"); }));
    live.chooseFile("mnuSaveData", "Lauf Ä 1");
    EXPECT_TRUE(within(10s, [&] { return live.fileExists("Lauf Ä 1.chd"); }));
    live.chooseFile("mnuOpenData", "Lauf Ä 1.chd");
    EXPECT_TRUE(within(10s, [&] { return live->get("TabChart", "currentIndex") == 1; }));
    EXPECT_EQ(live.samples(1), live.samples(0));
    EXPECT_EQ(live.marks(1), GetParam().marks);
    EXPECT_EQ(live.methodText(1), live.methodText(0));
}

INSTANTIATE_TEST_SUITE_P(Of, WholeRun, testing::ValuesIn(instruments),
                         [](const auto &tested) { return std::string{tested.param.kind}; });

TEST(FastRun, IsRecordedWholeAtTwentyTimesTheSpeed) {
    LiveOstrel live{"noise uv 0.01\ncond 20\nnoise cond 0.5\nwait 5m\nstart\nwait 2m\nevent\nwait 2m\nend\nwait 60m\n",
                    {"--speed", "20"}};
    ASSERT_TRUE(within(60s, [&] { return live.marks(0) == "S 1 E" && !live.isEnabled("mnuStop"); }));
    EXPECT_THAT(live.samples(0), ElementsAreArray(recordedOf(live.truth(), 1)));
}

class LostLink : public testing::TestWithParam<const char *> {};

TEST_P(LostLink, StopsTheRecordingIsToldAndComesBack) {
    LiveOstrel live{QByteArray{"wait 10s\n"} + GetParam() + " 15s\nwait 10m\n"};
    ASSERT_TRUE(within(10s, [&] { return live.isEnabled("mnuStart"); }));
    live->trigger("mnuStart");
    ASSERT_TRUE(within(5s, [&] { return live->get("Chart(0)", "SampleCount").toInt() > 0; }));

    EXPECT_TRUE(within(25s, [&] { return live.isUp("frmNoData"); }));
    EXPECT_FALSE(live.isLinked());
    EXPECT_FALSE(live.isEnabled("mnuStart"));
    EXPECT_FALSE(live.isEnabled("mnuStop"));
    live->answer("Ok");
    EXPECT_TRUE(within(5s, [&] { return !live.isUp("frmNoData"); }));

    EXPECT_TRUE(within(20s, [&] { return live.isLinked(); }));
    EXPECT_TRUE(live.isEnabled("mnuStart"));
    EXPECT_TRUE(live.recorder().runs());
}

INSTANTIATE_TEST_SUITE_P(By, LostLink, testing::Values("silence", "unplug"),
                         [](const auto &tested) { return std::string{tested.param}; });

} // namespace
