// SPDX-License-Identifier: MIT
#include "platform/QtCommonDialog.h"

#include "base/RunTimeError.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QStandardPaths>

namespace {

/// Qt's dialog would take a file in a folder that does not exist, save under what stands between quotation marks, and
/// find no file whose name has no extension.
class FileDialog : public QFileDialog {
public:
    FileDialog(QWidget *parent, const QString &extension, bool pathMustExist)
        : QFileDialog(parent), extension_(extension), pathMustExist_(pathMustExist) {
        setDefaultSuffix(extension);
    }

protected:
    void accept() override {
        if (acceptMode() == AcceptOpen)
            completeName();
        const QString folder = QFileInfo(selectedFiles().value(0)).path();
        if (acceptMode() == AcceptSave && typedName().contains(QLatin1Char('"')))
            refuse(tr("%1\nA file name cannot contain quotation marks.").arg(typedName()));
        else if (pathMustExist_ && !QFileInfo(folder).isDir())
            refuse(tr("%1\nPath does not exist.").arg(folder));
        else
            QFileDialog::accept();
    }

private:
    QString typedName() const { return findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text(); }

    /// Of a name without extension the file itself is meant, if there is one.
    void completeName() {
        setDefaultSuffix({});
        if (!QFileInfo::exists(selectedFiles().value(0)))
            setDefaultSuffix(extension_);
    }

    void refuse(const QString &text) { QMessageBox::warning(this, windowTitle(), text); }

    QString extension_;
    bool pathMustExist_;
};

/// "Log(*.chl)|*.chl|All Files(*.*)|*.*" as Qt writes it: "Log(*.chl) (*.chl)", "All Files(*.*) (*)". The last bracket,
/// which is not shown, counts.
QStringList nameFilters(const QString &filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        // "*.*" means names without a point too.
        const QString pattern = parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
        filters << QStringLiteral("%1 (%2)").arg(parts[i], pattern);
    }
    return filters;
}

/// The folder to begin in: the last one as long as it is there.
QString startFolder(const QString &last) {
    for (const QString &folder : {last, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

} // namespace

void QtCommonDialog::ShowOpen() { show(Purpose::Open); }

void QtCommonDialog::ShowSave() { show(Purpose::Save); }

void QtCommonDialog::ShowPrinter() {
    if (!printer_.ask(QApplication::activeWindow(), Copies) && CancelError)
        throw RunTimeError(RunTimeError::DialogCancelled);
}

void QtCommonDialog::show(Purpose purpose) {
    FileDialog dialog(QApplication::activeWindow(), DefaultExt, (Flags & PathMustExist) != 0);
    dialog.setObjectName(QStringLiteral("ComDlg"));
    dialog.setWindowTitle(DialogTitle);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, (Flags & OverwritePrompt) == 0);
    dialog.setAcceptMode(purpose == Purpose::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(purpose == Purpose::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(nameFilters(Filter));
    dialog.setDirectory(startFolder(folder_));
    // The folder may have gone with its drive: then its file's name alone is offered.
    if (const QFileInfo offered(FileName); !FileName.isEmpty())
        dialog.selectFile(offered.dir().exists() ? FileName : offered.fileName());

    const bool chosen = dialog.exec() == QDialog::Accepted;
    FileName = chosen ? dialog.selectedFiles().value(0) : QString();
    FileTitle = QFileInfo(FileName).fileName();
    if (chosen)
        folder_ = QFileInfo(FileName).path();
    else if (CancelError)
        throw RunTimeError(RunTimeError::DialogCancelled);
}
