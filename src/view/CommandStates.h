// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "view/MainControls.h"
#include "view/ScrollBars.h"

#include <QAction>
#include <QString>

#include <functional>

namespace ostrel {

/// Which commands are available in which state. Menu items and toolbar buttons are actions, found by their names.
class CommandStates : public LogWindow {
public:
    using Actions = std::function<QAction *(const QString &name)>;

    CommandStates(const RunState &run, const TabStates &tabs, const TimeControls &time, const ScrollBars &bars,
                  Actions actions);

    /// Call this when the link or the recording changes. A change of the recording affects the commands on the chart
    /// only while the recorder is in front.
    void commandsAt(Moment moment);
    /// Call this when another tab has come to the front; `caption` is that of the tab.
    void tabInFront(const QString &caption);

    /// Enables the one of the two log commands that changes the state.
    void setLogMenus(bool DataLogging);

    void enableSaveLog(bool on) override { enable("mnuSaveLog", on); }
    bool saveLogEnabled() const override { return actions_(QStringLiteral("mnuSaveLog"))->isEnabled(); }
    void showLogging(bool on) override {
        press(on ? "cmdLogOn" : "cmdLogOff");
        setLogMenus(on);
    }

private:
    void applyTabRows();
    void applyRecordRow(Moment moment);
    void atRecordOrStop(Moment moment);
    /// Presses a button of a group, which releases the others; runs no command.
    void press(const char *button) { actions_(QLatin1String(button))->setChecked(true); }
    void enable(const char *command, bool on) { actions_(QLatin1String(command))->setEnabled(on); }

    const RunState &run_;
    const TabStates &tabs_;
    TimeControls time_;
    const ScrollBars &bars_;
    Actions actions_;
};

} // namespace ostrel
