// SPDX-License-Identifier: MIT
#include "chart/RunningLogReader.h"

#include "chart/ChartRecords.h"
#include "chart/RunningLogFiles.h"
#include "files/AppendFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr quint64 lastNumber = quint64{1} << 48; // beyond any log
constexpr quint64 nowhere = std::numeric_limits<quint64>::max();

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

bool toNextRecord(RecordReader &reader) {
    const RecordReader::Found found = reader.next();
    return found == RecordReader::Found::Record || (found == RecordReader::Found::Damage && reader.searchNext());
}

/// Where the file sets in; `nowhere` when no record says so.
quint64 firstSampleOf(RecordReader &reader) {
    while (toNextRecord(reader)) {
        if (reader.record().kind != samplesRecord)
            continue;
        const std::optional<SampleNumbers> numbers = takeSampleNumbers(reader);
        if (numbers && reader.finish())
            return numbers->first;
    }
    return nowhere;
}

QByteArray beginningOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(qint64{AppendFile::layout}) : QByteArray();
}

bool isBlank(const QByteArray &bytes) { return bytes.count('\0') == bytes.size(); }

/// Puts the items of a run in their order, each once, behind those of the runs before. Answers how many are missing.
template <typename Item>
quint64 join(std::vector<Numbered<Item>> &from, std::vector<Item> &to) {
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
    return lost;
}

class Joiner {
public:
    /// With `glance` it ends with the first sample or mark.
    Joiner(const QString &directory, bool glance) : glance_(glance) {
        findFiles(directory);
        for (const QString &path : std::as_const(headless_))
            lookBehindHead(path);
        if (!glance)
            log_.data.samples.expect(static_cast<qint64>(fillable_));
        for (std::vector<DataFile> &run : runs_)
            joinRun(run);
    }
    RecoveredLog &log() { return log_; }

private:
    void findFiles(const QString &directory);
    void look(const QFileInfo &entry);
    void lookBehindHead(const QString &path);
    void addToRun(DataFile file);
    void joinRun(std::vector<DataFile> &run);
    void takeFile(const DataFile &file);
    void takeSamples(RecordReader &reader);
    void bridge(quint64 missing);
    template <typename Item, typename Take>
    void takeItems(RecordReader &reader, std::vector<Numbered<Item>> &to, Take take);
    bool seenEnough() const { return glance_ && (log_.data.samples.size() > 0 || !marks_.empty()); }
    void addBadFile(const QString &path, std::error_code error) { log_.badFiles.push_back({path, error}); }

    bool glance_;
    RecoveredLog log_;
    std::vector<std::vector<DataFile>> runs_;
    QStringList headless_;   ///< data files whose head is damaged
    quint64 fillable_ = 0;   ///< so many samples may be missing before we stop believing it
    quint64 nextSample_ = 0; ///< of the run
    std::vector<Numbered<EventMark>> marks_;
    std::vector<Numbered<MethodText>> methodTexts_;
    std::vector<SamplePair> samples_; ///< of the present record
};

void Joiner::findFiles(const QString &directory) {
    const QString folder = logDirectory(directory);
    if (folder.isEmpty())
        return;
    const QDir dir(folder);
    if (dir.exists() && !QFileInfo(folder).isReadable())
        addBadFile(folder, std::make_error_code(std::errc::permission_denied));
    for (const QFileInfo &entry : dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name))
        look(entry);
}

/// Files of ours are known by what they hold, however they are named. Of others it is none of our business what they
/// are.
void Joiner::look(const QFileInfo &entry) {
    const QString path = entry.filePath();
    RecordReader reader(path);
    const std::optional<FileHead> head = reader.head();
    if (!head) {
        if (logFileNumber(entry.fileName()) == 0)
            return;
        if (reader.error())
            addBadFile(path, reader.error());
        else
            headless_ << path;
    } else if (head->kind == runningLogKind && head->version > runningLogVersion) {
        addBadFile(path, std::make_error_code(std::errc::not_supported));
    } else if (head->kind == runningLogKind) {
        addToRun({path, *head, reader.fileSize(), firstSampleOf(reader)});
    }
}

