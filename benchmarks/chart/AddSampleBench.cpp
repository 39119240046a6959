// SPDX-License-Identifier: MIT
#include "chart/run/Run.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>

#include <chrono>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

using namespace ostrel;

namespace {

std::size_t heldBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Whether another program took the processor since the last call.
bool wasInterrupted() {
    static long known = 0;
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return std::exchange(known, usage.ru_nivcsw) != usage.ru_nivcsw;
}

/// Adds the pairs one by one. Also measures the bytes held for each pair, and the time of the slowest hundred calls in
/// milliseconds.
template <typename Add>
void measure(benchmark::State &state, Add add) {
    const qint64 pairs = state.range(0);
    const std::size_t before = heldBytes();
    double longest = 0;
    for (auto _ : state) {
        for (qint64 i = 0; i < pairs; i += 100) {
            const auto start = std::chrono::steady_clock::now();
            for (int j = 0; j < 100; ++j)
                add(SamplePair{static_cast<float>(i), static_cast<float>(j)});
            const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
            if (taken.count() > longest && !wasInterrupted())
                longest = taken.count();
        }
    }
    state.SetItemsProcessed(pairs);
    state.counters["bytes_per_pair"] = static_cast<double>(heldBytes() - before) / static_cast<double>(pairs);
    state.counters["longest_100_ms"] = longest;
}

void ours(benchmark::State &state) {
    Run run;
    measure(state, [&](SamplePair sample) { run.AddSample(sample.uv, sample.cond); });
}

void deque(benchmark::State &state) {
    std::deque<SamplePair> pairs;
    measure(state, [&](SamplePair sample) { pairs.push_back(sample); });
}

void vector(benchmark::State &state) {
    std::vector<SamplePair> pairs;
    measure(state, [&](SamplePair sample) { pairs.push_back(sample); });
}

/// The queries of every live update.
void questions(benchmark::State &state) {
    Run run;
    for (qint64 i = 0; i < state.range(0); ++i)
        run.AddSample(0.1F, 20);
    for (auto _ : state) {
        benchmark::DoNotOptimize(run.GetLastTime());
        benchmark::DoNotOptimize(run.IsLastPointVisible());
    }
}

const int registered = [] {
    for (const qint64 pairs : {432000, 13000000, 100000000}) {
        const auto add = [&](const char *name, void (*body)(benchmark::State &)) {
            benchmark::RegisterBenchmark(name, body)->Arg(pairs)->Iterations(1)->Unit(benchmark::kMillisecond);
        };
        add("AddSample/ours", ours);
        add("AddSample/deque", deque);
        add("AddSample/vector", vector);
    }
    for (const qint64 pairs : {0, 3000, 432000, 13000000})
        benchmark::RegisterBenchmark("Questions/ours", questions)->Arg(pairs);
    return 0;
}();

} // namespace
