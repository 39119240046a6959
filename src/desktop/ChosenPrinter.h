// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/ReportFile.h"
#include "desktop/Spooler.h"

#include <QPrinter>
#include <QWidget>

#include <memory>
#include <optional>

namespace ostrel {

/// The printer for reports with the settings made in this run of the program; before any setup the default printer.
/// Listing the printers takes time, so it is delayed until it is needed.
class ChosenPrinter {
public:
    explicit ChosenPrinter(std::unique_ptr<Spooler> spooler) : spooler_(std::move(spooler)) {}

    /// The dialog of printer, paper and copies, over `parent`. The dialog offers a file as one of the printers; without
    /// any printer it is the only choice. The offered file is named after `run`, the run's file, and beside it. False
    /// on a Cancel, which changes nothing.
    bool ask(QWidget *parent, int &copies, const QString &run);

    /// Its paper size is the report's. The reference is valid until the next ask().
    QPrinter &printer();

    /// See CommonDialog. A file is a ReportFile; where the operator took the offered name, the report of another run
    /// gets the name that would be offered for that one.
    bool canPrint();
    bool print(const QByteArray &document, const QString &name, const QString &run);
    void beginPrint() { print_ = Print(); }
    QString endPrint();

private:
    struct Print {
        bool begun = false; ///< the first copy has come
        QString file;
    };

    std::unique_ptr<Spooler> spooler_;
    std::unique_ptr<QPrinter> printer_;
    std::optional<ReportFile> file_; ///< none for a printer
    QString run_;                    ///< for which the file was chosen
    bool offerTaken_ = false;        ///< the file bears the offered name
    std::optional<Print> print_;
};

} // namespace ostrel
