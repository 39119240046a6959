// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/SpanFill.h"
#include "chart/plot/TraceColumns.h"

#include <QImage>
#include <QRect>

#include <algorithm>
#include <array>
#include <vector>

namespace ostrel {

/// Draws the two traces antialiased into the pixels of an image, UV over conductivity. It stores for each column the
/// rows with ink and erases nothing else.
class TraceRaster {
public:
    /// Sets the plot's place in pixels and forgets all ink: the plot must show its bare ground (paintGround).
    void setPlot(const QRect &plot, QRgb uvColour, QRgb condColour);
    /// Sets the colours of the plot's columns and rows as in PlotGround. The next drawing rewrites columns with a new
    /// colour as a whole; new colours of rows need paintGround.
    void setGround(std::vector<QRgb> columns, std::vector<QRgb> rows);
    void paintGround(QImage &image) const;

    /// Erases the columns from `first` to before `end` and draws `traces` in them.
    void draw(QImage &image, const TraceColumns &traces, int first, int end);

private:
    struct Rows {
        int top = 0;
        int bottom = 0;
        bool empty() const { return top >= bottom; }
        bool holds(int row) const { return row >= top && row < bottom; }
        Rows with(Rows other) const {
            if (empty() || other.empty())
                return empty() ? other : *this;
            return {std::min(top, other.top), std::max(bottom, other.bottom)};
        }
        Rows common(Rows other) const { return {std::max(top, other.top), std::min(bottom, other.bottom)}; }
        /// The rows above the others and the rows below them.
        std::array<Rows, 2> without(Rows others) const {
            if (others.empty())
                return {*this, Rows{}};
            return {Rows{top, std::min(bottom, others.top)}, Rows{std::max(top, others.bottom), bottom}};
        }
    };
    /// The rows of a column that a trace covers in part or wholly (ink), and wholly (full), and those that its flanks
    /// in the columns beside it reach into.
    struct Column {
        Rows ink;
        Rows full;
        Rows flanks;

        Rows reach() const { return ink.with(flanks); }
    };

    QRgb *pixelsOf(QImage &image) const;
    void drawColumn(QRgb *plot, const TraceColumns &traces, int column);
    void drawBlock(QRgb *plot, const TraceColumns &traces, int first);
    void measure(const TraceColumns &traces, int first, int end);
    std::array<Column, traceCount> measured(const TraceColumns &traces, int column) const;
    static Rows flank(Rows own, Rows beside);
    void addFlanks(QRgb *plot, int column, Rows rows, Rows kept, QRgb colour) const;
    void blendEdges(QRgb *plot, const TraceColumns &traces, Trace trace, int column) const;
    // Rows `kept` are wholly covered by UV before and after, and are not written.
    void fill(QRgb *plot, int column, Rows rows, Rows kept, QRgb colour) const;
    void restore(QRgb *plot, int column, Rows rows, Rows kept) const;
    PlotGround ground() const { return {columnColours_.data(), rowColours_.data()}; }

    QRect plot_;
    qptrdiff stride_ = 0;
    std::vector<QRgb> columnColours_;
    std::vector<QRgb> rowColours_;
    std::array<QRgb, traceCount> colours_{};
    std::array<std::vector<Column>, traceCount> drawn_;
};

} // namespace ostrel
