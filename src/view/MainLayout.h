// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

namespace ostrel {

/// Divides the area of the main window, in twips. The panels of the axes keep their size at the bottom edge; tabs and
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
    QRectF TabChart; ///< tabs and page
    QRectF tabHeads; ///< they end where the receive light begins
    QRectF page;     ///< the frame under the tabs
    QRectF Chart;    ///< all five alike
    QRectF ScrollChart;
    QRectF frameLeds;
};

/// The least outer size of the window, including the desktop's frame.
QSizeF leastOuterSize(const QSizeF &axisPanels);
Places arrange(const Sizes &sizes);

} // namespace MainLayout

} // namespace ostrel
