// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"

#include <cstdint>

namespace ostrel {

/// Takes the instrument's reports on its run, for the recorder and, side by side, for the log. A report adds nothing to
/// a chart: it sets flags of the run, or a label that waits for the next sample.
class RunNews {
public:
    RunNews(RunState &run, const LinkState &link);

    /// Take the byte of an "E", "H" or "R" block. False for an unknown byte, which changes nothing.
    bool takeEvent(std::uint8_t value);
    bool takeHold(std::uint8_t value);
    bool takeRunStatus(std::uint8_t value);
    /// Takes the letter of a UV block, "U" or "V". It confirms or drops a start that was announced. It also shows
    /// pauses, as long as the instrument has not reported its state by status blocks.
    void takeUvLetter(std::uint8_t type);

private:
    bool takeLabel(std::uint8_t block, std::uint8_t value);
    void takeStart();
    void takeEnd();
    void takeRunning();
    void startChartRun();
    void startLogRun();
    void TrackLogRunFromUv(std::uint8_t type);

    RunState &run_;
    const LinkState &link_;
};

} // namespace ostrel
