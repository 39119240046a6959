// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/SampleStore.h"
#include "chart/run/Scale.h"

#include <array>
#include <bit>
#include <utility>
#include <vector>

namespace ostrel {

enum Trace { UvTrace, CondTrace, traceCount };

/// What both traces cover of a narrow upright strip, in pixels below the plot's upper edge: the tops of uv and cond,
/// then their bottoms negated, so that two pieces of line in one strip are joined by one minimum. Not-a-number joins
/// nothing.
struct Strip {
    Lanes lanes = {Extent::infinity, Extent::infinity, Extent::infinity, Extent::infinity};

    float top(Trace trace) const { return lanes[trace]; }
    float bottom(Trace trace) const { return -lanes[traceCount + trace]; }
    void join(Lanes other) { lanes = other < lanes ? other : lanes; }
    bool operator==(const Strip &other) const {
        using Bits = std::array<quint64, 2>;
        return std::bit_cast<Bits>(lanes) == std::bit_cast<Bits>(other.lanes);
    }
};

/// The run under the present axes, drawn with a round pen, strip by strip. While few samples fall on a column of pixels
/// it is cut into four strips, so that the line comes out smooth at every slope; else a column is one strip.
///
/// A strip takes in the last sample of its neighbour, without which steep slopes would show gaps. A sample that is not
/// finite breaks the trace. A strip that a trace does not touch has its top below its bottom.
class TraceColumns {
public:
    static constexpr int finest = 4; ///< most strips in a column

    /// Takes new axes for a plot of whole pixels and a pen of that radius. Allocates only when the width grows.
    void setPlot(const AxisValues &axes, int width, int height, float penRadius);
    /// Works out the columns from `first` to before `end` anew. Answers, as first and end, those that came out other
    /// than they were.
    std::pair<int, int> reduce(const SampleStore &samples, int first, int end);

    int columns() const { return columns_; }
    int strips() const { return strips_; } ///< in each column: 1 or `finest`
    const Strip *column(int number) const { return &covered_[number * strips_]; }

    /// The columns, first and end, that change when samples come to lie behind the `known` first ones.
    std::pair<int, int> columnsOfNews(qint64 known, qint64 size) const;

private:
    double placeOf(qint64 sample) const { return static_cast<double>(sample) * stripsPerSample_ - startInStrips_; }
    qint64 firstSampleFrom(double place) const;
    void sumUp(const SampleStore &samples, int first, int end);
    void followLine(const SampleStore &samples, int first, int end);
    std::pair<int, int> thicken(int first, int end);
    Strip &thin(int strip) { return thin_[strip + margin]; }

    static constexpr int margin = 16; // strips left and right of the plot, from where the pen may reach in

    int columns_ = 0;
    int strips_ = 1;
    double stripsPerSample_ = 1;
    double startInStrips_ = 0;
    qint64 grain_ = 1;  // strips begin at multiples of it, where the store has boxes
    Lanes reference_{}; // place = (value - reference) * factor, in the lanes of a Strip
    Lanes factor_{};
    int reach_ = 0;                   // strips that the pen covers to either side
    std::array<float, margin> pen_{}; // half its height, by the distance in strips
    std::vector<Strip> thin_;         // the bare line, `margin` strips earlier
    std::vector<Strip> covered_;
};

} // namespace ostrel
