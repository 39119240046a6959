// SPDX-License-Identifier: MIT
#include "view/MainLayout.h"

namespace ostrel {

namespace MainLayout {

namespace {

constexpr qreal besidePanels = 100;
constexpr qreal leastHeight = 5000;
constexpr qreal aroundTabs = 100; // above the tabs and below them
constexpr qreal pageLine = 15;

} // namespace

QSizeF leastOuterSize(const QSizeF &axisPanels) { return {axisPanels.width() + besidePanels, leastHeight}; }

Places arrange(const Sizes &sizes) {
    const qreal width = sizes.inner.width();
    Places places;
    places.FrameScaleAxis = {
        QPointF((width - sizes.axisPanels.width()) / 2, sizes.inner.height() - sizes.axisPanels.height()),
        sizes.axisPanels};

    const qreal tabTop = sizes.toolbarHeight + aroundTabs;
    places.TabChart = {0, tabTop, width, places.FrameScaleAxis.top() - tabTop - aroundTabs};
    places.frameLeds = {QPointF(width - sizes.leds.width(), sizes.toolbarHeight), sizes.leds};
    places.tabHeads = {0, tabTop, places.frameLeds.left(), sizes.tabHeadHeight};
    places.page = places.TabChart.adjusted(0, sizes.tabHeadHeight, 0, 0);

    const QRectF client = places.page.adjusted(pageLine, pageLine, -pageLine, -pageLine);
    places.Chart = client.adjusted(0, 0, 0, -sizes.scrollHeight);
    places.ScrollChart = {client.left(), places.Chart.bottom(), client.width(), sizes.scrollHeight};
    return places;
}

} // namespace MainLayout

} // namespace ostrel
