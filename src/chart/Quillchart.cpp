// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include "base/ErrorNumbers.h"
#include "chart/AccessibleChart.h"
#include "chart/files/ChartFile.h"
#include "chart/files/ChartRecords.h"
#include "chart/plot/ChartPicture.h"
#include "chart/plot/PlotPainter.h"
#include "chart/plot/SpokenChart.h"
#include "chart/run/Succeeds.h"
#include "chart/table/TextExport.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QMenu>
#include <QPaintEvent>
#include <QVariantMap>

#include <algorithm>

namespace ostrel {

Quillchart::Quillchart(qint16 index, QWidget *parent) : QWidget(parent), index_(index) {
    run_.setPicture(this);
    run_.ChartError = log_.ChartError = [this](qint16 ErrorCode) { Q_EMIT ChartError(index_, ErrorCode); };
    hands_.Zoomed = [this](const AxisValues &axes) {
        Q_EMIT Zoomed(index_, axes.timeMin, axes.timeMax, axes.uvMin, axes.uvMax, axes.condMin, axes.condMax);
    };
    hands_.Unzoomed = [this] { Q_EMIT Unzoomed(index_); };
    hands_.ReadoutMoved = [this] {
        if (hands_.readsByKey())
            tellReaders();
    };
    AccessibleChart::install();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(40, 30);
    setAccessibleName(QStringLiteral("Chart"));
    setAccessibleDescription(
        QStringLiteral("UV absorbance in AU and conductivity in mS/cm over time in minutes. Draw a rectangle to zoom "
                       "in, or press plus and minus; press Space to read values, Escape to leave the zoom."));
}

void Quillchart::drawNewData() {
    if (image_.isNull() || redrawDue_)
        return; // everything will be drawn with the next paint event
    const QRect region = image_.regionOfNews(run_.data());
    if (region.isEmpty())
        return;
    newsDue_ = true;
    update(hands_.readoutRegion() + region);
}

void Quillchart::redraw() {
    shownAxes_ = run_.axes();
    shownTitle_ = run_.ChartTitle();
    setAccessibleName(shownTitle_.isEmpty() ? QStringLiteral("Chart") : shownTitle_);
    redrawDue_ = true;
    update();
}

void Quillchart::runCleared() {
    hands_.runCleared();
    redrawDue_ = true;
}

void Quillchart::runReplaced() {
    hands_.runReplaced();
    image_.drop(); // as many marks of another run would not be drawn anew
}

QVariantList Quillchart::samples(int from, int count) const {
    QVariantList pairs;
    const qint64 end = std::min<qint64>(run_.data().samples.size(), qint64{from} + count);
    for (qint64 i = std::max(from, 0); i < end; ++i) {
        const SamplePair sample = run_.data().samples.at(i);
        pairs.append(QVariant(QVariantList{sample.uv, sample.cond}));
    }
    return pairs;
}

QVariantList Quillchart::marks() const {
    QVariantList all;
    for (const EventMark &mark : run_.data().marks)
        all.append(QVariantMap{{QStringLiteral("Label"), mark.label},
                               {QStringLiteral("Color"), mark.color},
                               {QStringLiteral("Height"), mark.height},
                               {QStringLiteral("Time"), mark.time}});
    return all;
}

ChartView Quillchart::view() const {
    return {.size = size(),
            .pixelRatio = devicePixelRatioF(),
            .font = font(),
            .theme = PlotTheme::of(palette()),
            .axes = shownAxes_,
            .title = shownTitle_};
}

ChartView Quillchart::viewOnPaper(double pixelRatio) const {
    ChartView onPaper = view();
    onPaper.pixelRatio = pixelRatio;
    onPaper.theme = PlotTheme::paper();
    return onPaper;
}

QImage Quillchart::picture(double pixelRatio) const { return pictureOf(run_.data(), viewOnPaper(pixelRatio)); }

void Quillchart::paintPicture(QPainter &painter) const { ostrel::paintPicture(painter, run_.data(), viewOnPaper(1)); }

void Quillchart::bringUpToDate() {
    const ChartView wanted = view();
    if (image_.isNull() || redrawDue_ || !(image_.view() == wanted))
        image_.draw(run_.data(), wanted);
    else if (newsDue_)
        image_.drawNew(run_.data());
    redrawDue_ = false;
    newsDue_ = false;
    hands_.pictureDrawn();
}

void Quillchart::paintEvent(QPaintEvent *event) {
    bringUpToDate();
    QPainter painter(this);
    painter.drawImage(QPointF(), image_.image());
    paintMarks(painter, event->rect());
    const HeadNumbers told = numbers();
    PlotPainter plot(painter, image_.layout(), image_.view().theme);
    plot.title(told.uv.isEmpty());
    plot.offScale(image_.offScale());
    hands_.paint(painter);
    told.paint(painter, image_.layout(), image_.view().theme);
    if (hasFocus()) {
        painter.setPen(image_.view().theme.highlight);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

void Quillchart::paintMarks(QPainter &painter, const QRect &exposed) {
    std::vector<PlacedMark> seen;
    const QRectF rect = exposed;
    std::copy_if(image_.marks().begin(), image_.marks().end(), std::back_inserter(seen), [&](const PlacedMark &mark) {
        return rect.intersects(mark.bar) || rect.intersects(mark.box) || rect.intersects(mark.leader);
    });
    PlotPainter(painter, image_.layout(), image_.view().theme).marks(seen);
}

HeadNumbers Quillchart::numbers() const {
    const std::optional<Readout> readout = hands_.readout();
    return readout ? readout->numbers() : now_;
}

void Quillchart::showNow(std::optional<float> minutes, const std::optional<SamplePair> &pair) {
    constexpr int timeDecimals = 2;
    HeadNumbers numbers;
    if (pair)
        numbers = HeadNumbers::of(minutes, timeDecimals, pair);
    numbers.live = true;
    if (numbers == now_)
        return;
    now_ = numbers;
    if (!image_.isNull())
        update(image_.layout().headBox.toAlignedRect());
    // A reader that is told of each pass would never be silent.
    constexpr int politely = 15; // passes: about ten seconds
    if (++newsSpoken_ >= politely && hasFocus() && !hands_.readout()) {
        newsSpoken_ = 0;
        tellReaders();
    }
}

QString Quillchart::spokenNumbers() const { return spoken(numbers()); }

QString Quillchart::spokenText() const { return spoken(run_.data(), run_.axes(), numbers()); }

void Quillchart::tellReaders() {
    if (!QAccessible::isActive())
        return;
    for (const QAccessible::Event change : {QAccessible::ValueChanged, QAccessible::DescriptionChanged}) {
        QAccessibleEvent event(this, change);
        QAccessible::updateAccessibility(&event);
    }
}

bool Quillchart::event(QEvent *event) {
    if (!hands_.handle(*event))
        return QWidget::event(event);
    event->accept();
    return true;
}

void Quillchart::hideEvent(QHideEvent *event) {
    hands_.chartHidden();
    image_.drop();
    QWidget::hideEvent(event);
}

void Quillchart::contextMenuEvent(QContextMenuEvent *event) {
    hands_.endGesture();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *leave = menu->addAction(QStringLiteral("&Leave Zoom"), this, &Quillchart::leaveZoom);
    leave->setObjectName(QStringLiteral("mnuLeaveZoom"));
    leave->setEnabled(zoomed());
    if (extendMenu)
        extendMenu(*menu);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    menu->popup(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

qint16 Quillchart::ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                              qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom,
                              float TimeTo, float SampleRate, qint32 PointCount) const {
    constexpr qint16 failed = 1;
    const ExportOptions options{.uv = IncludeUV != 0,
                                .cond = IncludeCond != 0,
                                .events = IncludeEvents != 0,
                                .notes = IncludeNotes != 0,
                                .method = IncludeMethod != 0,
                                .position =
                                    static_cast<ostrel::MethodPosition>(std::clamp<qint16>(MethodPosition, 0, 2)),
                                .from = TimeFrom,
                                .to = TimeTo,
                                .sampleRate = SampleRate,
                                .pointCount = PointCount,
                                .sourceFile = run_.fileName(),
                                .exported = QDateTime::currentDateTime()};
    return succeeds([&] { return !bearsChartMark(FileName) && !exportText(FileName, run_.data(), options); }) ? 0
                                                                                                              : failed;
}

void Quillchart::PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags) {
    const ReportContents contents{
        run_.data(),          run_.axes(), run_.fileName(), QDateTime::currentDateTime(), sumOf(run_.data().samples),
        run_.unsavedInWords()};
    const ReportOptions options{PrintChromatogram, PrintMethod, PrintNotes, TraceFlags};
    if (!printer_.print || !succeeds([&] { return printReport(printer_, contents, options); }))
        Q_EMIT ChartError(index_, ErrorNumber::PrintFailed);
}

} // namespace ostrel
