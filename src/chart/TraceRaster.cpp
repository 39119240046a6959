// SPDX-License-Identifier: MIT
#include "chart/TraceRaster.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int blockWidth = 16;

QRgb blended(QRgb below, QRgb above, float coverage) {
    const auto share = static_cast<quint32>(coverage * 256.0F + 0.5F);
    const quint32 rest = 256 - share;
    const quint32 redBlue = ((below & 0xff00ffU) * rest + (above & 0xff00ffU) * share) >> 8;
    const quint32 green = ((below & 0x00ff00U) * rest + (above & 0x00ff00U) * share) >> 8;
    return 0xff000000U | (redBlue & 0xff00ffU) | (green & 0x00ff00U);
}

Lanes least(Lanes a, Lanes b) { return a < b ? a : b; }
Lanes greatest(Lanes a, Lanes b) { return a > b ? a : b; }
Lanes all(float value) { return Lanes{value, value, value, value}; }

/// How much of a row's pixel the strips of a column cover, 0 to 1.
float coverage(const float *tops, const float *bottoms, int strips, float row) {
    if (strips == 1)
        return std::clamp(std::min(bottoms[0], row + 1) - std::max(tops[0], row), 0.0F, 1.0F);
    const Lanes top{tops[0], tops[1], tops[2], tops[3]};
    const Lanes bottom{bottoms[0], bottoms[1], bottoms[2], bottoms[3]};
    const Lanes covered = greatest(least(bottom, all(row + 1)) - greatest(top, all(row)), all(0));
    return (covered[0] + covered[1] + covered[2] + covered[3]) * 0.25F;
}

} // namespace

void TraceRaster::setPlot(const QRect &plot, QRgb uvColour, QRgb condColour) {
    plot_ = plot;
    colours_ = {uvColour, condColour};
    for (auto &columns : drawn_)
        columns.assign(static_cast<std::size_t>(plot.width()), Column{});
}

void TraceRaster::setGround(std::vector<QRgb> columns, std::vector<QRgb> rows) {
    const std::size_t known = std::min({columns.size(), columnColours_.size(), drawn_[UvTrace].size()});
    for (std::size_t column = 0; column < known; ++column) {
        if (columns[column] != columnColours_[column])
            drawn_[UvTrace][column].ink = {0, plot_.height()};
    }
    columnColours_ = std::move(columns);
    rowColours_ = std::move(rows);
}

QRgb *TraceRaster::pixelsOf(QImage &image) const {
    return reinterpret_cast<QRgb *>(image.bits()) + plot_.y() * (image.bytesPerLine() / 4) + plot_.x();
}

void TraceRaster::paintGround(QImage &image) const {
    QRgb *row = pixelsOf(image);
    for (int y = 0; y < plot_.height(); ++y, row += image.bytesPerLine() / 4) {
        if (rowColours_[y] != 0)
            std::fill_n(row, plot_.width(), rowColours_[y]);
        else
            std::copy_n(columnColours_.data(), plot_.width(), row);
    }
}

void TraceRaster::draw(QImage &image, const TraceColumns &traces, int first, int end) {
    releaseWideRegisters();
    QRgb *plot = pixelsOf(image);
    stride_ = image.bytesPerLine() / 4;
    if (end - first < blockWidth) {
        for (int column = first; column < end; ++column)
            drawColumn(plot, traces, column);
        return;
    }
    // The last block ends with the plot and draws some columns twice, which changes nothing.
    for (int column = first; column < end; column += blockWidth)
        drawBlock(plot, traces, std::min(column, end - blockWidth));
}

TraceRaster::Column TraceRaster::measure(const TraceColumns &traces, Trace trace, int column) const {
    const float *tops = traces.tops(trace, column);
    const float *bottoms = traces.bottoms(trace, column);
    const auto height = static_cast<float>(plot_.height());
    float inkTop = height, fullTop = 0, inkBottom = 0, fullBottom = height;
    for (int i = 0; i < traces.strips(); ++i) {
        const float top = std::clamp(tops[i], 0.0F, height);
        const float bottom = std::clamp(bottoms[i], 0.0F, height);
        inkTop = std::min(inkTop, top);
        fullTop = std::max(fullTop, top);
        inkBottom = std::max(inkBottom, bottom);
        fullBottom = std::min(fullBottom, bottom);
    }
    if (inkTop >= inkBottom)
        return {};
    const auto floored = [](float value) { return static_cast<int>(value); }; // none is negative
    const auto ceiled = [](float value) { return static_cast<int>(value) + (value > std::trunc(value)); };
    Column measured{{floored(inkTop), ceiled(inkBottom)}, {ceiled(fullTop), floored(fullBottom)}};
    if (measured.full.empty())
        measured.full = {measured.ink.bottom, measured.ink.bottom};
    return measured;
}

