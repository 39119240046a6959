// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// The numbers of the help's topics, by which Ostrel.hlp finds the pages. There is no 7.
namespace HelpContext {

inline constexpr int Index = 0;
inline constexpr int Introduction = 1; ///< the main window's
inline constexpr int Export = 2;
inline constexpr int Method = 3;
inline constexpr int Notes = 4;
inline constexpr int Print = 5;
inline constexpr int ComPort = 6;
inline constexpr int SaveData = 8;
inline constexpr int SaveSelected = 9;
inline constexpr int Open = 10;
inline constexpr int SaveLog = 11;
inline constexpr int Recovery = 12;
inline constexpr int SystemName = 13;
inline constexpr int Trouble = 14;
inline constexpr int Messages = 15;
inline constexpr int Exit = 16;
inline constexpr int Axes = 17;

/// The dynamic property of a window or a control that holds its topic.
inline constexpr char property[] = "HelpContextID";

} // namespace HelpContext

} // namespace ostrel
