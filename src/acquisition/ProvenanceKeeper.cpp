// SPDX-License-Identifier: MIT
#include "acquisition/ProvenanceKeeper.h"

#include "base/ProgramVersion.h"

#include <algorithm>
#include <cstdlib>

namespace ostrel {

namespace {

constexpr double msPerSecond = 1000;
constexpr auto sampleMs = static_cast<qint64>(sampleInterval * msPerSecond);
constexpr qint64 silenceMs = 3000;   // so long without samples the run has stood still, as in a sleep of the computer
constexpr qint64 clockStepMs = 2000; // less is the clock's own correction

} // namespace

void ProvenanceKeeper::look(bool goesOn) {
    const qint64 size = run_.data().samples.size();
    if (number_ != run_.number()) {
        number_ = run_.number();
        seen_ = 0;
        open_ = false;
    }
    if (size > seen_)
        takeNote(size);
    open_ = open_ && goesOn;
}

void ProvenanceKeeper::takeNote(qint64 size) {
    const QDateTime now = reads_.clock.now();
    const auto uptime = reads_.clock.uptime();
    // Samples that waited in a buffer while the program was busy came in without a break.
    const qint64 sinceLook = (uptime - lastLook_).count();
    const qint64 silence = sinceLook - (size - seen_) * sampleMs;
    if (silence > silenceMs)
        open_ = false;
    lastLook_ = uptime;
    Provenance &provenance = run_.provenance();
    if (!open_)
        begin(provenance, seen_, now.addMSecs(-std::min((size - 1 - seen_) * sampleMs, sinceLook)));
    watchClock(provenance, now);
    provenance.system = reads_.identity.SystemName; // the operator may name it while samples come in
    provenance.stretches.back().to = ChartData::timeOf(size - 1);
    provenance.stretches.back().ended = now;
    seen_ = size;
}

void ProvenanceKeeper::begin(Provenance &provenance, qint64 first, const QDateTime &begun) {
    if (provenance.identity.isEmpty())
        provenance.identity = Provenance::newIdentity();
    provenance.program = programVersion();
    provenance.interval = sampleInterval;
    provenance.device = reads_.directory.factsOf(reads_.ComPort.CommPort(), 0).device;
    provenance.stretches.push_back({ChartData::timeOf(first), 0, begun, {}});
    open_ = true;
    clockAhead_.reset();
}

/// The date against a clock that nobody sets.
void ProvenanceKeeper::watchClock(Provenance &provenance, const QDateTime &now) {
    const qint64 ahead = now.toMSecsSinceEpoch() - reads_.clock.uptime().count();
    const qint64 step = ahead - clockAhead_.value_or(ahead);
    if (std::abs(step) > clockStepMs)
        provenance.clockSteps.push_back({ChartData::timeOf(seen_), static_cast<double>(step) / msPerSecond});
    if (!clockAhead_ || std::abs(step) > clockStepMs)
        clockAhead_ = ahead;
}

} // namespace ostrel
