// SPDX-License-Identifier: MIT
#include "BenchDisk.h"
#include "BenchRun.h"
#include "chart/Quillchart.h"
#include "chart/files/ChartFile.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <map>
#include <memory>
#include <vector>

using namespace ostrel;

namespace {

struct Pairs {
    ChartData run;
    std::vector<SamplePair> plain; ///< the same pairs in one array

    static const Pairs &of(qint64 count) {
        static std::map<qint64, Pairs> made;
        Pairs &pairs = made[count];
        if (pairs.plain.empty()) {
            pairs.run = BenchRun::ofPairs(count);
            pairs.run.marks.assign(100, {QStringLiteral("12"), 0xFFFF00, 50, 1});
            for (qint64 i = 0; i < count; ++i)
                pairs.plain.push_back(pairs.run.samples.at(i));
        }
        return pairs;
    }
};

constexpr std::size_t atOnce = 1 << 20;

void writeBare(const QString &path, const Pairs &pairs) {
    const int fd = ::open(qPrintable(path), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const auto *bytes = reinterpret_cast<const unsigned char *>(pairs.plain.data());
    std::size_t left = pairs.plain.size() * sizeof(SamplePair);
    unsigned long sum = 0;
    while (left > 0) {
        const std::size_t count = std::min(left, atOnce);
        sum = ::crc32_z(sum, bytes, count);
        if (::write(fd, bytes, count) != static_cast<ssize_t>(count))
            qFatal("The disk is full");
        bytes += count;
        left -= count;
    }
    benchmark::DoNotOptimize(sum);
    ::fsync(fd);
    ::close(fd);
}

void loadBare(const QString &path) {
    const int fd = ::open(qPrintable(path), O_RDONLY);
    const auto size = static_cast<std::size_t>(::lseek(fd, 0, SEEK_END));
    const std::unique_ptr<unsigned char[]> bytes(new unsigned char[size]);
    if (::pread(fd, bytes.get(), size, 0) != static_cast<ssize_t>(size))
        qFatal("The file cannot be read");
    ::close(fd);
    benchmark::DoNotOptimize(::crc32_z(0, bytes.get(), size));
}

void saveOurs(const QString &path, const Pairs &pairs) {
    if (saveChartFile(path, dataFile, pairs.run, AxisValues()))
        qFatal("The run cannot be saved");
}

void loadOurs(const QString &path) {
    ChartData run;
    AxisValues axes;
    if (!loadChartFile(path, run, axes).good())
        qFatal("The run cannot be loaded");
    benchmark::DoNotOptimize(run.samples.extent(0, run.samples.size()));
}

constexpr std::size_t inBlob = 1 << 16;

void saveBlobs(const QString &path, const Pairs &pairs) {
    SqliteTable table(path);
    table.run("BEGIN; CREATE TABLE run (number INTEGER PRIMARY KEY, pairs BLOB)");
    sqlite3_stmt *insert = table.prepare("INSERT INTO run (pairs) VALUES (?)");
    for (std::size_t at = 0; at < pairs.plain.size(); at += inBlob) {
        const std::size_t count = std::min(inBlob, pairs.plain.size() - at);
        ::sqlite3_bind_blob(insert, 1, &pairs.plain[at], static_cast<int>(count * sizeof(SamplePair)), SQLITE_STATIC);
        ::sqlite3_step(insert);
        ::sqlite3_reset(insert);
    }
    table.run("COMMIT");
}

void loadBlobs(const QString &path) {
    SqliteTable table(path);
    SampleStore samples;
    sqlite3_stmt *select = table.prepare("SELECT pairs FROM run ORDER BY number");
    while (::sqlite3_step(select) == SQLITE_ROW)
        samples.append({static_cast<const SamplePair *>(::sqlite3_column_blob(select, 0)),
                        static_cast<std::size_t>(::sqlite3_column_bytes(select, 0)) / sizeof(SamplePair)});
    benchmark::DoNotOptimize(samples.extent(0, samples.size()));
}

void saveRows(const QString &path, const Pairs &pairs) {
    SqliteTable table(path);
    table.run("BEGIN; CREATE TABLE run (number INTEGER PRIMARY KEY, uv REAL, cond REAL)");
    sqlite3_stmt *insert = table.prepare("INSERT INTO run (uv, cond) VALUES (?, ?)");
    for (const SamplePair pair : pairs.plain) {
        ::sqlite3_bind_double(insert, 1, pair.uv);
        ::sqlite3_bind_double(insert, 2, pair.cond);
        ::sqlite3_step(insert);
        ::sqlite3_reset(insert);
    }
    table.run("COMMIT");
}

void loadRows(const QString &path) {
    SqliteTable table(path);
    SampleStore samples;
    sqlite3_stmt *select = table.prepare("SELECT uv, cond FROM run ORDER BY number");
    while (::sqlite3_step(select) == SQLITE_ROW)
        samples.append({static_cast<float>(::sqlite3_column_double(select, 0)),
                        static_cast<float>(::sqlite3_column_double(select, 1))});
    benchmark::DoNotOptimize(samples.extent(0, samples.size()));
}

/// The time that the operator waits until the file is read and the run is drawn.
void showOurs(const QString &path) {
    Quillchart chart(1);
    chart.resize(1280, 720);
    if (!chart.LoadDataFile(path))
        qFatal("The run cannot be loaded");
    chart.setTimeAxisMax(chart.GetLastTime());
    chart.Redraw();
    benchmark::DoNotOptimize(chart.grab());
}

struct Way {
    const char *name;
    void (*save)(const QString &, const Pairs &);
    void (*load)(const QString &);
    qint64 most;
};

constexpr Way ways[] = {
    {"ours", saveOurs, loadOurs, 13000000},
    {"bare", writeBare, loadBare, 13000000},
    {"sqlite_blobs", saveBlobs, loadBlobs, 13000000},
    {"sqlite_rows", saveRows, loadRows, 432000},
};

void save(benchmark::State &state, const Way &way) {
    const Pairs &pairs = Pairs::of(state.range(0));
    const QString path = benchPath(QStringLiteral("saved"));
    for (auto _ : state) {
        way.save(path, pairs);
        state.PauseTiming();
        state.counters["bytes_per_pair"] =
            static_cast<double>(QFile(path).size()) / static_cast<double>(state.range(0));
        QFile::remove(path);
        state.ResumeTiming();
    }
}

void load(benchmark::State &state, const Way &way) {
    const QString path = benchPath(QLatin1String(way.name) + QString::number(state.range(0)));
    if (!QFile::exists(path))
        way.save(path, Pairs::of(state.range(0)));
    for (auto _ : state)
        way.load(path);
}

const int registered = [] {
    for (const Way &way : ways) {
        for (const qint64 pairs : {432000, 13000000}) {
            if (pairs > way.most)
                continue;
            const auto add = [&](const char *row, void (*body)(benchmark::State &, const Way &)) {
                benchmark::RegisterBenchmark((std::string(row) + '/' + way.name).c_str(), body, way)
                    ->Arg(pairs)
                    ->UseRealTime()
                    ->Unit(benchmark::kMillisecond);
            };
            add("Save", save);
            add("Load", load);
        }
    }
    static constexpr Way toFirstPixel{"ours", saveOurs, showOurs, 13000000};
    for (const qint64 pairs : {432000, 13000000})
        benchmark::RegisterBenchmark("FirstPixel/ours", load, toFirstPixel)
            ->Arg(pairs)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    return 0;
}();

} // namespace
