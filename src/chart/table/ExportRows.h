// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/SampleStore.h"

namespace ostrel {

/// The samples of a stretch of time as the rows of a table at an even rate, with exactly the promised number of rows.
///
/// The first row is at the first sample of the stretch, the others follow at the rate's distance. A row's values are
/// the means of the samples that are nearer to its time than to another row's, so that a peak keeps its place; the last
/// row takes the rest of the stretch up to one row's distance. Not-a-number and infinities do not count; a row without
/// any finite value has not-a-number. At the full rate, 5 points a second, the rows are the samples, bit for bit.
///
/// The promised number is rounded, so a stretch may hold one sample more, which is left out, or one less: then a row
/// has the values of the sample next to the stretch, or not-a-number where the run ends there.
class ExportRows {
public:
    static constexpr double fullRate = samplesPerMinute / 60;

    /// `from` and `to` in minutes, both included; `rate` in points a second, the full rate unless above 0 and below 5.
    /// There are `shown` rows, as promised; none when that is not above 0 or `from` is behind `to`.
    ExportRows(const SampleStore &samples, float from, float to, float rate, qint32 shown);

    qint64 count() const { return count_; }
    bool thinned() const { return perRow_ > 1; }
    double rate() const { return fullRate / perRow_; } ///< points a second
    /// Minutes times 10000.
    double tenThousandthsOf(qint64 row) const {
        return (static_cast<double>(first_) + static_cast<double>(row) * perRow_) * (1e4 / samplesPerMinute);
    }
    SamplePair values(qint64 row) const { return thinned() ? mean(row) : sample(first_ + row); }
    /// The row to which a time within the stretch belongs; count() for a time behind the last one.
    qint64 rowOf(float time) const;

private:
    static constexpr SamplePair gap = {std::numeric_limits<float>::quiet_NaN(),
                                       std::numeric_limits<float>::quiet_NaN()};

    SamplePair sample(qint64 number) const { return number < samples_.size() ? samples_.at(number) : gap; }
    SamplePair mean(qint64 row) const;
    qint64 startOf(qint64 row) const;
    qint64 endOf(qint64 row, qint64 start) const;

    const SampleStore &samples_;
    qint64 first_ = 0;  // may lie behind the run's end
    qint64 end_ = 0;    // of the samples within the stretch
    double perRow_ = 1; // samples from a row to the next
    qint64 count_ = 0;
};

} // namespace ostrel
