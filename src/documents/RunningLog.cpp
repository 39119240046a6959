// SPDX-License-Identifier: MIT
#include "documents/RunningLog.h"

#include "base/Steps.h"

namespace {

constexpr qint32 logLost = -22;
constexpr qint32 logNotSaved = -17;

} // namespace

RunningLog::RunningLog(Reads reads, RunState &run, Options &options, LogState &log, ChartLog &Chart5, ChartLog &Chart6,
                       Timer &TimerSaveLog, LogWindow &window, CommonDialog &ComDlg, ErrorRoute &errors)
    : reads_(reads), run_(run), options_(options), log_(log), Chart5_(Chart5), Chart6_(Chart6),
      TimerSaveLog_(TimerSaveLog), window_(window), ComDlg_(ComDlg), errors_(errors) {}

void RunningLog::TimerSaveLog_Timer() {
    if (reads_.identity.InstanceTag.isEmpty())
        return; // LogDirectory is not this copy's yet: it may name one that a crash left behind
    const qint16 status = Chart5_.WriteLog(reads_.identity.LogDirectory, reads_.identity.InstanceNumber,
                                           TimerSaveLog_.Interval(), options_.DataFileSizeHours);
    if (status == 0) {
        window_.enableSaveLog(true);
        return;
    }
    // On a full disk the error log cannot be written either; the next tick tries again all the same.
    skippingErrors([&] { errors_.HandelError(status); });
}

void RunningLog::writeNow() {
    if (TimerSaveLog_.Enabled())
        TimerSaveLog_Timer();
}

void RunningLog::mnuSaveLog_Click() {
    log_.LogSaved = true;
    if (!Chart5_.CheckLogFile(reads_.identity.LogDirectory)) {
        errors_.HandelError(logLost);
        return;
    }
    const auto save = [this] {
        ComDlg_.Flags = CommonDialog::OverwritePrompt | CommonDialog::HideReadOnly | CommonDialog::PathMustExist;
        ComDlg_.DialogTitle = QStringLiteral("Save Log File As...");
        ComDlg_.FileName = reads_.identity.SystemName;
        ComDlg_.CancelError = true;
        ComDlg_.Filter = QStringLiteral("Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*");
        ComDlg_.DefaultExt = QStringLiteral("chl");
        ComDlg_.ShowSave();
        if (ComDlg_.FileName.isEmpty())
            return;
        if (Chart6_.SaveLogAs(reads_.identity.LogDirectory, reads_.identity.InstanceNumber, ComDlg_.FileName) == 0) {
            window_.enableSaveLog(false);
        } else {
            errors_.HandelError(logNotSaved);
            log_.LogSaved = false;
        }
    };
    // A cancelled dialog comes here too: whoever recovers a log has to know that it was not saved.
    trapped(save, [this](const RunTimeError &error) {
        log_.LogSaved = false;
        errors_.HandelError(error.number());
    });
}

void RunningLog::mnuLogOn_Click() {
    window_.showLogging(true);
    options_.DataLogging = true;
    // The watchdog takes the first back with each of its looks, whatever comes in.
    if (!reads_.link.ComDataSeen && !reads_.link.FirstSyncFound)
        return; // the timer starts when the stream is next synchronised
    run_.LogEventNumber = run_.ChartEventNumber;
    run_.LogLabelType = Label::None;
    run_.LogEndPending = false;
    run_.LogPausePending = false;
    TimerSaveLog_.setEnabled(true);
}

void RunningLog::mnuLogOff_Click() {
    window_.showLogging(false);
    options_.DataLogging = false;
    TimerSaveLog_.setEnabled(false);
}
