// SPDX-License-Identifier: MIT
#include "chart/SpanFill.h"

#include <algorithm>
#include <cstring>

namespace {

using Four = int __attribute__((vector_size(16)));

Four load(const void *from) {
    Four four;
    std::memcpy(&four, from, sizeof four);
    return four;
}

void store(QRgb *to, Four four) { std::memcpy(to, &four, sizeof four); }

Four all(QRgb colour) {
    const int value = static_cast<int>(colour);
    return Four{value, value, value, value};
}

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

} // namespace

void fillRows(const PixelBlock &block, const BlockSpans &lower, const BlockSpans &upper, int top, int bottom) {
    const Reach lowerReach(lower);
    const Reach upperReach(upper);
    const Four lowerColour = all(lower.colour);
    const Four upperColour = all(upper.colour);
    for (int row = top; row < bottom; ++row) {
        QRgb *pixels = block.pixels + row * block.stride;
        if (upperReach.everywhere(row)) {
            for (int i = 0; i < 16; i += 4)
                store(pixels + i, upperColour);
            continue;
        }
        const bool gridLine = block.ground.rows[row] != 0;
        const Four rowColour = all(block.ground.rows[row]);
        const bool anyTrace = lowerReach.somewhere(row) || upperReach.somewhere(row);
        for (int i = 0; i < 16; i += 4) {
            Four four = gridLine ? rowColour : load(block.ground.columns + i);
            if (anyTrace) {
                const Four inLower = (load(&lower.tops[i]) <= row) & (load(&lower.bottoms[i]) > row);
                const Four inUpper = (load(&upper.tops[i]) <= row) & (load(&upper.bottoms[i]) > row);
                four = (inLower & lowerColour) | (~inLower & four);
                four = (inUpper & upperColour) | (~inUpper & four);
            }
            store(pixels + i, four);
        }
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
