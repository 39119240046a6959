// SPDX-License-Identifier: MIT
#include "archive/CheckedFiles.h"

#include <QCryptographicHash>
#include <QThread>
#include <sys/stat.h>

#include <algorithm>
#include <system_error>

namespace ostrel {

namespace {

/// Reads one file, and computes the SHA-256 of what is read. All of a whole file is read from front to back.
class HashedReads : public FileOperations {
public:
    int open(const char *path, int flags, mode_t mode) override { return disk_.open(path, flags, mode); }
    ssize_t readAt(int fd, const iovec *pieces, int count, off_t position) override {
        const ssize_t got = disk_.readAt(fd, pieces, count, position);
        if (position == hashed_) {
            for (ssize_t left = got; left > 0; ++pieces) {
                const auto size = std::min(left, static_cast<ssize_t>(pieces->iov_len));
                hash_.addData({static_cast<const char *>(pieces->iov_base), size});
                hashed_ += size;
                left -= size;
            }
        }
        return got;
    }
    int close(int fd) override {
        struct stat file {};
        isWhole_ = ::fstat(fd, &file) == 0 && file.st_size == hashed_;
        return disk_.close(fd);
    }

    /// Empty unless all of the file was read.
    QByteArray sum() const { return isWhole_ ? hash_.result().toHex() : QByteArray(); }

private:
    FileOperations &disk_ = FileOperations::system();
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    off_t hashed_ = 0;
    bool isWhole_ = false;
};

CheckedFile checked(const QString &path, bool withSum) {
    CheckedFile file;
    if (withSum) {
        HashedReads reads;
        file.report = checkChartFile(path, reads);
        file.sum = file.report.good() ? reads.sum() : QByteArray();
    } else {
        file.report = checkChartFile(path);
    }
    file.isReady = true;
    return file;
}

} // namespace

CheckedFiles::CheckedFiles(const std::vector<ArchiveFile> &files, bool withSums)
    : files_(files), withSums_(withSums), results_(files.size()) {
    const auto cores = static_cast<std::size_t>(std::max(1, QThread::idealThreadCount()));
    workers_.reserve(std::min(cores, files.size()));
    try {
        while (workers_.size() < std::min(cores, files.size()))
            workers_.emplace_back([this] { work(); });
    } catch (const std::system_error &) { // no more threads are allowed
        if (workers_.empty())
            work();
    }
}

CheckedFiles::~CheckedFiles() {
    next_ = files_.size();
    for (std::thread &worker : workers_)
        worker.join();
}

const CheckedFile *CheckedFiles::wait(std::size_t number, std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    const CheckedFile &result = results_[number];
    return news_.wait_for(lock, time, [&] { return result.isReady; }) ? &result : nullptr;
}

void CheckedFiles::work() {
    for (std::size_t number = next_++; number < files_.size(); number = next_++) {
        CheckedFile result = checked(files_[number].path, withSums_);
        const std::lock_guard lock(mutex_);
        results_[number] = std::move(result);
        news_.notify_one();
    }
}

} // namespace ostrel
