// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"
#include "chart/files/SaveNote.h"
#include "files/DurableFile.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace ostrel {

namespace {

constexpr qint64 itemsInRecord = 4096;

/// The contents of a file: a range of a run's samples, and the rest.
struct Content {
    const ChartData &run;
    qint64 from;
    qint64 to;
    std::span<const EventMark> marks;
    std::span<const MethodText> methodTexts;
    AxisValues axes;
    const Provenance &provenance;

    ChartCounts counts() const { return {static_cast<quint64>(to - from), marks.size(), methodTexts.size()}; }
};

/// Writes records one after the other, in large pieces.
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
    /// Writes `count` items in as many records as needed.
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

/// The small and valuable records come first: they remain when the end of the file is lost.
void write(const Content &content, Writer &writer) {
    using Record = RecordPieces;
    writer.record(titleRecord, [&](Record &record) { putText(record, content.run.title); });
    writer.record(axesRecord, [&](Record &record) { putAxes(record, content.axes); });
    writer.record(notesRecord, [&](Record &record) { putText(record, content.run.notes); });
    const ChartCounts counts = content.counts();
    writer.record(sizeRecord, [&](Record &record) { putCounts(record, counts); });
    writer.record(provenanceRecord, [&](Record &record) { putProvenance(record, content.provenance); });
    const auto part = [](auto items, qint64 first, qint64 end) {
        return items.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
    };
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
    Writer writer(file, FileHead::of(kind, chartFileVersion));
    write(content, writer);
    return file.commit();
} catch (const std::bad_alloc &) {
    return std::make_error_code(std::errc::not_enough_memory);
}

/// The first sample from `from` on whose time satisfies `such`, as all behind it must; `end` when there is none.
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

/// The samples that the time axis shows, compared in single precision like the axis.
std::pair<qint64, qint64> shownSamples(const ChartData &run, const AxisValues &axes) {
    const qint64 from = firstSample(0, run.samples.size(), [&](float time) { return time >= axes.timeMin; });
    return {from, firstSample(from, run.samples.size(), [&](float time) { return !(time <= axes.timeMax); })};
}

QString stretchInWords(double from, double to) {
    return QStringLiteral("stretch, minutes %1 to %2").arg(from, 0, 'f', 3).arg(to, 0, 'f', 3);
}

} // namespace

std::error_code saveChartFile(const QString &path, quint32 kind, const ChartData &run, const AxisValues &axes,
                              FileOperations &operations) {
    return save(path, kind, {run, 0, run.samples.size(), run.marks, run.methodTexts, axes, run.provenance}, operations);
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
    Provenance provenance = run.provenance.part(start, start + length);
    noteSave(provenance, stretchInWords(start, start + length));
    return save(path, dataFile, {run, from, to, marks, methodTexts, moved, provenance}, operations);
}

} // namespace ostrel
