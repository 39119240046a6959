// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Scale.h"

#include <cstddef>
#include <vector>

namespace ostrel {

/// The zooms that lead to the axes shown, to go back one by one.
class ZoomHistory {
public:
    /// Steps of one kind, other than rectangles, count as one zoom while they follow each other.
    enum class Step { Rectangle, Pan, Scale };

    bool empty() const { return before_.empty(); }
    std::size_t count() const { return before_.size(); }
    /// The axes from before the first zoom. Needs one.
    const AxisValues &first() const { return before_.front(); }
    /// There are other axes now than these. Of very many zooms the earliest are forgotten, except the first.
    void leave(const AxisValues &shown, Step step);
    /// The axes from before the last zoom, which is taken back. Needs one.
    AxisValues back();
    void clear() { before_.clear(); }

private:
    std::vector<AxisValues> before_;
    Step last_ = Step::Rectangle;
};

} // namespace ostrel