void TraceRaster::drawColumn(QRgb *plot, const TraceColumns &traces, int column) {
    for (auto &drawn : drawn_)
        restore(plot, column, drawn[column].ink);
    for (const auto trace : {CondTrace, UvTrace})
        drawn_[trace][column] = measure(traces, trace, column);
    for (const auto trace : {CondTrace, UvTrace}) {
        fill(plot, column, drawn_[trace][column].full, colours_[trace]);
        blendEdges(plot, traces, trace, column);
    }
}

void TraceRaster::drawBlock(QRgb *plot, const TraceColumns &traces, int first) {
    struct Stretch {
        int top = 1 << 30;
        int bottom = 0;
        void add(Rows rows) {
            if (rows.empty())
                return;
            top = std::min(top, rows.top);
            bottom = std::max(bottom, rows.bottom);
        }
    };
    std::array<Stretch, 2 * traceCount> stretches; // old ink and new, each trace by itself: much may lie between them
    std::array<BlockSpans, traceCount> spans;
    for (const auto trace : {UvTrace, CondTrace}) {
        spans[trace].colour = colours_[trace];
        for (int i = 0; i < blockWidth; ++i) {
            Column &drawn = drawn_[trace][first + i];
            stretches[trace].add(drawn.ink);
            drawn = measure(traces, trace, first + i);
            stretches[traceCount + trace].add(drawn.full);
            spans[trace].tops[i] = drawn.full.top;
            spans[trace].bottoms[i] = drawn.full.bottom;
        }
    }
    std::sort(stretches.begin(), stretches.end(), [](const Stretch &a, const Stretch &b) { return a.top < b.top; });
    const PixelBlock block{plot + first, stride_, {columnColours_.data() + first, rowColours_.data()}};
    int done = 0;
    for (const Stretch &stretch : stretches) {
        fillRows(block, spans[CondTrace], spans[UvTrace], std::max(done, stretch.top), stretch.bottom);
        done = std::max(done, stretch.bottom);
    }
    for (const auto trace : {CondTrace, UvTrace}) {
        for (int i = 0; i < blockWidth; ++i)
            blendEdges(plot, traces, trace, first + i);
    }
}

void TraceRaster::blendEdges(QRgb *plot, const TraceColumns &traces, Trace trace, int column) const {
    const Column &drawn = drawn_[trace][column];
    blendRows(plot, traces, trace, column, {drawn.ink.top, drawn.full.top});
    blendRows(plot, traces, trace, column, {drawn.full.bottom, drawn.ink.bottom});
}

void TraceRaster::blendRows(QRgb *plot, const TraceColumns &traces, Trace trace, int column, Rows rows) const {
    const float *tops = traces.tops(trace, column);
    const float *bottoms = traces.bottoms(trace, column);
    const Rows above = trace == CondTrace ? drawn_[UvTrace][column].full : Rows{};
    for (int row = rows.top; row < rows.bottom; ++row) {
        if (above.holds(row))
            continue;
        QRgb &pixel = plot[row * stride_ + column];
        pixel = blended(pixel, colours_[trace], coverage(tops, bottoms, traces.strips(), static_cast<float>(row)));
    }
}

void TraceRaster::fill(QRgb *plot, int column, Rows rows, QRgb colour) const {
    for (int row = rows.top; row < rows.bottom; ++row)
        plot[row * stride_ + column] = colour;
}

void TraceRaster::restore(QRgb *plot, int column, Rows rows) const {
    for (int row = rows.top; row < rows.bottom; ++row)
        plot[row * stride_ + column] = ground().at(column, row);
}
