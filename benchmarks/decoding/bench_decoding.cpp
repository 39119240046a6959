// SPDX-License-Identifier: MIT
#include "acquisition/DataReceiver.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "acquisition/StreamFormat.h"
#include "chart/files/RunDocument.h"
#include "desktop/SystemClock.h"

#include <QtEndian>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <bit>

using namespace ostrel;

/// A burst of samples from the serial port to the charts, against the bare cost of reading its numbers.

namespace {

constexpr int pairs = 800; // 9600 bytes, which fit the ring
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
    int CommEvent() const override { return ErrorNumber::ReceiveEvent; }

    QByteArray bytes = burst();
};

class StillTimer : public Timer {
public:
    bool Enabled() const override { return false; }
    void setEnabled(bool) override {}
    int Interval() const override { return 700; }
};

class Silence : public ErrorRoute, public AcquisitionWindow, public Notices {
public:
    void HandelError(qint32) override {}
    void commandsAt(Moment) override {}
    void setReceiveLed(bool) override {}
    void showNow(std::optional<float>, const std::optional<SamplePair> &) override {}
    void UpdateLiveView() override {}
    void recorderToEnd() override {}
    void focusChart() override {}
    void showNoData() override {}
    void show(News, const QString &, const QString &) override {}
    void withdraw(News) override {}
};

} // namespace

/// Port, ring, decoder and both charts, in the middle of a run.
static void DecodeOurs(benchmark::State &state) {
    BurstPort port;
    RunDocument chart;
    RunDocument log;
    StillTimer timer;
    Silence silence;
    SystemClock clock;
    Options options;
    LinkState link;
    RunState run;
    TabStates tabs;
    const Commands commands; // a burst runs no commands
    link.FirstSyncFound = link.StatusBlocksSeen = true;
    run.Recording = run.ChartRunActive = run.LogRunActive = true;
    ReceiveRing ring;
    DataReceiver receiver{port, ring, link, timer, clock, silence};
    RunNews news{run, link};
    SampleIntake intake{run, tabs, chart, log, timer, commands, silence, silence, options, clock};
    StreamDecoder decoder{ring,    link,     run,     news,    intake,  {timer, timer, timer},
                          silence, commands, silence, silence, options, clock};
    mallopt(M_MMAP_THRESHOLD, 1 << 26); // a cleared chart gets the same memory again, cached like the plain decoder's
    mallopt(M_TRIM_THRESHOLD, 1 << 28);
    constexpr int burstsHeld = SampleStore::chunkSize / pairs;
    int held = 0;
    for (auto _ : state) {
        receiver.ComPort_OnComm();
        decoder.TimerProcess_Timer();
        if (++held < burstsHeld)
            continue;
        if (chart.data().samples.size() != held * pairs || log.data().samples.size() != held * pairs)
            state.SkipWithError("samples are missing");
        held = 0;
        chart.ClearData();
        log.ClearData();
    }
    state.SetBytesProcessed(state.iterations() * port.bytes.size());
}
BENCHMARK(DecodeOurs)->Name("Decode/ours");

/// No ring and no checks: reads the numbers of the known blocks, for the recorder and the log.
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
