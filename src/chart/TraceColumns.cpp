// SPDX-License-Identifier: MIT
#include "chart/TraceColumns.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double smoothUpTo = 128; // samples in a column; with more of them the strips would not show
constexpr double followUpTo = 2;   // samples in a strip; with fewer the line between them is followed
constexpr float farOff = 1e8F;     // pixels; keeps sums finite and changes nothing that is seen
constexpr float infinity = Extent::infinity;

qint64 ceiling(double value) {
    const auto whole = static_cast<qint64>(value);
    return whole + (static_cast<double>(whole) < value);
}

} // namespace

void TraceColumns::setPlot(const AxisValues &axes, int width, int height, float penRadius) {
    const Scale time(axes.timeMin, axes.timeMax, 0, width);
    const Scale uv(axes.uvMin, axes.uvMax, height, 0);
    const Scale cond(axes.condMin, axes.condMax, height, 0);
    const double columnsPerSample = time.factor() / samplesPerMinute;

    columns_ = width;
    strips_ = columnsPerSample * smoothUpTo >= 1 ? finest : 1;
    stripsPerSample_ = columnsPerSample * strips_;
    startInStrips_ = time.from() * time.factor() * strips_;

    const auto uvTop = static_cast<float>(uv.value(0));
    const auto condTop = static_cast<float>(cond.value(0));
    const auto uvFactor = static_cast<float>(uv.factor());
    const auto condFactor = static_cast<float>(cond.factor());
    reference_ = Lanes{uvTop, condTop, -uvTop, -condTop};
    factor_ = Lanes{uvFactor, condFactor, -uvFactor, -condFactor};

    reach_ = std::min(margin - 1, static_cast<int>(penRadius * static_cast<float>(strips_)));
    for (int i = 0; i <= reach_; ++i) {
        const float aside = static_cast<float>(i) / static_cast<float>(strips_);
        pen_[i] = std::sqrt(std::max(0.0F, penRadius * penRadius - aside * aside));
    }

    const std::size_t most = static_cast<std::size_t>(width) * finest;
    for (const auto trace : {UvTrace, CondTrace}) {
        if (covered_[trace].tops.size() >= most)
            continue;
        covered_[trace] = {std::vector<float>(most, infinity), std::vector<float>(most, -infinity)};
        thin_[trace] = {std::vector<float>(most + 2 * margin), std::vector<float>(most + 2 * margin)};
    }
}

void TraceColumns::reduce(const SampleStore &samples, int first, int end) {
    const int firstStrip = first * strips_;
    const int endStrip = end * strips_;
    clear(firstStrip - reach_, endStrip + reach_);
    if (stripsPerSample_ * followUpTo >= 1)
        followLine(samples, firstStrip - reach_, endStrip + reach_);
    else
        sumUp(samples, firstStrip - reach_, endStrip + reach_);
    for (const auto trace : {UvTrace, CondTrace})
        thicken(thin_[trace], covered_[trace], firstStrip, endStrip);
}

std::pair<int, int> TraceColumns::columnsOfNews(qint64 known, qint64 size) const {
    // The line to the first new sample starts at the last known one.
    const double from = (placeOf(std::max<qint64>(known - 1, 0)) - reach_ - 1) / strips_;
    const double to = (placeOf(size - 1) + reach_ + 1) / strips_;
    const double last = columns_;
    return {static_cast<int>(std::floor(std::clamp(from, 0.0, last))),
            static_cast<int>(std::floor(std::clamp(to + 1, 0.0, last)))};
}

qint64 TraceColumns::sampleAt(double place) const {
    const double sample = (place + startInStrips_) / stripsPerSample_;
    return ceiling(std::clamp(sample, -2.0, 9e15));
}

void TraceColumns::clear(int first, int end) {
    for (Strips &strips : thin_) {
        std::fill(strips.tops.begin() + first + margin, strips.tops.begin() + end + margin, infinity);
        std::fill(strips.bottoms.begin() + first + margin, strips.bottoms.begin() + end + margin, -infinity);
    }
}

