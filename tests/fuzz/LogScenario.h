// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RunningLogFiles.h"
#include "chart/files/RunningLogReader.h"
#include "fuzz/ChartRecordsMended.h"

#include <vector>

/// Reads arbitrary bytes as two data files in the directory of a running log. The first byte tells which of them have
/// right checksums, the next two how long the first is. Whatever they are, what is found is in keeping with their size,
/// and a quick look sees whether anything is or was. Throws std::logic_error otherwise.
class LogScenario {
public:
    explicit LogScenario(std::span<const std::uint8_t> bytes) : bytes_(bytes.begin(), bytes.end()) {}

    void play() {
        constexpr std::size_t headSize = 3;
        if (bytes_.size() < headSize)
            return;
        const std::span files = std::span(bytes_).subspan(headSize);
        const auto first = std::min<std::size_t>(files.size(), bytes_[1] + 256U * bytes_[2]);
        lay(1, files.first(first));
        lay(2, files.subspan(first));

        const RecoveredLog log = readRunningLog(scenarioFolder().path());
        const LogFinding found = findRunningLog(scenarioFolder().path());
        require(found == LogFinding::Unread || (found == LogFinding::Log) == (!log.empty() || !log.gaps.empty()));
        // Each sample is one of a file, or one of at most as many that fill gaps.
        require(static_cast<std::size_t>(log.data.samples.size()) * sizeof(SamplePair) <= 2 * files.size());
        require(16 * log.data.marks.size() + 8 * log.data.methodTexts.size() <= files.size());
    }

private:
    void lay(int number, std::span<std::uint8_t> content) const {
        if ((bytes_[0] & number) != 0)
            mendChecksums(content);
        layFile(logFileName(number), content);
    }

    std::vector<std::uint8_t> bytes_;
};
