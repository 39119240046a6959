// SPDX-License-Identifier: MIT
#include "chart/files/RunningLogReader.h"

#include "chart/files/ChartRecords.h"
#include "chart/files/LogPromises.h"
#include "chart/files/RunningLogFiles.h"
#include "files/AppendFile.h"

#include <QFile>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <limits>
#include <utility>

namespace ostrel {

// How a log is put together: the data files of a directory are grouped by the run of the program that wrote them, and
// sorted within a run by the number of their first sample. Samples are then taken in the order of their numbers; marks
// and method texts are gathered with their numbers and sorted at the end of the run, since a failed call leaves some of
// them twice. A damaged record is skipped; a file with a damaged header is read with the header of its run. Each flush
// has written how much the log holds by then (LogPromises), which tells what is missing. A quick look goes the same
// way and ends with the first sample or mark.

namespace {

constexpr quint64 lastNumber = quint64{1} << 48; // beyond any log
constexpr quint64 nowhere = std::numeric_limits<quint64>::max();
constexpr quint64 searchedInAQuickLook = 4 << 20; // bytes

struct DataFile {
    QString path;
    FileHead head;
    quint64 size = 0;
    quint64 firstSample = 0;
};

/// An item under its number in its run.
template <typename Item>
struct Numbered {
    quint64 number;
    Item item;
};

/// A text of which the latest counts: that of the file begun last.
struct LatestText {
    int file = -1;
    QString text;

    void take(int number, const QString &found) {
        if (number >= file)
            *this = {number, found};
    }
};

/// The number of the file's first sample; `nowhere` when no record says so.
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

/// Puts the items of a run in their order, each once, behind those of the runs before. Answers how many are missing of
/// the `promised` ones, or of those before the last.
template <typename Item>
quint64 join(std::vector<Numbered<Item>> &from, std::vector<Item> &to, quint64 promised) {
    std::stable_sort(from.begin(), from.end(), [](const auto &a, const auto &b) { return a.number < b.number; });
    quint64 lost = 0;
    quint64 next = 0;
    for (Numbered<Item> &numbered : from) {
        if (numbered.number < next)
            continue;
        lost += numbered.number - next;
        next = numbered.number + 1;
        to.push_back(std::move(numbered.item));
    }
    from.clear();
    return lost + (std::max(promised, next) - next);
}

class LogJoiner {
public:
    LogJoiner(const QString &directory, bool quickLook, FileOperations &operations)
        : operations_(operations), quickLook_(quickLook) {
        findFiles(directory);
        for (const QString &path : std::as_const(headless_))
            lookBehindHead(path);
        if (!quickLook)
            log_.data.samples.expect(static_cast<qint64>(fillable_));
        for (std::vector<DataFile> &run : runs_)
            joinRun(run);
    }
    RecoveredLog &log() { return log_; }
    bool gaveUp() const { return gaveUp_; }
    /// Also samples and marks that are not there any more.
    bool heldAnything() const { return !log_.empty() || !log_.gaps.empty() || !marks_.empty() || promised_; }
    bool isDamaged() const { return damaged_; }

private:
    void findFiles(const QString &directory);
    void look(const QString &folder, const QString &name);
    void open(const QString &path, const QString &name);
    void lookBehindHead(const QString &path);
    void addToRun(DataFile file);
    void joinRun(std::vector<DataFile> &run);
    void takeFile(const DataFile &file);
    bool toNextRecord(RecordReader &reader);
    bool takeRecord(RecordReader &reader, int file);
    bool takeSamples(RecordReader &reader);
    void bridge(quint64 missing);
    template <typename Item, typename Take>
    bool takeItems(RecordReader &reader, std::vector<Numbered<Item>> &to, Take take);
    void endRun(std::size_t gaps);
    void addNotes();
    bool seenEnough() const { return quickLook_ && (log_.data.samples.size() > 0 || !marks_.empty()); }
    void addBadFile(const QString &path, std::error_code error);

