// SPDX-License-Identifier: MIT
#include "simulator/Replay.h"

namespace ostrel {

namespace {

constexpr qsizetype bytesPerTick = 12;

} // namespace

std::optional<LineTick> Replay::next() {
    if (sent_ >= stream_.size())
        return std::nullopt;
    LineTick tick{true, stream_.mid(sent_, bytesPerTick)};
    sent_ += tick.bytes.size();
    return tick;
}

} // namespace ostrel
