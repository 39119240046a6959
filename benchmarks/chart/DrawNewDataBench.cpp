// SPDX-License-Identifier: MIT
#include "BenchRun.h"

#include <QPainter>
#include <benchmark/benchmark.h>

using namespace ostrel;

namespace {

constexpr int news = 4;

void ours(benchmark::State &state) {
    BenchRun run;
    ChartData data;
    while (data.samples.size() < state.range(0))
        data.samples.append(run.next());
    ChartView view = benchView(data);
    const float window = view.axes.timeMax;
    ChartImage image;
    int drawings = 1 << 30;
    for (auto _ : state) {
        for (int i = 0; i < news; ++i)
            data.samples.append(run.next());
        if (++drawings > 400) { // the window is full
            state.PauseTiming();
            view.axes.timeMax = data.lastTime() + window * 0.1F + 6;
            view.axes.timeMin = view.axes.timeMax - window;
            image.draw(data, view);
            drawings = 0;
            state.ResumeTiming();
        }
        image.drawNew(data);
    }
}

void painter(benchmark::State &state) {
    QImage image(1280, 720, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter with(&image);
    const QPointF uv[]{{600, 300}, {600.4, 301}, {600.8, 300}, {601.2, 302}, {601.6, 301}};
    const QPointF cond[]{{600, 500}, {600.4, 501}, {600.8, 500}, {601.2, 502}, {601.6, 501}};
    for (auto _ : state) {
        with.setPen(Qt::red);
        with.drawPolyline(cond, news + 1);
        with.setPen(Qt::blue);
        with.drawPolyline(uv, news + 1);
    }
}

BENCHMARK(painter)->Name("DrawNewData/painter/0");
BENCHMARK(ours)->Name("DrawNewData/ours")->Arg(3000)->Arg(432000)->Arg(3000000)->Arg(13000000);

} // namespace
