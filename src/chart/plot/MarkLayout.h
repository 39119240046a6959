// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/run/ChartData.h"

#include <QString>

#include <vector>

namespace ostrel {

/// A mark on the time axis: a stroke, and above it its label where there is room for one.
struct PlacedMark {
    QColor stroke;
    QColor text;
    QRectF bar;    ///< of the mark's height, up from the time axis or down
    QRectF leader; ///< thin, from the bar to a label that was moved up; may be empty
    QRectF box;    ///< of the label; empty if it is left out
    QString label;
};

/// Places the marks within the time axis. Of several marks on one pixel only the tallest in each direction is drawn.
/// Labels never overlap: taller marks choose first, then earlier ones. A label without room moves up by at most four
/// lines, or else is left out.
std::vector<PlacedMark> placeMarks(const std::vector<EventMark> &marks, const PlotLayout &layout,
                                   const PlotTheme &theme);

QFont markFont(const PlotLayout &layout);

} // namespace ostrel
