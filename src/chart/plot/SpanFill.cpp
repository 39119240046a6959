// SPDX-License-Identifier: MIT
#include "chart/plot/SpanFill.h"

#include <algorithm>

namespace ostrel {

namespace {

using Eight = int __attribute__((vector_size(32)));
using EightAnywhere = int __attribute__((vector_size(32), aligned(4), may_alias));

/// The rows that the trace covers in every column, and in any.
struct Reach {
    explicit Reach(const BlockSpans &spans) {
        for (int i = 0; i < 16; ++i) {
            const bool empty = spans.full.tops[i] >= spans.full.bottoms[i];
            allTop = std::max(allTop, spans.full.tops[i]);
            allBottom = std::min(allBottom, empty ? 0 : spans.full.bottoms[i]);
        }
        add(spans.full);
        if (spans.hasFlanks)
            add(spans.flanks);
    }
    void add(const BlockSpans::Rows &rows) {
        for (int i = 0; i < 16; ++i) {
            const bool empty = rows.tops[i] >= rows.bottoms[i];
            anyTop = std::min(anyTop, empty ? anyTop : rows.tops[i]);
            anyBottom = std::max(anyBottom, empty ? 0 : rows.bottoms[i]);
        }
    }
    bool everywhere(int row) const { return row >= allTop && row < allBottom; }
    bool somewhere(int row) const { return row >= anyTop && row < anyBottom; }

    int allTop = 0;
    int allBottom = 1 << 30;
    int anyTop = 1 << 30;
    int anyBottom = 0;
};

[[gnu::always_inline]] inline const EightAnywhere &at(const void *place) {
    return *static_cast<const EightAnywhere *>(place);
}

/// One trace in eight columns of a block.
struct OctetSpans {
    [[gnu::always_inline]] OctetSpans(const BlockSpans &spans, int first, const Eight &ground)
        : tops(at(&spans.full.tops[first])), bottoms(at(&spans.full.bottoms[first])),
          flankTops(at(&spans.flanks.tops[first])), flankBottoms(at(&spans.flanks.bottoms[first])),
          colour(Eight{} + static_cast<int>(spans.colour)), hasFlanks(spans.hasFlanks) {
        mixQuarter(ground, colour, onGround);
    }

    [[gnu::always_inline]] void addFlanks(Eight &pixels, int row, const Eight &mixed) const {
        if (hasFlanks)
            pixels = ((flankTops <= row) & (flankBottoms > row)) ? mixed : pixels;
    }
    [[gnu::always_inline]] void addFull(Eight &pixels, int row) const {
        pixels = ((tops <= row) & (bottoms > row)) ? colour : pixels;
    }

    Eight tops, bottoms, flankTops, flankBottoms, colour;
    Eight onGround; ///< the flanks' colour where there is no grid line
    bool hasFlanks;
};

/// Eight columns of a block.
struct Octet {
    [[gnu::always_inline]] Octet(const PixelBlock &block, const BlockSpans &lowerSpans, const BlockSpans &upperSpans,
                                 int first)
        : ground(at(block.ground.columns + first)), lower(lowerSpans, first, ground), upper(upperSpans, first, ground) {
    }

    /// `grid`: the colour of the row's grid line, 0 for none.
    [[gnu::always_inline]] void addTraces(int row, int grid, Eight &pixels) const {
        if (grid == 0) {
            lower.addFlanks(pixels, row, lower.onGround);
            upper.addFlanks(pixels, row, upper.onGround);
        } else {
            const Eight line = Eight{} + grid;
            Eight onLine;
            mixQuarter(line, lower.colour, onLine);
            lower.addFlanks(pixels, row, onLine);
            mixQuarter(line, upper.colour, onLine);
            upper.addFlanks(pixels, row, onLine);
        }
        lower.addFull(pixels, row);
        upper.addFull(pixels, row);
    }

    Eight ground;
    OctetSpans lower, upper;
};

} // namespace

#if defined(__x86_64__) && !defined(__clang__)                          // its clones do not link from other files
#define OSTREL_WIDEST __attribute__((target_clones("avx2", "default"))) // chosen by the processor at hand
#else
#define OSTREL_WIDEST
#endif

OSTREL_WIDEST
void fillRows(const PixelBlock &block, const BlockSpans &lower, const BlockSpans &upper, int top, int bottom) {
    const Reach lowerReach(lower);
    const Reach upperReach(upper);
    const Octet left(block, lower, upper, 0);
    const Octet right(block, lower, upper, 8);
    auto *pixels = reinterpret_cast<EightAnywhere *>(block.pixels + top * block.stride);
    for (int row = top; row < bottom; ++row) {
        Eight first = left.upper.colour;
        Eight second = left.upper.colour;
        if (!upperReach.everywhere(row)) {
            const int grid = static_cast<int>(block.ground.rows[row]);
            first = grid != 0 ? Eight{} + grid : left.ground;
            second = grid != 0 ? Eight{} + grid : right.ground;
            if (lowerReach.somewhere(row) || upperReach.somewhere(row)) {
                left.addTraces(row, grid, first);
                right.addTraces(row, grid, second);
            }
        }
        pixels[0] = first;
        pixels[1] = second;
        pixels = reinterpret_cast<EightAnywhere *>(reinterpret_cast<QRgb *>(pixels) + block.stride);
    }
}

#if defined(__x86_64__)
__attribute__((target("avx"))) static void clearUpperHalves() { __builtin_ia32_vzeroupper(); }

void releaseWideRegisters() {
    static const bool wide = __builtin_cpu_supports("avx");
    if (wide)
        clearUpperHalves();
}
#else
void releaseWideRegisters() {}
#endif

} // namespace ostrel
