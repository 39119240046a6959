// SPDX-License-Identifier: MIT
#include "view/ViewFixture.h"

namespace {

using InitMainWindowTest = ViewTest;

struct WithoutPort : ViewTest {
    WithoutPort() : ViewTest(false) {}
};

TEST_F(InitMainWindowTest, SetsTheWindowUpForAFreshStart) {
    EXPECT_TRUE(setUpDone);
    EXPECT_EQ(told.join(", "), "help, Ostrel MS - Velquin System: Default, settings, 8650x6300, port, open");
    EXPECT_EQ(shown() + ", " + windowText(), "0 to 10, 10.0");
    EXPECT_FALSE(timeControls.txtChartTime->isEnabled());
    EXPECT_EQ(tabs.ChartViews[4].TimeSpan, 10);
    EXPECT_EQ(tabs.ChartViews[4].CondMax, chart[4].condMax);
    EXPECT_EQ(bar(4).LargeChange(), 10);
    EXPECT_EQ(tabs.ChartCount, 1);
    EXPECT_EQ(chart[0].title, "Chart Recorder");
}

TEST_F(WithoutPort, EndsTheSetUp) {
    EXPECT_FALSE(setUpDone);
    EXPECT_EQ(told.last(), "port");
    EXPECT_EQ(tabs.ChartCount, 0);
}

} // namespace
