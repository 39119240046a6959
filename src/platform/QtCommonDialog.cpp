// SPDX-License-Identifier: MIT
#include "platform/QtCommonDialog.h"

#include "base/RunTimeError.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace {

/// Qt's dialog would take a file in a folder that does not exist.
class FileDialog : public QFileDialog {
public:
    FileDialog(QWidget *parent, bool pathMustExist) : QFileDialog(parent), pathMustExist_(pathMustExist) {}

protected:
    void accept() override {
        const QString folder = QFileInfo(selectedFiles().value(0)).path();
        if (pathMustExist_ && !QFileInfo(folder).isDir())
            QMessageBox::warning(this, windowTitle(), tr("%1\nPath does not exist.").arg(folder));
        else
            QFileDialog::accept();
    }

private:
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

} // namespace

void QtCommonDialog::ShowOpen() { show(Purpose::Open); }

void QtCommonDialog::ShowSave() { show(Purpose::Save); }

void QtCommonDialog::show(Purpose purpose) {
    if (folder_.isEmpty())
        folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    FileDialog dialog(QApplication::activeWindow(), (Flags & PathMustExist) != 0);
    dialog.setObjectName(QStringLiteral("ComDlg"));
    dialog.setWindowTitle(DialogTitle);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, (Flags & OverwritePrompt) == 0);
    dialog.setAcceptMode(purpose == Purpose::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(purpose == Purpose::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(nameFilters(Filter));
    dialog.setDefaultSuffix(DefaultExt);
    dialog.setDirectory(folder_);
    if (!FileName.isEmpty())
        dialog.selectFile(FileName);

    const bool chosen = dialog.exec() == QDialog::Accepted;
    FileName = chosen ? dialog.selectedFiles().value(0) : QString();
    FileTitle = QFileInfo(FileName).fileName();
    if (chosen)
        folder_ = QFileInfo(FileName).path();
    else if (CancelError)
        throw RunTimeError(RunTimeError::DialogCancelled);
}
