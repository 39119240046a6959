// SPDX-License-Identifier: MIT
#include "chart/files/ChartRecords.h"

#include "chart/files/Crc32.h"
#include "chart/files/ProvenanceJson.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstring>
#include <utility>

namespace ostrel {

namespace {

// Text is stored as UTF-16, as in memory: every unit that the operator typed or the instrument sent is read back, also
// units that are not valid text.
constexpr std::size_t unitSize = sizeof(char16_t);

template <typename... T>
void append(QByteArray &bytes, const T &...values) {
    (bytes.append(reinterpret_cast<const char *>(&values), sizeof values), ...);
}

void appendText(QByteArray &bytes, const QString &text) {
    append(bytes, static_cast<quint32>(text.size()));
    bytes.append(reinterpret_cast<const char *>(text.utf16()), text.size() * static_cast<qsizetype>(unitSize));
}

void append(QByteArray &bytes, const EventMark &mark) {
    append(bytes, mark.time, mark.color, mark.height, quint16{0});
    appendText(bytes, mark.label);
}

void append(QByteArray &bytes, const MethodText &text) {
    append(bytes, text.time);
    appendText(bytes, text.text);
}

/// Reads values from a payload, front to back, and never beyond its end.
class Payload {
public:
    explicit Payload(const QByteArray &bytes) : left_(bytes.constData(), static_cast<std::size_t>(bytes.size())) {}

    bool atEnd() const { return left_.empty(); }

    template <typename... T>
    bool get(T &...values) {
        return (copy(&values, sizeof values) && ...);
    }
    bool getText(QString &text) {
        quint32 units = 0;
        return get(units) && getUnits(units, text);
    }
    bool getUnits(std::size_t units, QString &text) {
        if (units > left_.size() / unitSize)
            return false;
        text.resize(static_cast<qsizetype>(units));
        return copy(text.data(), units * unitSize);
    }
    std::size_t unitsLeft() const { return left_.size() / unitSize; }

private:
    bool copy(void *to, std::size_t size) {
        if (size > left_.size())
            return false;
        if (size > 0)
            std::memcpy(to, left_.data(), size);
        left_ = left_.subspan(size);
        return true;
    }

    std::span<const char> left_;
};

bool get(Payload &payload, EventMark &mark) {
    quint16 reserved = 0;
    return payload.get(mark.time, mark.color, mark.height, reserved) && reserved == 0 && payload.getText(mark.label);
}

bool get(Payload &payload, MethodText &text) { return payload.get(text.time) && payload.getText(text.text); }

template <typename Item>
void putItems(RecordPieces &record, quint64 first, std::span<const Item> items) {
    QByteArray bytes;
    append(bytes, first);
    for (const Item &item : items)
        append(bytes, item);
    record.add(bytes);
}

template <typename Item>
bool takeItems(RecordReader &reader, quint64 &first, std::vector<Item> &items) {
    QByteArray bytes;
    if (!reader.take(bytes) || !reader.finish())
        return false;
    Payload payload(bytes);
    quint64 number = 0;
    std::vector<Item> found;
    bool good = payload.get(number);
    while (good && !payload.atEnd())
        good = get(payload, found.emplace_back());
    if (!good)
        return false;
    first = number;
    items = std::move(found);
    return true;
}

/// Reads a payload that consists of exactly these values.
template <typename... T>
bool takeValues(RecordReader &reader, T &...values) {
    return reader.left() == (sizeof values + ...) && (reader.take(&values, sizeof values) && ...) && reader.finish();
}

} // namespace

void putSamples(RecordPieces &record, quint64 first, const SampleStore &samples, qint64 from, qint64 to) {
    QByteArray number;
    append(number, first);
    record.add(number);
    while (from < to) {
        const std::span<const SamplePair> all = samples.stretchFrom(from);
        const auto stretch = all.first(std::min(all.size(), static_cast<std::size_t>(to - from)));
        record.add(stretch.data(), stretch.size_bytes());
        from += static_cast<qint64>(stretch.size());
    }
}

quint32 sumOf(const SampleStore &samples) {
    quint32 sum = 0;
    for (qint64 from = 0; from < samples.size();) {
        const std::span<const SamplePair> stretch = samples.stretchFrom(from);
        sum = crc32Of(sum, stretch.data(), stretch.size_bytes());
        from += static_cast<qint64>(stretch.size());
    }
    return sum;
}

std::optional<SampleNumbers> takeSampleNumbers(RecordReader &reader) {
    SampleNumbers numbers;
    if (!reader.take(&numbers.first, sizeof numbers.first) || reader.left() % sizeof(SamplePair) != 0)
        return std::nullopt;
    numbers.count = reader.left() / sizeof(SamplePair);
    return numbers;
}

void putMarks(RecordPieces &record, quint64 first, std::span<const EventMark> marks) { putItems(record, first, marks); }

bool takeMarks(RecordReader &reader, quint64 &first, std::vector<EventMark> &marks) {
    return takeItems(reader, first, marks);
}

void putMethodTexts(RecordPieces &record, quint64 first, std::span<const MethodText> texts) {
    putItems(record, first, texts);
}

bool takeMethodTexts(RecordReader &reader, quint64 &first, std::vector<MethodText> &texts) {
    return takeItems(reader, first, texts);
}

void putText(RecordPieces &record, const QString &text) {
    record.add(
        QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * static_cast<qsizetype>(unitSize)));
}

bool takeText(RecordReader &reader, QString &text) {
    QByteArray bytes;
    if (!reader.take(bytes) || !reader.finish() || bytes.size() % static_cast<qsizetype>(unitSize) != 0)
        return false;
    Payload payload(bytes);
    return payload.getUnits(payload.unitsLeft(), text);
}

void putAxes(RecordPieces &record, const AxisValues &axes) {
    QByteArray bytes;
    append(bytes, axes.uvMin, axes.uvMax, axes.condMin, axes.condMax, axes.timeMin, axes.timeMax);
    record.add(bytes);
}

bool takeAxes(RecordReader &reader, AxisValues &axes) {
    AxisValues found;
    if (!takeValues(reader, found.uvMin, found.uvMax, found.condMin, found.condMax, found.timeMin, found.timeMax))
        return false;
    axes = found;
    return true;
}

void putCounts(RecordPieces &record, const ChartCounts &counts) {
    QByteArray bytes;
    append(bytes, counts.samples, counts.marks, counts.methodTexts);
    record.add(bytes);
}

bool takeCounts(RecordReader &reader, ChartCounts &counts) {
    ChartCounts found;
    if (!takeValues(reader, found.samples, found.marks, found.methodTexts))
        return false;
    counts = found;
    return true;
}

void putProvenance(RecordPieces &record, const Provenance &provenance) {
    record.add(QJsonDocument(toJson(provenance)).toJson(QJsonDocument::Compact));
}

bool takeProvenance(RecordReader &reader, Provenance &provenance) {
    QByteArray bytes;
    if (!reader.take(bytes) || !reader.finish())
        return false;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return false;
    provenance = provenanceFrom(document.object());
    return true;
}

} // namespace ostrel
