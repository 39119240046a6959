// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Values.h"
#include "platform/Notices.h"
#include "platform/Timer.h"

namespace ostrel {

/// The recording session, which the operator or the instrument begins and ends, and the watch over the link.
class RecordingSession {
public:
    RecordingSession(RunState &run, LinkState &link, TabStates &tabs, Timer &TimerCheckComData, Timer &TimerSaveLog,
                     AcquisitionWindow &window, Notices &notices);

    /// Record. Runs during a session too, and then restarts the event numbers.
    void mnuStart_Click();
    /// Stop. Runs without a session too. Raises overflow (6), the session still on, for a run beyond 16-bit minutes.
    void mnuStop_Click();

    /// The link watchdog: without an event of the port since the last tick the link is lost. Then it returns only when
    /// the operator has answered the dialog. A run-time error on the way is raised when all steps are done.
    void TimerCheckComData_Timer();
    /// Sets link, session and commands to the state without a link.
    void ComDataLost();

private:
    RunState &run_;
    LinkState &link_;
    TabStates &tabs_;
    Timer &TimerCheckComData_;
    Timer &TimerSaveLog_;
    AcquisitionWindow &window_;
    Notices &notices_;
};

} // namespace ostrel
