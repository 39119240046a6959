// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"

namespace ostrel {

/// Saves the chart in front to data files. A log file is never overwritten: its tab saves to a new data file.
///
/// During a recording the recorder's chart never counts as saved, since new samples keep coming.
///
/// When a file cannot be written, the operator is told and nothing changes. A cancelled dialog ends a command without a
/// message, unless CancelError is set on the shared dialog: then its error (32755) is passed on to the caller.
class SaveFiles {
public:
    SaveFiles(TabStates &tabs, const RunState &run, const DocumentCharts &charts, DocumentWindow &window,
              CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors);

    /// Saves to the tab's own file; without one, or with a log file, it is the same as mnuSaveDataAs_Click.
    void mnuSaveData_Click();
    /// Saves to a file that the operator names; from then on it is the tab's file.
    void mnuSaveDataAs_Click();
    /// Saves the time range that the chart shows to another file; the tab keeps its own file.
    void mnuSaveSlectedData_Click();

private:
    RunDocument &chart() const { return *charts_[tabs_.CurrentChart]; }
    QString &fileName() const { return tabs_.ChartFileName[tabs_.CurrentChart]; }
    bool showsLog() const;
    void saved();
    /// Shows the dialog with a proposed name; returns the chosen path, empty for none.
    QString askForFile(const QString &title, const QString &offered, int HelpContextID);

    TabStates &tabs_;
    const RunState &run_;
    DocumentCharts charts_;
    DocumentWindow &window_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
    ErrorRoute &errors_;
};

} // namespace ostrel
