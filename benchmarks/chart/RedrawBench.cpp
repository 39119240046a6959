// SPDX-License-Identifier: MIT
#include "BenchRun.h"
#include "chart/plot/PlotPainter.h"

#include <QPainter>
#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <map>

using namespace ostrel;

namespace {

const ChartData &runOf(qint64 pairs) {
    static std::map<qint64, ChartData> runs;
    const auto found = runs.find(pairs);
    return found != runs.end() ? found->second : runs.emplace(pairs, BenchRun::ofPairs(pairs)).first->second;
}

void ours(benchmark::State &state) {
    const ChartData &data = runOf(state.range(0));
    const ChartView view = benchView(data);
    ChartImage image;
    image.draw(data, view);
    for (auto _ : state)
        image.draw(data, view);
}

/// The time axis moves by half a pixel with every drawing.
void oursMoving(benchmark::State &state) {
    const ChartData &data = runOf(state.range(0));
    ChartView view = benchView(data);
    const float step = view.axes.timeMax / 2400;
    ChartImage image;
    int drawings = 0;
    for (auto _ : state) {
        view.axes.timeMin = step * static_cast<float>(drawings % 100);
        ++drawings;
        image.draw(data, view);
    }
}

/// The lowest cost with QPainter: the axes, and a precomputed envelope with one rectangle a column.
void painter(benchmark::State &state) {
    const ChartData &data = runOf(state.range(0));
    const ChartView view = benchView(data);
    const PlotLayout layout = PlotLayout::of(view.size, 1, view.axes, view.font, view.title);
    constexpr int columns = 1280;
    std::array<std::vector<QRectF>, traceCount> envelopes;
    for (int column = 0; column < columns; ++column) {
        const qint64 first = data.samples.size() * column / columns;
        const qint64 end = data.samples.size() * (column + 1) / columns;
        const Extent extent = data.samples.extent(std::max<qint64>(first - 1, 0), end);
        const auto add = [&](Trace trace, double low, double high) {
            envelopes[trace].emplace_back(column, high, 1, std::max(1.0, low - high));
        };
        add(UvTrace, layout.uv.place(extent.uvMin()), layout.uv.place(extent.uvMax()));
        add(CondTrace, layout.cond.place(extent.condMin()), layout.cond.place(extent.condMax()));
    }
    QImage image(view.size, QImage::Format_RGB32);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter with(&image);
        PlotPainter plot(with, layout, view.theme);
        plot.frame();
        plot.grid();
        for (const QRectF &rect : envelopes[CondTrace])
            with.fillRect(rect, view.theme.cond);
        for (const QRectF &rect : envelopes[UvTrace])
            with.fillRect(rect, view.theme.uv);
    }
}

void qcustomplot(benchmark::State &state) {
    const ChartData &data = runOf(state.range(0));
    QCustomPlot plot;
    plot.resize(1280, 720);
    plot.setNotAntialiasedElements(QCP::aeAll);
    plot.yAxis2->setVisible(true);
    QCPGraph *uv = plot.addGraph(plot.xAxis, plot.yAxis);
    QCPGraph *cond = plot.addGraph(plot.xAxis, plot.yAxis2);
    QVector<QCPGraphData> points;
    points.reserve(data.samples.size());
    for (const bool second : {false, true}) {
        points.clear();
        for (qint64 i = 0; i < data.samples.size(); ++i) {
            const SamplePair sample = data.samples.at(i);
            points.append({ChartData::timeOf(i), second ? sample.cond : sample.uv});
        }
        (second ? cond : uv)->data()->set(points, true);
        (second ? cond : uv)->setAdaptiveSampling(true);
    }
    points = {};
    plot.xAxis->setRange(0, data.lastTime());
    plot.yAxis->setRange(-0.2, 2);
    plot.yAxis2->setRange(0, 500);
    plot.show();
    plot.replot(QCustomPlot::rpImmediateRefresh);
    for (auto _ : state)
        plot.replot(QCustomPlot::rpImmediateRefresh);
}

const int registered = [] {
    for (const qint64 pairs : {3000, 432000, 3000000, 13000000}) {
        const auto add = [&](const char *name, void (*body)(benchmark::State &)) {
            benchmark::RegisterBenchmark(name, body)->Arg(pairs)->Unit(benchmark::kMicrosecond)->MinTime(0.3);
        };
        add("Redraw/ours", ours);
        add("Redraw/moving", oursMoving);
        add("Redraw/painter", painter);
        add("Redraw/qcustomplot", qcustomplot);
    }
    return 0;
}();

} // namespace
