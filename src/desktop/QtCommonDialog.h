// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/ChosenPrinter.h"
#include "desktop/CupsSpooler.h"
#include "platform/CommonDialog.h"

namespace ostrel {

/// Qt's own dialogs under the object name "ComDlg", over the window in front. Needs a QApplication.
class QtCommonDialog : public CommonDialog {
public:
    /// Reports go to the computer's own spooler unless another one is given.
    explicit QtCommonDialog(std::unique_ptr<Spooler> spooler = std::make_unique<CupsSpooler>())
        : printer_(std::move(spooler)) {}

    void ShowOpen() override;
    void ShowSave() override;
    void ShowPrinter() override;
    bool canPrint() override { return printer_.canPrint(); }
    bool print(const QByteArray &document, const QString &name) override {
        return printer_.print(document, name, ReportName);
    }
    void beginPrint() override { printer_.beginPrint(); }
    QString endPrint() override { return printer_.endPrint(); }

    /// The chosen printer, whose paper size the next report uses; see ChosenPrinter.
    QPrinter &printer() { return printer_.printer(); }

private:
    enum class Purpose { Open, Save };
    void show(Purpose purpose);

    ChosenPrinter printer_;
    QString folder_; ///< of the last chosen file; empty: the user's documents
};

} // namespace ostrel
