// SPDX-License-Identifier: MIT
#include "chart/plot/TraceColumns.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

// How a trace becomes strips: the line without width is reduced to the highest and lowest place that it reaches in each
// strip (`thin_`). With more than two samples in a strip these come from the store's extents (sumUp); otherwise the
// line between two samples is followed across the edges of the strips (followLine). Then the line gets its width: a
// strip is covered as far as a round pen reaches that is set on the line in it or in a strip within the pen's radius
// (thicken). Top and bottom of both traces are the four lanes of one vector, so one operation handles all four.

namespace {

constexpr double smoothUpTo = 128;   // samples in a column; with more, the way between them is not visible
constexpr double followUpTo = 2;     // samples in a strip; up to this the line between them is followed
constexpr double grainsInStrip = 32; // a strip may begin 1/32 of it off its place, to use the store's boxes
constexpr float dotRadius = 1.4F;    // in radii of the pen, without the pen's own
constexpr float dash = 12;           // likewise
constexpr float dashGap = 6;
constexpr float flat = 2;      // steeper parts of a dashed line have no gaps: likewise, beyond the pen
constexpr float farOff = 1e8F; // pixels; keeps sums finite and changes nothing visible
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

Lanes all(float value) { return Lanes{value, value, value, value}; }

/// The lanes of `value` in which `missing` is not-a-number, and not-a-number in the others.
Lanes whereMissing(Lanes missing, Lanes value) {
    const auto there = missing <= all(std::numeric_limits<float>::infinity());
    return there ? all(notANumber) : value;
}

int floored(double value) {
    const int whole = static_cast<int>(value);
    return whole - (static_cast<double>(whole) > value);
}

} // namespace

void TraceColumns::setPlot(const AxisValues &axes, int width, int height, float penRadius) {
    const Scale time(axes.timeMin, axes.timeMax, 0, width);
    const Scale uv(axes.uvMin, axes.uvMax, height, 0);
    const Scale cond(axes.condMin, axes.condMax, height, 0);
    const double columnsPerSample = time.factor() / samplesPerMinute;

    columns_ = width;
    height_ = static_cast<float>(height);
    thinStrips_ = columnsPerSample * smoothUpTo >= 1 ? mostStrips : 1;
    stripsPerSample_ = columnsPerSample * thinStrips_;
    startInStrips_ = time.from() * time.factor() * thinStrips_;

    const auto uvTop = static_cast<float>(uv.value(0));
    const auto condTop = static_cast<float>(cond.value(0));
    const auto uvFactor = static_cast<float>(uv.factor());
    const auto condFactor = static_cast<float>(cond.factor());
    reference_ = Lanes{uvTop, condTop, uvTop, condTop};
    factor_ = Lanes{uvFactor, condFactor, -uvFactor, -condFactor};

    penRadius_ = penRadius;
    const auto inStrips = [&](float pixels) {
        return std::min(margin / 2 - 1, static_cast<int>(pixels * static_cast<float>(thinStrips_)));
    };
    reach_ = inStrips(penRadius);
    dotReach_ = inStrips(dotRadius * penRadius);
    dashLength_ = std::max(2, static_cast<int>(std::lround(dash * penRadius)));
    dashPeriod_ = dashLength_ + std::max(1, static_cast<int>(std::lround(dashGap * penRadius)));
    // The dashes move with the run.
    const double start = std::floor(time.from() * time.factor());
    dashPhase_ = static_cast<int>(start - std::floor(start / dashPeriod_) * dashPeriod_);
    for (int i = 0; i <= reach_; ++i) {
        const float aside = static_cast<float>(i) / static_cast<float>(thinStrips_);
        pen_[i] = std::sqrt(std::max(0.0F, penRadius * penRadius - aside * aside));
    }
    grain_ = 1;
    while (static_cast<double>(grain_) * 16 * grainsInStrip * stripsPerSample_ <= 1)
        grain_ *= 16;
    const auto columns = static_cast<std::size_t>(width);
    if (covered_.size() < columns) {
        covered_.resize(columns);
        thin_.resize(columns * mostStrips + 2 * margin);
    }
}

std::pair<int, int> TraceColumns::reduce(const SampleStore &samples, int first, int end) {
    const int firstThin = first * thinStrips_ - reach_;
    const int endThin = end * thinStrips_ + reach_;
    std::fill(&thin(firstThin), &thin(endThin), Strip{});
    if (stripsPerSample_ * followUpTo >= 1)
        followLine(samples, firstThin, endThin);
    else
        sumUp(samples, firstThin, endThin);
    return thicken(first, end);
}

std::pair<int, int> TraceColumns::columnsOfNews(qint64 known, qint64 size) const {
    // The line to the first new sample starts at the last known one.
    const int reach = reach_ + dotReach_ + 1;
    const double from = (placeOf(std::max<qint64>(known - 1, 0)) - reach) / thinStrips_;
    const double to = (placeOf(size - 1) + reach) / thinStrips_;
    const double last = columns_;
    return {static_cast<int>(std::clamp(from, 0.0, last)), static_cast<int>(std::clamp(to + 1, 0.0, last))};
}

qint64 TraceColumns::firstSampleFrom(double place) const {
    const double grains =
        std::clamp((place + startInStrips_) / (stripsPerSample_ * static_cast<double>(grain_)), 0.0, 9e12);
    const auto whole = static_cast<qint64>(grains);
    return (whole + (static_cast<double>(whole) < grains)) * grain_;
}

