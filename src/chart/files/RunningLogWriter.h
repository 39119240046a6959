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

/// Keeps the log of a run on the disk: each call brings there what came since the last one that succeeded, title and
/// notes as they are, in one write and one flush, and so costs the same at every length of the run.
///
/// After a failure the log goes on in a new data file at the next call, with all that is not safe yet. What vanishes
/// behind our back, the directory included, is written again from the start of the run.
class RunningLogWriter {
public:
    explicit RunningLogWriter(FileOperations &operations = FileOperations::system())
        : operations_(operations), file_(operations) {}

    /// No error means: all of `data` survives the end of the computer. The data may only grow from call to call; before
    /// those of another run call close(). A new data file begins after so many hours of samples; a number that makes no
    /// sense counts as a day. The path may end in a separator. Another directory than before gets the whole log.
    std::error_code write(const ChartData &data, const QString &directory, qint16 instance, double dataFileSizeHours);
    /// Lets go of the files; they stay. What is written next is another run's.
    void close();

private:
    /// A data file that holds some of the log for certain.
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
    void gather(RecordPieces &record);

    FileOperations &operations_;
    AppendFile file_;
    QString directory_;
    bool established_ = false;         ///< the directory took some of the log, so it is made again when it vanishes
    quint64 identity_ = 0;             ///< of the run; 0 before it has one
    int number_ = 0;                   ///< of the latest data file; 0 before the first in this directory
    quint32 sequence_ = 0;             ///< of the next data file
    quint32 recordNumber_ = 0;         ///< of the next record in its file
    quint64 firstInFile_ = 0;          ///< the sample that the file sets in with
    ChartCounts safe_;                 ///< how much of the run is on the disk
    std::optional<QString> safeTitle_; ///< in the present file; likewise the notes
    std::optional<QString> safeNotes_;
    std::vector<DataFile> files_; ///< that hold it
};

} // namespace ostrel