    FileOperations &operations_;
    bool quickLook_;
    bool gaveUp_ = false;
    bool promised_ = false; ///< a run has promised samples
    bool damaged_ = false;  ///< what is in a file is not what was written; zeros and a file's early end are no sign
    RecoveredLog log_;
    std::vector<std::vector<DataFile>> runs_;
    QStringList headless_;   ///< data files whose head is damaged
    quint64 fillable_ = 0;   ///< so many samples may be missing before we stop believing it
    quint64 nextSample_ = 0; ///< of the run
    std::vector<Numbered<EventMark>> marks_;
    std::vector<Numbered<MethodText>> methodTexts_;
    LatestText title_;
    LatestText notes_;
    LogPromises promises_;
    std::vector<SamplePair> samples_; ///< of the present record
};

void LogJoiner::findFiles(const QString &directory) {
    const QString folder = logDirectory(directory);
    if (folder.isEmpty())
        return;
    QStringList names;
    if (const std::error_code error = listFolder(operations_, folder, names))
        if (error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory)
            addBadFile(folder, error);
    for (const QString &name : std::as_const(names))
        look(folder, name);
}

/// Links are never followed.
void LogJoiner::look(const QString &folder, const QString &name) {
    const QString path = folder + u'/' + name;
    struct stat entry {};
    if (::lstat(QFile::encodeName(path).constData(), &entry) != 0) {
        if (errno != ENOENT && !isNamedAsDocument(name))
            addBadFile(path, {errno, std::generic_category()});
    } else if (S_ISREG(entry.st_mode)) {
        open(path, name);
    }
}

/// Files of ours are known by what they hold, however they are named: one that cannot be read may be ours, unless its
/// name tells otherwise. Of others it is none of our business what they are.
void LogJoiner::open(const QString &path, const QString &name) {
    RecordReader reader(path, operations_);
    if (quickLook_)
        reader.searchAtMost(searchedInAQuickLook);
    const std::optional<FileHead> head = reader.head();
    if (!head) {
        if (reader.error() && !isNamedAsDocument(name))
            addBadFile(path, reader.error());
        else if (logFileNumber(name) != 0)
            headless_ << path;
    } else if (head->kind == runningLogKind && head->version > runningLogVersion) {
        addBadFile(path, std::make_error_code(std::errc::not_supported));
    } else if (head->kind == runningLogKind) {
        addToRun({path, *head, reader.filledSize(), firstSampleOf(reader)});
        if (reader.error())
            addBadFile(path, reader.error());
    }
}

/// Records are known by the file's identity. If that is damaged itself, it is most likely that of the run beside it.
void LogJoiner::lookBehindHead(const QString &path) {
    constexpr auto headSize = static_cast<qsizetype>(FileHead::size);
    RecordReader file(path, operations_);
    const QByteArray beginning = file.beginning(AppendFile::layout);
    if (file.error())
        return addBadFile(path, file.error());
    if (isBlank(beginning.mid(headSize)))
        return; // the power went while the file was begun
    const std::span<const char, FileHead::size> damaged(beginning.constData(), FileHead::size);
    std::vector heads{FileHead::mended(damaged).value_or(FileHead::unchecked(damaged))};
    if (!runs_.empty())
        heads.push_back(runs_.front().front().head);
    for (const FileHead &head : heads) {
        RecordReader reader(path, operations_);
        if (quickLook_)
            reader.searchAtMost(searchedInAQuickLook);
        reader.presume(head);
        if (const quint64 first = firstSampleOf(reader); first != nowhere)
            return addToRun({path, head, reader.filledSize(), first});
        if (reader.error())
            return addBadFile(path, reader.error());
        gaveUp_ |= reader.gaveUp();
    }
    // Also when it took what was further behind but not the head: nobody was ever told that any of it is safe.
    if (!isBlank(beginning.first(headSize)))
        addBadFile(path, std::make_error_code(std::errc::bad_message));
}

void LogJoiner::addToRun(DataFile file) {
    fillable_ += file.size / sizeof(SamplePair);
    log_.begun = log_.begun == 0 ? file.head.written : std::min(log_.begun, file.head.written);
    const auto run = std::find_if(runs_.begin(), runs_.end(), [&](const std::vector<DataFile> &files) {
        return files.front().head.identity == file.head.identity;
    });
    if (run != runs_.end())
        run->push_back(std::move(file));
    else
        runs_.push_back({std::move(file)});
}

/// Each once, however often it has failed.
void LogJoiner::addBadFile(const QString &path, std::error_code error) {
    const auto isSame = [&](const BadLogFile &file) { return file.path == path; };
    if (std::none_of(log_.badFiles.begin(), log_.badFiles.end(), isSame))
        log_.badFiles.push_back({path, error});
}

void LogJoiner::joinRun(std::vector<DataFile> &run) {
    std::stable_sort(run.begin(), run.end(), [](const DataFile &a, const DataFile &b) {
        return std::pair(a.firstSample, a.head.sequence) < std::pair(b.firstSample, b.head.sequence);
    });
    nextSample_ = 0;
    title_ = notes_ = {};
    promises_ = {};
    const std::size_t gaps = log_.gaps.size();
    for (const DataFile &file : run)
        takeFile(file);
    promised_ |= promises_.counts().samples > 0;
    if (!quickLook_)
        endRun(gaps);
}

/// `gaps` were in the runs before.
void LogJoiner::endRun(std::size_t gaps) {
    const ChartCounts &promised = promises_.counts();
    if (promised.samples > nextSample_ && promised.samples <= lastNumber)
        bridge(promised.samples - nextSample_);
    const quint64 marks = join(marks_, log_.data.marks, std::min(promised.marks, lastNumber));
    const quint64 texts = join(methodTexts_, log_.data.methodTexts, std::min(promised.methodTexts, lastNumber));
    log_.lostMarks += marks;
    log_.lostMethodTexts += texts;
    log_.lostTexts |= promises_.lostTexts(log_.gaps.size() > gaps || marks > 0 || texts > 0);
    if (log_.data.title.isEmpty())
        log_.data.title = title_.text;
    addNotes();
}

/// The recorder's and the log's notes may be the same text.
void LogJoiner::addNotes() {
    QString &notes = log_.data.notes;
    if (notes_.text.isEmpty() || notes.contains(notes_.text))
        return;
    if (!notes.isEmpty())
        notes += QStringLiteral("\r\n");
    notes += notes_.text;
}

void LogJoiner::takeFile(const DataFile &file) {
    RecordReader reader(file.path, operations_);
    if (quickLook_)
        reader.searchAtMost(searchedInAQuickLook);
    reader.presume(file.head);
    promises_.beginFile();
    const int number = logFileNumber(file.path.section(u'/', -1));
    while (!seenEnough() && toNextRecord(reader)) {
        const RecordHead record = reader.record();
        ChartCounts counts;
        const bool isWhole = record.kind == endRecord ? takeCounts(reader, counts) : takeRecord(reader, number);
        damaged_ |= !isWhole || counts.samples > nextSample_;
        if (record.kind != endRecord)
            promises_.see(record, isWhole);
        else if (isWhole)
            promises_.promise(record, counts);
    }
    gaveUp_ |= reader.gaveUp();
    if (reader.error())
        addBadFile(file.path, reader.error());
}

bool LogJoiner::toNextRecord(RecordReader &reader) {
    switch (reader.next()) {
    case RecordReader::Found::Record:
        return true;
    case RecordReader::Found::Damage:
        if (reader.isBlankAt(reader.nextPosition()))
            promises_.passBlank();
        else
            damaged_ |= !reader.cutOff();
        return reader.searchNext();
    case RecordReader::Found::End:
        break;
    }
    return false;
}

/// False when the record's payload is damaged. One of a kind that is not known here counts as whole.
bool LogJoiner::takeRecord(RecordReader &reader, int file) {
    QString text;
    switch (reader.record().kind) {
    case samplesRecord:
        return takeSamples(reader);
    case marksRecord:
        return takeItems(reader, marks_, takeMarks);
    case methodRecord:
        return takeItems(reader, methodTexts_, takeMethodTexts);
    case titleRecord:
    case notesRecord:
        if (!takeText(reader, text))
            return false;
        (reader.record().kind == titleRecord ? title_ : notes_).take(file, text);
        return true;
    default:
        return true;
    }
}

/// What earlier files hold already is passed over: a failed call may have reached the disk all the same.
bool LogJoiner::takeSamples(RecordReader &reader) {
    const std::optional<SampleNumbers> numbers = takeSampleNumbers(reader);
    if (!numbers || numbers->first > lastNumber)
        return false;
    samples_.resize(numbers->count);
    if (!reader.take(samples_.data(), samples_.size() * sizeof(SamplePair)) || !reader.finish())
        return false;
    const quint64 end = numbers->first + numbers->count;
    if (end <= nextSample_)
        return true;
    if (numbers->first > nextSample_)
        bridge(numbers->first - nextSample_);
    log_.data.samples.append(std::span(samples_).last(end - nextSample_));
    nextSample_ = end;
    return true;
}

void LogJoiner::bridge(quint64 missing) {
    const bool filled = missing <= fillable_;
    SampleStore &samples = log_.data.samples;
    log_.gaps.push_back({ChartData::timeOf(samples.size()), static_cast<double>(missing) / samplesPerMinute, filled});
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    for (quint64 i = 0; filled && i < missing; ++i)
        samples.append(SamplePair{none, none});
    fillable_ -= filled ? missing : 0;
    nextSample_ += missing;
}

template <typename Item, typename Take>
bool LogJoiner::takeItems(RecordReader &reader, std::vector<Numbered<Item>> &to, Take take) {
    quint64 number = 0;
    std::vector<Item> items;
    if (!take(reader, number, items) || number > lastNumber)
        return false;
    // Times count from the start of the item's own run, and with all of its samples.
    const auto shift = static_cast<double>(log_.data.samples.size()) - static_cast<double>(nextSample_);
    for (Item &item : items) {
        if (shift != 0)
            item.time = static_cast<float>(item.time + shift / samplesPerMinute);
        to.push_back({number++, std::move(item)});
    }
    return true;
}

} // namespace

AxisValues RecoveredLog::axes() const {
    AxisValues axes;
    if (data.lastTime() > 0)
        axes.timeMax = data.lastTime();
    return axes;
}

RecoveredLog readRunningLog(const QString &directory, FileOperations &operations) {
    return std::move(LogJoiner(directory, false, operations).log());
}

LogFinding findRunningLog(const QString &directory, FileOperations &operations) {
    LogJoiner joiner(directory, true, operations);
    const std::vector<BadLogFile> &files = joiner.log().badFiles;
    if (std::any_of(files.begin(), files.end(), [](const BadLogFile &file) { return file.isUnread(); }))
        return LogFinding::Unread;
    if (joiner.gaveUp() || joiner.heldAnything())
        return LogFinding::Log;
    return joiner.isDamaged() || !files.empty() ? LogFinding::Damage : LogFinding::Nothing;
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
