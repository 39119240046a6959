// SPDX-License-Identifier: MIT
#include "reports/ChartMenu.h"

#include "base/HelpContexts.h"
#include "base/Steps.h"
#include "chart/plot/SvgDrawing.h"
#include "chart/table/ShownValues.h"
#include "files/DurableFile.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr qint64 mostRows = 1000000; // a spreadsheet takes no more
constexpr double leastRatio = 2;     // pixels to one of the screen: a picture for a report

QImage imageOf(const Quillchart &chart) {
    QImage picture = chart.picture(std::max(leastRatio, chart.devicePixelRatioF()));
    constexpr double inchesPerMetre = 39.37;
    const int density = qRound(picture.devicePixelRatio() * chart.logicalDpiX() * inchesPerMetre);
    picture.setDevicePixelRatio(1);
    picture.setDotsPerMeterX(density);
    picture.setDotsPerMeterY(density);
    return picture;
}

QByteArray png(const Quillchart &chart) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    imageOf(chart).save(&file, "PNG");
    return file.data();
}

QByteArray svg(const Quillchart &chart) {
    return svgOf(chart.size(), chart.logicalDpiX(), chart.ChartTitle(),
                 [&](QPainter &painter) { chart.paintPicture(painter); });
}

} // namespace

ChartMenu::ChartMenu(CommonDialog &ComDlg, Prompts &prompts, Guard guard)
    : ComDlg_(ComDlg), prompts_(prompts), guard_(std::move(guard)) {}

void ChartMenu::addTo(QMenu &menu, Quillchart &chart) {
    menu.addSeparator();
    add(menu, "mnuCopyPicture", "Copy &Picture", [this, &chart] { copyPicture(chart); });
    add(menu, "mnuCopyValues", "Copy &Values", [this, &chart] { copyValues(chart); });
    menu.addSeparator();
    add(menu, "mnuSavePng", "Save Picture as P&NG...", [this, &chart] {
        savePicture(chart, QStringLiteral("png"), QStringLiteral("PNG Picture(*.png)|*.png|All Files(*.*)|*.*"), png);
    });
    add(menu, "mnuSaveSvg", "Save Picture as &SVG...", [this, &chart] {
        savePicture(chart, QStringLiteral("svg"), QStringLiteral("SVG Drawing(*.svg)|*.svg|All Files(*.*)|*.*"), svg);
    });
}

void ChartMenu::add(QMenu &menu, const char *name, const char *caption, std::function<void()> act) {
    QAction *item = menu.addAction(QLatin1String(caption));
    item->setObjectName(QLatin1String(name));
    QObject::connect(item, &QAction::triggered, item, guard_(name, std::move(act)));
}

void ChartMenu::copyPicture(const Quillchart &chart) const { QGuiApplication::clipboard()->setImage(imageOf(chart)); }

void ChartMenu::copyValues(const Quillchart &chart) const {
    const Run &run = chart.run();
    const qint64 rows = shownCount(run.data(), run.axes());
    if (rows > mostRows)
        prompts_.show({QStringLiteral("%1 samples are shown, more than the %2 rows that can be copied. Zoom in, or "
                                      "export the data with fewer points a second.")
                           .arg(rows)
                           .arg(mostRows),
                       BoxIcon::Information});
    else
        QGuiApplication::clipboard()->setText(shownValues(run.data(), run.axes()));
}

void ChartMenu::savePicture(const Quillchart &chart, const QString &extension, const QString &filter,
                            QByteArray (*encoded)(const Quillchart &chart)) {
    ComDlg_.Flags = CommonDialog::Saving;
    ComDlg_.DialogTitle = QStringLiteral("Save Picture As...");
    ComDlg_.Filter = filter;
    ComDlg_.DefaultExt = extension;
    ComDlg_.FileName = chart.ChartTitle().replace(QLatin1Char('/'), QLatin1Char('-'));
    ComDlg_.HelpContextID = HelpContext::Introduction; // the chart's own
    if (skippingErrors([this] { ComDlg_.ShowSave(); }) != 0 || ComDlg_.FileName.isEmpty())
        return;
    const QByteArray picture = encoded(chart);
    const std::error_code error =
        picture.isEmpty() ? std::make_error_code(std::errc::not_enough_memory) : replaceFile(ComDlg_.FileName, picture);
    if (error)
        prompts_.show({QStringLiteral("The picture was NOT saved.\n\n%1: %2")
                           .arg(ComDlg_.FileName, QString::fromStdString(error.message())),
                       BoxIcon::Exclamation});
}

} // namespace ostrel
