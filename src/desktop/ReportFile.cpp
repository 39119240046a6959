// SPDX-License-Identifier: MIT
#include "desktop/ReportFile.h"

#include "files/DurableFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>

#include <cerrno>

namespace ostrel {

namespace {

constexpr mode_t allMayRead = 0666; // and write; the umask restricts it

}

ReportFile::ReportFile(const QString &chosen, bool mayReplace) : chosen_(chosen) {
    if (mayReplace)
        replaced_ = stateOf(chosen);
}

QString ReportFile::make(const QByteArray &document) {
    if (!replaced_ || !isReplaceable(chosen_) || stateOf(chosen_) != *replaced_)
        return makeBeside(document);
    if (replaceFile(chosen_, document))
        return {};
    replaced_.reset();
    return chosen_;
}

/// Creates the file under its name first, so that only one of two programs gets the name.
QString ReportFile::makeBeside(const QByteArray &document) const {
    FileOperations &disk = FileOperations::system();
    QString file;
    int fd = -1;
    do {
        file = next();
        fd = disk.open(QFile::encodeName(file).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, allMayRead);
    } while (fd < 0 && errno == EEXIST);
    if (fd < 0)
        return {};
    disk.close(fd);
    if (!replaceFile(file, document))
        return file;
    disk.remove(QFile::encodeName(file).constData());
    return {};
}

QString ReportFile::nextFree(const QString &file) {
    const QFileInfo info(file);
    QString free = file;
    for (int number = 2; !isFree(free); ++number)
        free = info.dir().filePath(
            QStringLiteral("%1-%2.%3").arg(info.completeBaseName(), QString::number(number), info.suffix()));
    return free;
}

bool ReportFile::isFree(const QString &file) {
    const QFileInfo info(file);
    return !info.exists() && !info.isSymLink(); // the name of a dangling link is in use too
}

bool ReportFile::isReplaceable(const QString &file) {
    const QFileInfo info(file);
    QFile document(file);
    // Checked before opening: opening a pipe would wait for its writer.
    if (!info.isFile() || !info.isWritable() || !document.open(QIODevice::ReadOnly))
        return false;
    return document.size() == 0 || document.read(5) == "%PDF-";
}

ReportFile::State ReportFile::stateOf(const QString &file) {
    const QFileInfo info(file);
    return {info.size(), info.lastModified()};
}

} // namespace ostrel
