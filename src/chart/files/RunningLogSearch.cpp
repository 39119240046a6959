// SPDX-License-Identifier: MIT
#include "chart/files/RunningLogSearch.h"

#include "chart/files/ChartRecords.h"
#include "chart/files/RunningLogFiles.h"
#include "files/AppendFile.h"

#include <QFile>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace ostrel {

namespace {

constexpr quint64 nowhere = std::numeric_limits<quint64>::max();

/// The number of the file's first sample; `nowhere` when no intact record has it.
quint64 firstSampleOf(RecordReader &reader) {
    for (auto found = reader.next();
         found == RecordReader::Found::Record || (found == RecordReader::Found::Damage && reader.searchNext());
         found = reader.next()) {
        if (reader.record().kind != samplesRecord)
            continue;
        const std::optional<SampleNumbers> numbers = takeSampleNumbers(reader);
        if (numbers && reader.finish())
            return numbers->first;
    }
    return nowhere;
}

bool isBlank(const QByteArray &bytes) { return bytes.count('\0') == bytes.size(); }

class LogSearch {
public:
    LogSearch(const QString &directory, bool quickLook, FileOperations &operations)
        : operations_(operations), quickLook_(quickLook) {
        findFiles(directory);
        for (const QString &path : std::as_const(headless_))
            lookBehindHead(path);
        for (std::vector<LogDataFile> &run : found_.runs)
            std::stable_sort(run.begin(), run.end(), [](const LogDataFile &a, const LogDataFile &b) {
                return std::pair(a.firstSample, a.head.sequence) < std::pair(b.firstSample, b.head.sequence);
            });
    }
    LogDataFiles &found() { return found_; }

private:
    void findFiles(const QString &directory);
    void look(const QString &folder, const QString &name);
    void open(const QString &path, const QString &name);
    void lookBehindHead(const QString &path);
    void addToRun(LogDataFile file);

    FileOperations &operations_;
    bool quickLook_;
    LogDataFiles found_;
    QStringList headless_; ///< data files whose header is damaged
};

void LogSearch::findFiles(const QString &directory) {
    const QString folder = logDirectory(directory);
    if (folder.isEmpty())
        return;
    QStringList names;
    if (const std::error_code error = listFolder(operations_, folder, names))
        if (error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory)
            found_.addBadFile(folder, error);
    for (const QString &name : std::as_const(names))
        look(folder, name);
}

/// Symbolic links are never followed.
void LogSearch::look(const QString &folder, const QString &name) {
    const QString path = folder + u'/' + name;
    struct stat entry {};
    if (::lstat(QFile::encodeName(path).constData(), &entry) != 0) {
        if (errno != ENOENT && !isNamedAsDocument(name))
            found_.addBadFile(path, {errno, std::generic_category()});
    } else if (S_ISREG(entry.st_mode)) {
        open(path, name);
    }
}

/// A file belongs to the log by its header, whatever its name. One that cannot be read may belong to it, unless it is
/// named as a document; one without an intact header does if it is named as a data file. Others are ignored.
void LogSearch::open(const QString &path, const QString &name) {
    RecordReader reader(path, operations_);
    if (quickLook_)
        reader.searchAtMost(searchedInAQuickLook);
    const std::optional<FileHead> head = reader.head();
    if (!head) {
        if (reader.error() && !isNamedAsDocument(name))
            found_.addBadFile(path, reader.error());
        else if (logFileNumber(name) != 0)
            headless_ << path;
    } else if (head->kind == runningLogKind && head->version > runningLogVersion) {
        found_.addBadFile(path, std::make_error_code(std::errc::not_supported));
    } else if (head->kind == runningLogKind) {
        addToRun({path, *head, reader.filledSize(), firstSampleOf(reader)});
        if (reader.error())
            found_.addBadFile(path, reader.error());
    }
}

/// Records are recognised by the identity in the file header. When that is damaged too, the first run's is tried, and
/// one that the records themselves tell.
void LogSearch::lookBehindHead(const QString &path) {
    constexpr auto headSize = static_cast<qsizetype>(FileHead::size);
    RecordReader file(path, operations_);
    const QByteArray beginning = file.beginning(AppendFile::layout);
    if (file.error())
        return found_.addBadFile(path, file.error());
    if (isBlank(beginning.mid(headSize)))
        return; // a power cut came while the file was begun
    const std::span<const char, FileHead::size> damaged(beginning.constData(), FileHead::size);
    std::vector heads{FileHead::mended(damaged).value_or(FileHead::unchecked(damaged))};
    if (!found_.runs.empty())
        heads.push_back(found_.runs.front().front().head);
    if (file.presumeFromRecords())
        heads.push_back(*file.head());
    for (const FileHead &head : heads) {
        RecordReader reader(path, operations_);
        if (quickLook_)
            reader.searchAtMost(searchedInAQuickLook);
        reader.presume(head);
        if (const quint64 first = firstSampleOf(reader); first != nowhere)
            return addToRun({path, head, reader.filledSize(), first});
        if (reader.error())
            return found_.addBadFile(path, reader.error());
        found_.gaveUp |= reader.gaveUp();
    }
    // A blank header is no fault, whatever follows it: its first flush never ended, so nothing was reported as safe.
    if (!isBlank(beginning.first(headSize)))
        found_.addBadFile(path, std::make_error_code(std::errc::bad_message));
}

void LogSearch::addToRun(LogDataFile file) {
    if (const qint64 written = file.head.written; written != 0)
        found_.begun = found_.begun == 0 ? written : std::min(found_.begun, written);
    const auto run = std::find_if(found_.runs.begin(), found_.runs.end(), [&](const std::vector<LogDataFile> &files) {
        return files.front().head.identity == file.head.identity;
    });
    if (run != found_.runs.end())
        run->push_back(std::move(file));
    else
        found_.runs.push_back({std::move(file)});
}

} // namespace

void LogDataFiles::addBadFile(const QString &path, std::error_code error) {
    const auto isSame = [&](const BadLogFile &file) { return file.path == path; };
    if (std::none_of(badFiles.begin(), badFiles.end(), isSame))
        badFiles.push_back({path, error});
}

quint64 LogDataFiles::room() const {
    quint64 samples = 0;
    for (const std::vector<LogDataFile> &run : runs)
        for (const LogDataFile &file : run)
            samples += file.size / sizeof(SamplePair);
    return samples;
}

LogDataFiles findLogDataFiles(const QString &directory, bool quickLook, FileOperations &operations) {
    return std::move(LogSearch(directory, quickLook, operations).found());
}

QStringList inWords(const std::vector<BadLogFile> &files) {
    QStringList lines;
    for (const BadLogFile &file : files) {
        const std::error_code error = file.error;
        const QString why = !file.isUnread()                    ? QStringLiteral("damaged")
                            : error == std::errc::not_supported ? QStringLiteral("of a newer version of the program")
                                                                : QString::fromLocal8Bit(error.message().c_str());
        lines << file.path + QStringLiteral(": ") + why;
    }
    return lines;
}

} // namespace ostrel
