// SPDX-License-Identifier: MIT
#include "chart/files/LogPromises.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace ostrel {

namespace {

// The order within a flush. A kind without anything new is left out; the promise is always written.
constexpr std::array order{samplesRecord, marksRecord,      methodRecord, titleRecord,
                           notesRecord,   provenanceRecord, endRecord};
constexpr int titlePlace = 3;
constexpr int notesPlace = 4;
constexpr int provenancePlace = 5;
constexpr int beforeFirst = -1;

constexpr unsigned everyKind = (1U << order.size()) - 1;

/// Behind the one and before the other.
unsigned kindsBetween(int first, int second) {
    unsigned kinds = 0;
    for (int place = first + 1; place < second; ++place)
        kinds |= 1U << place;
    return kinds;
}

int placeOf(quint32 kind) { return static_cast<int>(std::find(order.begin(), order.end(), kind) - order.begin()); }

} // namespace

void LogPromises::beginFile() {
    counted_ = 0;
    place_ = beforeFirst;
}

void LogPromises::see(const RecordHead &record, bool isWhole) {
    count(record);
    if (record.kind == titleRecord)
        (isWhole ? latest_ : writing_).title = !isWhole;
    else if (record.kind == notesRecord)
        (isWhole ? latest_ : writing_).notes = !isWhole;
    else if (record.kind == provenanceRecord)
        (isWhole ? latest_ : writing_).provenance = !isWhole;
}

void LogPromises::promise(const RecordHead &record, const ChartCounts &counts) {
    count(record);
    place_ = beforeFirst;
    const Promise promise{counts, std::exchange(writing_, {})};
    if (std::exchange(torn_, false))
        open_ = promise;
    else
        keep(promise);
}

/// A record follows, so an open promise counts. Infers the kind of a missing record from those before and behind it.
/// One record missing where a new flush begins was the promise of the flush before, which is no loss.
void LogPromises::count(const RecordHead &record) {
    if (open_)
        keep(*std::exchange(open_, {}));
    const quint32 missing = record.number - std::min(counted_, record.number);
    const int place = placeOf(record.kind);
    const bool isNextWriting = place <= place_;
    hasProvenance_ |= record.kind == provenanceRecord;
    if (missing > 1 || (missing == 1 && !isNextWriting))
        noteMissing(isNextWriting ? everyKind : kindsBetween(place_, place));
    counted_ = record.number + 1;
    place_ = place;
}

/// `kinds`: what may be missing, a bit for each place in the order. A log without provenance is not taken to miss it
/// unless it can be nothing else.
void LogPromises::noteMissing(unsigned kinds) {
    constexpr unsigned provenance = 1U << provenancePlace;
    constexpr unsigned texts = 1U << titlePlace | 1U << notesPlace | provenance;
    if (!hasProvenance_ && kinds != provenance)
        kinds &= ~provenance;
    if (std::has_single_bit(kinds)) {
        writing_.title |= kinds == 1U << titlePlace;
        writing_.notes |= kinds == 1U << notesPlace;
        writing_.provenance |= kinds == provenance;
    } else {
        writing_.other |= (kinds & texts) != 0;
    }
}

void LogPromises::keep(const Promise &promise) {
    counts_ = {std::max(counts_.samples, promise.counts.samples), std::max(counts_.marks, promise.counts.marks),
               std::max(counts_.methodTexts, promise.counts.methodTexts)};
    latest_.title |= promise.missing.title;
    latest_.notes |= promise.missing.notes;
    latest_.provenance |= promise.missing.provenance;
    latest_.other |= promise.missing.other;
}

} // namespace ostrel
