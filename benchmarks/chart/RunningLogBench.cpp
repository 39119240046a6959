// SPDX-License-Identifier: MIT
#include "BenchDisk.h"
#include "BenchRun.h"
#include "chart/files/ChartFile.h"
#include "chart/files/RunningLogReader.h"
#include "chart/files/RunningLogWriter.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <vector>

using namespace ostrel;

namespace {

constexpr int pairsInTick = 100; // samples in the 20 seconds between two calls
constexpr qint64 day = 432000;
constexpr double hoursInFile = 24;

using Tick = std::array<SamplePair, pairsInTick>;

Tick nextTick() {
    static BenchRun run;
    Tick tick;
    for (SamplePair &pair : tick)
        pair = run.next();
    return tick;
}

QString newFolder(const char *name) {
    QString path = benchPath(QString::fromLatin1(name).replace(u'/', u'-'));
    QDir().mkpath(path);
    return path;
}

/// Writes ticks: each is on the disk when keep() returns.
class Log {
public:
    virtual ~Log() = default;
    virtual void keep(const Tick &tick) = 0;
};

/// The program's own log, of a run that already holds `pairs`.
class OurLog : public Log {
public:
    OurLog(const QString &folder, qint64 pairs) : folder_(folder), run_(BenchRun::ofPairs(pairs)) { write(); }
    void keep(const Tick &tick) override {
        run_.samples.append(tick);
        write();
    }

private:
    void write() {
        if (writer_.write(run_, folder_, 1, hoursInFile))
            qFatal("The log cannot be written");
    }

    QString folder_;
    ChartData run_;
    RunningLogWriter writer_;
};

/// The lowest cost for a disk: only the pairs, written over zeros of an existing file.
class OverwriteLog : public Log {
public:
    explicit OverwriteLog(const QString &folder, qint64)
        : fd_(::open(qPrintable(folder + QStringLiteral("/log")), O_WRONLY | O_CREAT, 0600)) {
        const std::vector<char> zeros(size);
        if (::pwrite(fd_, zeros.data(), zeros.size(), 0) != static_cast<ssize_t>(size) || ::fsync(fd_) != 0)
            qFatal("The log cannot be laid out");
    }
    ~OverwriteLog() override { ::close(fd_); }
    void keep(const Tick &tick) override {
        if (::pwrite(fd_, tick.data(), sizeof tick, at_) != static_cast<ssize_t>(sizeof tick) || ::fdatasync(fd_) != 0)
            qFatal("The log cannot be written");
        at_ += static_cast<off_t>(sizeof tick);
        if (at_ + static_cast<off_t>(sizeof tick) > static_cast<off_t>(size))
            at_ = 0;
    }

private:
    static constexpr std::size_t size = 16 << 20;
    int fd_;
    off_t at_ = 0;
};

class SqliteLog : public Log {
public:
    SqliteLog(const QString &folder, const char *columns, const char *insert)
        : table_(folder + QStringLiteral("/log")) {
        table_.run("PRAGMA journal_mode = WAL");
        table_.run((std::string("CREATE TABLE log (number INTEGER PRIMARY KEY, ") + columns + ')').c_str());
        insert_ = table_.prepare(insert);
    }

protected:
    void step() {
        if (::sqlite3_step(insert_) != SQLITE_DONE)
            qFatal("The log cannot be written");
        ::sqlite3_reset(insert_);
    }

    SqliteTable table_;
    sqlite3_stmt *insert_;
};

class BlobLog : public SqliteLog {
public:
    BlobLog(const QString &folder, qint64) : SqliteLog(folder, "pairs BLOB", "INSERT INTO log (pairs) VALUES (?)") {}
    void keep(const Tick &tick) override {
        ::sqlite3_bind_blob(insert_, 1, tick.data(), static_cast<int>(sizeof tick), SQLITE_STATIC);
        step();
    }
};

class RowLog : public SqliteLog {
public:
    RowLog(const QString &folder, qint64)
        : SqliteLog(folder, "uv REAL, cond REAL", "INSERT INTO log (uv, cond) VALUES (?, ?)") {}
    void keep(const Tick &tick) override {
        table_.run("BEGIN");
        for (const SamplePair pair : tick) {
            ::sqlite3_bind_double(insert_, 1, pair.uv);
            ::sqlite3_bind_double(insert_, 2, pair.cond);
            step();
        }
        table_.run("COMMIT");
    }
};

/// Each log is continued from one measurement to the next.
template <typename Kind>
void logTick(benchmark::State &state, const char *name, qint64 pairs) {
    const QString folder = newFolder(name);
    static std::map<std::string, std::unique_ptr<Log>> logs;
    std::unique_ptr<Log> &log = logs[name];
    if (!log)
        log = std::make_unique<Kind>(folder, pairs);
    const double before = bytesAtDisk(folder);
    for (auto _ : state)
        log->keep(nextTick());
    state.counters["kB_at_disk"] = (bytesAtDisk(folder) - before) / 1000 / static_cast<double>(state.iterations());
}

/// Does not flush: the system decides when to write.
class LazyDisk : public FileOperations {
public:
    int syncData(int) override { return 0; }
};

/// A log directory of 30 days without any failure.
const QString &monthOfTicks() {
    static const QString folder = [] {
        QString path = newFolder("month");
        LazyDisk disk;
        RunningLogWriter writer(disk);
        ChartData run;
        while (run.samples.size() < 30 * day) {
            run.samples.append(nextTick());
            if (writer.write(run, path, 1, hoursInFile))
                qFatal("The log cannot be written");
        }
        ::sync();
        return path;
    }();
    return folder;
}

void readLog(benchmark::State &state) {
    const QString &folder = monthOfTicks();
    for (auto _ : state) {
        if (readRunningLog(folder).data.samples.size() < 30 * day)
            qFatal("The log is not whole");
    }
}

void saveLogAs(benchmark::State &state) {
    const QString &folder = monthOfTicks();
    const QString path = benchPath(QStringLiteral("month.chl"));
    for (auto _ : state) {
        const RecoveredLog log = readRunningLog(folder);
        if (!log.whole() || saveChartFile(path, logFile, log.data, log.axes()))
            qFatal("The log cannot be saved");
        state.PauseTiming();
        QFile::remove(path);
        state.ResumeTiming();
    }
}

template <typename Kind>
void addTick(const char *name, qint64 pairs = 0) {
    benchmark::RegisterBenchmark(name, logTick<Kind>, name, pairs)->UseRealTime()->Unit(benchmark::kMicrosecond);
}

const int registered = [] {
    addTick<OurLog>("LogTick/ours/1day", day);
    addTick<OurLog>("LogTick/ours/30days", 30 * day);
    addTick<OverwriteLog>("LogTick/overwrite");
    addTick<BlobLog>("LogTick/sqlite_blob");
    addTick<RowLog>("LogTick/sqlite_rows");
    benchmark::RegisterBenchmark("ReadLog/ours/30days", readLog)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("SaveLogAs/ours/30days", saveLogAs)->UseRealTime()->Unit(benchmark::kMillisecond);
    return 0;
}();

} // namespace
