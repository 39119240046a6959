// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/SampleStore.h"

#include <optional>

namespace ostrel {

class PortSetup;

/// The windows above the acquisition, as far as it uses them.

/// The moments at which commands of the window change their state.
enum class Moment { LinkLost, SyncFound, Record, Stop };

/// The main window as the acquisition sees it.
class AcquisitionWindow {
public:
    virtual ~AcquisitionWindow() = default;

    /// Enables, disables and presses menu items, toolbar buttons and the recorder's scroll bar as the moment asks.
    virtual void commandsAt(Moment moment) = 0;
    /// Green while the instrument's stream is recognised, black otherwise.
    virtual void setReceiveLed(bool on) = 0;
    /// Shows the newest pair in the recorder's head, with its time in minutes while a session is on; nothing hides the
    /// numbers.
    virtual void showNow(std::optional<float> minutes, const std::optional<SamplePair> &pair) = 0;
    /// Brings the recorder's time axis and drawing up to the newest sample.
    virtual void UpdateLiveView() = 0;
    /// Sets the recorder's scroll bar to the end of the data. Raises overflow (6) for a run beyond 16-bit minutes.
    virtual void recorderToEnd() = 0;
    /// Gives the keyboard focus to the chart in front.
    virtual void focusChart() = 0;
    /// Shows the dialog that reports a lost link, until the operator answers it, and runs what the answer asks for.
    /// Does nothing while the dialog is up already.
    virtual void showNoData() = 0;
};

/// The form frmSetup.
class SetupDialog {
public:
    virtual ~SetupDialog() = default;

    /// Shows a loaded setup modally until its ok() succeeds or the operator cancels; without `mayCancel` only the first
    /// ends it.
    virtual void show(PortSetup &setup, bool mayCancel) = 0;
};

} // namespace ostrel
