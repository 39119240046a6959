// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"

#include <optional>

namespace ostrel {

/// Finds what is missing in a running log. Each flush ends with a promise: a record of how much the log then held. So a
/// missing record is noticed even when nothing of its kind comes behind it.
///
/// A power cut may leave the last flush half-written, before anybody was told that it is safe. So a promise counts only
/// when another record follows it, if there were zeros in front of it where a record should begin.
class LogPromises {
public:
    void beginFile();
    /// There are zeros where a record should begin: nothing was ever written there.
    void passBlank() { torn_ = true; }
    /// Takes a record other than a promise; `isWhole`: its payload is intact.
    void see(const RecordHead &record, bool isWhole);
    void promise(const RecordHead &record, const ChartCounts &counts);

    /// How much the run must hold at least.
    const ChartCounts &counts() const { return counts_; }
    /// The latest notes, title or provenance are missing. With `otherLoss` a missing record of unknown kind counts as
    /// that loss.
    bool lostTexts(bool otherLoss) const {
        return latest_.title || latest_.notes || latest_.provenance || (latest_.other && !otherLoss);
    }

private:
    /// The kinds of which a record is missing.
    struct Missing {
        bool title = false;
        bool notes = false;
        bool provenance = false;
        bool other = false; ///< a record of unknown kind, perhaps one of these
    };
    struct Promise {
        ChartCounts counts;
        Missing missing;
    };

    void count(const RecordHead &record);
    void noteMissing(unsigned kinds);
    void keep(const Promise &promise);

    quint32 counted_ = 0;        ///< records of the file so far
    int place_ = 0;              ///< of the last record's kind in the order of a flush
    bool hasProvenance_ = false; ///< a record of it has been seen
    bool torn_ = false;          ///< since the last promise there were zeros where a record should begin
    Missing writing_;            ///< in the present flush
    Missing latest_;
    std::optional<Promise> open_; ///< does not count yet
    ChartCounts counts_;
};

} // namespace ostrel
