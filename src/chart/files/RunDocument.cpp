// SPDX-License-Identifier: MIT
#include "chart/files/RunDocument.h"

#include "base/ErrorNumbers.h"
#include "chart/files/ChartFile.h"
#include "chart/run/Succeeds.h"

#include <utility>

namespace ostrel {

bool RunDocument::LoadDataFile(const QString &FileName) {
    ChartData run;
    AxisValues axes;
    bool damagedLog = false;
    const bool loaded = succeeds([&] {
        const ChartFileReport report = loadChartFile(FileName, run, axes);
        const bool damaged = report.fault == ChartFileFault::Damaged || report.fault == ChartFileFault::Truncated;
        damagedLog = damaged && report.head && report.head->kind == logFile;
        return report.good();
    });
    fileName_ = loaded ? FileName : QString();
    holdsNothing_ = !loaded;
    replace(loaded ? std::move(run) : ChartData(), axes);
    if (!loaded && ChartError)
        ChartError(damagedLog ? ErrorNumber::LogDamaged : ErrorNumber::OpenFailed);
    return loaded;
}

bool RunDocument::SaveDataFile(const QString &FileName) {
    const bool saved = !holdsNothing_ && succeeds([&] { return !saveChartFile(FileName, dataFile, data(), axes()); });
    if (saved)
        fileName_ = FileName;
    return saved;
}

bool RunDocument::SaveSelectedData(const QString &FileName) {
    return !holdsNothing_ && succeeds([&] { return !saveChartStretch(FileName, data(), axes()); });
}

void RunDocument::ClearData() {
    clear();
    fileName_.clear();
    holdsNothing_ = false;
}

} // namespace ostrel
