// SPDX-License-Identifier: MIT
#include "documents/RunningLog.h"

#include "base/ErrorNumbers.h"
#include "base/HelpContexts.h"
#include "base/RunTimeError.h"
#include "base/Steps.h"

namespace ostrel {

RunningLog::RunningLog(Reads reads, RunState &run, Options &options, LogState &log, Charts charts, Timer &TimerSaveLog,
                       LogWindow &window, CommonDialog &ComDlg, ErrorRoute &errors, Notices &notices)
    : reads_(std::move(reads)), run_(run), options_(options), log_(log), charts_(charts), TimerSaveLog_(TimerSaveLog),
      window_(window), ComDlg_(ComDlg), errors_(errors), notices_(notices) {}

void RunningLog::TimerSaveLog_Timer() {
    // Before the copy has its own directory, the command would save a left-over log of a crash. The last tick, after
    // the timer was switched off, only writes the rest to the disk.
    if (writeTelling() && hasDirectory() && TimerSaveLog_.Enabled())
        window_.enableSaveLog(true);
}

bool RunningLog::writeTelling() {
    const qint16 status = write();
    if (status != 0)
        errors_.HandelError(status);
    return status == 0;
}

qint16 RunningLog::write() {
    const QString directory = hasDirectory() ? reads_.identity.LogDirectory : reads_.ownDirectory();
    const auto bring = [&](RunLog &chart) {
        return chart.WriteLog(directory, reads_.identity.InstanceNumber, TimerSaveLog_.Interval(),
                              options_.DataFileSizeHours);
    };
    const qint16 status = bring(charts_.Chart5);
    const bool beside = run_.BesideLog && !reads_.tabs.ChartSaved[recorderChart];
    const qint16 statusBeside = beside ? bring(charts_.Chart0) : 0;
    const qint16 first = status != 0 ? status : statusBeside;
    tell(first);
    return first;
}

/// Here and not at the error route, which tells some numbers by a beep alone and is not reached from each writing.
void RunningLog::tell(qint16 status) {
    if (status == 0)
        return notices_.withdraw(News::LogNotWritten);
    notices_.show(
        News::LogNotWritten, QStringLiteral("The log cannot be written"),
        QStringLiteral("%1. The recorder keeps the data and goes on trying.").arg(RunTimeError::describe(status)));
}

void RunningLog::writeNow() {
    if (TimerSaveLog_.Enabled() || options_.DataLogging)
        writeAll();
}

void RunningLog::writeAll() {
    if (TimerSaveLog_.Enabled())
        TimerSaveLog_Timer();
    else
        writeTelling();
}

void RunningLog::mnuSaveLog_Click() {
    if (hasDirectory())
        skippingErrors([this] { writeAll(); }); // also what came in before logging was switched off
    log_.LogSaved = true;
    if (!charts_.Chart5.CheckLogFile(reads_.identity.LogDirectory)) {
        errors_.HandelError(ErrorNumber::LogLost);
        return;
    }
    const auto save = [this] {
        ComDlg_.Flags = CommonDialog::Saving;
        ComDlg_.DialogTitle = QStringLiteral("Save Log File As...");
        ComDlg_.FileName = reads_.identity.SystemName;
        ComDlg_.HelpContextID = HelpContext::SaveLog;
        ComDlg_.CancelError = true;
        ComDlg_.Filter = QStringLiteral("Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*");
        ComDlg_.DefaultExt = QStringLiteral("chl");
        ComDlg_.ShowSave();
        if (ComDlg_.FileName.isEmpty())
            return;
        if (charts_.Chart6.SaveLogAs(reads_.identity.LogDirectory, reads_.identity.InstanceNumber, ComDlg_.FileName) ==
            0) {
            window_.enableSaveLog(false);
        } else {
            errors_.HandelError(ErrorNumber::LogNotSaved);
            log_.LogSaved = false;
        }
    };
    // A cancelled dialog comes here too: the recovery of a log must know that it was not saved.
    trapped(save, [this](const RunTimeError &error) {
        log_.LogSaved = false;
        errors_.HandelError(error.number());
    });
}

void RunningLog::mnuLogOn_Click() {
    window_.showLogging(true);
    options_.DataLogging = true;
    // Both are checked, since the watchdog clears ComDataSeen at each check, even while data comes in.
    if (!reads_.link.ComDataSeen && !reads_.link.FirstSyncFound)
        return; // the timer starts when the stream is synchronised again
    run_.LogEventNumber = run_.ChartEventNumber;
    run_.LogLabelType = Label::None;
    run_.LogEndPending = false;
    run_.LogPausePending = false;
    run_.LogPaused = run_.ChartPaused; // the log may have missed the end of a pause
    TimerSaveLog_.setEnabled(true);
}

void RunningLog::mnuLogOff_Click() {
    window_.showLogging(false);
    options_.DataLogging = false;
    TimerSaveLog_.setEnabled(false);
}

} // namespace ostrel
