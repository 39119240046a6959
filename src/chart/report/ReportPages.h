// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QDateTime>

class QPagedPaintDevice;

namespace ostrel {

/// What a report tells of: the run with its title, method texts and notes, and how it is shown.
struct ReportContents {
    const ChartData &data;
    AxisValues axes;
    QString sourceFile; ///< where the run comes from; may be empty
    QDateTime printed;  ///< as told on the pages
};

/// What the operator chose.
struct ReportOptions {
    bool chromatogram = true;
    bool method = true;
    bool notes = true;
    qint32 traceFlags = 7; ///< the sum of 1 for event marks, 2 for conductivity, 4 for UV
};

/// Paints a report, one copy: the chromatogram on a page of its own, as lines and texts that are sharp at any
/// resolution, then the method and the notes on as many pages as they need. Paper, orientation and margins are the
/// device's, with 12 mm at least to the paper's edge. The conductivity is dashed, so that the traces can be told apart
/// without their colours too. An axis whose trace is left out is grey.
///
/// Method and notes that are empty take no paper while there is anything else to print. With nothing chosen nothing is
/// painted, which is good too. False when the device fails.
bool paintReport(QPagedPaintDevice &device, const ReportContents &contents, const ReportOptions &options);

} // namespace ostrel
