// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QDateTime>

class QPagedPaintDevice;

namespace ostrel {

/// The contents of a report: the run with its title, method texts and notes, and the axes that it is shown with.
struct ReportContents {
    const ChartData &data;
    AxisValues axes;
    QString sourceFile; ///< the run's file; may be empty
    QDateTime printed;  ///< the time that is printed on the pages
};

/// The operator's choice of contents.
struct ReportOptions {
    bool chromatogram = true;
    bool method = true;
    bool notes = true;
    qint32 traceFlags = 7; ///< the sum of 1 for event marks, 2 for conductivity, 4 for UV
};

/// Paints one copy of a report: the chromatogram on a page of its own, as lines and texts that are sharp at any
/// resolution, then the method and the notes on as many pages as they need. Paper, orientation and margins are the
/// device's, with at least 12 mm to the paper's edge. The conductivity is dashed, so that the traces differ without
/// their colours, too. An axis whose trace is left out is grey.
///
/// With the chromatogram chosen, method and notes are left out when both are empty; otherwise an empty one is printed
/// as "None". With nothing chosen nothing is painted, which is success. False when the device fails.
bool paintReport(QPagedPaintDevice &device, const ReportContents &contents, const ReportOptions &options);

} // namespace ostrel
