// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Scale.h"

#include <QFont>
#include <QRectF>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace ostrel {

struct Tick {
    double place = 0;  ///< x or y, on a whole device pixel
    bool major = true; ///< has a grid line and, where there is room, a label
    QString label;
    QRectF box; ///< of the label
};

/// The numbers at the right of a chart's head, from left to right.
enum HeadColumn { MarkColumn, TimeColumn, UvColumn, CondColumn, headColumnCount };

/// The places of all parts of a chart, in logical pixels, for screen and paper. Labels never touch one another and
/// never leave the chart. In a small chart first the axis titles are left out, then the head, then the labels.
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
    double timeLabelTop = 0; ///< below this there is only the time axis

    QRectF headBox;             ///< above the plot; empty without room or head
    QString titleAlone;         ///< shortened to the head
    QString titleBesideNumbers; ///< shortened to its box
    QRectF titleBox;            ///< at the left of the head; empty without room or title, likewise the axis titles
    std::array<QRectF, headColumnCount> headColumns; ///< empty without room: the mark's goes first, then the time's
    QRectF uvTitleBox;
    QRectF condTitleBox;
    QRectF timeTitleBox;
    QString timeTitle; ///< with its unit: hours when more than a day is shown

    /// Only the font's size in pixels counts, so that a layout is the same on every device. Without a title, which may
    /// be empty, the chart has no head.
    static PlotLayout of(const QSizeF &size, double pixelRatio, const AxisValues &axes, const QFont &font,
                         const std::optional<QString> &title);

    /// Changes the time axis alone; everything else stays where it is.
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
