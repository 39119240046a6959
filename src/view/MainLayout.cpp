// SPDX-License-Identifier: MIT
#include "view/MainLayout.h"

#include <algorithm>

namespace ostrel {

namespace MainLayout {

namespace {

constexpr qreal besidePanels = 100;
constexpr qreal leastHeight = 5000;
constexpr qreal drawnPanelHeight = 1095;
constexpr qreal textHeights = 5;  // of menus, toolbar, tabs, panels, title and axis texts together, in panels
constexpr qreal aroundTabs = 100; // above the tabs and below them
constexpr qreal pageLine = 15;

} // namespace

// The panels grow with the desktop's fonts, and with them all that has a text above the traces or beside them.
QSizeF leastOuterSize(const QSizeF &axisPanels) {
    const qreal grown = std::max(axisPanels.height() - drawnPanelHeight, 0.0);
    return {axisPanels.width() + besidePanels, leastHeight + grown * textHeights};
}

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