/// Records are known by the file's identity. If that is damaged itself, it is most likely that of the run beside it.
void Joiner::lookBehindHead(const QString &path) {
    constexpr auto headSize = static_cast<qsizetype>(FileHead::size);
    const QByteArray beginning = beginningOf(path);
    if (isBlank(beginning.mid(headSize)))
        return; // the power went while the file was begun
    std::vector heads{
        FileHead::unchecked(std::span<const char, FileHead::size>(beginning.constData(), FileHead::size))};
    if (!runs_.empty())
        heads.push_back(runs_.front().front().head);
    for (const FileHead &head : heads) {
        RecordReader reader(path);
        reader.presume(head);
        if (const quint64 first = firstSampleOf(reader); first != nowhere)
            return addToRun({path, head, reader.fileSize(), first});
    }
    // Also when it took what stood further behind but not the head: nobody was ever told that any of it is safe.
    if (!isBlank(beginning.first(headSize)))
        addBadFile(path, std::make_error_code(std::errc::bad_message));
}

void Joiner::addToRun(DataFile file) {
    fillable_ += file.size / sizeof(SamplePair);
    const auto run = std::find_if(runs_.begin(), runs_.end(), [&](const std::vector<DataFile> &files) {
        return files.front().head.identity == file.head.identity;
    });
    if (run != runs_.end())
        run->push_back(std::move(file));
    else
        runs_.push_back({std::move(file)});
}

void Joiner::joinRun(std::vector<DataFile> &run) {
    std::stable_sort(run.begin(), run.end(), [](const DataFile &a, const DataFile &b) {
        return std::pair(a.firstSample, a.head.sequence) < std::pair(b.firstSample, b.head.sequence);
    });
    nextSample_ = 0;
    for (const DataFile &file : run)
        takeFile(file);
    log_.lostMarks += join(marks_, log_.data.marks);
    log_.lostMethodTexts += join(methodTexts_, log_.data.methodTexts);
}

void Joiner::takeFile(const DataFile &file) {
    RecordReader reader(file.path);
    reader.presume(file.head);
    while (!seenEnough() && toNextRecord(reader)) {
        if (reader.record().kind == samplesRecord)
            takeSamples(reader);
        else if (reader.record().kind == marksRecord)
            takeItems(reader, marks_, takeMarks);
        else if (reader.record().kind == methodRecord)
            takeItems(reader, methodTexts_, takeMethodTexts);
    }
    if (reader.error())
        addBadFile(file.path, reader.error());
}

/// What earlier files hold already is passed over: a failed call may have reached the disk all the same.
void Joiner::takeSamples(RecordReader &reader) {
    const std::optional<SampleNumbers> numbers = takeSampleNumbers(reader);
    if (!numbers || numbers->first > lastNumber)
        return;
    samples_.resize(numbers->count);
    if (!reader.take(samples_.data(), samples_.size() * sizeof(SamplePair)) || !reader.finish())
        return;
    const quint64 end = numbers->first + numbers->count;
    if (end <= nextSample_)
        return;
    if (numbers->first > nextSample_)
        bridge(numbers->first - nextSample_);
    log_.data.samples.append(std::span(samples_).last(end - nextSample_));
    nextSample_ = end;
}

void Joiner::bridge(quint64 missing) {
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
void Joiner::takeItems(RecordReader &reader, std::vector<Numbered<Item>> &to, Take take) {
    quint64 number = 0;
    std::vector<Item> items;
    if (!take(reader, number, items) || number > lastNumber)
        return;
    // Times count from the start of the item's own run, and with all of its samples.
    const auto shift = static_cast<double>(log_.data.samples.size()) - static_cast<double>(nextSample_);
    for (Item &item : items) {
        if (shift != 0)
            item.time = static_cast<float>(item.time + shift / samplesPerMinute);
        to.push_back({number++, std::move(item)});
    }
}

} // namespace

AxisValues RecoveredLog::axes() const {
    AxisValues axes;
    if (data.lastTime() > 0)
        axes.timeMax = data.lastTime();
    return axes;
}

RecoveredLog readRunningLog(const QString &directory) { return std::move(Joiner(directory, false).log()); }

bool runningLogStands(const QString &directory) {
    Joiner joiner(directory, true);
    return !joiner.log().empty();
}
