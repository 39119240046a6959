// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>

namespace ostrel {

/// Where windows stand on the screens, in pixels of the desktop. A screen is its part that panels and docks leave free.
namespace ScreenPlace {

/// The free parts of the screens that exist now, the primary one first.
QList<QRect> screens();

/// The place for a window: the wanted one if the screens together show all of it. Otherwise it is moved into the screen
/// that shows most of it, and shrunk where it is larger than that. A window that no screen shows goes to the middle of
/// the first one.
QRect onScreens(const QRect &wanted, const QList<QRect> &screens);

/// The middle of `area` for a window of this size, which is shrunk to it.
QRect centred(const QSize &size, const QRect &area);

} // namespace ScreenPlace

} // namespace ostrel
