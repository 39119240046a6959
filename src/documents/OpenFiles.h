// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"

namespace ostrel {

/// Opens finished runs beside the recorder: data files and log files, four at most, each in a tab of its own.
class OpenFiles {
public:
    OpenFiles(TabStates &tabs, const DocumentCharts &charts, DocumentWindow &window, CommonDialog &ComDlg,
              Prompts &prompts);

    void mnuOpenData_Click() { OpenChartFile(false); }
    void mnuOpenLog_Click() { OpenChartFile(true); }

    /// Asks for a file and opens it. No run-time error leaves this routine.
    void OpenChartFile(bool IsLog);

    /// Loads a file into the first free tab and brings that to the front. When a file cannot be loaded, the chart tells
    /// the operator and nothing changes. A run whose scroll bar would need more than 32767 minutes raises overflow (6):
    /// its tab stays in use without a name, and the hourglass stays on.
    void DrawChartLabel(const QString &FileName);

    /// Opens a file that was dropped on the window, as if it had been chosen in the dialog. False when every tab
    /// is in use, which the operator has been told.
    bool openDropped(const QString &FileName);

private:
    bool hasRoom();
    bool load(const QString &FileName);
    void takeOver(int tab, const QString &FileName);

    TabStates &tabs_;
    DocumentCharts charts_;
    DocumentWindow &window_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
};

} // namespace ostrel
