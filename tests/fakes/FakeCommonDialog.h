// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/CommonDialog.h"

#include <QFileInfo>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

using namespace ostrel;

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
        offeredFor << ReportName;
        hasPrinter |= chosenCopies.has_value();
        if (chosenCopies)
            Copies = *chosenCopies;
        else if (CancelError)
            throw RunTimeError(ErrorNumber::DialogCancelled);
    }

    bool canPrint() override { return hasPrinter; }
    bool print(const QByteArray &pdf, const QString &name) override {
        report = pdf;
        printed << name;
        return !printRefused;
    }
    void beginPrint() override { printed << QStringLiteral("begin"); }
    QString endPrint() override {
        printed << QStringLiteral("end");
        return printedFile;
    }

    std::vector<Showing> shown;
    QStringList answers;
    std::function<void()> whileShown; ///< once, while the next one is up
    int printerShown = 0;
    bool hasPrinter = true;
    QStringList offeredFor;          ///< the files beside which the setup has offered a report
    std::optional<int> chosenCopies; ///< none: a Cancel
    std::optional<RunTimeError> printerError;
    QStringList printed;       ///< the names of reports, between "begin" and "end" of their print
    QByteArray report;         ///< the last one
    bool printRefused = false; ///< the spooler takes no report
    QString printedFile;       ///< that a print is told to have made

private:
    void show() {
        shown.push_back({DialogTitle, DefaultExt, FileName, Flags});
        if (const auto act = std::exchange(whileShown, nullptr))
            act();
        FileName = answers.empty() ? QString() : answers.takeFirst();
        FileTitle = QFileInfo(FileName).fileName();
        if (FileName.isEmpty() && CancelError)
            throw RunTimeError(ErrorNumber::DialogCancelled);
    }
};
