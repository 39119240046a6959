// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Run.h"

#include <QDialog>

#include <functional>

namespace ostrel {

class CheckBox;
class CommandButton;
class Frame;
class TextEntry;

/// The operator's last choice for a print.
struct PrintValues {
    bool PrintCancelled = false; ///< from the moment the form loads until its Ok
    bool PrintChromatogram = false;
    bool PrintNotes = false;
    bool PrintMethod = false;
    qint32 PrintTraceFlags = 0; ///< 4 UV trace, 2 conductivity trace, 1 event marks
};

/// Asks for a report's title and contents. The form is made for each showing and always begins with everything ticked.
class frmPrint : public QDialog {
    Q_OBJECT
public:
    /// The form shows the chart's title; Ok gives the entered one to the chart.
    frmPrint(Run &chart, PrintValues &values, std::function<void()> mnuPrintSetup_Click, QWidget *parent);

private:
    Frame *makeBoxes();
    void attach();
    void InitPrint();

    void chkChromotogram_Click();
    void cmdOk_Click();

    void UpdatePrintButton();
    void SyncChromatogram();

    Run &chart_;
    PrintValues &values_;
    std::function<void()> mnuPrintSetup_Click_;

    bool InChromatogramClick_ = false;
    bool InTraceClick_ = false;

    TextEntry *txtTitel_ = nullptr;
    CheckBox *chkChromotogram_ = nullptr;
    CheckBox *chkUVTrace_ = nullptr;
    CheckBox *chkCondTrace_ = nullptr;
    CheckBox *chkEvents_ = nullptr;
    CheckBox *chkNotes_ = nullptr;
    CheckBox *chkMethod_ = nullptr;
    CommandButton *cmdPrintSetup_ = nullptr;
    CommandButton *cmdOk_ = nullptr;
    CommandButton *cmdCancel_ = nullptr;
};

} // namespace ostrel
