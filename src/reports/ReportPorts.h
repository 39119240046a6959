// SPDX-License-Identifier: MIT
#pragma once

#include "chart/Quillchart.h"

#include <functional>

namespace ostrel {

/// The window above the reports, as far as they use it.

/// The chart of the tab in front.
using ChartInFront = std::function<Quillchart &()>;

/// The time axis of the tab in front.
class ZoomedTime {
public:
    virtual ~ZoomedTime() = default;

    /// The stretch that is shown, in minutes; it may reach beyond the data.
    virtual void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const = 0;
};

} // namespace ostrel
