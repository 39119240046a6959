// SPDX-License-Identifier: MIT
#include "desktop/ChosenPrinter.h"

#include "base/HelpContexts.h"
#include "desktop/AnswerBox.h"
#include "desktop/CompletedName.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QLocale>
#include <QPrintDialog>
#include <QPrintEngine>
#include <QPrinterInfo>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

/// The path for a typed file name, with the extension .pdf; a name without a folder is in the user's home folder.
QString pdfFile(const QString &typed) { return completedName(QDir::home().filePath(typed), QStringLiteral("pdf")); }

/// The file for the report of a run: beside it, or with the user's documents when the run is in no file or in a folder
/// that is not writable.
QString usualFile(const QString &run) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString folder = QFileInfo(documents).isDir() ? documents : QDir::homePath();
    QString name = QStringLiteral("report");
    if (const QFileInfo file(run); !run.isEmpty()) {
        name = file.completeBaseName();
        if (QFileInfo(file.path()).isWritable())
            folder = file.path();
    }
    return ReportFile::nextFree(QStringLiteral("%1/%2.pdf").arg(folder, name));
}

/// Qt's print dialog for the setup only: it prints nothing and has no page range, since reports are printed whole.
class SetupDialog : public QPrintDialog {
public:
    SetupDialog(QPrinter *printer, const QString &file, QWidget *parent) : QPrintDialog(printer, parent) {
        setObjectName(QStringLiteral("ComDlg"));
        setWindowTitle(tr("Print Setup"));
        setProperty(HelpContext::property, HelpContext::Print);
        findChild<QTabWidget *>(QStringLiteral("tabs"))->setAccessibleName(tr("Copies and options"));
        setOptions(PrintToFile | PrintShowPageSize);
        fileName_->setText(file);
        fileName_->setMinimumWidth(260);
        connect(printers_, &QComboBox::currentIndexChanged, this, &SetupDialog::fitToPrinter);
        // Qt's own check of the file name would wait for the reader of a pipe, and would replace any file.
        auto *buttons = findChild<QDialogButtonBox *>();
        disconnect(buttons, &QDialogButtonBox::accepted, this, nullptr);
        connect(buttons, &QDialogButtonBox::accepted, this, [this, file] { acceptUnlessRefused(file); });
    }

    /// The file exists already, and the operator allows a report to replace it.
    bool mayReplace() const { return mayReplace_; }

protected:
    /// Qt has not set up the controls before this.
    void showEvent(QShowEvent *event) override {
        showCopies();
        fitToPrinter();
        QPrintDialog::showEvent(event);
    }

private:
    /// The number of copies is hidden until a button expands the dialog, next to the page range.
    void showCopies() {
        const auto *buttons = findChild<QDialogButtonBox *>();
        buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
        for (QAbstractButton *button : buttons->buttons()) {
            if (buttons->buttonRole(button) == QDialogButtonBox::ResetRole) {
                button->click();
                button->hide();
            }
        }
        findChild<QGroupBox *>(QStringLiteral("gbPrintRange"))->hide();
    }

    void acceptUnlessRefused(const QString &offered) {
        if (intoFile()) {
            const QString typed = fileName_->text();
            fileName_->setText(typed.isEmpty() ? offered : pdfFile(typed));
            mayReplace_ = false;
            if (!mayTake(fileName_->text()))
                return;
        }
        // With the name field disabled Qt checks only whether the printer's options fit together.
        const bool enabled = fileName_->isEnabled();
        fileName_->setEnabled(false);
        const bool looked = QMetaObject::invokeMethod(this, "_q_checkFields");
        fileName_->setEnabled(enabled);
        if (!looked)
            accept();
    }

    bool mayTake(const QString &path) {
        const QString folder = QFileInfo(path).path();
        if (!QFileInfo(folder).isDir())
            return refuse(tr("%1\nPath does not exist.").arg(folder));
        if (ReportFile::isFree(path))
            return QFileInfo(folder).isWritable() || refuse(tr("%1\nThe folder is not writable.").arg(folder));
        if (!ReportFile::isReplaceable(path))
            return refuse(tr("%1\nThis is no PDF file that could be replaced.").arg(path));
        AnswerBox box(QMessageBox::Question, windowTitle(),
                      tr("%1 already exists.\nDo you want to replace it?").arg(path),
                      QMessageBox::Yes | QMessageBox::No, this);
        box.setDefaultButton(QMessageBox::No);
        return mayReplace_ = box.exec() == QMessageBox::Yes;
    }

