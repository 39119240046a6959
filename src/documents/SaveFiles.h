// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"

namespace ostrel {

/// Saves the chart in front to data files. A log file is never written over: its tab saves to a data file anew.
///
/// While a recording is on the recorder's chart does not count as saved: samples go on coming.
///
/// A file that cannot be written is told to the operator and changes nothing. A cancelled dialog ends a command
/// quietly, unless CancelError is set on the shared dialog: then its error (32755) goes on to the caller.
class SaveFiles {
public:
    SaveFiles(TabStates &tabs, const RunState &run, const DocumentCharts &charts, DocumentWindow &window,
              CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors);

    /// To the file that the tab has; without one, or with a log, as mnuSaveDataAs_Click.
    void mnuSaveData_Click();
    /// To a file that the operator names, which is the tab's from then on.
    void mnuSaveDataAs_Click();
    /// The stretch that the chart shows, to another file; the tab keeps its own.
    void mnuSaveSlectedData_Click();

private:
    RunDocument &chart() const { return *charts_[tabs_.CurrentChart]; }
    QString &fileName() const { return tabs_.ChartFileName[tabs_.CurrentChart]; }
    bool showsLog() const;
    void saved();
    /// Shows the dialog with a name to begin with; answers the path chosen, empty for none.
    QString askForFile(const QString &title, const QString &offered);

    TabStates &tabs_;
    const RunState &run_;
    DocumentCharts charts_;
    DocumentWindow &window_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
    ErrorRoute &errors_;
};

} // namespace ostrel
