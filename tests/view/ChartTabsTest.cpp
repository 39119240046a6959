// SPDX-License-Identifier: MIT
#include "view/ViewFixture.h"

namespace {

class ChartTabsTest : public ViewTest {
protected:
    /// What a click on a tab's head does.
    void click(int tab) { tabBar.setCurrentIndex(tab); }
    QString tip(const char *button) { return action(button)->toolTip(); }
};

TEST_F(ChartTabsTest, EmptyTabIsRefused) {
    give(1, 30);
    tabStrip.select(1);
    click(3);
    EXPECT_EQ(tabBar.currentIndex(), 1);
    EXPECT_EQ(tabs.CurrentChart, 1);
    EXPECT_EQ(front, 1);
}

TEST_F(ChartTabsTest, ToolbarNamesWhatItSavesAndCloses) {
    give(1, 30);
    tabStrip.setHead(2, "A&B", "A&B.chd");
    tabStrip.takeHead(1, 2);
    click(1);
    EXPECT_EQ(action("cmdClear")->text() + ": " + tip("cmdClear") + ", " + tip("cmdSave"),
              "Close: Close A&B, Save A&B");
    EXPECT_EQ(tabBar.tabText(1) + ' ' + tabBar.tabToolTip(1), "A&&B A&B.chd"); // the second "&" shows the first
    tabStrip.setHead(1, "<b>1", "<b>1.chd");
    tabStrip.select(1);
    EXPECT_TRUE(tip("cmdSave").contains("Save &lt;b&gt;1"));
    click(0);
    EXPECT_EQ(action("cmdClear")->text() + ": " + tip("cmdClear") + ", " + tip("cmdSave"),
              "Clear: Clear Chart Recorder data, Save Chart Recorder data");
}

TEST_F(ChartTabsTest, EachTabComesBackInItsTimeMode) {
    give(0, 60);
    give(1, 30);
    click(1);
    chooseWindow();
    window().type("5").enter();
    click(0);
    EXPECT_EQ(shown(0) + ", " + windowText(), "0 to 60, 10.0");
    EXPECT_FALSE(timeControls.txtChartTime->isEnabled());
    click(1);
    EXPECT_EQ(shown(1) + ", " + windowText(), "0 to 5, 5.0");
    EXPECT_TRUE(bar(1).isEnabled() && !tabs.FullView[1]);
}

TEST_F(ChartTabsTest, ZoomEnteredFromAFullViewBecomesTheWindow) {
    give(0, 60);
    give(1, 30);
    click(1);
    time.Chart_Zoomed(4, 6.5F, 0, 1, 0, 100);
    click(0);
    click(1);
    EXPECT_EQ(tabs.WindowMinutes[1], 2.5);
    EXPECT_EQ(windowText(), "2.5");
}

} // namespace