    bool refuse(const QString &text) {
        AnswerBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::Ok, this).exec();
        return false;
    }

    bool intoFile() const { return fileName_->isEnabled(); }

    /// Hides duplex, page order and colour mode, which a file does not have.
    void fitToPrinter() {
        auto *tabs = findChild<QTabWidget *>(QStringLiteral("tabs"));
        const int options = tabs->indexOf(findChild<QWidget *>(QStringLiteral("optionsTab")));
        tabs->setTabVisible(options, !intoFile());
        findChild<QCheckBox *>(QStringLiteral("reverse"))->setVisible(!intoFile());
    }

    QComboBox *printers_ = findChild<QComboBox *>(QStringLiteral("printers"));
    QLineEdit *fileName_ = findChild<QLineEdit *>(QStringLiteral("filename"));
    bool mayReplace_ = false;
};

/// The default printer with its own paper size (Qt would take A4); without a printer, the country's paper size.
std::unique_ptr<QPrinter> usualPrinter() {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    const QPageSize paper = QPrinterInfo(*printer).defaultPageSize();
    const bool american = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    printer->setPageSize(paper.isValid() ? paper : QPageSize(american ? QPageSize::Letter : QPageSize::A4));
    printer->setPageOrientation(QPageLayout::Landscape); // of the chromatogram
    return printer;
}

/// A copy of a printer with its settings.
std::unique_ptr<QPrinter> another(const QPrinter &other) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (other.outputFormat() == QPrinter::PdfFormat)
        printer->setOutputFormat(QPrinter::PdfFormat);
    else
        printer->setPrinterName(other.printerName());
    printer->setPageLayout(other.pageLayout());
    printer->setColorMode(other.colorMode());
    printer->setDuplex(other.duplex());
    printer->setPageOrder(other.pageOrder());
    return printer;
}

/// Pairs of names and values that only the spooler understands, such as several pages on a sheet. Qt keeps them under a
/// private key.
QStringList spoolerOptions(const QPrinter &printer) {
    constexpr int key = 0xfe00; // PPK_CupsOptions
    return printer.printEngine()->property(static_cast<QPrintEngine::PrintEnginePropertyKey>(key)).toStringList();
}

const char *sidesOf(const QPrinter &printer) {
    const bool upright = printer.pageLayout().orientation() == QPageLayout::Portrait;
    switch (printer.duplex()) {
    case QPrinter::DuplexNone:
        return "one-sided";
    case QPrinter::DuplexLongSide:
        return "two-sided-long-edge";
    case QPrinter::DuplexShortSide:
        return "two-sided-short-edge";
    case QPrinter::DuplexAuto:
        break;
    }
    return upright ? "two-sided-long-edge" : "two-sided-short-edge";
}

PrintJob jobFor(const QPrinter &printer, const QByteArray &document, const QString &name) {
    PrintJob job{printer.printerName(), name, document, {}};
    job.options.emplace_back("media", printer.pageLayout().pageSize().key().toUtf8());
    job.options.emplace_back("sides", sidesOf(printer));
    if (printer.colorMode() == QPrinter::GrayScale)
        job.options.emplace_back("print-color-mode", "monochrome");
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        job.options.emplace_back("outputorder", "reverse");
    const QStringList more = spoolerOptions(printer);
    for (qsizetype i = 0; i + 1 < more.size(); i += 2)
        job.options.emplace_back(more[i].toUtf8(), more[i + 1].toUtf8());
    return job;
}

} // namespace

bool ChosenPrinter::ask(QWidget *parent, int &copies, const QString &run) {
    // The dialog changes its printer while it is still open, so it gets a copy.
    auto chosen = printer_ ? another(*printer_) : usualPrinter();
    chosen->setCopyCount(std::max(1, copies));
    const QString offered = file_ && run == run_ ? file_->next() : usualFile(run);
    SetupDialog dialog(chosen.get(), offered, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    copies = chosen->copyCount();
    chosen->setCopyCount(1);
    printer_ = std::move(chosen);
    const QString file = printer_->outputFileName();
    if (file.isEmpty())
        file_.reset();
    else if (!file_ || run != run_ || file != offered || dialog.mayReplace()) // an accepted offer keeps the numbering
        file_.emplace(file, dialog.mayReplace());
    offerTaken_ = file == offered;
    run_ = run;
    return true;
}

QPrinter &ChosenPrinter::printer() {
    if (!printer_)
        printer_ = usualPrinter();
    return *printer_;
}

bool ChosenPrinter::canPrint() { return file_ || printer().outputFormat() == QPrinter::NativeFormat; }

bool ChosenPrinter::print(const QByteArray &document, const QString &name, const QString &run) {
    if (printer().outputFormat() == QPrinter::NativeFormat)
        return spooler_->take(jobFor(printer(), document, name));
    if (!file_)
        return false; // there is no printer, and no file was chosen instead
    if (print_ && std::exchange(print_->begun, true))
        return true;
    if (offerTaken_ && run != run_) {
        file_.emplace(usualFile(run), false);
        run_ = run;
    }
    const QString file = file_->make(document);
    if (print_)
        print_->file = file;
    return !file.isEmpty();
}

QString ChosenPrinter::endPrint() { return std::exchange(print_, std::nullopt).value_or(Print()).file; }

} // namespace ostrel
