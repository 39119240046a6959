// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/Prompts.h"
#include "view/MainControls.h"
#include "view/NumericKeys.h"

namespace ostrel {

/// The two panels for the value axes of the chart in front, each with a full scale, a minimum and a Set button. Index 0
/// is UV in AU, 1 conductivity in mS/cm. Values that are set go to the chart and to its ChartViews.
class AxisPanels {
public:
    AxisPanels(TabStates &tabs, const Charts &charts, const AxisControls &controls, TextEntry &txtChartTime,
               const NumericKeys &keys, Prompts &prompts);

    /// Connects the controls to the handlers below.
    void attach();

    /// Fills both lists and picks their first items, which gives the chart in front the default axes.
    void FillAxisLists();
    /// The text of the entry differs from its state. `Which` is 0 and 1 for the full scales, 2 and 3 for the minimums.
    bool AxisEntryChanged(int Which) const;
    /// Writes the state of the chart in front into both entries of a panel.
    void showState(int Index);

    void cmdSet_Click(int Index);
    void cmbYAxis_Change(int Index);
    void cmbYAxis_Click(int Index);
    int cmbYAxis_KeyPress(int Index, int KeyAscii);
    void txtYAxisMin_Change(int Index);
    void txtYAxisMin_GotFocus(int Index);
    int txtYAxisMin_KeyPress(int Index, int KeyAscii);

private:
    /// The value, limited to the range; beeps when it was outside.
    double limited(double value, double lowest, double highest);
    void apply(int Index, float fullScale, float minimum);

    TabStates &tabs_;
    const Charts &charts_;
    AxisControls controls_;
    TextEntry &txtChartTime_;
    const NumericKeys &keys_;
    Prompts &prompts_;
};

} // namespace ostrel
