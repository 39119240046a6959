// SPDX-License-Identifier: MIT
#include "chart/plot/TraceRaster.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

// How a column is drawn: a trace covers some rows of it fully, which get its colour, and some rows above and below
// these in part, which are blended by their share. Full rows and the ground are written sixteen columns at a time, each
// pixel once, row by row as they are in memory; then the edges are blended over them, conductivity first. Fewer than
// sixteen columns are drawn one by one. Only rows with old or new ink are written, without those that UV covers fully
// both times: a noisy trace that fills the plot costs hardly any writing.

namespace {

constexpr int blockWidth = 16;

// Rows that a trace covers in part are blended four at a time; a full stretch of fewer rows is blended, too.
constexpr int atOnce = 4;

using Pixels = quint32 __attribute__((vector_size(16)));
using Halves = quint16 __attribute__((vector_size(16)));

/// Mixes two colour parts of sixteen bits each; `share` is that of `above`, from 0 to 256.
Halves mixed(Pixels below, Pixels above, Halves share) {
    return (Halves(below) * (256 - share) + Halves(above) * share) >> 8;
}

Pixels blended(Pixels below, QRgb above, Lanes coverage) {
    const auto whole = Pixels(__builtin_convertvector(coverage * 256.0F + 0.5F, Pixels));
    const auto share = Halves(whole | whole << 16);
    const Pixels colour = Pixels{above, above, above, above};
    constexpr quint32 parts = 0x00ff00ff;
    const Halves redBlue = mixed(below & parts, colour & parts, share);
    const Halves alphaGreen = mixed(below >> 8 & parts, colour >> 8 & parts, share);
    return Pixels(redBlue) | Pixels(alphaGreen) << 8;
}

/// The same for one pixel.
QRgb blended(QRgb below, QRgb above, float coverage) {
    constexpr quint32 parts = 0x00ff00ff;
    const auto share = (static_cast<quint32>(coverage * 512.0F) + 1) / 2; // rounded
    const auto mix = [&](quint32 from, quint32 to) { return (from * (256 - share) + to * share) >> 8 & parts; };
    return mix(below & parts, above & parts) | mix(below >> 8 & parts, above >> 8 & parts) << 8;
}

Lanes least(Lanes a, Lanes b) { return a < b ? a : b; }
Lanes greatest(Lanes a, Lanes b) { return a > b ? a : b; }
Lanes all(float value) { return Lanes{value, value, value, value}; }

/// One trace's part of a column; tells how much of a row it covers.
struct ColumnEdges {
    ColumnEdges(const TraceColumns::Column &column, Trace trace) : count(column.count) {
        for (int i = 0; i < count; ++i) {
            tops[i] = column.strips[i].top(trace);
            bottoms[i] = column.strips[i].bottom(trace);
        }
    }
    /// The covered shares, from 0 to 1, of four rows from `row` on.
    Lanes coverage(int row) const {
        const auto start = static_cast<float>(row);
        const Lanes above{start, start + 1, start + 2, start + 3};
        const Lanes below = above + 1;
        Lanes covered{};
        for (int i = 0; i < count; ++i)
            covered += greatest(least(below, all(bottoms[i])) - greatest(above, all(tops[i])), all(0));
        return covered * all(count == 1 ? 1.0F : 1.0F / TraceColumns::mostStrips);
    }

    /// That of one row of a column that is a single strip.
    float coverageOfOne(int row) const {
        const auto start = static_cast<float>(row);
        return std::max(std::min(start + 1, bottoms[0]) - std::max(start, tops[0]), 0.0F);
    }

    int count;
    std::array<float, TraceColumns::mostStrips> tops;
    std::array<float, TraceColumns::mostStrips> bottoms;
};

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
    first = std::max(first - 1, 0); // flanks reach into the columns beside them
    end = std::min(end + 1, plot_.width());
    QRgb *plot = pixelsOf(image);
    stride_ = image.bytesPerLine() / 4;
    if (end - first < blockWidth) {
        for (int column = first; column < end; ++column)
            drawColumn(plot, traces, column);
        return;
    }
    // The last block ends at `end` and may draw some columns twice, which changes nothing.
    for (int column = first; column < end; column += blockWidth)
        drawBlock(plot, traces, std::min(column, end - blockWidth));
}

