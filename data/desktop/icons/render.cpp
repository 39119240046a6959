// SPDX-License-Identifier: MIT
// Draws an icon in one size: render ICON.svg PIXELS ICON.png
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

int main(int argc, char **argv) {
    if (argc != 4)
        return 2;
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    const int pixels = QByteArray(argv[2]).toInt();
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    icon.render(&painter);
    return icon.isValid() && painter.end() && image.save(QString::fromLocal8Bit(argv[3]), "PNG") ? 0 : 1;
}
