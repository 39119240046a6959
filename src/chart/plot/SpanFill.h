// SPDX-License-Identifier: MIT
#pragma once

#include <QRgb>

#include <array>

namespace ostrel {

/// The plot without traces: the colour of each column, and of each row that has a grid line (0 for the others).
struct PlotGround {
    const QRgb *columns;
    const QRgb *rows;

    QRgb at(int column, int row) const { return rows[row] != 0 ? rows[row] : columns[column]; }
};

/// The rows, from `tops` to before `bottoms`, that a trace covers fully in each of sixteen adjacent columns, and those
/// of which its flanks in the columns beside cover a quarter: these lie on the ground, below both traces.
struct BlockSpans {
    struct Rows {
        std::array<int, 16> tops{};
        std::array<int, 16> bottoms{};
    };
    Rows full;
    Rows flanks;
    bool hasFlanks = false;
    QRgb colour = 0;
};

/// Makes `mixed` of three parts of one colour and one of another: of one pixel (QRgb), or of several in a vector.
template <typename Colours>
[[gnu::always_inline]] inline void mixQuarter(const Colours &from, const Colours &to, Colours &mixed) {
    constexpr int parts = 0x7f7f7f7f; // of a colour, halved
    const Colours half = ((from ^ to) >> 1 & parts) + (from & to);
    mixed = ((from ^ half) >> 1 & parts) + (from & half);
}

/// Sixteen columns of the plot; `pixels` is their upper left one, `ground` starts at the first of them.
struct PixelBlock {
    QRgb *pixels;
    qptrdiff stride; ///< pixels from a row to the next
    PlotGround ground;
};

/// Writes the block's rows from `top` to before `bottom`, each pixel once: the ground, `lower` above it and `upper`
/// above both. Row by row, so that a line of the cache is fetched once for sixteen columns.
void fillRows(const PixelBlock &block, const BlockSpans &lower, const BlockSpans &upper, int top, int bottom);

/// Call this before our own vector arithmetic. Qt's painting leaves the upper halves of the processor's wide registers
/// in use, and that makes all narrower instructions several times slower.
void releaseWideRegisters();

} // namespace ostrel
