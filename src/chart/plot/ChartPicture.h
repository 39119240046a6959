// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/ChartImage.h"
#include "chart/run/ChartData.h"

#include <QImage>
#include <QPainter>

namespace ostrel {

/// A chart as a picture of its own, for other programs.
QImage pictureOf(const ChartData &data, const ChartView &view);

/// The same as lines and texts, `view.size` large.
void paintPicture(QPainter &painter, const ChartData &data, const ChartView &view);

/// What a drawing shows beside the axes.
struct ChartParts {
    bool uv = true;
    bool cond = true;
    bool marks = true;
};

/// Draws a chart as lines and texts, with `perPixel` columns of a trace to a logical pixel. The ground is left alone.
void paintChart(QPainter &painter, const ChartData &data, const PlotLayout &layout, const PlotTheme &theme,
                const ChartParts &parts, double perPixel);

} // namespace ostrel
