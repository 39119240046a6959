// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/ReportFile.h"
#include "desktop/Spooler.h"

#include <QPrinter>
#include <QWidget>

#include <memory>
#include <optional>

namespace ostrel {

/// The printer that reports go to, as it was set up in this run of the program; before that the computer's own. Asking
/// the computer for its printers takes time, so that is left until it must be.
class ChosenPrinter {
public:
    explicit ChosenPrinter(std::unique_ptr<Spooler> spooler) : spooler_(std::move(spooler)) {}

    /// The dialog of printer, paper and copies, over `parent`. A file is one of the printers: without any printer it
    /// is what there is to choose. False on a Cancel, which changes nothing.
    bool ask(QWidget *parent, int &copies);

    /// With the paper that a report is made for. Valid until the dialog comes up again.
    QPrinter &printer();

    /// See CommonDialog. A file is a ReportFile.
    bool print(const QByteArray &document, const QString &name);
    void beginPrint() { print_ = Print(); }
    QString endPrint();

private:
    struct Print {
        bool begun = false; ///< a copy came
        QString file;
    };

    std::unique_ptr<Spooler> spooler_;
    std::unique_ptr<QPrinter> printer_;
    std::optional<ReportFile> file_; ///< none for a printer
    std::optional<Print> print_;
};

} // namespace ostrel
