// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/LineSource.h"
#include "simulator/NamedFiles.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TruthRecord.h"

#include <memory>
#include <optional>

namespace ostrel {

/// All files of a play. The input is read, and its mistakes told, before an output is opened; outputs are emptied only
/// when all else is ready. Failures are run-time errors, and EarlyEnd for mistakes of the user.
class PlayFiles {
public:
    /// Reads the script or the capture.
    explicit PlayFiles(const SimulatorOptions &options);
    PlayFiles(const PlayFiles &) = delete;
    PlayFiles &operator=(const PlayFiles &) = delete;

    /// Refuses files that are one. Until beginOutputs() nothing is changed.
    void openOutputs();
    void beginOutputs();

    /// What is played; the source and the sink live no longer than this.
    std::unique_ptr<LineSource> source();
    /// Takes what the line took; empty when nobody asked for that.
    ByteSink record();

private:
    const QString &inputPath() const { return isReplay() ? options_.replay : options_.script; }
    bool isReplay() const { return !options_.replay.isEmpty(); }
    std::vector<NamedFile> named() const;

    SimulatorOptions options_;
    std::optional<InputFile> input_; // none for the demonstration
    RunScript script_;
    std::optional<OutputFile> truth_;
    std::optional<OutputFile> record_;
    std::optional<TruthRecord> truthRecord_;
};

} // namespace ostrel