void TraceColumns::sumUp(const SampleStore &samples, int first, int end) {
    qint64 from = std::clamp<qint64>(sampleAt(first), 0, samples.size());
    for (int strip = first; strip < end && from < samples.size(); ++strip) {
        const qint64 to = std::clamp<qint64>(sampleAt(strip + 1), from, samples.size());
        if (to > from) {
            const Extent extent = samples.extent(std::max<qint64>(from - 1, 0), to);
            const Lanes places = (extent.lanes - reference_) * factor_;
            const int i = strip + margin;
            thin_[UvTrace].bottoms[i] = places[0];
            thin_[CondTrace].bottoms[i] = places[1];
            thin_[UvTrace].tops[i] = places[2];
            thin_[CondTrace].tops[i] = places[3];
        }
        from = to;
    }
}

void TraceColumns::followLine(const SampleStore &samples, int first, int end) {
    // One sample more on either side, since the line crosses the edges of the stretch.
    qint64 number = std::clamp<qint64>(sampleAt(first) - 1, 0, samples.size());
    const qint64 stop = std::clamp<qint64>(sampleAt(end) + 1, 0, samples.size());
    std::array<float, traceCount> before{infinity, infinity};
    while (number < stop) {
        const std::span<const SamplePair> stretch = samples.stretchFrom(number);
        const auto count = std::min<qint64>(static_cast<qint64>(stretch.size()), stop - number);
        for (qint64 i = 0; i < count; ++i, ++number) {
            const double x = placeOf(number);
            const std::array<float, traceCount> values{stretch[i].uv, stretch[i].cond};
            for (const auto trace : {UvTrace, CondTrace}) {
                const float place = (values[trace] - reference_[trace]) * factor_[trace];
                const bool finite = std::isfinite(values[trace]);
                const float now = finite ? std::clamp(place, -farOff, farOff) : infinity;
                if (finite && before[trace] != infinity)
                    addSegment(trace, x - stripsPerSample_, before[trace], x, now, first, end);
                else if (finite && x >= first && x < end)
                    extend(trace, static_cast<int>(std::floor(x)), now); // a lone sample is a dot
                before[trace] = now;
            }
        }
    }
}

void TraceColumns::addSegment(Trace trace, double x0, float y0, double x1, float y1, int first, int end) {
    const auto slope = static_cast<float>((y1 - y0) / (x1 - x0));
    const int from = std::max(first, static_cast<int>(std::floor(x0)));
    const int to = std::min(end - 1, static_cast<int>(std::floor(x1)));
    float place = from > x0 ? y0 + static_cast<float>(from - x0) * slope : y0;
    for (int strip = from; strip <= to; ++strip) {
        extend(trace, strip, place);
        place = strip + 1 < x1 ? y0 + static_cast<float>(strip + 1 - x0) * slope : y1;
        extend(trace, strip, place);
    }
}

void TraceColumns::extend(Trace trace, int strip, float place) {
    float &top = thin_[trace].tops[strip + margin];
    float &bottom = thin_[trace].bottoms[strip + margin];
    top = place < top ? place : top;
    bottom = place > bottom ? place : bottom;
}

void TraceColumns::thicken(Strips &thin, Strips &covered, int first, int end) const {
    const float *tops = thin.tops.data() + margin;
    const float *bottoms = thin.bottoms.data() + margin;
    for (int strip = first; strip < end; ++strip) {
        covered.tops[strip] = tops[strip] - pen_[0];
        covered.bottoms[strip] = bottoms[strip] + pen_[0];
    }
    for (int i = 1; i <= reach_; ++i) {
        const float pen = pen_[i];
        for (int strip = first; strip < end; ++strip) {
            const float top = std::min(tops[strip - i], tops[strip + i]) - pen;
            const float bottom = std::max(bottoms[strip - i], bottoms[strip + i]) + pen;
            covered.tops[strip] = std::min(covered.tops[strip], top);
            covered.bottoms[strip] = std::max(covered.bottoms[strip], bottom);
        }
    }
}
