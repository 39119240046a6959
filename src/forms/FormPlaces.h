// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

#include <vector>

namespace ostrel {

/// The place of a control in its container, and the least room that its text needs on this desktop. In twips.
struct FormPlace {
    int parent = -1; ///< index of the container's place, which comes first; -1 for the form
    QRectF at;
    QSizeF needs;
};

/// Makes room where a desktop's fonts are larger than those that the form was drawn for. A control that is too narrow
/// grows and pushes those to its right in the same row. A container grows with its contents. All heights grow by the
/// same factor, so that rows stay rows. Without need nothing changes.
void makeRoom(std::vector<FormPlace> &places);

} // namespace ostrel
