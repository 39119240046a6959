// SPDX-License-Identifier: MIT
#include "desktop/QtCommonDialog.h"

#include "base/HelpContexts.h"
#include "base/RunTimeError.h"
#include "desktop/AnswerBox.h"
#include "desktop/CompletedName.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QStandardPaths>
#include <QTreeView>

#include <climits>
#include <utility>

namespace ostrel {

namespace {

/// Qt's dialog would accept a file in a missing folder, would save under the part of a name that is in quotation marks,
/// would append the extension only to names without a point, and could not open a file without an extension.
class FileDialog : public QFileDialog {
public:
    FileDialog(QWidget *parent, const QString &extension, int flags)
        : QFileDialog(parent), extension_(extension), flags_(flags) {}

    /// The chosen file, with its folder.
    QString file() const { return acceptMode() == AcceptSave ? toSave_ : selectedFiles().value(0); }

protected:
    void accept() override {
        if (acceptMode() == AcceptSave)
            acceptToSave();
        else
            acceptToOpen();
    }

private:
    void acceptToOpen() {
        // A name without extension means the file of exactly that name, if there is one.
        setDefaultSuffix({});
        if (!QFileInfo::exists(selectedFiles().value(0)))
            setDefaultSuffix(extension_);
        if (const QString folder = folderOf(selectedFiles().value(0)); missing(folder))
            refuse(folder, tr("Path does not exist."));
        else
            QFileDialog::accept();
    }

    void acceptToSave() {
        auto *edit = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        const QString typed = fileOf(edit->text());
        if (QFileInfo(typed).isDir()) {
            setDirectory(typed);
            edit->clear();
            return;
        }
        const QString file = completedName(typed, extension_);
        if (edit->text().contains(QLatin1Char('"')))
            refuse(typed, tr("A file name cannot contain quotation marks."));
        else if (const QString folder = folderOf(file); missing(folder))
            refuse(folder, tr("Path does not exist."));
        else if (file.endsWith(QLatin1Char('/')))
            refuse(typed, tr("A file needs a name."));
        else if (QFileInfo(file).isDir())
            refuse(file, tr("There is a folder of this name."));
        else if (QFile::encodeName(QFileInfo(file).fileName()).size() > NAME_MAX)
            refuse(file, tr("This name is too long."));
        else if (mayReplace(file)) {
            toSave_ = file;
            done(Accepted);
        }
    }

    /// The path of the typed name. selectedFiles() may return the folder while the dialog is still reading that.
    QString fileOf(QString typed) const {
        if (typed == QLatin1String("~") || typed.startsWith(QLatin1String("~/")))
            typed.replace(0, 1, QDir::homePath());
        const QString file = QDir::cleanPath(directory().absoluteFilePath(typed));
        return typed.endsWith(QLatin1Char('/')) ? file + QLatin1Char('/') : file;
    }
    static QString folderOf(const QString &file) { return QFileInfo(file).path(); }
    bool missing(const QString &folder) const {
        return (flags_ & CommonDialog::PathMustExist) != 0 && !QFileInfo(folder).isDir();
    }

    bool mayReplace(const QString &file) {
        if ((flags_ & CommonDialog::OverwritePrompt) == 0 || !QFileInfo::exists(file))
            return true;
        const QString name = QFileInfo(file).fileName();
        AnswerBox box(QMessageBox::Warning, windowTitle(),
                      tr("%1 already exists.\nDo you want to replace it?").arg(name),
                      QMessageBox::Yes | QMessageBox::No, this);
        box.setDefaultButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes;
    }

    void refuse(const QString &what, const QString &why) {
        AnswerBox(QMessageBox::Warning, windowTitle(), what + QLatin1Char('\n') + why, QMessageBox::Ok, this).exec();
    }

    QString extension_;
    int flags_;
    QString toSave_;
};

/// "Log(*.chl)|*.chl|All Files(*.*)|*.*" as Qt writes it: "Log(*.chl) (*.chl)", "All Files(*.*) (*)". Qt uses the last
/// bracket, which is not shown.
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

/// Room for names of files, sizes and whole dates, in the desktop's font.
void arrange(QFileDialog &dialog) {
    constexpr int letters = 100;
    constexpr int lines = 28;
    const QFontMetrics metrics(dialog.font());
    const QSize wanted(metrics.averageCharWidth() * letters, metrics.lineSpacing() * lines);
    dialog.resize(wanted.expandedTo(dialog.sizeHint()).boundedTo(dialog.screen()->availableSize() * 9 / 10));
    for (const auto &[name, spoken] : {std::pair{"treeView", "Files"}, {"listView", "Files"}, {"sidebar", "Places"}})
        dialog.findChild<QWidget *>(QLatin1String(name))->setAccessibleName(QLatin1String(spoken));
    QHeaderView *columns = dialog.findChild<QTreeView *>(QStringLiteral("treeView"))->header();
    for (int column = 0; column < columns->count(); ++column)
        columns->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
}

/// The folder to begin in: the last one if it still exists.
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
    if (!printer_.ask(QApplication::activeWindow(), Copies, ReportName) && CancelError)
        throw RunTimeError(ErrorNumber::DialogCancelled);
}

void QtCommonDialog::show(Purpose purpose) {
    FileDialog dialog(QApplication::activeWindow(), DefaultExt, Flags);
    dialog.setObjectName(QStringLiteral("ComDlg"));
    dialog.setWindowTitle(DialogTitle);
    if (HelpContextID != 0)
        dialog.setProperty(HelpContext::property, HelpContextID);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(purpose == Purpose::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(purpose == Purpose::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(nameFilters(Filter));
    dialog.setDirectory(startFolder(folder_));
    arrange(dialog);
    // The folder may be gone, for instance with its drive: then only the file's name is offered.
    if (const QFileInfo offered(FileName); !FileName.isEmpty())
        dialog.selectFile(offered.dir().exists() ? FileName : offered.fileName());

    const bool chosen = dialog.exec() == QDialog::Accepted;
    FileName = chosen ? dialog.file() : QString();
    FileTitle = QFileInfo(FileName).fileName();
    if (chosen)
        folder_ = QFileInfo(FileName).path();
    else if (CancelError)
        throw RunTimeError(ErrorNumber::DialogCancelled);
}

} // namespace ostrel
