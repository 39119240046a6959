// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Run.h"

#include <functional>

namespace ostrel {

/// A run that is read from files and kept in them. File names are any that the file system takes.
class RunDocument : public Run {
public:
    /// Replaces all that the run holds, and its axes, by what a data file or a log file holds. False when the file
    /// cannot be read, is damaged, or comes of a newer version: ChartError has told so, and the run is empty.
    bool LoadDataFile(const QString &FileName);
    /// Writes all that the run holds. True when the new file is on the disk; otherwise the old file is unchanged.
    bool SaveDataFile(const QString &FileName);
    /// The same with the stretch from TimeAxisMin to TimeAxisMax alone; in the new file it begins at time 0.
    bool SaveSelectedData(const QString &FileName);

    /// The two steps of emptying a chart: samples, marks, method texts and notes go; then the plot is drawn empty.
    void ClearData();
    void ClearDisplay() { Redraw(); }

    /// Where the run was last read from or written to; empty for one that has never been in a file.
    const QString &fileName() const { return fileName_; }

    std::function<void(qint16 ErrorCode)> ChartError; ///< tells a failure; may be empty

private:
    QString fileName_;
    bool holdsNothing_ = false; // since a load failed: saving would empty a file that is only out of reach
};

} // namespace ostrel
