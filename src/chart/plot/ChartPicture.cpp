// SPDX-License-Identifier: MIT
#include "chart/plot/ChartPicture.h"

#include "chart/plot/PlotPainter.h"
#include "chart/plot/TracePath.h"

namespace ostrel {

QImage pictureOf(const ChartData &data, const ChartView &view) {
    ChartImage chart;
    chart.draw(data, view);
    QImage picture = chart.image();
    QPainter painter(&picture);
    PlotPainter plot(painter, chart.layout(), view.theme);
    plot.title(true);
    plot.marks(chart.marks());
    plot.offScale(chart.offScale());
    return picture;
}

void paintPicture(QPainter &painter, const ChartData &data, const ChartView &view) {
    constexpr double columnsToPixel = 2;
    const PlotLayout layout = PlotLayout::of(view.size, view.pixelRatio, view.axes, view.font, view.title);
    const TraceColumns traces = tracesOn(layout, data.samples);
    painter.fillRect(QRectF(QPointF(), QSizeF(view.size)), view.theme.ground);
    PlotPainter plot(painter, layout, view.theme);
    plot.title(true);
    plot.frame();
    plot.grid();
    for (const Trace trace : {CondTrace, UvTrace}) {
        plot.key(trace);
        plot.trace(trace, data.samples, columnsToPixel);
    }
    plot.marks(placeMarks(data.marks, layout, view.theme, traces));
    plot.offScale(placeOffScale(traces, layout));
}

} // namespace ostrel
