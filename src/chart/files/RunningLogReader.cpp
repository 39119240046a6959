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

// How a log is put together: the data files are grouped by the identity in their headers, one for each run, and sorted
// within a run by their first sample's number. Samples are taken file after file, without those already there; marks
// and method texts are collected and sorted by number at the end of the run, since a failed call leaves some of them
// twice. Damaged records are skipped. For a damaged header, the header with one byte corrected (else as it is) and then
// that of the first run are tried. Promises (LogPromises) show what is missing. A quick look ends with the first sample
// or mark.

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

/// What a log has many times, and of which only the latest counts: that in the file with the highest number in its
/// name.
template <typename Item>
struct Latest {
    int file = -1;
    Item item;

    void take(int number, const Item &found) {
        if (number >= file)
            *this = {number, found};
    }
};

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

/// Appends the items of a run in the order of their numbers, each once. Returns how many are missing up to the last
/// item, or of the `promised` ones if these are more.
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
    /// There is a sample or mark, or one was promised or is missing.
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
    void addProvenance();
    bool seenEnough() const { return quickLook_ && (log_.data.samples.size() > 0 || !marks_.empty()); }
    void addBadFile(const QString &path, std::error_code error);

    FileOperations &operations_;
    bool quickLook_;
    bool gaveUp_ = false;
    bool promised_ = false; ///< a run has promised samples
    bool damaged_ = false;  ///< a file holds something else than was written; zeros and an early end do not count
    RecoveredLog log_;
    std::vector<std::vector<DataFile>> runs_;
    QStringList headless_;   ///< data files whose header is damaged
    quint64 fillable_ = 0;   ///< a longer gap is not filled: the files have no room for so many samples
    quint64 nextSample_ = 0; ///< of the run
    std::vector<Numbered<EventMark>> marks_;
    std::vector<Numbered<MethodText>> methodTexts_;
    Latest<QString> title_;
    Latest<QString> notes_;
    Latest<Provenance> provenance_;
    qint64 firstOfRun_ = 0; ///< number of the run's first sample in the log
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

/// Symbolic links are never followed.
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

/// A file belongs to the log by its header, whatever its name. One that cannot be read may belong to it, unless it is
/// named as a document; one without an intact header does if it is named as a data file. Others are ignored.
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

/// Records are recognised by the identity in the file header. When that is damaged too, the first run's is tried.
void LogJoiner::lookBehindHead(const QString &path) {
    constexpr auto headSize = static_cast<qsizetype>(FileHead::size);
    RecordReader file(path, operations_);
    const QByteArray beginning = file.beginning(AppendFile::layout);
    if (file.error())
        return addBadFile(path, file.error());
    if (isBlank(beginning.mid(headSize)))
        return; // a power cut came while the file was begun
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
    RecordReader reader(path, operations_);
    if (reader.presumeFromRecords()) {
        const FileHead head = *reader.head();
        if (const quint64 first = firstSampleOf(reader); first != nowhere)
            return addToRun({path, head, reader.filledSize(), first});
    }
    // A blank header is no fault, whatever follows it: its first flush never ended, so nothing was reported as safe.
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

/// Adds each file only once, with its first error.
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
    provenance_ = {};
    firstOfRun_ = log_.data.samples.size();
    promises_ = {};
    const std::size_t gaps = log_.gaps.size();
    for (const DataFile &file : run)
        takeFile(file);
    promised_ |= promises_.counts().samples > 0;
    if (!quickLook_)
        endRun(gaps);
}

/// `gaps` is the number of gaps in the runs before.
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
        log_.data.title = title_.item;
    addNotes();
    addProvenance();
}

/// The first run of several gives the log its identity. Of the last stretch the running log does not tell the end.
void LogJoiner::addProvenance() {
    Provenance &run = provenance_.item;
    const double last = static_cast<double>(log_.data.samples.size() - 1 - firstOfRun_) / samplesPerMinute;
    if (!run.stretches.empty()) {
        constexpr double msPerMinute = 60000;
        Provenance::Stretch &open = run.stretches.back();
        open.to = std::max(open.from, last);
        open.ended = open.begun.addMSecs(std::llround((open.to - open.from) * msPerMinute));
    }
    const double shift = static_cast<double>(firstOfRun_) / samplesPerMinute;
    for (Provenance::Stretch &stretch : run.stretches) {
        stretch.from += shift;
        stretch.to += shift;
    }
    for (Provenance::ClockStep &step : run.clockSteps)
        step.minutes += shift;
    Provenance &all = log_.data.provenance;
    if (all.empty()) {
        all = std::move(run);
        return;
    }
    all.stretches.insert(all.stretches.end(), run.stretches.begin(), run.stretches.end());
    all.clockSteps.insert(all.clockSteps.end(), run.clockSteps.begin(), run.clockSteps.end());
}

/// Joins the notes of the runs. A text that is already contained is not repeated.
void LogJoiner::addNotes() {
    QString &notes = log_.data.notes;
    if (notes_.item.isEmpty() || notes.contains(notes_.item))
        return;
    if (!notes.isEmpty())
        notes += QStringLiteral("\r\n");
    notes += notes_.item;
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

/// False when the record's payload is damaged. A record of unknown kind counts as intact.
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
    case provenanceRecord: {
        Provenance provenance;
        if (!takeProvenance(reader, provenance))
            return false;
        provenance_.take(file, provenance);
        return true;
    }
    default:
        return true;
    }
}

/// Skips samples that earlier files hold: a failed call may still have brought them to the disk.
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
    // Item times count from the start of their own run, and include gaps that are not filled here.
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
