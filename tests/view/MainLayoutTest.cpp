// SPDX-License-Identifier: MIT
#include "view/MainLayout.h"

#include <gtest/gtest.h>

using namespace ostrel;

TEST(MainLayoutTest, ChartsTakeWhatTheToolbarTheLightAndTheCentredPanelsLeave) {
    const MainLayout::Sizes sizes{{20000, 12000}, 630, 400, 255, {7750, 1095}, {2085, 400}};
    const auto places = MainLayout::arrange(sizes);
    EXPECT_EQ(places.FrameScaleAxis, QRectF(6125, 10905, 7750, 1095));
    EXPECT_EQ(places.TabChart, QRectF(0, 730, 20000, 10075));
    EXPECT_EQ(places.frameLeds.topRight(), QPointF(20000, 630));
    EXPECT_EQ(places.tabHeads.right(), places.frameLeds.left());
    EXPECT_EQ(places.page.top(), places.tabHeads.bottom());
    EXPECT_EQ(places.ScrollChart.top(), places.Chart.bottom());
    EXPECT_TRUE(places.page.contains(places.Chart | places.ScrollChart));
}
