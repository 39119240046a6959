// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "chart/run/Run.h"
#include "forms/Controls.h"

#include <array>

namespace ostrel {

/// The controls of the main window, grouped by the units that use them. The window owns them all.

using Charts = std::array<Run *, chartInstances>;

/// The two value axes; index 0 is UV, 1 conductivity.
struct AxisControls {
    std::array<ComboEntry *, 2> cmbYAxis{};
    std::array<TextEntry *, 2> txtYAxisMin{};
    std::array<CommandButton *, 2> cmdSet{};
};

/// The time axis.
struct TimeControls {
    std::array<OptionButton *, 2> optTimeAxis{}; ///< "Full View", "Window:"
    TextEntry *txtChartTime = nullptr;
    CommandButton *cmdSetTime = nullptr;
};

} // namespace ostrel
