// SPDX-License-Identifier: MIT
#include "BenchRun.h"
#include "chart/table/TextExport.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fcntl.h>

#include <charconv>
#include <cstdio>

using namespace ostrel;

namespace {

constexpr qint64 pairs = 432000;

/// Does not flush, since the time of a flush depends only on the disk. Used for all rows.
class UnflushedDisk : public FileOperations {
public:
    int sync(int) override { return 0; }
};

const ChartData &run() {
    static const ChartData data = BenchRun::ofPairs(pairs);
    return data;
}

QString target() {
    static const QTemporaryDir folder;
    return folder.filePath(QStringLiteral("run.txt"));
}

void exportRun() {
    static UnflushedDisk disk;
    ExportOptions options;
    options.to = run().lastTime();
    options.pointCount = pairs;
    exportText(target(), run(), options, disk);
}

/// Writes as the export does: to a temporary file, which then replaces the old one.
class Replacement {
public:
    void write(const void *data, std::size_t size) { writeAll(disk_, fd_, data, size); }
    ~Replacement() {
        disk_.close(fd_);
        disk_.rename(beside_.constData(), QFile::encodeName(target()).constData());
    }
    int fd() const { return fd_; }

private:
    UnflushedDisk disk_;
    QByteArray beside_ = QFile::encodeName(target()) + ".new";
    int fd_ = disk_.open(beside_.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
};

void ours(benchmark::State &state) {
    run();
    for (auto _ : state)
        exportRun();
}

/// The lowest cost: writes the same text, ready in memory.
void write(benchmark::State &state) {
    exportRun();
    QFile file(target());
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.readAll();
    for (auto _ : state)
        Replacement().write(text.constData(), static_cast<std::size_t>(text.size()));
    state.counters["bytes"] = static_cast<double>(text.size());
}

void toChars(benchmark::State &state) {
    const SampleStore &samples = run().samples;
    std::vector<char> text(pairs * 64);
    for (auto _ : state) {
        char *at = text.data();
        const auto number = [&](double value, int decimals, char end) {
            at = std::to_chars(at, at + 32, value, std::chars_format::fixed, decimals).ptr;
            *at++ = end;
        };
        for (qint64 i = 0; i < pairs; ++i) {
            const SamplePair sample = samples.at(i);
            number(ChartData::timeOf(i), 4, '\t');
            number(sample.uv, 6, '\t');
            number(sample.cond, 4, '\t');
            *at++ = '\r';
            *at++ = '\n';
        }
        Replacement().write(text.data(), static_cast<std::size_t>(at - text.data()));
    }
}

void print(benchmark::State &state) {
    const SampleStore &samples = run().samples;
    for (auto _ : state) {
        const Replacement replacement;
        std::FILE *file = fdopen(dup(replacement.fd()), "w");
        for (qint64 i = 0; i < pairs; ++i) {
            const SamplePair sample = samples.at(i);
            std::fprintf(file, "%.4f\t%.6f\t%.4f\t\r\n", ChartData::timeOf(i), static_cast<double>(sample.uv),
                         static_cast<double>(sample.cond));
        }
        std::fclose(file);
    }
}

const int registered = [] {
    const auto add = [](const char *name, void (*body)(benchmark::State &)) {
        benchmark::RegisterBenchmark(name, body)->Unit(benchmark::kMillisecond);
    };
    add("TextExport/ours/432000", ours);
    add("TextExport/write/432000", write);
    add("TextExport/to_chars/432000", toChars);
    add("TextExport/fprintf/432000", print);
    return 0;
}();

} // namespace
