// SPDX-License-Identifier: MIT
#include "BenchRun.h"
#include "chart/files/ChartFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

using namespace ostrel;

/// The time to check an archive, from the start of the program to its end, beside that of reading the same files with
/// one cat. All is in memory. The archive is smaller than one of years: 200 copies of a run of a day, so that the start
/// of the program, 20 ms, weighs five times what it does in one of 1,000 runs.
namespace {

constexpr int runs = 200;
constexpr qint64 day = 432000; // pairs

using Words = std::vector<std::string>;

const Words &archive() {
    static const QTemporaryDir folder(QDir::current().filePath(QStringLiteral("bench-XXXXXX")));
    static const Words paths = [] {
        const QString first = folder.filePath(QStringLiteral("run.chd"));
        if (saveChartFile(first, dataFile, BenchRun::ofPairs(day), AxisValues()))
            qFatal("The run cannot be saved");
        Words made{first.toStdString()};
        while (made.size() < runs) {
            const QString path = folder.filePath(QStringLiteral("run%1.chd").arg(made.size()));
            if (!QFile::copy(first, path))
                qFatal("The run cannot be copied");
            made.push_back(path.toStdString());
        }
        return made;
    }();
    return paths;
}

pid_t started(Words words) {
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        qFatal("%s cannot be started", arguments[0]);
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

void awaitEnd(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0)
        qFatal("A program has failed");
}

void ours(benchmark::State &state) {
    const QString folder = QFileInfo(QString::fromStdString(archive().front())).path();
    for (auto _ : state)
        awaitEnd(started({OSTREL_FILE, "check", folder.toStdString()}));
}

void cat(benchmark::State &state) {
    Words words{"cat"};
    words.insert(words.end(), archive().begin(), archive().end());
    for (auto _ : state)
        awaitEnd(started(words));
}

BENCHMARK(ours)->Name("ArchiveCheck/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(cat)->Name("ArchiveCheck/cat")->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
