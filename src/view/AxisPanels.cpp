// SPDX-License-Identifier: MIT
#include "view/AxisPanels.h"

#include "base/HelpContexts.h"
#include "base/Numbers.h"

#include <QLatin1String>

#include <span>

namespace ostrel {

namespace {

struct Axis {
    float ChartViewState::*max;
    float ChartViewState::*min;
    void (Run::*setMax)(float);
    void (Run::*setMin)(float);
};

struct Panel {
    int decimals;
    std::span<const double> fullScales;
    double lowestFullScale, highestFullScale;
    double lowestMinimum, highestMinimum;
    double gap;
    double minimumOfPick; // as a multiple of the picked full scale
    bool negativeMinimum;
    Axis axis;
    QLatin1String gapMessage;
};

// clang-format off
constexpr double uvScales[] = {2, 1, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001};
constexpr double condScales[] = {500, 200, 100, 50, 20, 10, 5, 2, 1, 0.5};

constexpr Panel panels[] = {
    // decimals list      full scale     minimum       gap    pick  minus
    {3, uvScales,         0.001,   2.0,  -2.0, 1.999,  0.001, -0.1, true,
     {&ChartViewState::UvMax, &ChartViewState::UvMin, &Run::setUvAxisMax, &Run::setUvAxisMin},
     QLatin1String("The UV Axis Full Scale (AUFS) entry must be at least 0.001 AU greater than the UV Axis Minimum "
                   "entry.")},
    {1, condScales,       0.5,   500.0,   0.0, 499.5,  0.5,    0.0, false,
     {&ChartViewState::CondMax, &ChartViewState::CondMin, &Run::setCondAxisMax, &Run::setCondAxisMin},
     QLatin1String("The Conductivity Axis Full Scale (mSFS) entry must be at least 0.5 mS/cm greater than the "
                   "Conductivity Axis Minimum entry.")},
};
// clang-format on

constexpr int panelCount = std::size(panels);
constexpr double gapTolerance = 0.000000001;
constexpr double startWindowMinutes = 10.0;

} // namespace

AxisPanels::AxisPanels(TabStates &tabs, const Charts &charts, const AxisControls &controls, TextEntry &txtChartTime,
                       const NumericKeys &keys, Prompts &prompts)
    : tabs_(tabs), charts_(charts), controls_(controls), txtChartTime_(txtChartTime), keys_(keys), prompts_(prompts) {}

void AxisPanels::attach() {
    for (int i = 0; i < panelCount; ++i) {
        controls_.cmbYAxis[i]->Change = [this, i] { cmbYAxis_Change(i); };
        controls_.cmbYAxis[i]->Click = [this, i] { cmbYAxis_Click(i); };
        controls_.cmbYAxis[i]->KeyPress = [this, i](int KeyAscii) { return cmbYAxis_KeyPress(i, KeyAscii); };
        controls_.txtYAxisMin[i]->Change = [this, i] { txtYAxisMin_Change(i); };
        controls_.txtYAxisMin[i]->GotFocus = [this, i] { txtYAxisMin_GotFocus(i); };
        controls_.txtYAxisMin[i]->KeyPress = [this, i](int KeyAscii) { return txtYAxisMin_KeyPress(i, KeyAscii); };
        controls_.cmdSet[i]->Click = [this, i] { cmdSet_Click(i); };
    }
}

void AxisPanels::FillAxisLists() {
    for (int i = 0; i < panelCount; ++i) {
        controls_.cmbYAxis[i]->clear();
        for (const double fullScale : panels[i].fullScales)
            controls_.cmbYAxis[i]->addItemQuietly(fixedNumber(fullScale, panels[i].decimals));
    }
    for (ComboEntry *cmbYAxis : controls_.cmbYAxis)
        cmbYAxis->setListIndex(0);
    txtChartTime_.setText(fixedNumber(startWindowMinutes, 1));
}

bool AxisPanels::AxisEntryChanged(int Which) const {
    if (Which < 0 || Which >= 2 * panelCount)
        return false;
    const int index = Which % panelCount;
    const bool ofFullScale = Which < panelCount;
    const EntryText &entry =
        ofFullScale ? static_cast<const EntryText &>(*controls_.cmbYAxis[index]) : *controls_.txtYAxisMin[index];
    const Axis &axis = panels[index].axis;
    const float state = tabs_.currentView().*(ofFullScale ? axis.max : axis.min);
    return entry.Text() != fixedNumber(state, panels[index].decimals);
}

void AxisPanels::showState(int Index) {
    const Panel &panel = panels[Index];
    const ChartViewState &view = tabs_.currentView();
    controls_.cmbYAxis[Index]->setText(fixedNumber(view.*panel.axis.max, panel.decimals));
    controls_.txtYAxisMin[Index]->setText(fixedNumber(view.*panel.axis.min, panel.decimals));
}

void AxisPanels::cmdSet_Click(int Index) {
    const Panel &panel = panels[Index];
    ComboEntry &cmbYAxis = *controls_.cmbYAxis[Index];
    TextEntry &txtYAxisMin = *controls_.txtYAxisMin[Index];

    double fullScale = entryValue(cmbYAxis);
    double minimum = entryValue(txtYAxisMin);
    if (fullScale - minimum < panel.gap - gapTolerance) {
        prompts_.show({.text = panel.gapMessage, .icon = BoxIcon::Exclamation, .HelpContextID = HelpContext::Axes});
        showState(Index);
        return;
    }
    fullScale = limited(fullScale, panel.lowestFullScale, panel.highestFullScale);
    minimum = limited(minimum, panel.lowestMinimum, panel.highestMinimum);

    // The chart gets what the operator sees: the rounded values, read back from the entries.
    cmbYAxis.setText(fixedNumber(fullScale, panel.decimals));
    txtYAxisMin.setText(fixedNumber(minimum, panel.decimals));
    apply(Index, static_cast<float>(entryValue(cmbYAxis)), static_cast<float>(entryValue(txtYAxisMin)));
    controls_.cmdSet[Index]->setEnabled(false);
}

double AxisPanels::limited(double value, double lowest, double highest) {
    if (value >= lowest && value <= highest)
        return value;
    prompts_.beep();
    return value < lowest ? lowest : highest;
}

void AxisPanels::apply(int Index, float fullScale, float minimum) {
    const Axis &axis = panels[Index].axis;
    Run &chart = *charts_[tabs_.CurrentChart];
    (chart.*axis.setMax)(fullScale);
    (chart.*axis.setMin)(minimum);
    tabs_.currentView().*axis.max = fullScale;
    tabs_.currentView().*axis.min = minimum;
    chart.Redraw();
}

// Only the entry changed last decides: back at its state it disables the button, even if the other entry differs.
void AxisPanels::cmbYAxis_Change(int Index) { controls_.cmdSet[Index]->setEnabled(AxisEntryChanged(Index)); }

void AxisPanels::txtYAxisMin_Change(int Index) {
    controls_.cmdSet[Index]->setEnabled(AxisEntryChanged(Index + panelCount));
}

void AxisPanels::cmbYAxis_Click(int Index) {
    const Panel &panel = panels[Index];
    const double minimum = entryValue(*controls_.cmbYAxis[Index]) * panel.minimumOfPick;
    controls_.txtYAxisMin[Index]->setText(fixedNumber(minimum, panel.decimals));
    cmdSet_Click(Index);
}

int AxisPanels::cmbYAxis_KeyPress(int Index, int KeyAscii) {
    return keys_.entryKey(KeyAscii, *controls_.cmbYAxis[Index], false, [&] { cmdSet_Click(Index); });
}

void AxisPanels::txtYAxisMin_GotFocus(int Index) { controls_.txtYAxisMin[Index]->selectWhole(); }

int AxisPanels::txtYAxisMin_KeyPress(int Index, int KeyAscii) {
    return keys_.entryKey(KeyAscii, *controls_.txtYAxisMin[Index], panels[Index].negativeMinimum,
                          [&] { cmdSet_Click(Index); });
}

} // namespace ostrel
