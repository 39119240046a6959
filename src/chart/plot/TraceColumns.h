// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/SampleStore.h"
#include "chart/run/Scale.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>
#include <vector>

namespace ostrel {

enum Trace { UvTrace, CondTrace, traceCount };

/// The radius of the pen that draws traces on the screen, in logical pixels.
inline constexpr float tracePenRadius = 0.75F;

/// The part of a narrow vertical strip that each trace covers, in pixels below the plot's upper edge. Lanes: the tops
/// of uv and cond, then their negated bottoms, so that one minimum joins two pieces of line in a strip. Joining
/// not-a-number changes nothing.
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

/// A run's traces under the present axes, drawn with a round pen: UV solid, conductivity dashed where it is flat. A
/// column of pixels is one strip, or four where few samples make a line that is smooth at every slope. A sample without
/// neighbours is a dot.
///
/// A strip includes the last sample of the strip to its left; otherwise steep slopes would have gaps. A sample that is
/// not finite breaks the trace. A strip that a trace does not touch has its top below its bottom.
class TraceColumns {
public:
    static constexpr int mostStrips = 4;

    struct Column {
        std::array<Strip, mostStrips> strips;
        int count = 1; ///< of strips; all of the same width

        bool operator==(const Column &other) const {
            return count == other.count && std::equal(strips.begin(), strips.begin() + count, other.strips.begin());
        }
    };

    /// Sets the axes, the plot's size in pixels and the pen's radius. Allocates only when the width grows.
    void setPlot(const AxisValues &axes, int width, int height, float penRadius);
    /// Computes the columns from `first` to before `end`. Returns the range of changed columns as first and end.
    std::pair<int, int> reduce(const SampleStore &samples, int first, int end);

    int columns() const { return columns_; }
    const Column &column(int number) const { return covered_[number]; }
    /// A trace covers a place in the columns from `first` to before `end`, between `top` and `bottom`.
    bool touch(int first, int end, float top, float bottom) const;
    /// The columns in which a trace leaves the plot by its upper or its lower edge, from left to right, `apart` columns
    /// from each other at least.
    std::vector<int> leaves(Trace trace, bool above, int apart) const;

    /// The columns, as first and end, that change when the run grows from `known` to `size` samples.
    std::pair<int, int> columnsOfNews(qint64 known, qint64 size) const;

private:
    double placeOf(qint64 sample) const { return static_cast<double>(sample) * stripsPerSample_ - startInStrips_; }
    qint64 firstSampleFrom(double place) const;
    void sumUp(const SampleStore &samples, int first, int end);
    void followLine(const SampleStore &samples, int first, int end);
    void addDot(Lanes place, int strip, int first, int end);
    std::pair<int, int> thicken(int first, int end);
    Column thickened(int column);
    void cutDash(int column, Column &covered) const;
    Strip &thin(int strip) { return thin_[strip + margin]; }

    static constexpr int margin = 32; // strips on each side of the plot, from which the pen reaches into it

    int columns_ = 0;
    float height_ = 0;
    int thinStrips_ =
        1; // in a column, of the line without width: 1 where there are many samples, otherwise `mostStrips`
    double stripsPerSample_ = 1;
    double startInStrips_ = 0;
    qint64 grain_ = 1;  // samples; strips begin at multiples of it, where the store has boxes
    Lanes reference_{}; // place = (value - reference) * factor, in the lanes of a Strip
    Lanes factor_{};
    int reach_ = 0; // thin strips that the pen covers to either side, and a dot beside it
    int dotReach_ = 0;
    float penRadius_ = 0;
    int dashPhase_ = 0;
    int dashLength_ = 1; // columns, with the gap behind it
    int dashPeriod_ = 1;
    std::array<float, margin> pen_{}; // half the pen's height, by the distance in strips
    std::vector<Strip> thin_;         // the line without width; starts `margin` strips left of the plot
    std::vector<Column> covered_;
};

} // namespace ostrel
