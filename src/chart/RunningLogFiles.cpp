// SPDX-License-Identifier: MIT
#include "chart/RunningLogFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace {

bool isNamedAsDocument(const QString &name) {
    return name.endsWith(QStringLiteral(".chl"), Qt::CaseInsensitive) ||
           name.endsWith(QStringLiteral(".chd"), Qt::CaseInsensitive);
}

} // namespace

QString logDirectory(const QString &path) { return path.isEmpty() ? QString() : QDir(path).absolutePath(); }

QString logFileName(int number) { return QStringLiteral("Log%1.dat").arg(number, 5, 10, QLatin1Char('0')); }

int logFileNumber(const QString &name) {
    static const QRegularExpression form(QStringLiteral("^Log([0-9]{5,9})\\.dat$"));
    return form.match(name).captured(1).toInt();
}

bool belongsToLog(const QString &path, FileOperations &operations) {
    const QFileInfo entry(path);
    if (entry.isSymLink() || !entry.isFile() || isNamedAsDocument(entry.fileName()))
        return false;
    const RecordReader reader(path, operations);
    return !reader.head() || reader.head()->kind == runningLogKind;
}

void emptyLogDirectory(const QString &directory, FileOperations &operations) {
    const QString folder = logDirectory(directory);
    if (folder.isEmpty())
        return;
    // The latest file first: what a power cut leaves of the log is still its whole beginning.
    const auto entries = QDir(folder).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QFileInfo &entry : entries) {
        const bool isFolder = entry.isDir() && !entry.isSymLink();
        const bool isDocument = entry.isFile() && !entry.isSymLink() && !belongsToLog(entry.filePath(), operations);
        if (!isFolder && !isDocument)
            operations.remove(QFile::encodeName(entry.filePath()).constData());
    }
}
