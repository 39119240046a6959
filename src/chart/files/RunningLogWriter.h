// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"
#include "chart/run/ChartData.h"
#include "files/AppendFile.h"

#include <QString>

#include <optional>
#include <system_error>
#include <vector>

namespace ostrel {

/// Keeps the log of a run on the disk. Each call writes what came since the last successful call, and title and notes
/// when they have changed, in one write and one flush: its cost does not grow with the run.
///
/// After a failure the next call begins a new data file with all that is not safe yet. When the present file or the
/// directory has been removed, the whole run is written again; a missing older file is noticed when a new file begins.
class RunningLogWriter {
public:
    explicit RunningLogWriter(FileOperations &operations = FileOperations::system())
        : operations_(operations), file_(operations) {}

    /// No error means: all of `data` survives a power cut. The data may only grow between calls; call close() before
    /// those of another run. A new data file begins after so many hours of samples (a minute to a week; a day unless
    /// above 0). The path may end in a separator. A directory other than before gets the whole log.
    std::error_code write(const ChartData &data, const QString &directory, qint16 instance, double dataFileSizeHours);
    /// Closes the files, which stay on the disk. The next write() begins the log of another run.
    void close();

private:
    /// A data file and how many of its bytes are flushed.
    struct DataFile {
        QString path;
        qint64 size;
    };

    std::error_code bringUp(const ChartData &data, qint16 instance, quint64 samplesPerFile);
    std::error_code beginFile(qint16 instance);
    std::error_code createFile();
    bool makeFolders(const QString &path);
    bool filesStand() const;
    void startOver();
    void gather(const ChartData &data, const ChartCounts &until);
    void gatherText(quint32 kind, const QString &text, const std::optional<QString> &safe);
    void gatherProvenance(const Provenance &provenance);
    void gather(RecordPieces &record);

    FileOperations &operations_;
    AppendFile file_;
    QString directory_;
    bool established_ = false;         ///< a flush has succeeded in the directory, so it is made again when missing
    quint64 identity_ = 0;             ///< of the run; 0 before its first file
    int number_ = 0;                   ///< of the latest data file; 0 before the first in this directory
    quint32 sequence_ = 0;             ///< of the next data file
    quint32 recordNumber_ = 0;         ///< of the next record in its file
    quint64 firstInFile_ = 0;          ///< number of the file's first sample
    ChartCounts safe_;                 ///< how much of the run is on the disk
    std::optional<QString> safeTitle_; ///< as flushed to the present file; likewise the notes
    std::optional<QString> safeNotes_;
    std::optional<Provenance> safeProvenance_; ///< without the end of what is being recorded
    std::vector<DataFile> files_;              ///< of this run
};

} // namespace ostrel