void TraceRaster::measure(const TraceColumns &traces, int first, int end) {
    const auto take = [&](int column, const std::array<Column, traceCount> &measured) {
        for (const auto trace : {UvTrace, CondTrace})
            drawn_[trace][column] = measured[trace];
    };
    const auto flanked = [](std::array<Column, traceCount> &own, const std::array<Column, traceCount> &beside) {
        for (const auto trace : {UvTrace, CondTrace})
            own[trace].flanks = own[trace].flanks.with(flank(own[trace].full, beside[trace].full));
    };
    std::array<Column, traceCount> left;
    std::array<Column, traceCount> own = measured(traces, first);
    const bool hasFlanks = traces.column(first).count == 1;
    if (hasFlanks && first > 0)
        left = measured(traces, first - 1);
    for (int column = first; column < end; ++column) {
        const bool last = column + 1 == (hasFlanks ? plot_.width() : end);
        const std::array<Column, traceCount> right =
            last ? std::array<Column, traceCount>{} : measured(traces, column + 1);
        std::array<Column, traceCount> drawn = own;
        if (hasFlanks) {
            flanked(drawn, left);
            flanked(drawn, right);
        }
        take(column, drawn);
        left = own;
        own = right;
    }
}

std::array<TraceRaster::Column, traceCount> TraceRaster::measured(const TraceColumns &traces, int column) const {
    // Lanes as in a Strip: the outermost of all strips are the ends of the ink, the innermost those of the full rows.
    const TraceColumns::Column &covered = traces.column(column);
    const auto height = static_cast<float>(plot_.height());
    const Lanes low{0, 0, -height, -height};
    const Lanes high{height, height, 0, 0};
    Lanes outer = least(greatest(covered.strips[0].lanes, low), high);
    Lanes inner = outer;
    for (int i = 1; i < covered.count; ++i) {
        const Lanes strip = least(greatest(covered.strips[i].lanes, low), high);
        outer = least(outer, strip);
        inner = greatest(inner, strip);
    }
    const auto floored = [](float value) { return static_cast<int>(value); }; // none is negative
    const auto ceiled = [](float value) { return static_cast<int>(value) + (value > std::trunc(value)); };
    std::array<Column, traceCount> measured;
    for (const auto trace : {UvTrace, CondTrace}) {
        Column &drawn = measured[trace];
        drawn.ink = {floored(outer[trace]), ceiled(-outer[traceCount + trace])};
        drawn.full = {ceiled(inner[trace]), floored(-inner[traceCount + trace])};
        if (drawn.full.bottom - drawn.full.top < atOnce)
            drawn.full = {drawn.ink.bottom, drawn.ink.bottom};
    }
    return measured;
}

/// The rows of a column beside that stand out of this one: there the trace is a flank, which a pen broader than a
/// column would have drawn into this one. Columns of noise cover each other for the most part, and have none.
TraceRaster::Rows TraceRaster::flank(Rows own, Rows beside) {
    const Rows shared = beside.common(own);
    const int longer = std::max(beside.bottom - beside.top, own.bottom - own.top);
    return beside.empty() || 2 * (shared.bottom - shared.top) > longer ? Rows{} : beside;
}

void TraceRaster::drawColumn(QRgb *plot, const TraceColumns &traces, int column) {
    const std::array<Column, traceCount> before{drawn_[UvTrace][column], drawn_[CondTrace][column]};
    measure(traces, column, column + 1);
    const Rows kept = before[UvTrace].full.common(drawn_[UvTrace][column].full);
    for (const Column &drawn : before)
        restore(plot, column, drawn.reach(), kept);
    for (const auto trace : {CondTrace, UvTrace})
        addFlanks(plot, column, drawn_[trace][column].flanks, kept, colours_[trace]);
    for (const auto trace : {CondTrace, UvTrace}) {
        fill(plot, column, drawn_[trace][column].full, kept, colours_[trace]);
    }
    for (const auto trace : {CondTrace, UvTrace})
        blendEdges(plot, traces, trace, column);
}

