// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/plot/TraceColumns.h"
#include "chart/run/ChartData.h"

#include <QString>

#include <vector>

namespace ostrel {

/// A mark on the time axis: a stroke, and above it its label where there is room for one.
struct PlacedMark {
    QColor stroke;
    QColor text;
    QRectF bar;             ///< of the mark's height, up from the time axis or down
    QRectF leader;          ///< thin, from the bar to a label that was moved up; may be empty
    QRectF box;             ///< of the label; empty if it is left out
    QString label;          ///< of all that share the place
    bool overTrace = false; ///< there was no place for the label off the traces
};

/// Places the marks within the time axis. Of several marks on one pixel the tallest of each kind is drawn in each
/// direction, the tallest with the labels of all of them. Labels never overlap: taller marks choose first, then earlier
/// ones. A label stands above its mark or beside its end, up to four lines higher; off the traces if there is such a
/// place, and without room it is left out.
std::vector<PlacedMark> placeMarks(const std::vector<EventMark> &marks, const PlotLayout &layout,
                                   const PlotTheme &theme, const TraceColumns &traces);

QFont markFont(const PlotLayout &layout);

} // namespace ostrel
