// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Run.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace ostrel {

/// A run that is read from files and saved to them. Any name that the file system accepts is allowed.
class RunDocument : public Run {
public:
    /// Replaces all that the run holds, and its axes, by the contents of a data file or log file. False when the file
    /// cannot be read, is damaged, or is of a newer version: then ChartError was called and the run is empty.
    bool LoadDataFile(const QString &FileName);
    /// Writes all that the run holds, with a line more in its history. True when the new file is on the disk; see
    /// saveChartFile for a failure.
    bool SaveDataFile(const QString &FileName);
    /// The same with only the part from TimeAxisMin to TimeAxisMax; in the new file it begins at time 0.
    bool SaveSelectedData(const QString &FileName);

    /// The two steps that empty a chart: the first removes samples, marks, method texts and notes, the second redraws.
    void ClearData();
    void ClearDisplay() { Redraw(); }

    /// The file that the run was last read from or saved to; empty for a run that was never in a file.
    const QString &fileName() const { return fileName_; }

    /// What the run holds and its file does not, in words; empty when it is all in the file.
    QString unsavedInWords() const;

    std::function<void(qint16 ErrorCode)> ChartError; ///< called when a load fails; may be empty

private:
    /// What a file held besides the samples and axes, to tell what has changed since.
    struct Contents {
        QString title;
        QString notes;
        qint64 samples = 0;
        std::size_t marks = 0;
        std::size_t methodTexts = 0;
        AxisValues axes;
    };

    Contents contents() const;
    QStringList changes() const;
    QString changeInWords() const;

    QString fileName_;
    std::optional<Contents> inFile_;
    bool holdsNothing_ = false; // a load failed: saving would replace a file that may only be unreachable now
};

} // namespace ostrel
