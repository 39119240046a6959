// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Values.h"
#include "platform/Timer.h"

namespace ostrel {

/// The recording session, begun and ended by the operator or the instrument, and the watch over the link.
class RecordingSession {
public:
    RecordingSession(RunState &run, LinkState &link, TabStates &tabs, Timer &TimerCheckComData, Timer &TimerSaveLog,
                     AcquisitionWindow &window);

    /// Record. Runs whole each time, also in a session, whose event numbers then begin anew.
    void mnuStart_Click();
    /// Stop. Runs whole each time. Raises overflow (6), the session still on, for a run beyond 16-bit minutes.
    void mnuStop_Click();

    /// The link watchdog: no event of the port since the last tick is a lost link. Returns only when the operator has
    /// answered the dialog. A run-time error on the way flies on once all is done.
    void TimerCheckComData_Timer();
    /// Puts link, session and commands into the state without a link.
    void ComDataLost();

private:
    RunState &run_;
    LinkState &link_;
    TabStates &tabs_;
    Timer &TimerCheckComData_;
    Timer &TimerSaveLog_;
    AcquisitionWindow &window_;
};

} // namespace ostrel
