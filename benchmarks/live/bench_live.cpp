// SPDX-License-Identifier: MIT
#include "../ProcessFigures.h"
#include "driver/LiveOstrel.h"

#include <QThread>
#include <benchmark/benchmark.h>

#include <stdexcept>

using namespace ostrel;

using namespace std::chrono_literals;

/// Processor time of an hour of recording, extrapolated from one minute at the instrument's own speed, with three
/// writes of the running log.
namespace {

constexpr double minutes = 1;

double perHour(const Child &program) {
    const double before = processorSeconds(program.pid());
    QThread::sleep(static_cast<unsigned long>(60 * minutes));
    return (processorSeconds(program.pid()) - before) * 60 / minutes;
}

void ours(benchmark::State &state) {
    for (auto _ : state) {
        LiveOstrel live{"uv 0.1\nnoise uv 0.001\ncond 20\nnoise cond 0.1\nwait 5s\nstart\nwait 1h\n"};
        if (!within(20s, [&] { return live.isEnabled("mnuStop"); }))
            throw std::runtime_error("the recorder does not record");
        QThread::sleep(5);
        state.SetIterationTime(perHour(live.recorder()));
    }
}

void stripTimer(benchmark::State &state) {
    for (auto _ : state) {
        const Profile profile;
        const Child strip{[&] {
            profile.enter();
            return become({STRIP_TIMER_PROGRAM});
        }};
        QThread::sleep(5);
        state.SetIterationTime(perHour(strip));
    }
}

// One minute is long enough, without repetitions.
BENCHMARK(ours)->Name("LiveHour/ours")->UseManualTime()->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);
BENCHMARK(stripTimer)
    ->Name("LiveHour/strip")
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
