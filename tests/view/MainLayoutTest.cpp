// SPDX-License-Identifier: MIT
#include "view/MainLayout.h"

#include <gtest/gtest.h>

namespace {

class MainLayoutTest : public testing::Test {
protected:
    MainLayout::Places at(qreal width, qreal height) {
        sizes.inner = {width, height};
        return MainLayout::arrange(sizes);
    }
    MainLayout::Sizes sizes{{}, 630, 400, 255, {7750, 1095}, {2085, 400}};
};

TEST_F(MainLayoutTest, PanelsKeepTheirSizeCentredOnTheBottomEdge) {
    EXPECT_EQ(at(8650, 6000).FrameScaleAxis, QRectF(450, 4905, 7750, 1095));
    EXPECT_EQ(at(20000, 12000).FrameScaleAxis, QRectF(6125, 10905, 7750, 1095));
}

TEST_F(MainLayoutTest, TabsAndChartsTakeTheRest) {
    const auto places = at(8650, 6000);
    EXPECT_EQ(places.TabChart, QRectF(0, 730, 8650, 4075));
    EXPECT_EQ(places.page.bottom(), places.TabChart.bottom());
    EXPECT_EQ(places.page.top(), places.tabHeads.bottom());
    EXPECT_EQ(places.ScrollChart.top(), places.Chart.bottom());
    EXPECT_EQ(places.ScrollChart.height(), 255);
    EXPECT_TRUE(places.page.contains(places.Chart | places.ScrollChart));
}

TEST_F(MainLayoutTest, TheReceiveLightEndsTheRowOfTabHeads) {
    const auto places = at(8650, 6000);
    EXPECT_EQ(places.frameLeds.topRight(), QPointF(8650, 630));
    EXPECT_EQ(places.tabHeads.right(), places.frameLeds.left());
}

TEST_F(MainLayoutTest, ThePanelsSetTheLeastWidth) {
    EXPECT_EQ(MainLayout::leastOuterSize(sizes.axisPanels), QSizeF(7850, 5000));
}

} // namespace
