// SPDX-License-Identifier: MIT
#include "BareWrite.h"
#include "BenchRun.h"
#include "archive/AndiFile.h"
#include "chart/table/SampleTables.h"

#include <QTemporaryDir>

#include <map>
#include <string>

using namespace ostrel;

namespace {

const ChartData &run(qint64 pairs) {
    static std::map<qint64, ChartData> runs;
    if (!runs.contains(pairs))
        runs[pairs] = BenchRun::ofPairs(pairs);
    return runs[pairs];
}

QString target(const char *name) {
    static const QTemporaryDir folder;
    return folder.filePath(QLatin1String(name));
}

void writeAndi(qint64 pairs) {
    UnflushedDisk disk;
    exportAndi(target("run.cdf"), run(pairs), {QStringLiteral("run.chd"), QDateTime::currentDateTime()}, disk);
}

void writeXy(qint64 pairs) {
    UnflushedDisk disk;
    exportXy(target("run.txt"), run(pairs), Signal::Uv, disk);
}

void writeCsv(qint64 pairs) {
    UnflushedDisk disk;
    exportCsv(target("run.csv"), run(pairs), disk);
}

void ours(benchmark::State &state, void (*work)(qint64 pairs)) {
    run(state.range(0));
    for (auto _ : state)
        work(state.range(0));
}

void bare(benchmark::State &state, void (*work)(qint64 pairs), const QStringList &paths) {
    work(state.range(0));
    writeAgain(state, paths);
}

const int registered = [] {
    const auto add = [](const char *name, void (*work)(qint64 pairs), const QStringList &paths, qint64 pairs) {
        const std::string row = name;
        benchmark::RegisterBenchmark((row + "/ours").c_str(), [work](benchmark::State &state) { ours(state, work); })
            ->Arg(pairs)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((row + "/bare").c_str(),
                                     [work, paths](benchmark::State &state) { bare(state, work, paths); })
            ->Arg(pairs)
            ->Unit(benchmark::kMillisecond);
    };
    const QString cdf = target("run.cdf");
    add("Andi", writeAndi, andiNames(cdf), 432000);
    add("Andi", writeAndi, andiNames(cdf), 13000000);
    add("Xy", writeXy, {target("run.txt")}, 432000);
    add("Csv", writeCsv, {target("run.csv")}, 432000);
    return 0;
}();

} // namespace
