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
            const bool empty = spans.tops[i] >= spans.bottoms[i];
            allTop = std::max(allTop, spans.tops[i]);
            allBottom = std::min(allBottom, empty ? 0 : spans.bottoms[i]);
            anyTop = std::min(anyTop, empty ? anyTop : spans.tops[i]);
            anyBottom = std::max(anyBottom, empty ? 0 : spans.bottoms[i]);
        }
    }
    bool everywhere(int row) const { return row >= allTop && row < allBottom; }
    bool somewhere(int row) const { return row >= anyTop && row < anyBottom; }

    int allTop = 0;
    int allBottom = 1 << 30;
    int anyTop = 1 << 30;
    int anyBottom = 0;
};

/// Eight columns of a block.
struct Octet {
    [[gnu::always_inline]] Octet(const PixelBlock &block, const BlockSpans &lower, const BlockSpans &upper, int first)
        : lowerTops(at(&lower.tops[first])), lowerBottoms(at(&lower.bottoms[first])), upperTops(at(&upper.tops[first])),
          upperBottoms(at(&upper.bottoms[first])), ground(at(block.ground.columns + first)) {}

    [[gnu::always_inline]] static const EightAnywhere &at(const void *place) {
        return *static_cast<const EightAnywhere *>(place);
    }
    [[gnu::always_inline]] void addTraces(int row, const Eight &lower, const Eight &upper, Eight &pixels) const {
        pixels = ((lowerTops <= row) & (lowerBottoms > row)) ? lower : pixels;
        pixels = ((upperTops <= row) & (upperBottoms > row)) ? upper : pixels;
    }

    Eight lowerTops, lowerBottoms, upperTops, upperBottoms, ground;
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
    const Eight lowerColour = Eight{} + static_cast<int>(lower.colour);
    const Eight upperColour = Eight{} + static_cast<int>(upper.colour);
    auto *pixels = reinterpret_cast<EightAnywhere *>(block.pixels + top * block.stride);
    for (int row = top; row < bottom; ++row) {
        Eight first = upperColour;
        Eight second = upperColour;
        if (!upperReach.everywhere(row)) {
            const int grid = static_cast<int>(block.ground.rows[row]);
            first = grid != 0 ? Eight{} + grid : left.ground;
            second = grid != 0 ? Eight{} + grid : right.ground;
            if (lowerReach.somewhere(row) || upperReach.somewhere(row)) {
                left.addTraces(row, lowerColour, upperColour, first);
                right.addTraces(row, lowerColour, upperColour, second);
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
