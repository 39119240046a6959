// SPDX-License-Identifier: MIT
#include "archive/Pictures.h"

#include "archive/NewFiles.h"
#include "archive/RunFile.h"
#include "archive/Stretch.h"
#include "chart/plot/ChartPicture.h"
#include "chart/plot/SvgDrawing.h"
#include "files/DurableFile.h"

#include <QBuffer>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr int leastSide = 100;
constexpr int greatestSide = 10000;
constexpr QSizeF designed(1280, 720); // up to this size a pixel is one of a screen; larger pictures are enlarged
constexpr int fontPixels = 13;
constexpr int columnsToPixel = 2; // of a trace

struct Look {
    QSize size;
    PlotTheme theme;
    Stretch stretch;
};

QSize sizeAsked(const QCommandLineParser &line) {
    const QStringList sides = line.value("size").split('x');
    bool goodWidth = false;
    bool goodHeight = false;
    const QSize size(sides.value(0).toInt(&goodWidth), sides.value(1).toInt(&goodHeight));
    const auto fits = [](int side) { return side >= leastSide && side <= greatestSide; };
    if (sides.size() != 2 || !goodWidth || !goodHeight || !fits(size.width()) || !fits(size.height()))
        throw EarlyEnd{Misused, QString("--size is width x height in pixels, such as 1280x720, each from %1 to %2")
                                    .arg(leastSide)
                                    .arg(greatestSide)};
    return size;
}

PlotTheme darkTheme() {
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1d, 0x21));
    palette.setColor(QPalette::Text, QColor(0xe8, 0xe8, 0xe8));
    return PlotTheme::of(palette);
}

double enlargement(const QSize &size) {
    return std::max(1.0, std::min(size.width() / designed.width(), size.height() / designed.height()));
}

QFont fontOfPicture() {
    QFont font = QGuiApplication::font();
    font.setPixelSize(fontPixels);
    return font;
}

QByteArray png(const RunFile &file, const Look &look) {
    const double scale = enlargement(look.size);
    const auto logical = [scale](int pixels) { return static_cast<int>(std::ceil(pixels / scale)); };
    const QImage picture = pictureOf(file.run, {.size = {logical(look.size.width()), logical(look.size.height())},
                                                .pixelRatio = scale,
                                                .font = fontOfPicture(),
                                                .theme = look.theme,
                                                .axes = file.axes,
                                                .title = file.run.title});
    QImage image = picture.copy(QRect(QPoint(), look.size)); // up to a logical pixel of the margin goes
    image.setDevicePixelRatio(1);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    image.save(&bytes, "PNG");
    return bytes.data();
}

QByteArray svg(const RunFile &file, const Look &look) {
    constexpr int dotsPerInch = 96; // of CSS
    return svgOf(look.size, dotsPerInch, file.run.title, [&](QPainter &painter) {
        const double scale = enlargement(look.size);
        painter.fillRect(QRect(QPoint(), look.size), look.theme.ground);
        painter.scale(scale, scale);
        const PlotLayout layout =
            PlotLayout::of(QSizeF(look.size) / scale, scale, file.axes, fontOfPicture(), file.run.title);
        paintChart(painter, file.run, layout, look.theme, {}, columnsToPixel * scale);
    });
}

/// The run with the axes of the asked stretch.
RunFile shown(const QString &path, const Stretch &stretch) {
    RunFile file = wholeFile(path);
    beginWithin(stretch, path, file.run);
    file.axes.timeMin = stretch.from;
    if (stretch.to || file.run.lastTime() > 0)
        file.axes.timeMax = stretch.to.value_or(file.run.lastTime());
    if (!(file.axes.timeMax > file.axes.timeMin))
        throw EarlyEnd{Misused, path + ": nothing lies between --from and --to"};
    return file;
}

} // namespace

void declarePicture(QCommandLineParser &line) {
    line.addOptions({
        {"size", "Width and height in pixels, each from 100 to 10000 (1280x720).", "WxH", "1280x720"},
        {"dark", "Light ink on a dark ground."},
        {"format", "Of pictures in a folder: png or svg (png).", "which", "png"},
    });
    declareStretch(line);
    declareOverwrite(line);
}

ExitCode picture(const ArchiveCall &call) {
    const Look look{sizeAsked(call.line), call.line.isSet("dark") ? darkTheme() : PlotTheme::paper(),
                    stretchAsked(call.line)};
    const QString &target = call.operands.last();
    const QString format = call.line.value("format");
    if (format != "png" && format != "svg")
        throw EarlyEnd{Misused, "--format is png or svg"};
    const bool isSvg = intoFolder(call) ? format == "svg" : target.endsWith(".svg", Qt::CaseInsensitive);
    if (!intoFolder(call) && !isSvg && !target.endsWith(".png", Qt::CaseInsensitive))
        throw EarlyEnd{Misused, target + ": a name ends in .png or .svg"};
    const auto convert = [&](const QString &from, const QString &to) {
        const RunFile file = shown(from, look.stretch);
        const QByteArray bytes = isSvg ? svg(file, look) : png(file, look);
        written(to, bytes.isEmpty() ? std::make_error_code(std::errc::not_enough_memory) : replaceFile(to, bytes));
    };
    return convertEach(call, {isSvg ? ".svg" : ".png"}, convert);
}

} // namespace ostrel
