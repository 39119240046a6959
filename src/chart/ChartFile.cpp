// SPDX-License-Identifier: MIT
#include "chart/ChartFile.h"

#include "files/DurableFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <new>
#include <tuple>
#include <utility>

namespace {

constexpr quint32 currentVersion = 1;

// An hour of samples: what a damaged spot costs, and what the processor's cache holds on its way.
constexpr qint64 samplesInRecord = 16384;
constexpr qint64 itemsInRecord = 4096;

/// What goes into a file: a stretch of a run's samples, and the rest.
struct Content {
    const ChartData &run;
    qint64 from;
    qint64 to;
    std::span<const EventMark> marks;
    std::span<const MethodText> methodTexts;
    AxisValues axes;

    ChartCounts counts() const { return {static_cast<quint64>(to - from), marks.size(), methodTexts.size()}; }
};

/// Writes records one behind the other, in large pieces.
class Writer {
public:
    Writer(DurableFile &file, const FileHead &head) : file_(file), identity_(head.identity) {
        gathered_.reserve(piece);
        gather(head.bytes());
    }

    template <typename Put>
    void record(quint32 kind, Put put) {
        RecordPieces record(kind);
        put(record);
        for (const std::span<const char> bytes : record.seal(identity_, number_))
            gather({bytes.data(), static_cast<qsizetype>(bytes.size())});
        ++number_;
    }
    /// `count` items in as many records as it takes.
    template <typename Put>
    void records(quint32 kind, qint64 count, qint64 inOne, Put put) {
        for (qint64 first = 0; first < count; first += inOne)
            record(kind, [&](RecordPieces &record) { put(record, first, std::min(count, first + inOne)); });
    }
    void flush() {
        file_.write(gathered_);
        gathered_.resize(0);
    }

private:
    static constexpr qsizetype piece = 1 << 18;

    void gather(QByteArrayView bytes) {
        if (gathered_.size() + bytes.size() > piece)
            flush();
        if (bytes.size() > piece)
            file_.write(bytes);
        else
            gathered_.append(bytes);
    }

    DurableFile &file_;
    quint64 identity_;
    quint32 number_ = 0;
    QByteArray gathered_;
};

/// What is small and dear comes first: it is there still when the end of the file is not.
void write(const Content &content, Writer &writer) {
    using Record = RecordPieces;
    writer.record(titleRecord, [&](Record &record) { putText(record, content.run.title); });
    writer.record(axesRecord, [&](Record &record) { putAxes(record, content.axes); });
    writer.record(notesRecord, [&](Record &record) { putText(record, content.run.notes); });
    const auto part = [](auto items, qint64 first, qint64 end) {
        return items.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
    };
    const ChartCounts counts = content.counts();
    writer.records(methodRecord, static_cast<qint64>(counts.methodTexts), itemsInRecord,
                   [&](Record &record, qint64 first, qint64 end) {
                       putMethodTexts(record, static_cast<quint64>(first), part(content.methodTexts, first, end));
                   });
    writer.records(marksRecord, static_cast<qint64>(counts.marks), itemsInRecord,
                   [&](Record &record, qint64 first, qint64 end) {
                       putMarks(record, static_cast<quint64>(first), part(content.marks, first, end));
                   });
    writer.records(samplesRecord, static_cast<qint64>(counts.samples), samplesInRecord,
                   [&](Record &record, qint64 first, qint64 end) {
                       putSamples(record, static_cast<quint64>(first), content.run.samples, content.from + first,
                                  content.from + end);
                   });
    writer.record(endRecord, [&](Record &record) { putCounts(record, counts); });
    writer.flush();
}

std::error_code save(const QString &path, quint32 kind, const Content &content, FileOperations &operations) try {
    DurableFile file(path, operations);
    Writer writer(file, FileHead::of(kind, currentVersion));
    write(content, writer);
    return file.commit();
} catch (const std::bad_alloc &) {
    return std::make_error_code(std::errc::not_enough_memory);
}

/// The first of the samples from `from` to before `end` whose time is such, given that those behind it are too.
template <typename Such>
qint64 firstSample(qint64 from, qint64 end, Such such) {
    while (from < end) {
        const qint64 middle = from + (end - from) / 2;
        if (such(static_cast<float>(ChartData::timeOf(middle))))
            end = middle;
        else
            from = middle + 1;
    }
    return from;
}

/// The samples that the time axis shows, by the same single precision as it.
std::pair<qint64, qint64> shownSamples(const ChartData &run, const AxisValues &axes) {
    const qint64 from = firstSample(0, run.samples.size(), [&](float time) { return time >= axes.timeMin; });
    return {from, firstSample(from, run.samples.size(), [&](float time) { return !(time <= axes.timeMax); })};
}

// Any chart's axes, with much to spare, and no number that overflows when a picture is laid out.
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

/// Reads a file into a run of its own.
class Reading {
public:
    explicit Reading(const QString &path) : reader_(path) {}

    /// False with a fault that leaves nothing to read.
    bool beginsWell();
    /// Up to the first fault.
    void readStrictly();
    /// Behind a fault too, as long as records come.
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
    void note(ChartFileFault fault, quint64 position);
    ChartCounts held() const {
        return {static_cast<quint64>(run.samples.size()), run.marks.size(), run.methodTexts.size()};
    }

