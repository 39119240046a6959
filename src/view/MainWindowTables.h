// SPDX-License-Identifier: MIT
#pragma once

#include "forms/FormBuilder.h"

#include <span>

namespace ostrel {

/// The contents of the main window, row by row.
namespace MainWindowTables {

struct MenuRow {
    const char *name;
    const char *caption; ///< "-" for a separator
    const char *shortcut;
    bool enabled = true;
};

/// A menu of the menu bar with its items in order.
struct Menu {
    const char *name;
    const char *caption;
    std::span<const MenuRow> items;
};

enum class ButtonStyle { Plain, Separator, Group, Check, Placeholder };

struct ButtonRow {
    const char *key;
    const char *caption;
    const char *toolTip;
    ButtonStyle style;
    bool pressed;
    const char *image;
};

std::span<const Menu> menus();
std::span<const ButtonRow> buttons();

/// The panels under the charts, in FrameScaleAxis, and the receive light beside the tabs, in frameLeds.
std::span<const ControlRow> axisControls();
std::span<const ControlRow> ledControls();

inline constexpr int longestChartTime = 6; ///< characters that txtChartTime takes

} // namespace MainWindowTables

} // namespace ostrel
