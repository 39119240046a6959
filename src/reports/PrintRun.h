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
    /// `ComDlg` is the main window's, whose Copies each print takes. The form's parent is `parent`.
    PrintRun(ChartInFront chart, CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors, QWidget *parent);

    /// A copy that fails is told by the chart, and the next one is printed all the same. Where the report lies is
    /// told when it went into a file.
    void mnuPrint_Click();
    void mnuPrintSetup_Click();

private:
    QString printCopies();

    ChartInFront chart_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
    ErrorRoute &errors_;
    QWidget *parent_;
    PrintValues values_;
};

} // namespace ostrel
