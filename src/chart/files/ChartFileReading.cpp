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

enum class Samples { Kept, OnlyChecked };

/// Reads a file into the members `run` and `axes`.
class Reading {
public:
    Reading(const QString &path, FileOperations &operations, Samples samples = Samples::Kept)
        : path_(path), keepsSamples_(samples == Samples::Kept), reader_(path, operations) {}

    /// Checks the file header. False when it has a fault.
    bool beginsWell();
    /// After that: true when enough of a damaged header is left to recognise the records behind it.
    bool goesOnBehindHead();
    /// Reads up to the first fault.
    void readStrictly();
    /// Reads on behind faults, as long as there are records.
    void readLeniently();

    ChartFileReport report;
    ChartData run;
    AxisValues axes;

private:
    bool next();
    void takeRecord();
    bool isInOrder();
    bool take();
    template <typename Item>
    bool takeItems(std::vector<Item> &items, bool (*takeFrom)(RecordReader &, quint64 &, std::vector<Item> &));
    bool takeSamples();
    bool takeEnd();
    std::optional<FileHead> likelyHead();
    void noteHead();
    void noteRecord();
    void noteTrailing();
    void note(ChartFileFault fault, quint64 position);
    ChartCounts held() const {
        return {static_cast<quint64>(run.samples.size()) + dropped_, run.marks.size(), run.methodTexts.size()};
    }

    QString path_;
    bool keepsSamples_;
    quint64 dropped_ = 0; ///< samples that were good and are not kept
    RecordReader reader_;
    quint32 records_ = 0;
    std::size_t place_ = 0; ///< of the last record's kind in the order of kinds
    bool ended_ = false;
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
    const std::optional<FileHead> head = report.fault == ChartFileFault::Damaged ? likelyHead() : std::nullopt;
    if (head)
        reader_.presume(*head);
    return head.has_value();
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
    while (!ended_) {
        if (next())
            continue;
        if (!reader_.searchNext())
            return;
        takeRecord();
    }
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
    report.lost |= found != RecordReader::Found::Record;
    return found == RecordReader::Found::Record;
}

void Reading::takeRecord() {
    const bool inOrder = isInOrder();
    if (!take() || !inOrder)
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
    report.lost = true;
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
    static constexpr std::array order{titleRecord, axesRecord,    notesRecord, methodRecord,
                                      marksRecord, samplesRecord, endRecord};
    static constexpr std::size_t once = 3; // the first three kinds come once each, the others repeat
    const auto place =
        static_cast<std::size_t>(std::find(order.begin(), order.end(), reader_.record().kind) - order.begin());
    const bool follows = records_ < once ? place == records_ : place >= std::max(place_, once);
    place_ = place;
    return reader_.record().number == records_++ && place < order.size() && follows;
}

bool Reading::take() {
    switch (reader_.record().kind) {
    case titleRecord:
        return takeText(reader_, run.title);
    case axesRecord:
        return takeAxes(reader_, axes);
    case notesRecord:
        return takeText(reader_, run.notes);
    case methodRecord:
        return takeItems(run.methodTexts, takeMethodTexts);
    case marksRecord:
        return takeItems(run.marks, takeMarks);
    case samplesRecord:
        return takeSamples();
    case endRecord:
        return takeEnd();
    default:
        return false;
    }
}

/// Appends the record's items unless they are there already; false when their numbers do not continue those before.
template <typename Item>
bool Reading::takeItems(std::vector<Item> &items, bool (*takeFrom)(RecordReader &, quint64 &, std::vector<Item> &)) {
    quint64 first = 0;
    std::vector<Item> more;
    if (!takeFrom(reader_, first, more) || more.empty() || first < items.size())
        return false;
    const bool continues = first == items.size();
    items.insert(items.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
    return continues;
}

/// Reads directly into the store, without a copy. Samples that fail the check are not appended. Samples that are not
/// kept come to the same place one record after the other.
bool Reading::takeSamples() {
    const auto numbers = takeSampleNumbers(reader_);
    const quint64 size = held().samples;
    if (!numbers || numbers->count == 0 || numbers->first != size ||
        numbers->count > SampleStore::chunkSize - size % SampleStore::chunkSize)
        return false;
    const std::span<SamplePair> samples = run.samples.room().first(static_cast<std::size_t>(numbers->count));
    if (!reader_.take(samples.data(), samples.size_bytes()) || !reader_.finish())
        return false;
    if (keepsSamples_)
        run.samples.appendFromRoom(samples.size());
    else
        dropped_ += samples.size();
    return true;
}

bool Reading::takeEnd() {
    ended_ = true;
    ChartCounts counts;
    if (!takeCounts(reader_, counts))
        return false;
    report.counts = counts;
    return counts == held();
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
