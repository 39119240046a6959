// SPDX-License-Identifier: MIT
#include "chart/files/RunningLogWriter.h"

#include "chart/files/RunningLogFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <new>

namespace ostrel {

namespace {

constexpr double day = 24;
constexpr double shortestFile = 1.0 / 60;
constexpr double longestFile = 7 * day; // the samples of a whole file may have to be written at once, from memory

quint64 samplesIn(double hours) {
    const double sensible = hours > 0 ? std::clamp(hours, shortestFile, longestFile) : day;
    return static_cast<quint64>(sensible * 60 * samplesPerMinute);
}

ChartCounts countsOf(const ChartData &data) {
    return {static_cast<quint64>(data.samples.size()), data.marks.size(), data.methodTexts.size()};
}

/// Only what does not change with every sample: a reader knows from the samples when the last stretch has ended.
Provenance withoutEnd(const Provenance &whole) {
    Provenance provenance = whole;
    if (!provenance.stretches.empty()) {
        provenance.stretches.back().to = 0;
        provenance.stretches.back().ended = {};
    }
    return provenance;
}

/// The items from number `first` to before `last`.
template <typename Item>
std::span<const Item> part(const std::vector<Item> &items, quint64 first, quint64 last) {
    return std::span(items).subspan(first, last - first);
}

} // namespace

std::error_code RunningLogWriter::write(const ChartData &data, const QString &directory, qint16 instance,
                                        double dataFileSizeHours) {
    try {
        const QString wanted = logDirectory(directory);
        if (wanted.isEmpty())
            return std::make_error_code(std::errc::no_such_file_or_directory);
        if (wanted != directory_) {
            startOver();
            directory_ = wanted;
            established_ = false;
            number_ = 0;
        } else if (file_.isOpen() && !file_.isInPlace()) {
            startOver();
        }
        return bringUp(data, instance, samplesIn(dataFileSizeHours));
    } catch (const std::bad_alloc &) {
        file_.close();
        return std::make_error_code(std::errc::not_enough_memory);
    }
}

void RunningLogWriter::close() {
    startOver();
    directory_.clear();
    identity_ = 0;
}

void RunningLogWriter::startOver() {
    file_.close();
    files_.clear();
    sequence_ = 0;
    safe_ = {};
}

/// One round for each data file that is needed: several only when much is not safe yet. Marks and method texts go into
/// the last one.
std::error_code RunningLogWriter::bringUp(const ChartData &data, qint16 instance, quint64 samplesPerFile) {
    const ChartCounts all = countsOf(data);
    while (true) {
        const bool begins = !file_.isOpen() || safe_.samples - firstInFile_ >= samplesPerFile;
        if (begins) {
            if (const std::error_code error = beginFile(instance))
                return error;
        }
        ChartCounts until = safe_;
        until.samples = std::min(all.samples, firstInFile_ + samplesPerFile);
        const bool last = until.samples == all.samples;
        if (last)
            until = all;
        Provenance provenance = withoutEnd(data.provenance);
        if (begins || until != safe_ || safeTitle_ != data.title || safeNotes_ != data.notes ||
            safeProvenance_ != provenance) {
            gather(data, until);
            if (const std::error_code error = file_.flush())
                return error;
            files_.back().size = static_cast<qint64>(file_.length());
            safe_ = until;
            safeTitle_ = data.title;
            safeNotes_ = data.notes;
            safeProvenance_ = std::move(provenance);
            established_ = true;
        }
        if (last)
            return {};
    }
}

std::error_code RunningLogWriter::beginFile(qint16 instance) {
    // A file whose first flush failed has been removed.
    std::erase_if(files_, [](const DataFile &file) { return file.size == 0; });
    if (!filesStand())
        startOver();
    if (const std::error_code error = createFile())
        return error;
    FileHead head = FileHead::of(runningLogKind, runningLogVersion);
    if (identity_ == 0)
        identity_ = head.identity;
    head.identity = identity_;
    head.sequence = sequence_++;
    head.instance = instance;
    const QByteArray bytes = head.bytes();
    file_.add(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    recordNumber_ = 0;
    firstInFile_ = safe_.samples;
    safeTitle_.reset(); // each file gets title, notes and provenance
    safeNotes_.reset();
    safeProvenance_.reset();
    return {};
}

std::error_code RunningLogWriter::createFile() {
    if (number_ == 0) {
        for (const QString &name : QDir(directory_).entryList(QDir::AllEntries | QDir::Hidden | QDir::System))
            number_ = std::max(number_, logFileNumber(name));
    }
    while (true) {
        const QString path = directory_ + u'/' + logFileName(++number_);
        const std::error_code error = file_.create(path);
        if (!error) {
            files_.push_back({path, 0});
            return {};
        }
        const bool vanished = established_ && error == std::errc::no_such_file_or_directory;
        if (error != std::errc::file_exists && !(vanished && makeFolders(directory_)))
            return error;
    }
}

bool RunningLogWriter::makeFolders(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    const QString parent = QFileInfo(path).path();
    if (makePrivateFolder(operations_, name.constData()) == 0)
        return syncFolder(operations_, QFile::encodeName(parent).constData());
    return errno == ENOENT && parent != path && makeFolders(parent) && makeFolders(path);
}

bool RunningLogWriter::filesStand() const {
    return std::all_of(files_.begin(), files_.end(), [](const DataFile &file) {
        const QFileInfo found(file.path);
        return found.isFile() && found.size() >= file.size;
    });
}

void RunningLogWriter::gather(const ChartData &data, const ChartCounts &until) {
    for (quint64 first = safe_.samples; recordNumber_ == 0 || first < until.samples;) {
        const quint64 end = std::min(first + static_cast<quint64>(samplesInRecord), until.samples);
        RecordPieces record(samplesRecord);
        putSamples(record, first, data.samples, static_cast<qint64>(first), static_cast<qint64>(end));
        gather(record);
        first = end;
    }
    if (until.marks > safe_.marks) {
        RecordPieces record(marksRecord);
        putMarks(record, safe_.marks, part(data.marks, safe_.marks, until.marks));
        gather(record);
    }
    if (until.methodTexts > safe_.methodTexts) {
        RecordPieces record(methodRecord);
        putMethodTexts(record, safe_.methodTexts, part(data.methodTexts, safe_.methodTexts, until.methodTexts));
        gather(record);
    }
    gatherText(titleRecord, data.title, safeTitle_);
    gatherText(notesRecord, data.notes, safeNotes_);
    gatherProvenance(withoutEnd(data.provenance));
    RecordPieces promise(endRecord);
    putCounts(promise, until);
    gather(promise);
}

void RunningLogWriter::gatherText(quint32 kind, const QString &text, const std::optional<QString> &safe) {
    if (safe == text)
        return;
    RecordPieces record(kind);
    putText(record, text);
    gather(record);
}

void RunningLogWriter::gatherProvenance(const Provenance &provenance) {
    if (safeProvenance_ == provenance || (provenance.empty() && !safeProvenance_))
        return;
    RecordPieces record(provenanceRecord);
    putProvenance(record, provenance);
    gather(record);
}

void RunningLogWriter::gather(RecordPieces &record) {
    for (const std::span<const char> piece : record.seal(identity_, recordNumber_))
        file_.add(piece.data(), piece.size());
    ++recordNumber_;
}

} // namespace ostrel
