// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <iterator>
#include <new>
#include <tuple>
#include <utility>

namespace ostrel {

namespace {

// Far beyond the axes of any chart, and small enough that no computation of a layout overflows.
constexpr float greatest = 1e6F;

bool usable(float from, float to) { return from >= -greatest && from < to && to <= greatest; }

void mendAxes(AxisValues &axes) {
    const AxisValues fresh;
    if (!usable(axes.uvMin, axes.uvMax))
        std::tie(axes.uvMin, axes.uvMax) = std::pair(fresh.uvMin, fresh.uvMax);
    if (!usable(axes.condMin, axes.condMax))
        std::tie(axes.condMin, axes.condMax) = std::pair(fresh.condMin, fresh.condMax);
    if (!usable(axes.timeMin, axes.timeMax))
        std::tie(axes.timeMin, axes.timeMax) = std::pair(fresh.timeMin, fresh.timeMax);
}

/// The numbers of a file's marks or method texts that were read, and how many are missing between them.
struct ItemNumbers {
    quint64 next = 0;
    quint64 lost = 0;
};

enum class Samples { Kept, OnlyChecked };

/// Reads a file into the members `run` and `axes`.
class Reading {
public:
    Reading(const QString &path, FileOperations &operations, Samples samples = Samples::Kept)
        : path_(path), keepsSamples_(samples == Samples::Kept), reader_(path, operations) {}

    /// Checks the file header. False when it has a fault.
    bool beginsWell();
    /// After that: true when the records behind a damaged header can be recognised.
    bool goesOnBehindHead();
    /// Reads up to the first fault.
    void readStrictly();
    /// Reads on behind faults, as long as there are records, and counts what is missing.
    void readLeniently();

    ChartFileReport report;
    ChartData run;
    AxisValues axes;

private:
    bool next();
    void takeRecord();
    bool isInOrder();
    bool take();
    bool takeText(QString &text, bool &missing);
    bool takeAxes();
    bool takeProvenance();
    bool takeCounts();
    template <typename Item>
    bool takeItems(std::vector<Item> &items, ItemNumbers &numbers,
                   bool (*takeFrom)(RecordReader &, quint64 &, std::vector<Item> &));
    bool takeSamples();
    bool takeSamplesBehindGap(const SampleNumbers &numbers);
    void bridge(quint64 first);
    void countLosses();
    std::optional<FileHead> likelyHead();
    void noteHead();
    void noteRecord();
    void noteTrailing();
    void note(ChartFileFault fault, quint64 position);
    ChartCounts held() const { return {nextSample_, marks_.next, methodTexts_.next}; }

