// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CommonDialog.h"

/// Qt's own file dialog under the object name "ComDlg", over the window in front. Needs a QApplication.
class QtCommonDialog : public CommonDialog {
public:
    void ShowOpen() override;
    void ShowSave() override;
    void ShowPrinter() override;

private:
    enum class Purpose { Open, Save };
    void show(Purpose purpose);

    QString folder_; ///< of the last chosen file; empty: the user's documents
};
