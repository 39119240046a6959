// SPDX-License-Identifier: MIT
#include "chart/plot/SvgDrawing.h"

#include "chart/run/TextLines.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

namespace ostrel {

QByteArray svgOf(const QSize &size, int unitsPerInch, const QString &title,
                 const std::function<void(QPainter &painter)> &paint) {
    QBuffer file;
    QSvgGenerator drawing;
    drawing.setOutputDevice(&file);
    drawing.setSize(size);
    drawing.setViewBox(QRect(QPoint(), size));
    drawing.setResolution(unitsPerInch);
    drawing.setTitle(oneLine(title).toHtmlEscaped()); // Qt writes it as it is
    QPainter painter(&drawing);
    paint(painter);
    painter.end();
    return file.data();
}

} // namespace ostrel