    QString path_;
    bool keepsSamples_;
    quint64 dropped_ = 0; ///< samples that were good and are not kept
    RecordReader reader_;
    bool lenient_ = false;
    quint32 records_ = 0;
    std::size_t place_ = 0; ///< of the last record's kind in the order of kinds
    bool isNew_ = false;    ///< it has a record that there is from version 2 on
    bool ended_ = false;
    bool endsInOrder_ = false;          ///< the last record bears the number that it should
    std::optional<ChartCounts> counts_; ///< as the file tells
    quint64 nextSample_ = 0;            ///< its number in the file
    quint64 fillable_ = 0;              ///< so many missing samples may be filled in
    ItemNumbers marks_;
    ItemNumbers methodTexts_;
    std::vector<SamplePair> samples_; ///< of a record that does not follow the one before
};

bool Reading::beginsWell() {
    report.head = reader_.head();
    if (reader_.error())
        note(ChartFileFault::Unreadable, 0);
    else if (!report.head && (likelyHead() || bearsChartMark(path_)))
        noteHead();
    else if (!report.head || (report.head->kind != dataFile && report.head->kind != logFile) ||
             report.head->version == 0)
        note(ChartFileFault::NotAChart, 0);
    else if (report.head->version > chartFileVersion)
        note(ChartFileFault::NewerVersion, 0);
    else if (keepsSamples_)
        run.samples.expect(static_cast<qint64>(reader_.filledSize() / sizeof(SamplePair)));
    return report.good();
}

bool Reading::goesOnBehindHead() {
    if (report.head || report.fault == ChartFileFault::Unreadable)
        return false;
    if (const std::optional<FileHead> head = likelyHead()) {
        reader_.presume(*head);
        const bool known = reader_.next() == RecordReader::Found::Record || reader_.searchNext();
        reader_.rewind();
        if (known)
            return true;
    }
    if (!reader_.presumeFromRecords())
        return false;
    report.fault = ChartFileFault::Damaged; // a chart file after all
    return true;
}

/// A guess at a damaged header: with one byte corrected, or as it is, since the damage may not matter for reading.
std::optional<FileHead> Reading::likelyHead() {
    const QByteArray bytes = reader_.beginning(FileHead::size);
    if (bytes.size() < static_cast<qsizetype>(FileHead::size))
        return std::nullopt;
    const std::span<const char, FileHead::size> all(bytes.constData(), FileHead::size);
    std::optional<FileHead> head = FileHead::mended(all);
    if (!head && bearsChartMark(path_))
        head = FileHead::unchecked(all);
    const bool isChart = head && (head->kind == dataFile || head->kind == logFile);
    return isChart && head->version > 0 && head->version <= chartFileVersion ? head : std::nullopt;
}

void Reading::readStrictly() {
    while (!ended_ && report.good())
        next();
    report.samples = held().samples;
}

void Reading::readLeniently() {
    // A run cannot have grown far beyond what its file has room for, unless its records were made to tell so.
    constexpr quint64 slack = 1 << 22;
    lenient_ = true;
    reader_.ignorePadding();
    fillable_ = reader_.filledSize() / sizeof(SamplePair) + slack;
    ChartFileLosses &losses = report.losses;
    losses.title = losses.axes = losses.notes = losses.provenance = true; // until their records are found
    // The last record may stand there twice, with others behind it.
    while (!ended_ || reader_.nextPosition() < reader_.fileSize()) {
        if (next())
            continue;
        if (!reader_.searchNext())
            break;
        takeRecord();
    }
    countLosses();
}

/// Takes the next record, intact or not. False when no record begins where it should.
bool Reading::next() {
    const quint64 position = reader_.nextPosition();
    const RecordReader::Found found = reader_.next();
    if (found == RecordReader::Found::End)
        note(ChartFileFault::Truncated, position);
    else if (found == RecordReader::Found::Record)
        takeRecord();
    else if (reader_.cutOff())
        note(ChartFileFault::Truncated, reader_.fileSize());
    else
        note(ChartFileFault::Damaged, position);
    return found == RecordReader::Found::Record;
}

void Reading::takeRecord() {
    const bool inOrder = isInOrder();
    if (!take() || !inOrder || !reader_.padded())
        noteRecord();
    else if (ended_ && reader_.nextPosition() < reader_.fileSize())
        noteTrailing();
}

void Reading::noteHead() {
    const quint64 size = reader_.fileSize();
    if (size < FileHead::size)
        note(ChartFileFault::Truncated, size);
    else
        note(ChartFileFault::Damaged, 0);
}

void Reading::noteRecord() {
    if (reader_.nextPosition() > reader_.fileSize()) // the file ends within the padding zeros
        return note(ChartFileFault::Truncated, reader_.fileSize());
    const bool first = report.good();
    note(ChartFileFault::Damaged, reader_.recordPosition());
    if (first && report.fault == ChartFileFault::Damaged)
        report.record = reader_.record();
}

void Reading::noteTrailing() {
    report.trailing = report.good();
    note(ChartFileFault::Damaged, reader_.nextPosition());
}

/// Only the first fault counts. A read error is reported as such: it does not mean that the file is damaged.
void Reading::note(ChartFileFault fault, quint64 position) {
    if (!report.good())
        return;
    report.error = reader_.error();
    report.fault = report.error ? ChartFileFault::Unreadable : fault;
    report.position = position;
}

bool Reading::isInOrder() {
    static constexpr std::array order{titleRecord,  axesRecord,  notesRecord,   sizeRecord, provenanceRecord,
                                      methodRecord, marksRecord, samplesRecord, endRecord};
    static constexpr std::size_t repeated = 5; // the first kinds come once each, the others as often as needed
    const bool isOld = report.head && report.head->version < 2;
    const std::size_t once = isOld ? repeated - 2 : repeated; // old files do not tell their size and provenance
    const auto place =
        static_cast<std::size_t>(std::find(order.begin(), order.end(), reader_.record().kind) - order.begin());
    const bool follows = records_ < once ? place == records_ : place >= std::max(place_, repeated);
    place_ = place;
    endsInOrder_ = reader_.record().number == records_++;
    return endsInOrder_ && place < order.size() && follows;
}

bool Reading::take() {
    switch (reader_.record().kind) {
    case titleRecord:
        return takeText(run.title, report.losses.title);
    case axesRecord:
        return takeAxes();
    case notesRecord:
        return takeText(run.notes, report.losses.notes);
    case sizeRecord:
        isNew_ = true;
        return takeCounts();
    case provenanceRecord:
        return takeProvenance();
    case methodRecord:
        return takeItems(run.methodTexts, methodTexts_, takeMethodTexts);
    case marksRecord:
        return takeItems(run.marks, marks_, takeMarks);
    case samplesRecord:
        return takeSamples();
    case endRecord:
        ended_ = true;
        return takeCounts() && *counts_ == held();
    default:
        return false;
    }
}

bool Reading::takeText(QString &text, bool &missing) {
    if (!ostrel::takeText(reader_, text))
        return false;
    missing = false;
    return true;
}

bool Reading::takeAxes() {
    if (!ostrel::takeAxes(reader_, axes))
        return false;
    report.losses.axes = false;
    return true;
}

bool Reading::takeProvenance() {
    isNew_ = true;
    if (!ostrel::takeProvenance(reader_, run.provenance))
        return false;
    report.losses.provenance = false;
    return true;
}

bool Reading::takeCounts() {
    ChartCounts counts;
    const bool agrees = ostrel::takeCounts(reader_, counts) && (!counts_ || *counts_ == counts);
    if (agrees)
        counts_ = counts;
    return agrees;
}

/// Appends the record's items unless they are there already; false when their numbers do not continue those before.
template <typename Item>
bool Reading::takeItems(std::vector<Item> &items, ItemNumbers &numbers,
                        bool (*takeFrom)(RecordReader &, quint64 &, std::vector<Item> &)) {
    quint64 first = 0;
    std::vector<Item> more;
    if (!takeFrom(reader_, first, more) || more.empty() || first < numbers.next)
        return false;
    const quint64 missing = first - numbers.next;
    numbers.lost += missing;
    numbers.next = first + more.size();
    items.insert(items.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
    return missing == 0;
}

/// Reads directly into the store, without a copy. Samples that fail the check are not appended. Samples that are not
/// kept come to the same place one record after the other.
bool Reading::takeSamples() {
    const auto numbers = takeSampleNumbers(reader_);
    if (!numbers || numbers->count == 0 ||
        numbers->count > SampleStore::chunkSize - numbers->first % SampleStore::chunkSize)
        return false;
    const auto size = static_cast<quint64>(run.samples.size());
    if (numbers->first != nextSample_ || nextSample_ != size + dropped_)
        return lenient_ && numbers->first >= nextSample_ && takeSamplesBehindGap(*numbers);
    const std::span<SamplePair> samples = run.samples.room().first(static_cast<std::size_t>(numbers->count));
    if (!reader_.take(samples.data(), samples.size_bytes()) || !reader_.finish())
        return false;
    if (keepsSamples_)
        run.samples.appendFromRoom(samples.size());
    else
        dropped_ += samples.size();
    nextSample_ += numbers->count;
    return true;
}

/// False when samples are missing before them: a record without damage has then been lost, or tells a wrong number.
bool Reading::takeSamplesBehindGap(const SampleNumbers &numbers) {
    samples_.resize(numbers.count);
    if (!reader_.take(samples_.data(), samples_.size() * sizeof(SamplePair)) || !reader_.finish())
        return false;
    const bool continues = numbers.first == nextSample_;
    if (!continues)
        bridge(numbers.first);
    run.samples.append(samples_);
    nextSample_ = numbers.first + numbers.count;
    return continues;
}

/// Fills in what is missing up to the sample of this number.
void Reading::bridge(quint64 first) {
    const quint64 missing = first - nextSample_;
    const bool filled = missing <= fillable_;
    report.losses.gaps.push_back({run.samples.size(), static_cast<qint64>(missing), filled});
    if (!filled)
        return;
    fillable_ -= missing;
    run.samples.appendMissing(static_cast<qint64>(missing));
}

void Reading::countLosses() {
    ChartFileLosses &losses = report.losses;
    const auto beyond = [](quint64 told, quint64 held) { return told > held ? told - held : 0; };
    const ChartCounts counts = counts_.value_or(held());
    // Without the counts a last record in its place tells as much.
    losses.openEnd = !counts_ && !(ended_ && endsInOrder_);
    losses.provenance &= isNew_ || (report.head && report.head->version > 1);
    losses.marks = marks_.lost + beyond(counts.marks, marks_.next);
    losses.methodTexts = methodTexts_.lost + beyond(counts.methodTexts, methodTexts_.next);
    if (const quint64 missing = beyond(counts.samples, nextSample_); missing > 0)
        losses.gaps.push_back({run.samples.size(), static_cast<qint64>(missing), false});
}

ChartFileReport outOfMemory() {
    ChartFileReport report;
    report.fault = ChartFileFault::Unreadable;
    report.error = std::make_error_code(std::errc::not_enough_memory);
    return report;
}

ChartFileReport readChartFile(const QString &path, ChartData &run, AxisValues &axes, bool salvage,
                              FileOperations &operations) try {
    Reading reading(path, operations);
    if (!reading.beginsWell() && !(salvage && reading.goesOnBehindHead()))
        return reading.report;
    if (salvage)
        reading.readLeniently();
    else
        reading.readStrictly();
    if (salvage || reading.report.good()) {
        mendAxes(reading.axes);
        run = std::move(reading.run);
        axes = reading.axes;
    }
    return reading.report;
} catch (const std::bad_alloc &) {
    return outOfMemory();
}

} // namespace

bool bearsChartMark(const QString &path) {
    constexpr qsizetype letters = 5; // without the line ends, which change in a file that was sent as text
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           file.read(letters) == FileHead().bytes().first(letters);
}

ChartFileReport loadChartFile(const QString &path, ChartData &run, AxisValues &axes, FileOperations &operations) {
    return readChartFile(path, run, axes, false, operations);
}

ChartFileReport checkChartFile(const QString &path, FileOperations &operations) try {
    Reading reading(path, operations, Samples::OnlyChecked);
    if (reading.beginsWell())
        reading.readStrictly();
    return reading.report;
} catch (const std::bad_alloc &) {
    return outOfMemory();
}

ChartFileReport salvageChartFile(const QString &path, ChartData &run, AxisValues &axes, FileOperations &operations) {
    return readChartFile(path, run, axes, true, operations);
}

} // namespace ostrel
