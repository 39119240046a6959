// SPDX-License-Identifier: MIT
#include "forms/ScreenPlace.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>

#include <algorithm>

namespace ostrel {

namespace ScreenPlace {

namespace {

qint64 area(const QRect &rect) { return rect.isEmpty() ? 0 : qint64(rect.width()) * rect.height(); }

QRect movedInto(QRect place, const QRect &screen) {
    place.setSize(place.size().boundedTo(screen.size()));
    place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() + 1 - place.height()));
    return place;
}

} // namespace

QList<QRect> screens() {
    QList<QRect> all;
    for (const QScreen *screen : QGuiApplication::screens())
        all << screen->availableGeometry();
    return all;
}

QRect onScreens(const QRect &wanted, const QList<QRect> &screens) {
    if (screens.isEmpty())
        return wanted;
    QRegion hidden(wanted);
    for (const QRect &screen : screens)
        hidden -= screen;
    if (hidden.isEmpty())
        return wanted;
    const auto best = std::max_element(screens.begin(), screens.end(), [&](const QRect &one, const QRect &other) {
        return area(one & wanted) < area(other & wanted);
    });
    return area(*best & wanted) > 0 ? movedInto(wanted, *best) : centred(wanted.size(), screens.first());
}

QRect centred(const QSize &size, const QRect &area) {
    QRect place(QPoint(), size.boundedTo(area.size()));
    place.moveCenter(area.center());
    return place;
}

} // namespace ScreenPlace

} // namespace ostrel
