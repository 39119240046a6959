// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

class TimeAxisTest : public StartedProgram {
protected:
    ScrollEntry &bar(int i = 0) { return *find<ScrollEntry>(QString("ScrollChart(%1)").arg(i)); }
    void chooseWindow() { click("optTimeAxis(1)"); }
    void chooseFullView() { click("optTimeAxis(0)"); }
    /// All that the panels show of the tab in front.
    QString axes(int tab = 0) {
        return QStringList{shown(tab),          text("cmbYAxis(0)"),    text("txtYAxisMin(0)"),
                           text("cmbYAxis(1)"), text("txtYAxisMin(1)"), text("txtChartTime")}
            .join(' ');
    }
    /// What the chart in front tells of a rectangle that the operator has drawn.
    void zoom(int i, float from, float to) {
        chart(i).run().setAxes({0.1F, 0.7F, 20, 80, from, to});
        Q_EMIT chart(i).Zoomed(qint16(i), from, to, 0.1F, 0.7F, 20, 80);
    }
    /// What the recorder shows in a session once its newest sample is this late.
    QString shownAt(float minutes) {
        give(minutes - 1 / 300.0F);
        play(".");
        return shown();
    }
};

TEST_F(TimeAxisTest, FullViewEndsOnAWholeMinute) {
    const std::pair<float, const char *> ends[] = {
        {0, "0 to 10"}, {2, "0 to 2"}, {3.1F, "0 to 4"}, {40000, "0 to 40000"}};
    for (const auto &[minutes, end] : ends) {
        give(minutes);
        chooseWindow();
        chooseFullView();
        EXPECT_EQ(shown(), end);
    }
    EXPECT_EQ(told(), ""); // the longest goes beyond what the bar can hold
}

TEST_F(TimeAxisTest, WindowBeyondTheDataIsPulledBack) {
    give(20.4F);
    chooseWindow();
    bar().setValue(15);
    EXPECT_EQ(shown(), "11 to 21");
    EXPECT_TRUE(bar().Max() == 11 && bar().Value() == 11 && bar().isEnabled());
    enter("txtChartTime", "50");
    EXPECT_EQ(shown() + ", " + text("txtChartTime"), "0 to 21, 21.0");
    chooseFullView();
    EXPECT_FALSE(bar().isEnabled() || usable("txtChartTime"));
    chooseWindow();
    EXPECT_EQ(text("txtChartTime"), "21.0");
}

TEST_F(TimeAxisTest, WindowBelowATenthIsRefused) {
    chooseWindow();
    for (const char *refused : {"0.05", "."}) {
        enter("txtChartTime", refused);
        EXPECT_EQ(shown() + ", " + text("txtChartTime"), "0 to 10, 10.0");
    }
    EXPECT_EQ(prompts.beeps, 2);
    EXPECT_FALSE(usable("cmdSetTime"));
}

TEST_F(TimeAxisTest, BarMovesOneWindowOrATenthAndEndsWithTheData) {
    give(100);
    chooseWindow();
    const std::tuple<const char *, int, int> steps[] = {{"10", 10, 1}, {"25", 25, 2}, {"0.5", 1, 1}};
    for (const auto &[minutes, large, small] : steps) {
        enter("txtChartTime", minutes);
        EXPECT_TRUE(bar().LargeChange() == large && bar().SmallChange() == small) << minutes;
    }
    bar().setValue(20);
    EXPECT_EQ(shown(), "20 to 20.5");
    EXPECT_EQ(find<QWidget>("frmMain")->focusWidget(), &chart(0));
    chooseFullView();
    bar().setValue(30);
    EXPECT_EQ(shown(), "0 to 100");
    give(20.9F);
    chooseWindow();
    bar().setValue(21);
    EXPECT_EQ(shown(), "20.5 to 21");
}

TEST_F(TimeAxisTest, RecordersBarRestsDuringARecording) {
    give(60);
    chooseWindow();
    link();
    trigger("mnuStart");
    bar().setValue(20);
    EXPECT_EQ(shown(), "0 to 10");
    EXPECT_FALSE(bar().isEnabled());
    open("a.chd", 60);
    chooseWindow();
    EXPECT_TRUE(bar(1).isEnabled());
    bringToFront(0);
    EXPECT_FALSE(bar().isEnabled());
}

