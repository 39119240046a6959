// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartFile.h"
#include "fuzz/ChartRecordsMended.h"

#include <cmath>
#include <vector>

/// Reads arbitrary bytes as a data file, as they are and with every checksum put right, which leads to what the
/// checksums protect. Whatever they are, a refused file leaves everything as it was, a good one survives being saved
/// and loaded again, and what is handed over is in keeping with the file's size. Throws std::logic_error otherwise.
class DocumentScenario {
public:
    explicit DocumentScenario(std::span<const std::uint8_t> bytes) : bytes_(bytes.begin(), bytes.end()) {}

    void play() {
        read();
        mendChecksums(bytes_);
        read();
    }

private:
    static ChartCounts countsOf(const ChartData &run) {
        return {static_cast<quint64>(run.samples.size()), run.marks.size(), run.methodTexts.size()};
    }

    void requireFitting(const ChartData &run, const AxisValues &axes) const {
        const ChartCounts counts = countsOf(run);
        require(8 * counts.samples + 16 * counts.marks + 8 * counts.methodTexts <= bytes_.size());
        require(axes.uvMin < axes.uvMax && axes.condMin < axes.condMax && axes.timeMin < axes.timeMax);
        require(std::isfinite(axes.timeMax - axes.timeMin));
    }

    void read() const {
        layFile("run.chd", bytes_);
        ChartData rest;
        AxisValues axes;
        const ChartFileReport salvaged = salvageChartFile(path_, rest, axes);
        if (salvaged.losses.gaps.empty())
            requireFitting(rest, axes);
        require(static_cast<std::size_t>(rest.samples.size()) <= bytes_.size() / 8 * 2 + (std::size_t{1} << 22));

        ChartData run;
        run.notes = "what was there";
        const ChartFileReport report = loadChartFile(path_, run, axes);
        const bool foundByRecords =
            report.fault == ChartFileFault::NotAChart && salvaged.fault == ChartFileFault::Damaged;
        require((report.fault == salvaged.fault || foundByRecords) && report.position <= bytes_.size());
        if (report.good())
            saveAgain(run, axes);
        else
            require(run.notes == "what was there" && countsOf(run) == ChartCounts());
    }

    void saveAgain(const ChartData &run, const AxisValues &axes) const {
        requireFitting(run, axes);
        ChartData again;
        AxisValues axesAgain;
        require(!saveChartFile(path_, logFile, run, axes) && loadChartFile(path_, again, axesAgain).good());
        require(countsOf(again) == countsOf(run) && again.notes == run.notes && axesAgain == axes);
        require(!saveChartStretch(path_, run, axes) && loadChartFile(path_, again, axesAgain).good());
    }

    std::vector<std::uint8_t> bytes_;
    QString path_ = scenarioFolder().filePath("run.chd");
};
