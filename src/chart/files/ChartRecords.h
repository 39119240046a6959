// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RecordFile.h"
#include "chart/run/ChartData.h"
#include "chart/run/Provenance.h"
#include "chart/run/Scale.h"

#include <optional>
#include <span>
#include <vector>

namespace ostrel {

/// The payloads of the records in data files, log files and the running log. Each put function has a take function that
/// reads the same payload. docs/file-format.md describes every byte.

inline constexpr quint32 titleRecord = fourLetters("TITL");
inline constexpr quint32 axesRecord = fourLetters("AXES");
inline constexpr quint32 notesRecord = fourLetters("NOTE");
inline constexpr quint32 methodRecord = fourLetters("METH");
inline constexpr quint32 marksRecord = fourLetters("MARK");
inline constexpr quint32 samplesRecord = fourLetters("SAMP");
inline constexpr quint32 sizeRecord = fourLetters("SIZE");
inline constexpr quint32 provenanceRecord = fourLetters("PROV");
inline constexpr quint32 endRecord = fourLetters("END ");

/// Written to one record: not quite seven minutes, 16 KiB. Damage costs one record.
inline constexpr qint64 samplesInRecord = 2048;

/// How many samples, marks and method texts there are.
struct ChartCounts {
    quint64 samples = 0;
    quint64 marks = 0;
    quint64 methodTexts = 0;

    bool operator==(const ChartCounts &) const = default;
};

/// Samples that are missing of a run as it was read.
struct SampleGap {
    qint64 from = 0; ///< number of the first one, in the run as it is read
    qint64 count = 0;
    bool filled = false; ///< by samples that are no number, so that the times behind it stay right
};

/// Which samples a record holds.
struct SampleNumbers {
    quint64 first = 0;
    quint64 count = 0;
};

/// Puts the samples `from` to before `to`, bit for bit; the first gets the number `first`. The store must outlive the
/// record.
void putSamples(RecordPieces &record, quint64 first, const SampleStore &samples, qint64 from, qint64 to);
/// The checksum of all samples, in the form in which files hold them.
quint32 sumOf(const SampleStore &samples);
/// Put marks and method texts; the first gets the number `first`.
void putMarks(RecordPieces &record, quint64 first, std::span<const EventMark> marks);
void putMethodTexts(RecordPieces &record, quint64 first, std::span<const MethodText> texts);
void putText(RecordPieces &record, const QString &text);
void putAxes(RecordPieces &record, const AxisValues &axes);
void putCounts(RecordPieces &record, const ChartCounts &counts);
void putProvenance(RecordPieces &record, const Provenance &provenance);

/// Reads the numbers in the present record. The caller then reads the samples with take(); they are valid only when
/// finish() returns true. nullopt when the payload does not have this form.
std::optional<SampleNumbers> takeSampleNumbers(RecordReader &reader);
/// Read all of the present record. False when a check fails; the arguments are then unchanged.
bool takeMarks(RecordReader &reader, quint64 &first, std::vector<EventMark> &marks);
bool takeMethodTexts(RecordReader &reader, quint64 &first, std::vector<MethodText> &texts);
bool takeText(RecordReader &reader, QString &text);
bool takeAxes(RecordReader &reader, AxisValues &axes);
bool takeCounts(RecordReader &reader, ChartCounts &counts);
bool takeProvenance(RecordReader &reader, Provenance &provenance);

} // namespace ostrel
