// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ChosenPrinter.h"
#include "platform/CommonDialog.h"

/// Qt's own dialogs under the object name "ComDlg", over the window in front. Needs a QApplication.
class QtCommonDialog : public CommonDialog {
public:
    void ShowOpen() override;
    void ShowSave() override;
    void ShowPrinter() override;

    /// The printer as it was set up, for the next report; see ChosenPrinter.
    QPrinter &printer() { return printer_.printer(); }

private:
    enum class Purpose { Open, Save };
    void show(Purpose purpose);

    ChosenPrinter printer_;
    QString folder_; ///< of the last chosen file; empty: the user's documents
};
