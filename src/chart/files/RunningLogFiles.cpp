// SPDX-License-Identifier: MIT
#include "chart/files/RunningLogFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace ostrel {

QString logDirectory(const QString &path) { return path.isEmpty() ? QString() : QDir(path).absolutePath(); }

QString logFileName(int number) { return QStringLiteral("Log%1.dat").arg(number, 5, 10, QLatin1Char('0')); }

int logFileNumber(const QString &name) {
    static const QRegularExpression form(QStringLiteral("^Log([0-9]{5,9})\\.dat$"));
    return form.match(name).captured(1).toInt();
}

bool isNamedAsDocument(const QString &name) {
    return name.endsWith(QStringLiteral(".chl"), Qt::CaseInsensitive) ||
           name.endsWith(QStringLiteral(".chd"), Qt::CaseInsensitive);
}

bool belongsToLog(const QString &path, FileOperations &operations, std::error_code *unread) {
    const QFileInfo entry(path);
    if (entry.isSymLink() || !entry.isFile() || isNamedAsDocument(entry.fileName()))
        return false;
    const RecordReader reader(path, operations);
    if (!reader.error())
        return !reader.head() || reader.head()->kind == runningLogKind;
    if (unread != nullptr)
        *unread = reader.error();
    return false;
}

void emptyLogDirectory(const QString &directory, FileOperations &operations) {
    const QString folder = logDirectory(directory);
    if (folder.isEmpty())
        return;
    // The latest file goes first: after a power cut the files that are left are a complete beginning of the log.
    const auto entries = QDir(folder).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QFileInfo &entry : entries) {
        const bool isFolder = entry.isDir() && !entry.isSymLink();
        const bool isSpared = entry.isFile() && !entry.isSymLink() && !belongsToLog(entry.filePath(), operations);
        if (!isFolder && !isSpared)
            operations.remove(QFile::encodeName(entry.filePath()).constData());
    }
}

} // namespace ostrel
