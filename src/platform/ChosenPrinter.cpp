// SPDX-License-Identifier: MIT
#include "platform/ChosenPrinter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QLocale>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>

#include <algorithm>

namespace {

/// As a report in that file is called; a bare name is meant in the user's home.
QString pdfFile(const QString &typed) {
    const QString file = QDir::home().filePath(typed);
    const bool complete = file.endsWith(QLatin1Char('/')) || file.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
    return complete ? file : file + QLatin1String(".pdf");
}

/// The name itself if there is no such file; otherwise with the next number behind it, from 2 on.
QString nextFree(const QString &file) {
    const QFileInfo info(file);
    QString free = file;
    for (int number = 2; QFileInfo::exists(free); ++number)
        free = info.dir().filePath(
            QStringLiteral("%1-%2.%3").arg(info.completeBaseName(), QString::number(number), info.suffix()));
    return free;
}

QString usualFile() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QFileInfo(documents).isDir() ? documents : QDir::homePath();
    return nextFree(folder + QLatin1String("/report.pdf"));
}

/// Qt's print dialog, made to set up only: nothing is printed by it, and a report is always printed whole.
class SetupDialog : public QPrintDialog {
public:
    SetupDialog(QPrinter *printer, const QString &file, QWidget *parent) : QPrintDialog(printer, parent) {
        setObjectName(QStringLiteral("ComDlg"));
        setWindowTitle(tr("Print Setup"));
        setOptions(PrintToFile | PrintShowPageSize);
        fileName_->setText(file);
        fileName_->setMinimumWidth(260);
        connect(fileName_, &QLineEdit::editingFinished, this, [this, file] { // before Qt looks whether it is there
            fileName_->setText(fileName_->text().isEmpty() ? file : pdfFile(fileName_->text()));
        });
        connect(printers_, &QComboBox::currentIndexChanged, this, &SetupDialog::fitToPrinter);
    }

protected:
    /// Only here has Qt decided on what there is to choose.
    void showEvent(QShowEvent *event) override {
        showCopies();
        fitToPrinter();
        QPrintDialog::showEvent(event);
    }

private:
    /// They lie behind a button that unfolds the dialog, beside the choice of pages.
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

    bool intoFile() const { return fileName_->isEnabled(); }

    /// A file has no sheets to turn or to sort, and always colours.
    void fitToPrinter() {
        auto *tabs = findChild<QTabWidget *>(QStringLiteral("tabs"));
        const int options = tabs->indexOf(findChild<QWidget *>(QStringLiteral("optionsTab")));
        tabs->setTabVisible(options, !intoFile());
        findChild<QCheckBox *>(QStringLiteral("reverse"))->setVisible(!intoFile());
    }

    QComboBox *printers_ = findChild<QComboBox *>(QStringLiteral("printers"));
    QLineEdit *fileName_ = findChild<QLineEdit *>(QStringLiteral("filename"));
};

/// The computer's own printer with its own paper, which Qt would take for A4; without any, the paper of the country.
std::unique_ptr<QPrinter> usualPrinter() {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    const QPageSize paper = QPrinterInfo(*printer).defaultPageSize();
    const bool american = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    printer->setPageSize(paper.isValid() ? paper : QPageSize(american ? QPageSize::Letter : QPageSize::A4));
    return printer;
}

/// A printer set up like the other one.
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

} // namespace

bool ChosenPrinter::ask(QWidget *parent, int &copies) {
    // The dialog sets its printer up while it is still open.
    auto chosen = printer_ ? another(*printer_) : usualPrinter();
    chosen->setCopyCount(std::max(1, copies));
    const QString offered = file_.isEmpty() ? usualFile() : nextFile();
    SetupDialog dialog(chosen.get(), offered, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    copies = chosen->copyCount();
    chosen->setCopyCount(1);
    printer_ = std::move(chosen);
    if (file_.isEmpty() || printer_->outputFileName() != offered) {
        file_ = printer_->outputFileName();
        fileUsed_ = false;
    }
    return true;
}

QPrinter &ChosenPrinter::printer() {
    if (!printer_)
        printer_ = usualPrinter();
    if (!file_.isEmpty())
        printer_->setOutputFileName(nextFile());
    fileUsed_ = true;
    return *printer_;
}

QString ChosenPrinter::nextFile() const { return fileUsed_ ? nextFree(file_) : file_; }
