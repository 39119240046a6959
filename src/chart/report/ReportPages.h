// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QDateTime>
#include <QPageLayout>

#include <memory>
#include <vector>

class QPagedPaintDevice;

namespace ostrel {

/// The contents of a report: the run with its title, method texts and notes, and the axes that it is shown with.
struct ReportContents {
    const ChartData &data;
    AxisValues axes;
    QString sourceFile;  ///< the run's file; may be empty
    QDateTime printed;   ///< the time that is printed on the pages
    quint32 dataSum = 0; ///< the checksum of all samples
    QString unsaved{};   ///< what is not in the run's file, in words; empty for nothing
};

/// The operator's choice of contents.
struct ReportOptions {
    bool chromatogram = true;
    bool method = true;
    bool notes = true;
    qint32 traceFlags = 7; ///< the sum of 1 for event marks, 2 for conductivity, 4 for UV
};

/// A report of a run. The chromatogram is on a page of its own, as lines and texts that are sharp at any resolution,
/// below a head that tells where the run comes from. Then come the event marks with their values, the method and the
/// notes, upright, on as many pages as they need; without a chromatogram they begin with what its head would tell. Each
/// page has the title and its number. The conductivity is dashed, so that the traces differ without their colours, too.
/// An axis whose trace is left out is grey.
///
/// With the chromatogram chosen, method and notes are left out when both are empty; otherwise an empty one is printed
/// as "None".
class Report {
public:
    /// Paper, margins (12 mm from the paper's edge at least) and the orientation of the chromatogram are the layout's.
    Report(const QPageLayout &paper, const ReportContents &contents, const ReportOptions &options);
    ~Report();
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    struct Part {
        QString name;
        int page; ///< from 0
    };
    const std::vector<Part> &parts() const;
    int pages() const; ///< 0 when nothing is chosen

    /// Paints one copy. With nothing chosen nothing is painted, which is success. False when the device fails.
    bool paint(QPagedPaintDevice &device);

private:
    class Pages;
    std::unique_ptr<Pages> pages_;
};

} // namespace ostrel
