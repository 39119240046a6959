// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/CommonDialog.h"

#include <QFileInfo>

#include <deque>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// The dialogs with answers laid ready. An empty answer, or none, is a Cancel.
class FakeCommonDialog : public CommonDialog {
public:
    /// What the dialog was set to when it came up.
    struct Showing {
        QString title, extension, offered;
        int flags;
    };

    void ShowOpen() override { show(); }
    void ShowSave() override { show(); }
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
    std::function<void()> whileShown; ///< once, while the next one is up
    int printerShown = 0;
    std::optional<int> chosenCopies; ///< none: a Cancel
    std::optional<RunTimeError> printerError;

private:
    void show() {
        shown.push_back({DialogTitle, DefaultExt, FileName, Flags});
        if (const auto act = std::exchange(whileShown, nullptr))
            act();
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
