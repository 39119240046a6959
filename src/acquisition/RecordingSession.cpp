// SPDX-License-Identifier: MIT
#include "acquisition/RecordingSession.h"

#include "base/Steps.h"

#include <QScopeGuard>

namespace ostrel {

RecordingSession::RecordingSession(RunState &run, LinkState &link, TabStates &tabs, Timer &TimerCheckComData,
                                   Timer &TimerSaveLog, AcquisitionWindow &window, Notices &notices)
    : run_(run), link_(link), tabs_(tabs), TimerCheckComData_(TimerCheckComData), TimerSaveLog_(TimerSaveLog),
      window_(window), notices_(notices) {}

void RecordingSession::mnuStart_Click() {
    tabs_.ChartSaved[recorderChart] = false;
    run_.Recording = true;
    run_.ChartEventNumber = 0;
    run_.ChartPausePending = false;
    notices_.withdraw(News::RunEnded);
    window_.commandsAt(Moment::Record);
    skippingErrors([&] { window_.focusChart(); });
}

void RecordingSession::mnuStop_Click() {
    // First, while the session is on: then the bar's own handler leaves the recorder's axis alone.
    window_.recorderToEnd();
    run_.Recording = false;
    window_.commandsAt(Moment::Stop);
}

void RecordingSession::TimerCheckComData_Timer() {
    EveryStep look;
    if (!link_.ComDataSeen) {
        notices_.show(News::LinkLost, QStringLiteral("No data is being received"),
                      run_.Recording
                          ? QStringLiteral("The recording has stopped. Look at the instrument and its cable.")
                          : QStringLiteral("Look at the instrument and its cable."));
        const bool logs = TimerSaveLog_.Enabled();
        TimerSaveLog_.setEnabled(false);
        look.run([this] { ComDataLost(); });
        // Saves the log: the last data may be the end of the run. Only now, since the link may come back under a box.
        if (logs && TimerSaveLog_.Tick)
            look.run([this] { TimerSaveLog_.Tick(); });
        look.run([this] { window_.showNoData(); });
    }
    link_.ComDataSeen = false;
    look.raise();
}

void RecordingSession::ComDataLost() {
    link_.DataBusy = true;
    run_.PairSeen = false;
    window_.showNow(std::nullopt, std::nullopt);
    const auto done = qScopeGuard([this] { link_.DataBusy = false; });
    window_.setReceiveLed(false);
    TimerCheckComData_.setEnabled(false);
    EveryStep lost; // the link is marked as lost even when the recording cannot be stopped
    if (run_.Recording)
        lost.run([this] { mnuStop_Click(); });
    window_.commandsAt(Moment::LinkLost);
    link_.FirstSyncFound = false;
    run_.ChartLabelType = Label::None; // the log's label keeps waiting
    lost.raise();
}

} // namespace ostrel
