// SPDX-License-Identifier: MIT
#include "chart/ExportRows.h"

#include "chart/ChartData.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The first sample that stands at that time or later, in the 32-bit floats in which times are told: after some days
/// these can no longer tell each sample from its neighbours.
qint64 firstFrom(float time, qint64 samples) {
    const auto toldTime = [](qint64 sample) { return static_cast<float>(ChartData::timeOf(sample)); };
    const double near = std::clamp(time * samplesPerMinute, 0.0, static_cast<double>(samples));
    auto sample = static_cast<qint64>(near);
    while (sample > 0 && toldTime(sample - 1) >= time)
        --sample;
    while (sample < samples && toldTime(sample) < time)
        ++sample;
    return sample;
}

/// The mean of what is finite.
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
    : samples_(samples), perRow_(rate > 0 && rate < fullRate ? fullRate / static_cast<double>(rate) : 1) {
    if (shown <= 0 || !(from <= to))
        return;
    first_ = firstFrom(from, samples.size());
    end_ = firstFrom(std::nextafter(to, std::numeric_limits<float>::infinity()), samples.size());
    if (first_ >= end_) {
        first_ = end_ = 0;
        return;
    }
    const double steps = static_cast<double>(end_ - 1 - first_) / perRow_;
    const qint64 most = std::llround(steps) + 1; // further ones would have no sample
    const auto least = std::max<qint64>(static_cast<qint64>(steps), 1);
    count_ = thinned() ? std::clamp<qint64>(shown, least, most) : end_ - first_;
}

qint64 ExportRows::startOf(qint64 row) const {
    if (row == 0 || row == count_)
        return row == 0 ? first_ : end_;
    return first_ + static_cast<qint64>(std::ceil((static_cast<double>(row) - 0.5) * perRow_));
}

SamplePair ExportRows::mean(qint64 row) const {
    Mean uv;
    Mean cond;
    const qint64 end = startOf(row + 1);
    for (qint64 i = startOf(row); i < end; ++i) {
        const SamplePair sample = samples_.at(i);
        uv.add(sample.uv);
        cond.add(sample.cond);
    }
    return {uv.value(), cond.value()};
}

qint64 ExportRows::rowOf(float time) const {
    const auto sample = std::llround(static_cast<double>(time) * samplesPerMinute);
    if (count_ == 0 || sample >= end_)
        return count_;
    const double steps = static_cast<double>(std::max<qint64>(sample - first_, 0)) / perRow_;
    return std::min<qint64>(std::llround(steps), count_ - 1);
}
