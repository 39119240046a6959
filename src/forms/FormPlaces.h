// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

#include <vector>

namespace ostrel {

/// Where a control is in its container, and the least room that its text takes on this desktop. In twips.
struct FormPlace {
    int parent = -1; ///< index of the container's place, which comes first; -1 for the form
    QRectF at;
    QSizeF needs;
};

/// Makes room where a desktop's fonts are larger than those that the form was drawn for: a control that is too narrow
/// grows and pushes what is to its right in the same row; a container grows with what it holds; the height of all
/// grows by one factor, so that rows stay rows. Places that suffice stay as they are.
void makeRoom(std::vector<FormPlace> &places);

} // namespace ostrel
