// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"

#include <optional>

namespace ostrel {

/// What the writings of a running log have promised. Each ends with a record of how much the log then held, so that a
/// damaged record is missed though nothing of its kind comes behind it.
///
/// A power cut may tear the last writing before anybody was told that it is safe. So a promise with a place in front of
/// it that was never written counts only once a later writing has begun.
class LogPromises {
public:
    void beginFile();
    /// Where a record should begin nothing was ever written.
    void passBlank() { torn_ = true; }
    /// A record other than a promise, whose payload is whole or not.
    void see(const RecordHead &record, bool isWhole);
    void promise(const RecordHead &record, const ChartCounts &counts);

    /// How much the run must hold.
    const ChartCounts &counts() const { return counts_; }
    /// The latest notes or title are missing; `otherLoss`: a record that left no trace may have held something else.
    bool lostTexts(bool otherLoss) const { return latest_.title || latest_.notes || (latest_.other && !otherLoss); }

private:
    /// Kinds of which a record is missing.
    struct Missing {
        bool title = false;
        bool notes = false;
        bool other = false; ///< or one of any kind
    };
    struct Promise {
        ChartCounts counts;
        Missing missing;
    };

    void count(const RecordHead &record);
    void keep(const Promise &promise);

    quint32 counted_ = 0; ///< records of the file so far
    int place_ = 0;       ///< of the last one in the order of a writing
    bool torn_ = false;   ///< zeros were where a record should begin, since the last promise
    Missing writing_;     ///< in the present writing
    Missing latest_;
    std::optional<Promise> open_; ///< that does not count yet
    ChartCounts counts_;
};

} // namespace ostrel
