// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ostrel {

/// The instrument's stream: 9600 baud, 8N1, one way. Every block is a sync byte, a type letter and a body.
namespace StreamFormat {

inline constexpr std::uint8_t SyncByte = 0x96;

// clang-format off
enum BlockType : std::uint8_t {
    //                letter    length with sync and letter   body
    CondSample      = 'C',   // 6                             conductivity in mS/cm, single precision, high byte first
    CondSampleD     = 'D',   // 6                             the same
    EventBlock      = 'E',   // 3                             an Event
    FBlock          = 'F',   // 6                             four bytes without use here
    HoldBlock       = 'H',   // 3                             a Hold
    MethodBlock     = 'M',   // open                          characters, closed by a sync byte of its own
    PenStatusBlock  = 'P',   // 3                             a PenStatus
    RunStatusBlock  = 'R',   // 3                             a RunStatus
    UvSample        = 'U',   // 6                             UV in AU, single precision, while no run advances
    UvSampleInRun   = 'V',   // 6                             the same, while a run advances
};
// clang-format on

enum Event : std::uint8_t { NumberedEvent = 2, EndOfRun = 3, StartOfRun = 4, LabelM = 8 };
enum Hold : std::uint8_t { HoldOn = 1, ContinueRun = 2 };
enum PenStatus : std::uint8_t { PenOff = 0, PenOn = 1 };
enum RunStatus : std::uint8_t { RunEnded = 0, Running = 1, RunPaused = 2, RunHold = 3 };

inline constexpr int samplesPerSecond = 5;
inline constexpr int baudRate = 9600;

} // namespace StreamFormat

} // namespace ostrel
