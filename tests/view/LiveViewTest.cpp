// SPDX-License-Identifier: MIT
#include "view/ViewFixture.h"

namespace {

class LiveViewTest : public ViewTest {
protected:
    /// What the recorder shows once the run is `minutes` long.
    QString shownAt(float minutes) {
        give(0, minutes);
        live.UpdateLiveView();
        return shown();
    }
};

TEST_F(LiveViewTest, FullViewGrowsByAQuarterWhenTheRunLeavesIt) {
    const int redrawn = chart[0].redrawn;
    EXPECT_EQ(shownAt(10), "0 to 10");
    EXPECT_EQ(chart[0].redrawn, redrawn);
    chart[0].timeMax = 9.99F;
    EXPECT_EQ(shownAt(10), "0 to 12.5");
    EXPECT_EQ(chart[0].redrawn, redrawn + 1);
    EXPECT_EQ(chart[0].newDataDrawn, 2);
}

TEST_F(LiveViewTest, WindowJumpsATenthAhead) {
    chooseWindow();
    chart[0].timeMax = 9.99F;
    EXPECT_EQ(shownAt(10), "1 to 11");
    EXPECT_EQ(tabs.ChartViews[0].TimeFrom, 1);
    EXPECT_EQ(bar().Value(), 0);
}

TEST_F(LiveViewTest, TabInFrontSteersTheRecorderBehindIt) {
    chooseWindow();
    give(1, 30);
    tabStrip.select(1); // a new file comes in full view
    const int redrawn = chart[1].redrawn;
    EXPECT_EQ(shownAt(20), "0 to 25");
    EXPECT_EQ(chart[1].redrawn, redrawn);
}

TEST_F(LiveViewTest, StopSetsTheBarToTheEndOfTheData) {
    give(0, 3);
    live.recorderToEnd();
    give(0, 40000);
    EXPECT_THROW(live.recorderToEnd(), RunTimeError);
    EXPECT_EQ(bar().Max(), -6);
    EXPECT_EQ(bar().Value(), -6);
}

} // namespace
