// SPDX-License-Identifier: MIT
#pragma once

#include "chart/SampleStore.h"

/// The samples of a stretch of time as the rows of a table at an even, lower rate.
///
/// The first row stands on the first sample of the stretch, the others follow at the rate's distance. A row's values
/// are the means of the samples that lie nearer to its time than to the next row's, so that a peak keeps its place; the
/// last row takes all to the stretch's end. Not-a-number and infinities do not count; a row without any finite value
/// has not-a-number. At the full rate, 5 points a second, the rows are the samples, bit for bit.
class ExportRows {
public:
    static constexpr double fullRate = samplesPerMinute / 60;

    /// From and to in minutes, both included; the rate in points a second, any but 0 to 5 counting as the full rate.
    /// `shown` is the number of rows that was promised: it is kept, but at the full rate no sample is left out.
    ExportRows(const SampleStore &samples, float from, float to, float rate, qint32 shown);

    qint64 count() const { return count_; }
    bool thinned() const { return perRow_ > 1; }
    double rate() const { return fullRate / perRow_; } ///< points a second
    /// Minutes times 10000.
    double tenThousandthsOf(qint64 row) const {
        return (static_cast<double>(first_) + static_cast<double>(row) * perRow_) * (1e4 / samplesPerMinute);
    }
    SamplePair values(qint64 row) const { return thinned() ? mean(row) : samples_.at(first_ + row); }
    /// The row to which a time within the stretch belongs; count() behind the last sample.
    qint64 rowOf(float time) const;

private:
    SamplePair mean(qint64 row) const;
    qint64 startOf(qint64 row) const;

    const SampleStore &samples_;
    qint64 first_ = 0;
    qint64 end_ = 0;
    double perRow_ = 1; // samples from a row to the next
    qint64 count_ = 0;
};
