// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RecordFile.h"
#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <optional>
#include <span>
#include <vector>

namespace ostrel {

/// What the records of the chart's files hold, in data files, log files and the running log alike. Each function that
/// puts something into a record has the one that takes it out again beside it. docs/file-format.md has every byte.

inline constexpr quint32 titleRecord = fourLetters("TITL");
inline constexpr quint32 axesRecord = fourLetters("AXES");
inline constexpr quint32 notesRecord = fourLetters("NOTE");
inline constexpr quint32 methodRecord = fourLetters("METH");
inline constexpr quint32 marksRecord = fourLetters("MARK");
inline constexpr quint32 samplesRecord = fourLetters("SAMP");
inline constexpr quint32 endRecord = fourLetters("END ");

/// That are written; an hour: what a damaged spot costs, and what the processor's cache holds on its way.
inline constexpr qint64 samplesInRecord = 16384;

/// How much of each sequence there is.
struct ChartCounts {
    quint64 samples = 0;
    quint64 marks = 0;
    quint64 methodTexts = 0;

    bool operator==(const ChartCounts &) const = default;
};

/// Which samples a record holds.
struct SampleNumbers {
    quint64 first = 0;
    quint64 count = 0;
};

/// The samples `from` to before `to`, bit for bit, under the numbers from `first` on. The store must outlive the
/// record.
void putSamples(RecordPieces &record, quint64 first, const SampleStore &samples, qint64 from, qint64 to);
/// Marks and method texts likewise, under the numbers from `first` on.
void putMarks(RecordPieces &record, quint64 first, std::span<const EventMark> marks);
void putMethodTexts(RecordPieces &record, quint64 first, std::span<const MethodText> texts);
void putText(RecordPieces &record, const QString &text);
void putAxes(RecordPieces &record, const AxisValues &axes);
void putCounts(RecordPieces &record, const ChartCounts &counts);

/// The present record's numbers; the samples themselves follow, for the reader's take(). They are good only when its
/// finish() says so. Nothing when the record is not of that form.
std::optional<SampleNumbers> takeSampleNumbers(RecordReader &reader);
/// All of the present record, which has then passed its checks. Otherwise false; what was handed in is as it was.
bool takeMarks(RecordReader &reader, quint64 &first, std::vector<EventMark> &marks);
bool takeMethodTexts(RecordReader &reader, quint64 &first, std::vector<MethodText> &texts);
bool takeText(RecordReader &reader, QString &text);
bool takeAxes(RecordReader &reader, AxisValues &axes);
bool takeCounts(RecordReader &reader, ChartCounts &counts);

} // namespace ostrel
