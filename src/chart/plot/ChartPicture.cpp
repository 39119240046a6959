// SPDX-License-Identifier: MIT
#include "chart/plot/ChartPicture.h"

#include "chart/plot/PlotPainter.h"
#include "chart/plot/TracePath.h"

#include <utility>
#include <vector>

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
    painter.fillRect(QRectF(QPointF(), QSizeF(view.size)), view.theme.ground);
    paintChart(painter, data, PlotLayout::of(view.size, view.pixelRatio, view.axes, view.font, view.title), view.theme,
               {}, columnsToPixel);
}

void paintChart(QPainter &painter, const ChartData &data, const PlotLayout &layout, const PlotTheme &theme,
                const ChartParts &parts, double perPixel) {
    PlotPainter plot(painter, layout, theme);
    plot.title(true);
    plot.frame();
    plot.grid();
    for (const auto &[trace, isShown] : {std::pair(CondTrace, parts.cond), {UvTrace, parts.uv}}) {
        if (isShown) {
            plot.key(trace);
            plot.trace(trace, data.samples, perPixel);
        }
    }
    const TraceColumns traces = tracesOn(layout, data.samples);
    if (parts.marks)
        plot.marks(placeMarks(data.marks, layout, theme, traces));
    std::vector<OffScale> signs = placeOffScale(traces, layout);
    std::erase_if(signs, [&](const OffScale &sign) { return sign.trace == UvTrace ? !parts.uv : !parts.cond; });
    plot.offScale(signs);
}

} // namespace ostrel
