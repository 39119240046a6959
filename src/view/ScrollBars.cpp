// SPDX-License-Identifier: MIT
#include "view/ScrollBars.h"

#include "base/Numbers.h"
#include "base/Steps.h"

#include <algorithm>

namespace ostrel {

void ScrollBars::setUp(int tab) const {
    ScrollEntry &B = *bars_[tab];
    B.setSmallChange(1);
    B.setLargeChange(10);
    B.setMax(0);
}

void ScrollBars::fit(int tab, float lastTime, float span, qint32 Value) const {
    ScrollEntry &B = *bars_[tab];
    skippingErrors([&] { B.setMax(rounded16(lastTime + 0.5 - span)); },
                   [&] {
                       if (B.Max() < 0)
                           B.setMax(0);
                   },
                   [&] { B.setValue(Value); },
                   [&] {
                       // A click in the trough moves one window, an arrow a tenth of one.
                       const int minutes = rounded16(span);
                       B.setLargeChange(std::max(minutes, 1));
                       B.setSmallChange(minutes >= 1 ? std::max<int>(rounded16(span / 10), 1) : 1);
                   });
}

void ScrollBars::toEnd(int tab, float lastTime, double span) const {
    ScrollEntry &B = *bars_[tab];
    B.setMax(rounded16(lastTime + 0.5 - span));
    B.setValue(B.Max());
}

void ScrollBars::takeRange(int tab, int from) const {
    bars_[tab]->setMax(bars_[from]->Max());
    bars_[tab]->setSmallChange(bars_[from]->SmallChange());
    bars_[tab]->setLargeChange(bars_[from]->LargeChange());
}

void ScrollBars::reset(int tab) const {
    bars_[tab]->setValue(0);
    bars_[tab]->setEnabled(false);
}

} // namespace ostrel
