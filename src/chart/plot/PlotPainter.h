// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/MarkLayout.h"
#include "chart/plot/OffScale.h"
#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/plot/TraceColumns.h"

#include <QPainter>

#include <span>
#include <vector>

namespace ostrel {

/// Paints a chart's parts with any painter, in the layout's logical pixels. On screen these are frame and marks, while
/// TraceRaster draws grid and traces into the picture; on paper everything, as lines and texts.
class PlotPainter {
public:
    PlotPainter(QPainter &painter, const PlotLayout &layout, const PlotTheme &theme)
        : painter_(painter), layout_(layout), theme_(theme) {}

    /// Axes and their texts, around the plot; the plot itself is left alone.
    void frame();
    /// In the head, alone or beside the numbers.
    void title(bool alone);
    /// Everything below the plot.
    void timeAxis();
    void grid();
    void marks(std::span<const PlacedMark> marks);
    void offScale(std::span<const OffScale> signs);
    /// A piece of the trace's line beside the title of its axis.
    void key(Trace trace);
    /// Draws polylines, at `perPixel` columns to a logical pixel; UV solid, conductivity dashed.
    void trace(Trace trace, const SampleStore &samples, double perPixel);

private:
    void valueAxis(const std::vector<Tick> &ticks, double axis, double outward, const QColor &ink);
    void axisTitle(const QString &text, const QRectF &box, double turn, const QColor &ink);
    void label(const Tick &tick);
    QColor inkOf(Trace trace) const { return trace == UvTrace ? theme_.uv : theme_.cond; }
    void setTracePen(Trace trace);
    void traceLines(Trace trace, const std::vector<QPolygonF> &lines);
    void bar(const QRectF &rect, const QColor &colour) { painter_.fillRect(rect, colour); }

    QPainter &painter_;
    const PlotLayout &layout_;
    const PlotTheme &theme_;
};

} // namespace ostrel
