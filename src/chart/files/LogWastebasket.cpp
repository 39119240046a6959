// SPDX-License-Identifier: MIT
#include "chart/files/LogWastebasket.h"

#include "chart/files/RunningLogFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <numeric>

namespace ostrel {

namespace {

constexpr quint64 blockSize = 512; // bytes; the unit of st_blocks

std::error_code lastError() { return {errno, std::generic_category()}; }

QByteArray native(const QString &path) { return QFile::encodeName(path); }

/// The day in a name `<log>-<day>`, or `<log>-<day>_2` and so on for further logs of that day; invalid for other names.
QDate dayOf(const QString &name) {
    static const QRegularExpression form(QStringLiteral("^.+-([0-9]{4}-[0-9]{2}-[0-9]{2})(_[0-9]+)?$"));
    return QDate::fromString(form.match(name).captured(1), Qt::ISODate);
}

/// Makes a folder and flushes its entry. False, with errno and without a folder, when that fails.
bool makeFolder(const QString &path, FileOperations &operations) {
    if (makePrivateFolder(operations, native(path).constData()) != 0)
        return false;
    if (syncFolder(operations, native(QFileInfo(path).path()).constData()))
        return true;
    const int error = errno;
    operations.removeFolder(native(path).constData());
    errno = error;
    return false;
}

/// Makes a directory for a log under a name that is not taken yet. Returns an empty path, with errno, when that fails.
QString makePlace(const QString &directory, const QString &wastebasket, const QDate &today,
                  FileOperations &operations) {
    if (!makeFolder(wastebasket, operations) && errno != EEXIST)
        return {};
    const QString name = wastebasket + u'/' + QFileInfo(directory).fileName() + u'-' + today.toString(Qt::ISODate);
    QString place = name;
    for (int number = 2; !makeFolder(place, operations); ++number) {
        if (errno != EEXIST)
            return {};
        place = name + u'_' + QString::number(number);
    }
    return place;
}

/// Moves a log's files from folder to folder. Each keeps its old name until the new one is on the disk: of two folders
/// that a file was renamed between, a power cut may leave either as it was before. On file systems that know no second
/// name of a file it is renamed.
class Move {
public:
    Move(QStringList names, QString from, QString to, FileOperations &operations)
        : names_(std::move(names)), from_(std::move(from)), to_(std::move(to)), operations_(operations) {}

    /// No error means that the files are in their new folder, also after a power cut. On an error they are all in the
    /// old one again.
    std::error_code run() {
        if (each([this](auto name) { return give(name); }) && syncFolder(operations_, native(to_).constData()) &&
            each([this](auto name) { return take(name); }) && syncFolder(operations_, native(from_).constData()))
            return {};
        const std::error_code error = lastError();
        for (const QString &name : std::as_const(names_))
            giveBack(name);
        return error;
    }

private:
    template <typename Step>
    bool each(Step step) {
        return std::all_of(names_.cbegin(), names_.cend(), step);
    }
    QByteArray old(const QString &name) const { return native(from_ + u'/' + name); }
    QByteArray young(const QString &name) const { return native(to_ + u'/' + name); }

    bool give(const QString &name) {
        if (operations_.link(old(name).constData(), young(name).constData()) == 0)
            return true;
        const bool unknown = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS || errno == EMLINK;
        return unknown && operations_.rename(old(name).constData(), young(name).constData()) == 0;
    }
    bool take(const QString &name) { return operations_.remove(old(name).constData()) == 0 || errno == ENOENT; }
    /// A file that has both names keeps them when it is renamed.
    void giveBack(const QString &name) {
        if (operations_.rename(young(name).constData(), old(name).constData()) == 0)
            operations_.remove(young(name).constData());
    }

    const QStringList names_;
    const QString from_;
    const QString to_;
    FileOperations &operations_;
};

/// The paths of the log's files.
QStringList filesIn(const QString &folder, FileOperations &operations) {
    QStringList files;
    QStringList names;
    listFolder(operations, folder, names);
    for (const QString &name : std::as_const(names)) {
        if (const QString path = folder + u'/' + name; belongsToLog(path, operations))
            files << path;
    }
    return files;
}

quint64 bytesOnDisk(const QString &path) {
    struct stat entry {};
    return ::lstat(native(path).constData(), &entry) == 0 ? static_cast<quint64>(entry.st_blocks) * blockSize : 0;
}

void remove(const DiscardedLog &log, FileOperations &operations) {
    for (const QString &path : filesIn(log.path, operations))
        operations.remove(native(path).constData());
    operations.removeFolder(native(log.path).constData());
}

} // namespace

std::error_code moveToWastebasket(const QString &directory, const QString &wastebasket, const QDate &today,
                                  FileOperations &operations) {
    const QString from = logDirectory(directory);
    QStringList names;
    if (const std::error_code error = listFolder(operations, from, names))
        return error;
    std::error_code unread;
    names.removeIf([&](const QString &name) { return !belongsToLog(from + u'/' + name, operations, &unread); });
    if (unread)
        return unread;
    // The latest goes first: what an interruption leaves in the directory is then a complete beginning of the log.
    std::reverse(names.begin(), names.end());
    const QString place = makePlace(from, wastebasket, today, operations);
    if (place.isEmpty())
        return lastError();
    const std::error_code error = Move(names, from, place, operations).run();
    if (error)
        operations.removeFolder(native(place).constData());
    return error;
}

std::vector<DiscardedLog> discardedLogs(const QString &wastebasket, FileOperations &operations) {
    std::vector<DiscardedLog> logs;
    QStringList names;
    listFolder(operations, wastebasket, names);
    for (const QString &name : std::as_const(names)) {
        DiscardedLog log{wastebasket + u'/' + name, dayOf(name)};
        if (QFileInfo(log.path).isSymLink() || !QFileInfo(log.path).isDir() || !log.day.isValid())
            continue;
        for (const QString &file : filesIn(log.path, operations))
            log.bytes += bytesOnDisk(file);
        logs.push_back(log);
    }
    std::stable_sort(logs.begin(), logs.end(),
                     [](const DiscardedLog &a, const DiscardedLog &b) { return a.day < b.day; });
    return logs;
}

void keepWastebasketLimits(const QString &wastebasket, const QDate &today, quint64 mostBytes,
                           FileOperations &operations) {
    const std::vector<DiscardedLog> logs = discardedLogs(wastebasket, operations);
    quint64 bytes = std::accumulate(logs.begin(), logs.end(), quint64{0},
                                    [](quint64 sum, const DiscardedLog &log) { return sum + log.bytes; });
    for (const DiscardedLog &log : logs) {
        if (log.day.daysTo(today) <= wastebasketDays && bytes <= mostBytes)
            continue;
        remove(log, operations);
        bytes -= log.bytes;
    }
}

} // namespace ostrel
