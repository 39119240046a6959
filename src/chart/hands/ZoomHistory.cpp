// SPDX-License-Identifier: MIT
#include "chart/hands/ZoomHistory.h"

namespace ostrel {

namespace {

constexpr std::size_t mostZooms = 100;

} // namespace

void ZoomHistory::leave(const AxisValues &shown, Step step) {
    if (step != Step::Rectangle && step == last_ && !empty())
        return;
    last_ = step;
    before_.push_back(shown);
    if (before_.size() > mostZooms)
        before_.erase(before_.begin() + 1);
}

AxisValues ZoomHistory::back() {
    const AxisValues axes = before_.back();
    before_.pop_back();
    last_ = Step::Rectangle;
    return axes;
}

} // namespace ostrel
