// SPDX-License-Identifier: MIT
#include "BareWrite.h"
#include "BenchRun.h"
#include "chart/table/TextExport.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>

using namespace ostrel;

namespace {

constexpr qint64 pairs = 432000;

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

void ours(benchmark::State &state) {
    run();
    for (auto _ : state)
        exportRun();
}

void write(benchmark::State &state) {
    exportRun();
    writeAgain(state, {target()});
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
        Replacement(target()).write(text.data(), static_cast<std::size_t>(at - text.data()));
    }
}

void print(benchmark::State &state) {
    const SampleStore &samples = run().samples;
    for (auto _ : state) {
        const Replacement replacement(target());
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
