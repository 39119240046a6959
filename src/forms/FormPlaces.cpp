// SPDX-License-Identifier: MIT
#include "forms/FormPlaces.h"

#include <algorithm>

namespace ostrel {

// How room is made: first all heights and vertical places are multiplied by one factor, that of the text with the least
// room. Then the children of each container are handled from left to right, inner containers first: a child grows to
// its text's width and to its own children's, and moves right until it keeps the drawn gap (leastGap at most) to all
// before it in its row. Two are in one row when their heights overlap as drawn. The container grows to hold all
// children and the margin drawn behind them (leastGap at most). Where the texts are higher than drawn, gaps and margins
// become wider too (air), or the letters would seem to touch what is beside them.

namespace {

constexpr qreal leastGap = 20; // twips in a row and to the container's edge, if the form was drawn with as much

constexpr qreal air = 75; // twips, in place of leastGap where the texts are higher than drawn

bool inOneRow(const QRectF &one, const QRectF &other) {
    return one.top() < other.bottom() && other.top() < one.bottom();
}

/// Returns the factor.
qreal growHeights(std::vector<FormPlace> &places) {
    qreal factor = 1;
    for (const FormPlace &place : places) {
        if (place.at.height() > 0)
            factor = std::max(factor, place.needs.height() / place.at.height());
    }
    for (FormPlace &place : places)
        place.at = {place.at.x(), place.at.y() * factor, place.at.width(), place.at.height() * factor};
    return factor;
}

/// The children of `parent` from left to right.
std::vector<int> childrenOf(int parent, const std::vector<FormPlace> &places) {
    std::vector<int> children;
    for (int i = 0; i < int(places.size()); ++i) {
        if (places[i].parent == parent)
            children.push_back(i);
    }
    std::stable_sort(children.begin(), children.end(),
                     [&](int one, int other) { return places[one].at.left() < places[other].at.left(); });
    return children;
}

/// The least left edge of the control to the right of `before`. Where a label was drawn with its box reaching into the
/// next control, only its text counts.
qreal leastLeft(const FormPlace &before, const QRectF &drawnBefore, const QRectF &drawnAfter, qreal factor) {
    const qreal gap = drawnAfter.left() - drawnBefore.right();
    const qreal kept = factor > 1 ? air * factor : std::min(std::max(gap, 0.0), leastGap);
    return gap < 0 ? before.at.left() + before.needs.width() + std::max(kept, leastGap) : before.at.right() + kept;
}

/// Grows and moves the children of `parent`. Returns the width that `parent` needs for them.
qreal growWidths(int parent, std::vector<FormPlace> &places, qreal factor) {
    const std::vector<FormPlace> drawn = places;
    const std::vector<int> children = childrenOf(parent, places);
    const qreal drawnWidth = parent < 0 ? 0 : drawn[parent].at.width();
    qreal needed = 0;
    for (auto child = children.begin(); child != children.end(); ++child) {
        QRectF &at = places[*child].at;
        at.setWidth(std::max({at.width(), places[*child].needs.width(), growWidths(*child, places, factor)}));
        for (auto before = children.begin(); before != child; ++before) {
            const QRectF &drawnBefore = drawn[*before].at;
            if (inOneRow(drawnBefore, drawn[*child].at))
                at.moveLeft(std::max(at.left(), leastLeft(places[*before], drawnBefore, drawn[*child].at, factor)));
        }
        const qreal drawnMargin = drawnWidth - drawn[*child].at.right();
        const qreal margin = factor > 1 && drawnMargin > 0 ? air * factor : std::clamp(drawnMargin, 0.0, leastGap);
        needed = std::max(needed, at.right() + margin);
    }
    return needed;
}

} // namespace

void makeRoom(std::vector<FormPlace> &places) {
    const qreal factor = growHeights(places);
    growWidths(-1, places, factor);
}

} // namespace ostrel
