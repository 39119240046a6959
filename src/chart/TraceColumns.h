// SPDX-License-Identifier: MIT
#pragma once

#include "chart/SampleStore.h"
#include "chart/Scale.h"

#include <array>
#include <utility>
#include <vector>

enum Trace { UvTrace, CondTrace, traceCount };

/// What both traces cover of a plot, column by column: the run under the present axes, drawn with a round pen. Each
/// column (one pixel wide) has a top and a bottom place for each of its strips, in pixels below the plot's upper edge;
/// a strip that the trace does not touch is empty: its top is not above its bottom.
///
/// While few samples fall on a column it is cut into four strips, so that the line comes out smooth at every slope.
/// A strip takes in the last sample of its neighbour, without which steep slopes would show gaps. A sample that is not
/// finite breaks the trace.
class TraceColumns {
public:
    static constexpr int finest = 4; ///< most strips in a column

    /// Takes new axes for a plot of whole pixels and a pen of that radius. Allocates only when the width grows.
    void setPlot(const AxisValues &axes, int width, int height, float penRadius);
    /// Works out the columns from `first` to before `end` anew.
    void reduce(const SampleStore &samples, int first, int end);

    int columns() const { return columns_; }
    int strips() const { return strips_; } ///< in each column: 1 or `finest`
    /// The strips of a column, `strips()` of them.
    const float *tops(Trace trace, int column) const { return &covered_[trace].tops[column * strips_]; }
    const float *bottoms(Trace trace, int column) const { return &covered_[trace].bottoms[column * strips_]; }

    /// The columns, first and end, that change when samples come to lie behind the `known` first ones.
    std::pair<int, int> columnsOfNews(qint64 known, qint64 size) const;

private:
    struct Strips {
        std::vector<float> tops;
        std::vector<float> bottoms;
    };

    double placeOf(qint64 sample) const { return static_cast<double>(sample) * stripsPerSample_ - startInStrips_; }
    qint64 sampleAt(double place) const;
    void sumUp(const SampleStore &samples, int first, int end);
    void followLine(const SampleStore &samples, int first, int end);
    void addSegment(Trace trace, double x0, float y0, double x1, float y1, int first, int end);
    void extend(Trace trace, int strip, float place);
    void clear(int first, int end);
    void thicken(Strips &thin, Strips &covered, int first, int end) const;

    static constexpr int margin = 16; // strips left and right of the plot, where the pen may reach in from

    int columns_ = 0;
    int strips_ = 1;
    double stripsPerSample_ = 1;
    double startInStrips_ = 0;
    Lanes reference_{}; // place = (value - reference) * factor, in the lanes of an Extent
    Lanes factor_{};
    int reach_ = 0;                       // strips that the pen covers to either side
    std::array<float, margin + 1> pen_{}; // half its height, by the distance in strips
    std::array<Strips, traceCount> thin_; // the bare line; index 0 is strip -margin
    std::array<Strips, traceCount> covered_;
};