void TraceRaster::addFlanks(QRgb *plot, int column, Rows rows, Rows kept, QRgb colour) const {
    for (const Rows part : rows.without(kept)) {
        for (int row = part.top; row < part.bottom; ++row)
            mixQuarter(ground().at(column, row), colour, plot[row * stride_ + column]);
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
    std::array<Stretch, 2 * traceCount> stretches; // old ink and new full rows of each trace: much may lie between them
    std::array<BlockSpans, traceCount> spans;
    Rows kept{0, plot_.height()}; // rows that UV covers fully in all columns, before and now
    for (int column = first; column < first + blockWidth; ++column) {
        for (const auto trace : {UvTrace, CondTrace})
            stretches[trace].add(drawn_[trace][column].reach());
        kept = kept.common(drawn_[UvTrace][column].full);
    }
    measure(traces, first, first + blockWidth);
    for (const auto trace : {UvTrace, CondTrace}) {
        for (int i = 0; i < blockWidth; ++i) {
            const Column &drawn = drawn_[trace][first + i];
            if (trace == UvTrace)
                kept = kept.common(drawn.full);
            stretches[traceCount + trace].add(drawn.full.with(drawn.flanks));
            spans[trace].full.tops[i] = drawn.full.top;
            spans[trace].full.bottoms[i] = drawn.full.bottom;
            spans[trace].flanks.tops[i] = drawn.flanks.top;
            spans[trace].flanks.bottoms[i] = drawn.flanks.bottom;
            spans[trace].hasFlanks |= !drawn.flanks.empty();
        }
    }
    for (const auto trace : {UvTrace, CondTrace})
        spans[trace].colour = colours_[trace];
    std::sort(stretches.begin(), stretches.end(), [](const Stretch &a, const Stretch &b) { return a.top < b.top; });
    const PixelBlock block{plot + first, stride_, {columnColours_.data() + first, rowColours_.data()}};
    int done = 0;
    for (const Stretch &stretch : stretches) {
        const int top = std::max(done, stretch.top);
        done = std::max(done, stretch.bottom);
        for (const Rows part : Rows{top, done}.without(kept))
            fillRows(block, spans[CondTrace], spans[UvTrace], part.top, part.bottom);
    }
    for (const auto trace : {CondTrace, UvTrace}) {
        for (int i = 0; i < blockWidth; ++i)
            blendEdges(plot, traces, trace, first + i);
    }
}

void TraceRaster::blendEdges(QRgb *plot, const TraceColumns &traces, Trace trace, int column) const {
    const Column &drawn = drawn_[trace][column];
    const Rows hidden = trace == CondTrace ? drawn_[UvTrace][column].full : Rows{};
    const ColumnEdges edges(traces.column(column), trace);
    for (const Rows rows : {Rows{drawn.ink.top, drawn.full.top}, Rows{drawn.full.bottom, drawn.ink.bottom}}) {
        if (edges.count == 1 && rows.bottom - rows.top == 1) { // as most are where there are many samples
            QRgb &pixel = plot[rows.top * stride_ + column];
            if (!hidden.holds(rows.top))
                pixel = blended(pixel, colours_[trace], edges.coverageOfOne(rows.top));
            continue;
        }
        for (int row = rows.top; row < rows.bottom; row += atOnce) {
            const int count = std::min(atOnce, rows.bottom - row);
            QRgb *pixels = plot + row * stride_ + column;
            Pixels below{};
            for (int k = 0; k < count; ++k)
                below[k] = pixels[k * stride_];
            const Pixels made = blended(below, colours_[trace], edges.coverage(row));
            for (int k = 0; k < count; ++k) {
                if (!hidden.holds(row + k))
                    pixels[k * stride_] = made[k];
            }
        }
    }
}

void TraceRaster::fill(QRgb *plot, int column, Rows rows, Rows kept, QRgb colour) const {
    for (const Rows part : rows.without(kept)) {
        for (int row = part.top; row < part.bottom; ++row)
            plot[row * stride_ + column] = colour;
    }
}

void TraceRaster::restore(QRgb *plot, int column, Rows rows, Rows kept) const {
    for (const Rows part : rows.without(kept)) {
        for (int row = part.top; row < part.bottom; ++row)
            plot[row * stride_ + column] = ground().at(column, row);
    }
}

} // namespace ostrel
