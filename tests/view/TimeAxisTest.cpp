// SPDX-License-Identifier: MIT
#include "view/ViewFixture.h"

namespace {

class TimeAxisTest : public ViewTest {
protected:
    void zoom(float from, float to) {
        chart[tabs.CurrentChart].timeMin = from;
        chart[tabs.CurrentChart].timeMax = to;
        time.Chart_Zoomed(from, to, 0.1F, 0.7F, 20, 80);
    }
    QString steps() const { return QString("%1/%2").arg(bar().LargeChange()).arg(bar().SmallChange()); }
};

TEST_F(TimeAxisTest, FullViewEndsOnAWholeMinute) {
    const std::pair<float, const char *> ends[] = {
        {0, "0 to 10"}, {2, "0 to 2"}, {3.1F, "0 to 4"}, {40000, "0 to 40000"}};
    for (const auto &[minutes, end] : ends) {
        give(0, minutes);
        time.SetFullView();
        EXPECT_EQ(shown(), end);
    }
}

TEST_F(TimeAxisTest, WindowBeyondTheDataIsPulledBack) {
    give(0, 20.4F);
    chart[0].timeMin = tabs.ChartViews[0].TimeFrom = 15;
    chooseWindow();
    EXPECT_EQ(shown(), "11 to 21");
    EXPECT_EQ(bar().Max(), 11);
    EXPECT_EQ(bar().Value(), 11);
    EXPECT_TRUE(bar().isEnabled());

    window().type("50").enter();
    EXPECT_EQ(shown(), "0 to 21");
    EXPECT_EQ(windowText(), "21.0");
    EXPECT_EQ(tabs.WindowMinutes[0], 21);
}

TEST_F(TimeAxisTest, WindowBelowATenthIsRefused) {
    chooseWindow();
    for (const char *refused : {"0.05", "."}) {
        window().type(refused).enter();
        EXPECT_EQ(windowText(), "10.0");
    }
    EXPECT_EQ(prompts.beeps, 2);
    EXPECT_EQ(shown(), "0 to 10");
    EXPECT_FALSE(timeControls.cmdSetTime->isEnabled());
}

TEST_F(TimeAxisTest, BarMovesOneWindowOrATenth) {
    give(0, 100);
    chooseWindow();
    EXPECT_EQ(steps(), "10/1");
    window().type("25").enter();
    EXPECT_EQ(steps(), "25/2");
    window().type("0.5").enter();
    EXPECT_EQ(steps(), "1/1");
}

TEST_F(TimeAxisTest, BarMovesTheWindow) {
    give(0, 60);
    chooseWindow();
    bar().setValue(20);
    EXPECT_EQ(shown(), "20 to 30");
    EXPECT_EQ(tabs.ChartViews[0].TimeFrom, 20);
    EXPECT_GT(chartFocused, 0);
    timeControls.optTimeAxis[0]->setValue(true); // the full view
    bar().setValue(30);
    EXPECT_EQ(shown(), "0 to 60");
}

TEST_F(TimeAxisTest, BarBehindTheDataShowsTheirEnd) {
    give(0, 20.9F);
    chooseWindow();
    window().type("0.4").enter();
    bar().setValue(21);
    EXPECT_EQ(shown(), "20.6 to 21");
}

TEST_F(TimeAxisTest, RecordersBarRestsDuringARecording) {
    give(0, 60);
    chooseWindow();
    run.Recording = true;
    bar().setValue(20);
    EXPECT_EQ(shown(), "0 to 10");
    time.EnableScrollBar();
    EXPECT_FALSE(bar().isEnabled());
    give(1, 60);
    tabStrip.select(1);
    chooseWindow();
    EXPECT_TRUE(bar(1).isEnabled());
}

TEST_F(TimeAxisTest, RunBeyondTheBarLeavesItsRange) {
    give(0, 60);
    chooseWindow();
    give(0, 40000);
    time.SetScrollRange(7);
    EXPECT_EQ(bar().Max(), 50);
    EXPECT_EQ(bar().Value(), 7);
}

TEST_F(TimeAxisTest, ZoomIsTakenOverAndLeft) {
    give(0, 60);
    zoom(5.5F, 8);
    EXPECT_TRUE(tabs.Zoomed[0] && !tabs.FullView[0] && bar().isEnabled());
    EXPECT_EQ(panel(0) + ", " + panel(1) + ", " + windowText(), "0.700 0.100, 80.0 20.0, 2.5");
    EXPECT_EQ(shown(), "5.5 to 8");
    EXPECT_EQ(bar().Value(), 6);
    EXPECT_EQ(tabs.WindowMinutes[0], 10);
    float from = 0;
    float to = 0;
    time.GetZoomedTime(from, to);
    EXPECT_EQ(from + to, 13.5F);

    bar().setValue(20);
    EXPECT_EQ(shown(), "20 to 22.5");
    EXPECT_TRUE(tabs.Zoomed[0]);

    time.Chart_Unzoomed();
    EXPECT_TRUE(!tabs.Zoomed[0] && tabs.FullView[0] && !bar().isEnabled());
    EXPECT_EQ(shown() + ", " + panel(0) + ", " + windowText(), "0 to 60, 2.000 -0.200, 10.0");
}

} // namespace