void TraceColumns::sumUp(const SampleStore &samples, int first, int end) {
    qint64 from = std::min(firstSampleFrom(first), samples.size());
    for (int strip = first; strip < end && from < samples.size(); ++strip) {
        const qint64 to = std::clamp(firstSampleFrom(strip + 1), from, samples.size());
        if (to > from) {
            const Lanes least = samples.extent(std::max<qint64>(from - 1, 0), to).lanes;
            const Lanes greatestFirst{-least[2], -least[3], least[0], least[1]};
            thin(strip).lanes = (greatestFirst - reference_) * factor_;
        }
        from = to;
    }
}

void TraceColumns::followLine(const SampleStore &samples, int first, int end) {
    // One sample more on each side, since the line crosses the edges of the range, and those whose dots reach into it.
    qint64 number = std::max<qint64>(firstSampleFrom(first - dotReach_) - 1, 0);
    const qint64 stop = std::min(firstSampleFrom(end + dotReach_) + 1, samples.size());
    Lanes before = all(notANumber); // no line leads to the first sample
    Lanes alone = all(notANumber);  // that sample, as far as no line leads to it
    double x0 = 0;
    int strip0 = 0;
    while (number < stop) {
        const std::span<const SamplePair> stretch = samples.stretchFrom(number);
        const qint64 count = std::min(static_cast<qint64>(stretch.size()), stop - number);
        for (qint64 i = 0; i < count; ++i, ++number) {
            const Lanes value{stretch[i].uv, stretch[i].cond, stretch[i].uv, stretch[i].cond};
            const Lanes place = (value - reference_) * factor_ + value * 0; // infinities become not-a-number
            const Lanes near = place > all(farOff) ? all(farOff) : place;
            const Lanes now = near < all(-farOff) ? all(-farOff) : near;
            const double x1 = placeOf(number);
            const int strip1 = floored(x1);
            const Lanes slope = (now - before) / all(static_cast<float>(stripsPerSample_));
            // At each edge between two strips the line touches both.
            for (int edge = std::max(first, strip0 + 1); edge <= std::min(end, strip1); ++edge) {
                const Lanes there = before + slope * all(static_cast<float>(edge - x0));
                thin(edge - 1).join(there);
                thin(edge).join(there);
            }
            if (strip1 >= first && strip1 < end)
                thin(strip1).join(now);
            addDot(whereMissing(now, alone), strip0, first, end);
            alone = whereMissing(before, now);
            before = now;
            x0 = x1;
            strip0 = strip1;
        }
    }
    if (stop == samples.size())
        addDot(alone, strip0, first, end);
}

void TraceColumns::addDot(Lanes place, int strip, int first, int end) {
    if (std::isnan(place[UvTrace]) && std::isnan(place[CondTrace]))
        return;
    const float radius = dotRadius * penRadius_;
    for (int i = std::max(first, strip - dotReach_); i < std::min(end, strip + dotReach_ + 1); ++i) {
        const float aside = static_cast<float>(i - strip) / static_cast<float>(thinStrips_);
        thin(i).join(place - all(std::sqrt(std::max(0.0F, radius * radius - aside * aside))));
    }
}

std::pair<int, int> TraceColumns::thicken(int first, int end) {
    int firstChanged = end;
    int endChanged = first;
    for (int column = first; column < end; ++column) {
        Column covered = thickened(column);
        cutDash(column, covered);
        Column &before = covered_[column];
        if (!(covered == before)) {
            firstChanged = std::min(firstChanged, column);
            endChanged = column + 1;
            before = covered;
        }
    }
    return {firstChanged, endChanged};
}

TraceColumns::Column TraceColumns::thickened(int column) {
    Column covered;
    covered.count = thinStrips_;
    for (int i = 0; i < thinStrips_; ++i) {
        const Strip *middle = &thin(column * thinStrips_ + i);
        Strip &strip = covered.strips[i];
        strip.lanes = middle->lanes - all(pen_[0]);
        for (int k = 1; k <= reach_; ++k) {
            Strip aside = middle[-k];
            aside.join(middle[k].lanes);
            strip.join(aside.lanes - all(pen_[k]));
        }
    }
    return covered;
}

void TraceColumns::cutDash(int column, Column &covered) const {
    if ((column + dashPhase_) % dashPeriod_ < dashLength_)
        return;
    for (int i = 0; i < covered.count; ++i) {
        Strip &strip = covered.strips[i];
        const bool seen = strip.top(CondTrace) >= 0 && strip.bottom(CondTrace) <= height_;
        if (seen && strip.bottom(CondTrace) - strip.top(CondTrace) <= (2 + flat) * penRadius_)
            strip.lanes[CondTrace] = strip.lanes[traceCount + CondTrace] = Extent::infinity;
    }
}

bool TraceColumns::touch(int first, int end, float top, float bottom) const {
    const auto touches = [&](const Strip &strip) {
        return (strip.top(UvTrace) < bottom && strip.bottom(UvTrace) > top) ||
               (strip.top(CondTrace) < bottom && strip.bottom(CondTrace) > top);
    };
    const auto inColumn = [&](const Column &column) {
        return std::any_of(column.strips.begin(), column.strips.begin() + column.count, touches);
    };
    const auto from = covered_.begin() + std::clamp(first, 0, columns_);
    const auto to = covered_.begin() + std::clamp(end, 0, columns_);
    return std::any_of(from, std::max(from, to), inColumn);
}

std::vector<int> TraceColumns::leaves(Trace trace, bool above, int apart) const {
    std::vector<int> columns;
    bool outsideBefore = false;
    for (int column = 0; column < columns_; ++column) {
        const Strip &strip = covered_[column].strips[0];
        const float beyond = above ? -strip.top(trace) : strip.bottom(trace) - height_;
        const bool outside = beyond > 2 * penRadius_ && strip.top(trace) <= strip.bottom(trace);
        if (outside && !outsideBefore && (columns.empty() || column - columns.back() >= apart))
            columns.push_back(column);
        outsideBefore = outside;
    }
    return columns;
}

} // namespace ostrel
