// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Commands.h"
#include "view/CommandStates.h"
#include "view/LiveView.h"
#include "view/frmNoData.h"

#include <functional>

namespace ostrel {

/// The actions of the window itself for the acquisition.
struct WindowActs {
    std::function<void(bool on)> setReceiveLed;
    std::function<void(std::optional<float> minutes, const std::optional<SamplePair> &pair)> showNow;
    std::function<void()> focusChart;
    std::function<NoDataAnswer()> askNoData; ///< shows the dialog until it is answered and gone
};

/// The main window as the acquisition sees it.
class MainAcquisitionWindow : public AcquisitionWindow {
public:
    MainAcquisitionWindow(CommandStates &states, LiveView &live, const Commands &commands, WindowActs window);

    void commandsAt(Moment moment) override { states_.commandsAt(moment); }
    void setReceiveLed(bool on) override { window_.setReceiveLed(on); }
    void showNow(std::optional<float> minutes, const std::optional<SamplePair> &pair) override {
        window_.showNow(minutes, pair);
    }
    void UpdateLiveView() override { live_.UpdateLiveView(); }
    void recorderToEnd() override { live_.recorderToEnd(); }
    void focusChart() override { window_.focusChart(); }
    void showNoData() override;

private:
    NoDataAnswer askNoData();

    CommandStates &states_;
    LiveView &live_;
    const Commands &commands_;
    WindowActs window_;
    bool noDataUp_ = false;
};

} // namespace ostrel
