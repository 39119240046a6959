// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;

namespace ostrel {

/// An SVG file of this size in its own units, of which there are so many to an inch. `paint` draws it.
QByteArray svgOf(const QSize &size, int unitsPerInch, const QString &title,
                 const std::function<void(QPainter &painter)> &paint);

} // namespace ostrel
