// SPDX-License-Identifier: MIT
#pragma once

#include "reports/ReportPorts.h"
#include "view/TimeAxis.h"

namespace ostrel {

/// The time axis of the main window for the reports.
class MainZoomedTime : public ZoomedTime {
public:
    explicit MainZoomedTime(const TimeAxis &time) : time_(time) {}

    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const override {
        time_.GetZoomedTime(ZoomedTimeFrom, ZoomedTimeTo);
    }

private:
    const TimeAxis &time_;
};

} // namespace ostrel
