// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "chart/run/Run.h"
#include "platform/Clock.h"
#include "platform/PortDirectory.h"
#include "platform/SerialControl.h"

#include <optional>

namespace ostrel {

/// Notes in a run where and when its samples came in: the instrument's system and link, each stretch that was recorded
/// without a stop, and when the computer's clock was set meanwhile. It is asked at the end of each pass of the decoder,
/// so that its dates are right to a second.
class ProvenanceKeeper {
public:
    struct Reads {
        const Identity &identity;
        const SerialControl &ComPort;
        PortDirectory &directory;
        const Clock &clock;
    };

    ProvenanceKeeper(Run &run, Reads reads) : run_(run), reads_(reads) {}

    /// Takes note of the samples that have come in since the last look. `goesOn`: the run still takes what comes in.
    void look(bool goesOn);

private:
    void takeNote(qint64 size);
    void begin(Provenance &provenance, qint64 first, const QDateTime &begun);
    void watchClock(Provenance &provenance, const QDateTime &now);

    Run &run_;
    Reads reads_;
    int number_ = -1;                       ///< of the run
    qint64 seen_ = 0;                       ///< samples
    bool open_ = false;                     ///< samples that come in go on with the last stretch
    std::chrono::milliseconds lastLook_{0}; ///< that found samples, by the clock's uptime
    std::optional<qint64> clockAhead_; ///< milliseconds of the computer's date beyond the uptime, when last in step
};

} // namespace ostrel
