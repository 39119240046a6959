// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Scale.h"

#include <QFont>
#include <QRectF>
#include <QString>

#include <vector>

namespace ostrel {

struct Tick {
    double place = 0;  ///< x or y, on a whole device pixel
    bool major = true; ///< has a grid line and, where there is room, a label
    QString label;
    QRectF box; ///< of the label
};

/// Where everything of a chart is, in logical pixels, for screen and paper alike. Labels never touch one another
/// and never leave the chart; when it gets small, first the axis titles go, then the labels.
struct PlotLayout {
    QSizeF size;
    double pixelRatio = 1; ///< device pixels to a logical one
    AxisValues axes;
    QFont font;
    QFont titleFont;

    QRectF plot; ///< its edges lie on device pixels
    Scale uv;
    Scale cond;
    Scale time;
    std::vector<Tick> uvTicks;
    std::vector<Tick> condTicks;
    std::vector<Tick> timeTicks;
    bool labelled = true;    ///< there was room for the ticks' labels
    double timeLabelTop = 0; ///< from here down only the time axis has anything

    QString title;   ///< shortened to its box
    QRectF titleBox; ///< empty without room or title; likewise the axis titles
    QRectF uvTitleBox;
    QRectF condTitleBox;
    QRectF timeTitleBox;

    /// The font counts with its size in pixels, so that a layout is the same on every device.
    static PlotLayout of(const QSizeF &size, double pixelRatio, const AxisValues &axes, const QFont &font,
                         const QString &title);

    /// Only another stretch of time; all else stays where it is.
    void setTimeAxis(float from, float to);

    /// The plot in device pixels.
    QRect devicePlot() const;
    double snapped(double place) const;
    double lineWidth() const; ///< of axes and ticks: about a logical pixel, whole device pixels
    double hairWidth() const; ///< of the grid: one device pixel on screens, half a logical one on finer paper
};

inline constexpr double tickLength = 5;
inline constexpr double minorTickLength = 3;

} // namespace ostrel
