// SPDX-License-Identifier: MIT
#include "acquisition/DataReceiver.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "acquisition/StreamFormat.h"
#include "desktop/SystemClock.h"

#include <QtEndian>
#include <benchmark/benchmark.h>

#include <array>
#include <bit>

/// A burst of samples from the serial port to the charts, against the bare cost of reading its numbers.

namespace {

constexpr int pairs = 800; // what fits the ring
constexpr int blockBytes = 6;

QByteArray burst() {
    QByteArray bytes;
    for (int i = 0; i < pairs * 2; ++i) {
        const char letter = i % 2 == 0 ? StreamFormat::UvSampleInRun : StreamFormat::CondSample;
        const auto value = qToBigEndian(std::bit_cast<quint32>(0.001F * static_cast<float>(i)));
        bytes += static_cast<char>(StreamFormat::SyncByte);
        bytes += letter;
        bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
    }
    return bytes;
}

struct Pair {
    float uv;
    float cond;
};

/// Keeps the last burst, as the plain decoder does.
class BurstChart : public LiveChart {
public:
    qint16 AddSample(float UV, float Conductivity) override {
        samples[next] = {UV, Conductivity};
        next = next + 1 == pairs ? 0 : next + 1;
        ++count;
        return 0;
    }
    qint16 AddEventMark(const QString &, qint32, qint16, float) override { return 0; }
    qint16 AddMethodText(const QString &, float) override { return 0; }
    float GetLastTime() const override { return 0; }
    bool IsLastPointVisible() const override { return true; }
    void DrawNewData() override {}
    void Redraw() override {}

    std::array<Pair, pairs> samples{};
    std::size_t next = 0;
    std::size_t count = 0;
};

class BurstPort : public SerialControl {
public:
    qint16 CommPort() const override { return 1; }
    void setCommPort(qint16) override {}
    bool PortOpen() const override { return true; }
    void setPortOpen(bool) override {}
    void setInBufferSize(int) override {}
    void setRThreshold(int) override {}
    int InBufferCount() const override { return int(bytes.size()); }
    QByteArray Input() override { return bytes; }
    int CommEvent() const override { return Receive; }

    QByteArray bytes = burst();
};

class StillTimer : public Timer {
public:
    bool Enabled() const override { return false; }
    void setEnabled(bool) override {}
    int Interval() const override { return 700; }
};

class Silence : public ErrorRoute, public AcquisitionWindow {
public:
    void HandelError(qint32) override {}
    void commandsAt(Moment) override {}
    void setReceiveLed(bool) override {}
    void UpdateLiveView() override {}
    void recorderToEnd() override {}
    void focusChart() override {}
    void showNoData() override {}
};

} // namespace

/// Port, ring, decoder and both charts, in the middle of a run.
static void DecodeOurs(benchmark::State &state) {
    BurstPort port;
    BurstChart chart;
    BurstChart log;
    StillTimer timer;
    Silence silence;
    SystemClock clock;
    Options options;
    LinkState link;
    RunState run;
    TabStates tabs;
    const Commands commands; // a burst has no news
    link.FirstSyncFound = link.StatusBlocksSeen = true;
    run.Recording = run.ChartRunActive = run.LogRunActive = true;
    ReceiveRing ring;
    DataReceiver receiver{port, ring, link, timer, clock, silence};
    RunNews news{run, link};
    SampleIntake intake{run, tabs, chart, log, timer, commands, silence, options, clock};
    StreamDecoder decoder{ring,    link,     run,     news,    intake, {timer, timer, timer},
                          silence, commands, silence, options, clock};
    for (auto _ : state) {
        receiver.ComPort_OnComm();
        decoder.TimerProcess_Timer();
        benchmark::DoNotOptimize(chart.samples);
        benchmark::DoNotOptimize(log.samples);
    }
    if (chart.count != log.count || chart.count != static_cast<std::size_t>(state.iterations()) * pairs)
        state.SkipWithError("samples are missing");
    state.SetBytesProcessed(state.iterations() * port.bytes.size());
}
BENCHMARK(DecodeOurs)->Name("Decode/ours");

/// No ring, no checks: the numbers of the blocks that are known to be there, for the recorder and the log as well.
static void DecodePlain(benchmark::State &state) {
    const QByteArray bytes = burst();
    std::array<Pair, pairs> chart{};
    std::array<Pair, pairs> log{};
    for (auto _ : state) {
        const char *block = bytes.constData();
        benchmark::DoNotOptimize(block);
        for (int i = 0; i < pairs; ++i) {
            chart[i].uv = log[i].uv = std::bit_cast<float>(qFromBigEndian<quint32>(block + 2));
            chart[i].cond = log[i].cond = std::bit_cast<float>(qFromBigEndian<quint32>(block + 2 + blockBytes));
            block += 2 * blockBytes;
        }
        benchmark::DoNotOptimize(chart);
        benchmark::DoNotOptimize(log);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(DecodePlain)->Name("Decode/plain");

BENCHMARK_MAIN();
