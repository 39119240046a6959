// SPDX-License-Identifier: MIT
#include "reports/PrintRun.h"

#include "base/ErrorNumbers.h"
#include "base/Int16.h"
#include "base/Steps.h"
#include "reports/Hourglass.h"

#include <QScopeGuard>

#include <utility>

namespace ostrel {

PrintRun::PrintRun(ChartInFront chart, CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors, QWidget *parent)
    : chart_(std::move(chart)), ComDlg_(ComDlg), prompts_(prompts), errors_(errors), parent_(parent) {}

void PrintRun::mnuPrint_Click() {
    frmPrint(
        chart_().run(), values_, [this] { mnuPrintSetup_Click(); }, parent_)
        .exec();
    if (values_.PrintCancelled || !hasPrinter())
        return;
    if (const QString file = printCopies(); !file.isEmpty())
        prompts_.show({QStringLiteral("The report is in the file %1.").arg(file), BoxIcon::Information});
}

/// Without a printer the operator is asked for one, or for a file.
bool PrintRun::hasPrinter() {
    ComDlg_.ReportName = chart_().run().fileName();
    if (!ComDlg_.canPrint())
        mnuPrintSetup_Click();
    return ComDlg_.canPrint();
}

QString PrintRun::printCopies() {
    const Hourglass hourglass(prompts_);
    const Int16 n = ComDlg_.Copies;
    ComDlg_.beginPrint();
    auto ended = qScopeGuard([this] { ComDlg_.endPrint(); });
    for (int copy = 1; copy <= n; ++copy) {
        chart_().PrintChart(values_.PrintChromatogram, values_.PrintMethod, values_.PrintNotes,
                            values_.PrintTraceFlags);
    }
    ended.dismiss();
    return ComDlg_.endPrint();
}

void PrintRun::mnuPrintSetup_Click() {
    const int error = errorNumberOf([&] {
        ComDlg_.CancelError = false;
        ComDlg_.Flags = CommonDialog::PrintSetup;
        ComDlg_.ReportName = chart_().run().fileName();
        ComDlg_.ShowPrinter();
    });
    if (error != 0)
        errors_.HandelError(ErrorNumber::PrintSetupFailed);
}

} // namespace ostrel