TEST_F(TimeAxisTest, ZoomIsTakenOverAndLeft) {
    give(60);
    chooseWindow();
    chooseFullView();
    zoom(0, 5.5F, 8);
    EXPECT_TRUE(find<OptionButton>("optTimeAxis(1)")->Value() && bar().isEnabled());
    EXPECT_EQ(axes(), "5.5 to 8 0.700 0.100 80.0 20.0 2.5");
    EXPECT_EQ(bar().Value(), 6);
    bar().setValue(20);
    EXPECT_EQ(shown(), "20 to 22.5");
    chart(0).run().setAxes({});
    Q_EMIT chart(0).Unzoomed(0);
    EXPECT_FALSE(find<OptionButton>("optTimeAxis(1)")->Value() || bar().isEnabled());
    EXPECT_EQ(axes(), "0 to 60 2.000 -0.200 500.0 0.0 10.0");
}

TEST_F(TimeAxisTest, FullViewShowsTheWholeRunHoweverItIsComeBy) {
    give(60);
    chart(0).run().setTimeAxisMax(20);
    chooseFullView(); // it is chosen already
    EXPECT_EQ(shown(), "0 to 60");

    chooseWindow();
    zoom(0, 5, 8);
    chooseFullView();
    chart(0).run().setAxes({.timeMin = 5, .timeMax = 15}); // of the window before the zoom
    Q_EMIT chart(0).Unzoomed(0);
    EXPECT_EQ(shown(), "0 to 60");

    lay("a.chd", 30);
    RunDocument part;
    ASSERT_TRUE(part.LoadDataFile(path("a.chd")));
    part.setTimeAxisMin(10);
    part.setTimeAxisMax(15);
    ASSERT_TRUE(part.SaveDataFile(path("a.chd")));
    open("a.chd");
    EXPECT_EQ(shown(1), "0 to 30");
    ASSERT_TRUE(part.LoadDataFile(path("a.chd")));
    EXPECT_EQ(part.TimeAxisMin(), 10); // the file keeps its stretch
}

TEST_F(TimeAxisTest, AnEntryThatIsDisabledGivesTheFocusToTheChart) {
    give(60);
    chooseWindow();
    const auto *window = find<QWidget>("frmMain");
    ASSERT_EQ(window->focusWidget()->objectName(), "txtChartTime");
    find<OptionButton>("optTimeAxis(0)")->setValue(true);
    EXPECT_EQ(window->focusWidget(), &chart(0));
}

TEST_F(TimeAxisTest, EachTabComesBackWithItsTimeModeAndItsScales) {
    give(60);
    open("a.chd", 30);
    chooseWindow();
    enter("txtChartTime", "5");
    enter("cmbYAxis(0)", "0.5");
    bringToFront(0);
    EXPECT_EQ(axes(0), "0 to 60 2.000 -0.200 500.0 0.0 10.0");
    EXPECT_FALSE(usable("txtChartTime"));
    bringToFront(1);
    EXPECT_EQ(axes(1), "0 to 5 0.500 -0.200 500.0 0.0 5.0");
    EXPECT_TRUE(chart(0).UvAxisMax() == 2.0F && chart(1).UvAxisMax() == 0.5F && bar(1).isEnabled());
    chooseFullView();
    zoom(1, 4, 6.5F); // from a full view: the stretch becomes the window
    bringToFront(0);
    bringToFront(1);
    EXPECT_EQ(text("txtChartTime"), "2.5");
}

TEST_F(TimeAxisTest, ARecordingGrowsAFullViewByAQuarterAndMovesAWindowATenthAhead) {
    link();
    trigger("mnuStart");
    EXPECT_EQ(shownAt(10), "0 to 10");
    EXPECT_EQ(shownAt(10 + 1 / 300.0F), "0 to 12.5042");
    chooseWindow();
    EXPECT_EQ(shownAt(13), "4 to 14");
    bringToFront(0);
    EXPECT_EQ(shown(), "4 to 14");
    EXPECT_EQ(bar().Value(), 0);
    open("a.chd", 30); // in full view; the tab in front steers the recorder behind it
    EXPECT_EQ(shownAt(20), "4 to 25");
    EXPECT_EQ(shown(1), "0 to 30");
}

} // namespace
