// SPDX-License-Identifier: MIT
#include "chart/files/RunningLogReader.h"

#include "chart/files/ChartRecords.h"
#include "chart/files/LogPromises.h"
#include "chart/files/RunningLogFiles.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ostrel {

// How a log is put together: run after run, and of a run file after file (RunningLogSearch). Samples that are there
// already are passed over; marks and method texts are collected and sorted by number at the end of the run, since a
// failed call leaves some of them twice. Damaged records are skipped. Promises (LogPromises) show what is missing. A
// quick look ends with the first sample or mark.

namespace {

constexpr quint64 lastNumber = quint64{1} << 48; // beyond any log

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
        : operations_(operations), quickLook_(quickLook), files_(findLogDataFiles(directory, quickLook, operations)),
          fillable_(files_.room()) {
        if (!quickLook)
            log_.data.samples.expect(static_cast<qint64>(fillable_));
        for (const std::vector<LogDataFile> &run : files_.runs)
            joinRun(run);
        log_.badFiles = files_.badFiles;
        log_.begun = files_.begun;
    }
    RecoveredLog &log() { return log_; }
    bool gaveUp() const { return files_.gaveUp; }
    /// There is a sample or mark, or one was promised or is missing.
    bool heldAnything() const { return !log_.empty() || !log_.gaps.empty() || !marks_.empty() || promised_; }
    bool isDamaged() const { return damaged_; }

private:
    void joinRun(const std::vector<LogDataFile> &run);
    void takeFile(const LogDataFile &file);
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

    FileOperations &operations_;
    bool quickLook_;
    LogDataFiles files_;
    quint64 fillable_;      ///< a longer gap is not filled: the files have no room for so many samples
    bool promised_ = false; ///< a run has promised samples
    bool damaged_ = false;  ///< a file holds something else than was written; zeros and an early end do not count
    RecoveredLog log_;
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

void LogJoiner::joinRun(const std::vector<LogDataFile> &run) {
    nextSample_ = 0;
    title_ = notes_ = {};
    provenance_ = {};
    firstOfRun_ = log_.data.samples.size();
    promises_ = {};
    const std::size_t gaps = log_.gaps.size();
    for (const LogDataFile &file : run)
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

/// Of the last stretch the running log does not tell the end.
void LogJoiner::addProvenance() {
    Provenance &run = provenance_.item;
    if (!run.stretches.empty()) {
        constexpr double msPerMinute = 60000;
        Provenance::Stretch &open = run.stretches.back();
        open.to = std::max(open.from, ChartData::timeOf(log_.data.samples.size() - 1 - firstOfRun_));
        open.ended = open.begun.addMSecs(std::llround((open.to - open.from) * msPerMinute));
    }
    log_.data.provenance.join(run, ChartData::timeOf(firstOfRun_));
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

void LogJoiner::takeFile(const LogDataFile &file) {
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
    files_.gaveUp |= reader.gaveUp();
    if (reader.error())
        files_.addBadFile(file.path, reader.error());
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
    log_.gaps.push_back({samples.size(), static_cast<qint64>(missing), filled});
    if (filled) {
        samples.appendMissing(static_cast<qint64>(missing));
        fillable_ -= missing;
    }
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

} // namespace ostrel
