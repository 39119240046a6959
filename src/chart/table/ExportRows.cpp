// SPDX-License-Identifier: MIT
#include "chart/table/ExportRows.h"

#include "chart/run/ChartData.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrel {

namespace {

constexpr double farthest = 2147483648.0; // in samples, 13 years: no run is so long

/// The time of a sample as a 32-bit float, like all given times: after three weeks some samples have the same one.
float toldTime(qint64 sample) { return static_cast<float>(ChartData::timeOf(sample)); }

/// The first sample at that time or later, whether the run has it or not.
qint64 firstFrom(float time) {
    auto sample = static_cast<qint64>(std::clamp(time * samplesPerMinute, 0.0, farthest));
    while (sample > 0 && toldTime(sample - 1) >= time)
        --sample;
    while (static_cast<double>(sample) < farthest && toldTime(sample) < time)
        ++sample;
    return sample;
}

/// The mean of the finite values.
class Mean {
public:
    void add(float value) {
        if (!std::isfinite(value))
            return;
        sum_ += value;
        ++count_;
    }
    float value() const {
        return count_ == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(sum_ / count_);
    }

private:
    double sum_ = 0;
    int count_ = 0;
};

} // namespace

ExportRows::ExportRows(const SampleStore &samples, float from, float to, float rate, qint32 shown)
    : samples_(samples),
      perRow_(rate > 0 && rate < fullRate ? std::min(fullRate / static_cast<double>(rate), farthest) : 1) {
    if (shown <= 0 || !(from <= to))
        return;
    count_ = shown;
    first_ = firstFrom(from);
    end_ = std::min(firstFrom(std::nextafter(to, std::numeric_limits<float>::infinity())), samples.size());
    // When the run ends before the last row's sample, the stretch begins one sample earlier.
    if (first_ > 0 && startOf(count_ - 1) == samples.size())
        --first_;
}

qint64 ExportRows::startOf(qint64 row) const {
    return row == 0 ? first_ : first_ + static_cast<qint64>(std::ceil((static_cast<double>(row) - 0.5) * perRow_));
}

qint64 ExportRows::endOf(qint64 row, qint64 start) const {
    const qint64 end = startOf(row + 1);
    if (start >= end_)
        return std::min(end, samples_.size());
    const bool takesTheRest = row == count_ - 1 && static_cast<double>(end_ - end) < perRow_;
    return takesTheRest ? end_ : std::min(end, end_);
}

SamplePair ExportRows::mean(qint64 row) const {
    Mean uv;
    Mean cond;
    const qint64 start = startOf(row);
    const qint64 end = endOf(row, start);
    for (qint64 i = start; i < end; ++i) {
        const SamplePair sample = samples_.at(i);
        uv.add(sample.uv);
        cond.add(sample.cond);
    }
    return {uv.value(), cond.value()};
}

qint64 ExportRows::rowOf(float time) const {
    if (count_ == 0)
        return 0;
    const auto sample = std::llround(std::clamp(static_cast<double>(time) * samplesPerMinute, 0.0, farthest));
    const qint64 row = std::llround(static_cast<double>(std::max<qint64>(sample - first_, 0)) / perRow_);
    if (row < count_)
        return row;
    // The promised number may leave out the last sample of the stretch, whose marks then belong to the last row.
    const bool leftOut = row <= count_ + 1 && first_ < end_ && time <= toldTime(end_ - 1);
    return leftOut ? count_ - 1 : count_;
}

} // namespace ostrel
