// SPDX-License-Identifier: MIT
#include "acquisition/RecordingSession.h"

#include "base/Steps.h"

RecordingSession::RecordingSession(RunState &run, LinkState &link, TabStates &tabs, Timer &TimerCheckComData,
                                   Timer &TimerSaveLog, AcquisitionWindow &window)
    : run_(run), link_(link), tabs_(tabs), TimerCheckComData_(TimerCheckComData), TimerSaveLog_(TimerSaveLog),
      window_(window) {}

void RecordingSession::mnuStart_Click() {
    tabs_.ChartSaved[recorderChart] = false;
    run_.Recording = true;
    run_.ChartEventNumber = 0;
    run_.ChartPausePending = false;
    window_.commandsAt(Moment::Record);
    skippingErrors([&] { window_.focusChart(); });
}

void RecordingSession::mnuStop_Click() {
    // First, and still in the session: while it lasts the bar's own handler leaves the recorder's axis alone.
    window_.recorderToEnd();
    run_.Recording = false;
    window_.commandsAt(Moment::Stop);
}

void RecordingSession::TimerCheckComData_Timer() {
    if (!link_.ComDataSeen) {
        TimerSaveLog_.setEnabled(false);
        ComDataLost();
        window_.showNoData();
    }
    link_.ComDataSeen = false;
}

void RecordingSession::ComDataLost() {
    link_.DataBusy = true;
    window_.setReceiveLed(false);
    TimerCheckComData_.setEnabled(false);
    if (run_.Recording)
        mnuStop_Click();
    window_.commandsAt(Moment::LinkLost);
    link_.FirstSyncFound = false;
    run_.ChartLabelType = Label::None; // the log's label goes on waiting
    link_.DataBusy = false;
}
