// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

namespace ostrel {

/// How the main window shares its ground, in twips. The panels of the axes keep their size on the bottom edge; tabs and
/// charts take all the rest.
namespace MainLayout {

struct Sizes {
    QSizeF inner; ///< of the window without its menus
    qreal toolbarHeight = 0;
    qreal tabHeadHeight = 0;
    qreal scrollHeight = 0;
    QSizeF axisPanels;
    QSizeF leds;
};

struct Places {
    QRectF FrameScaleAxis;
    QRectF TabChart; ///< heads and page
    QRectF tabHeads; ///< end where the receive light begins
    QRectF page;     ///< the frame under the heads
    QRectF Chart;    ///< all five alike
    QRectF ScrollChart;
    QRectF frameLeds;
};

/// The outer size, frame of the desktop included, below which the window does not go.
QSizeF leastOuterSize(const QSizeF &axisPanels);
Places arrange(const Sizes &sizes);

} // namespace MainLayout

} // namespace ostrel
