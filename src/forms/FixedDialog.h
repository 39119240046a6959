// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

namespace ostrel {

/// A dialog with a close box, but nothing that makes it smaller or larger.
inline constexpr Qt::WindowFlags fixedDialog =
    Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

} // namespace ostrel
