// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "forms/Controls.h"

#include <array>

namespace ostrel {

/// The bar under each tab's chart, which moves a time window along the run. Bars count whole minutes of 16 bits.
class ScrollBars {
public:
    explicit ScrollBars(const std::array<ScrollEntry *, tabCount> &bars) : bars_(bars) {}

    ScrollEntry &operator[](int tab) const { return *bars_[tab]; }

    /// As at the start of the program, for a run without data.
    void setUp(int tab) const;
    /// For a run up to `lastTime` and a window of `span` minutes: range, steps and place. A range or a place beyond 16
    /// bits leaves that as it was.
    void fit(int tab, float lastTime, float span, qint32 Value) const;
    /// The range without a floor at 0, and the end of the data: after a run shorter than the window the bar's end lies
    /// below its beginning. Raises overflow (6) for a run beyond 16-bit minutes.
    void toEnd(int tab, float lastTime, double span) const;
    /// Gives a bar the end and the steps of another.
    void takeRange(int tab, int from) const;
    /// At its beginning and out of use.
    void reset(int tab) const;

private:
    std::array<ScrollEntry *, tabCount> bars_;
};

} // namespace ostrel