    RecordReader reader_;
    quint32 records_ = 0;
    std::size_t place_ = 0; ///< of the last record in the order of kinds
    bool ended_ = false;
};

bool Reading::beginsWell() {
    report.head = reader_.head();
    if (reader_.error())
        note(ChartFileFault::Unreadable, 0);
    else if (!report.head || (report.head->kind != dataFile && report.head->kind != logFile) ||
             report.head->version == 0)
        note(ChartFileFault::NotAChart, 0);
    else if (report.head->version > currentVersion)
        note(ChartFileFault::NewerVersion, 0);
    else
        run.samples.expect(static_cast<qint64>(reader_.fileSize() / sizeof(SamplePair)));
    return report.good();
}

void Reading::readStrictly() {
    while (!ended_ && report.good())
        next();
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

/// Takes the next record, good or not. False when none begins where it should.
bool Reading::next() {
    const quint64 position = reader_.nextPosition();
    if (const RecordReader::Found found = reader_.next(); found != RecordReader::Found::Record) {
        const bool cut = found == RecordReader::Found::End || reader_.cutOff();
        note(cut ? ChartFileFault::Truncated : ChartFileFault::Damaged, position);
        return false;
    }
    takeRecord();
    return true;
}

void Reading::takeRecord() {
    const bool inOrder = isInOrder();
    if (!take() || !inOrder)
        note(ChartFileFault::Damaged, reader_.recordPosition());
}

/// Only the first fault counts. What cannot be read is not damaged, as far as one knows.
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
    static constexpr std::size_t once = 3; // these come once each, the others as often as it takes
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

/// Those that go on where the ones before have ended.
template <typename Item>
bool Reading::takeItems(std::vector<Item> &items, bool (*takeFrom)(RecordReader &, quint64 &, std::vector<Item> &)) {
    quint64 first = 0;
    std::vector<Item> more;
    if (!takeFrom(reader_, first, more) || more.empty() || first != items.size())
        return false;
    items.insert(items.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
    return true;
}

/// Straight to where they stay. Samples that do not stand the check are not counted in.
bool Reading::takeSamples() {
    const auto numbers = takeSampleNumbers(reader_);
    const auto size = static_cast<quint64>(run.samples.size());
    if (!numbers || numbers->count == 0 || numbers->first != size ||
        numbers->count > SampleStore::chunkSize - size % SampleStore::chunkSize)
        return false;
    const std::span<SamplePair> samples = run.samples.room().first(static_cast<std::size_t>(numbers->count));
    if (!reader_.take(samples.data(), samples.size_bytes()) || !reader_.finish())
        return false;
    run.samples.appendFromRoom(samples.size());
    return true;
}

bool Reading::takeEnd() {
    ended_ = true;
    ChartCounts counts;
    if (!takeCounts(reader_, counts))
        return false;
    report.counts = counts;
    return counts == held() && reader_.nextPosition() == reader_.fileSize();
}

ChartFileReport readChartFile(const QString &path, ChartData &run, AxisValues &axes, bool salvage) try {
    Reading reading(path);
    if (!reading.beginsWell())
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
    ChartFileReport report;
    report.fault = ChartFileFault::Unreadable;
    report.error = std::make_error_code(std::errc::not_enough_memory);
    return report;
}

} // namespace

std::error_code saveChartFile(const QString &path, quint32 kind, const ChartData &run, const AxisValues &axes,
                              FileOperations &operations) {
    return save(path, kind, {run, 0, run.samples.size(), run.marks, run.methodTexts, axes}, operations);
}

std::error_code saveChartStretch(const QString &path, const ChartData &run, const AxisValues &axes,
                                 FileOperations &operations) {
    const auto [from, to] = shownSamples(run, axes);
    const double start = from < to ? ChartData::timeOf(from) : axes.timeMin;
    const double length = from < to ? ChartData::timeOf(to - 1 - from) : 0;
    std::vector<EventMark> marks;
    std::copy_if(run.marks.begin(), run.marks.end(), std::back_inserter(marks),
                 [&](const EventMark &mark) { return axes.timeMin <= mark.time && mark.time <= axes.timeMax; });
    for (EventMark &mark : marks)
        mark.time = static_cast<float>(std::max(mark.time - start, 0.0));
    std::vector<MethodText> methodTexts = run.methodTexts;
    for (MethodText &text : methodTexts)
        text.time = static_cast<float>(std::clamp(text.time - start, 0.0, length));
    AxisValues moved = axes;
    moved.timeMin = 0;
    moved.timeMax = axes.timeMax - axes.timeMin;
    return save(path, dataFile, {run, from, to, marks, methodTexts, moved}, operations);
}

ChartFileReport loadChartFile(const QString &path, ChartData &run, AxisValues &axes) {
    return readChartFile(path, run, axes, false);
}

ChartFileReport salvageChartFile(const QString &path, ChartData &run, AxisValues &axes) {
    return readChartFile(path, run, axes, true);
}
