// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QFile>
#include <benchmark/benchmark.h>
#include <fcntl.h>

namespace ostrel {

/// Does not flush, since the time of a flush depends only on the disk. Used for all rows.
class UnflushedDisk : public FileOperations {
public:
    int sync(int) override { return 0; }
};

/// Writes as the program does: to a temporary file, which then replaces the old one.
class Replacement {
public:
    explicit Replacement(const QString &path) : path_(QFile::encodeName(path)) {}
    void write(const void *data, std::size_t size) { writeAll(disk_, fd_, data, size); }
    ~Replacement() {
        disk_.close(fd_);
        disk_.rename(beside_.constData(), path_.constData());
    }
    int fd() const { return fd_; }

private:
    UnflushedDisk disk_;
    QByteArray path_;
    QByteArray beside_ = path_ + ".new";
    int fd_ = disk_.open(beside_.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
};

/// The lowest cost of files that are there: writes the same bytes, ready in memory.
inline void writeAgain(benchmark::State &state, const QStringList &paths) {
    QByteArrayList contents;
    double bytes = 0;
    for (const QString &path : paths) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        contents << file.readAll();
        bytes += static_cast<double>(contents.last().size());
    }
    for (auto _ : state) {
        for (qsizetype i = 0; i < paths.size(); ++i)
            Replacement(paths[i]).write(contents[i].constData(), static_cast<std::size_t>(contents[i].size()));
    }
    state.counters["bytes"] = bytes;
}

} // namespace ostrel
