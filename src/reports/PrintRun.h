// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"
#include "reports/ReportPorts.h"
#include "reports/frmPrint.h"

#include <QWidget>

namespace ostrel {

/// The commands that print the chart in front and that choose the printer and the number of copies.
class PrintRun {
public:
    /// `ComDlg` is the main window's; its Copies is the number of copies of each print. `parent` is the form's parent.
    PrintRun(ChartInFront chart, CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors, QWidget *parent);

    /// Where there is no printer the setup comes first, and a Cancel there prints nothing. The chart reports a copy
    /// that fails; the next one is still printed. If the report went into a file, a box names the file.
    void mnuPrint_Click();
    void mnuPrintSetup_Click();

private:
    bool hasPrinter();
    QString printCopies();

    ChartInFront chart_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
    ErrorRoute &errors_;
    QWidget *parent_;
    PrintValues values_;
};

} // namespace ostrel
