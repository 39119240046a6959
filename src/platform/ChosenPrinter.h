// SPDX-License-Identifier: MIT
#pragma once

#include <QPrinter>
#include <QWidget>

#include <memory>

/// The printer that reports go to, as it was set up in this run of the program; before that the computer's own. Asking
/// the computer for its printers takes time, so that is left until it must be.
class ChosenPrinter {
public:
    /// The dialog of printer, paper and copies, over `parent`. A file stands among the printers: without any printer it
    /// is what there is to choose. False on a Cancel, which changes nothing.
    bool ask(QWidget *parent, int &copies);

    /// The printer for one report and for one copy. Into a file that was chosen only the first report goes; the next
    /// ones get the next free names beside it: "report.pdf", "report-2.pdf". Valid until the dialog comes up again.
    QPrinter &printer();

private:
    QString nextFile() const;

    std::unique_ptr<QPrinter> printer_;
    QString file_;          ///< that was chosen; empty for a printer
    bool fileUsed_ = false; ///< a report went into it
};
