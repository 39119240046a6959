// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"

#include <cstdint>

namespace ostrel {

/// What the instrument tells of its run, for the recorder and, side by side, for the log. News reach no chart by
/// themselves: they leave a label or a flag waiting for the next sample.
class RunNews {
public:
    RunNews(RunState &run, const LinkState &link);

    /// The byte of an "E", "H" or "R" block. False for a byte without a meaning, which changes nothing.
    bool takeEvent(std::uint8_t value);
    bool takeHold(std::uint8_t value);
    bool takeRunStatus(std::uint8_t value);
    /// The letter of a UV block, "U" or "V": it confirms or drops a start that was announced, and tells of pauses while
    /// the instrument has not reported its state by blocks of their own.
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
