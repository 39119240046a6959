// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveFiles.h"
#include "chart/files/ChartFile.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace ostrel {

struct CheckedFile {
    bool isReady = false;
    ChartFileReport report;
    QByteArray sum; ///< SHA-256 of a whole file in hexadecimal digits, of the bytes that were checked
};

/// Checks files on all cores.
class CheckedFiles {
public:
    /// Begins. The files must stay until the end. Without `withSums` there are no checksums, which take longer than all
    /// else.
    CheckedFiles(const std::vector<ArchiveFile> &files, bool withSums);
    /// Ends early when results were not waited for.
    ~CheckedFiles();
    CheckedFiles(const CheckedFiles &) = delete;
    CheckedFiles &operator=(const CheckedFiles &) = delete;

    /// The result for a file, by its number; null if it is not there within that time.
    const CheckedFile *wait(std::size_t number, std::chrono::milliseconds time);

private:
    void work();

    const std::vector<ArchiveFile> &files_;
    bool withSums_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::condition_variable news_;
    std::vector<CheckedFile> results_;
    std::vector<std::thread> workers_;
};

} // namespace ostrel
