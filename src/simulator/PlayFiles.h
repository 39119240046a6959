// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/LineSource.h"
#include "simulator/NamedFiles.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TruthRecord.h"

#include <memory>
#include <optional>

namespace ostrel {

/// All files of a play. The input is read and checked before an output is opened; outputs are emptied only when
/// everything else is ready. Failures are run-time errors, mistakes of the user are EarlyEnd.
class PlayFiles {
public:
    /// Reads the script or the capture.
    explicit PlayFiles(const SimulatorOptions &options);
    PlayFiles(const PlayFiles &) = delete;
    PlayFiles &operator=(const PlayFiles &) = delete;

    /// Refuses two names of the same file. Existing files are not changed before beginOutputs().
    void openOutputs();
    void beginOutputs();

    /// The source of the play. It and the sink of record() must not outlive this object.
    std::unique_ptr<LineSource> source();
    /// For the bytes that the line has taken; empty without --record.
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
