// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/CommonDialog.h"

#include <QFileInfo>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

/// The dialogs with answers laid ready. An empty answer, or none, is a Cancel.
class FakeCommonDialog : public CommonDialog {
public:
    /// What the dialog was set to when it came up.
    struct Showing {
        bool save;
        QString title, filter, extension, offered;
        int flags;
    };

    void ShowOpen() override { show(false); }
    void ShowSave() override { show(true); }
    void ShowPrinter() override {
        ++printerShown;
        if (printerError)
            throw *printerError;
        if (chosenCopies)
            Copies = *chosenCopies;
        else if (CancelError)
            throw RunTimeError(RunTimeError::DialogCancelled);
    }

    std::vector<Showing> shown;
    std::deque<QString> answers;
    int printerShown = 0;
    std::optional<int> chosenCopies; ///< none: a Cancel
    std::optional<RunTimeError> printerError;
    std::function<void()> whileShown;

private:
    void show(bool save) {
        shown.push_back({save, DialogTitle, Filter, DefaultExt, FileName, Flags});
        if (whileShown)
            whileShown();
        FileName.clear();
        if (!answers.empty()) {
            FileName = answers.front();
            answers.pop_front();
        }
        FileTitle = QFileInfo(FileName).fileName();
        if (FileName.isEmpty() && CancelError)
            throw RunTimeError(RunTimeError::DialogCancelled);
    }
};
