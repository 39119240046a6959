// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include "base/ErrorNumbers.h"
#include "chart/files/ChartFile.h"
#include "chart/plot/PlotPainter.h"
#include "chart/plot/Readout.h"
#include "chart/run/Succeeds.h"
#include "chart/table/TextExport.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QVariantMap>

#include <algorithm>

namespace ostrel {

Quillchart::Quillchart(qint16 index, QWidget *parent) : QWidget(parent), index_(index) {
    run_.setPicture(this);
    run_.ChartError = log_.ChartError = [this](qint16 ErrorCode) { Q_EMIT ChartError(index_, ErrorCode); };
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(40, 30);
    setAccessibleName(QStringLiteral("Chart"));
    setAccessibleDescription(
        QStringLiteral("UV absorbance in AU and conductivity in mS/cm over time in minutes. Draw a "
                       "rectangle to zoom in, press Escape to leave the zoom."));
}

void Quillchart::drawNewData() {
    if (image_.isNull() || redrawDue_)
        return; // everything will be drawn with the next paint event
    const QRect region = image_.regionOfNews(run_.data());
    if (region.isEmpty())
        return;
    newsDue_ = true;
    update(readoutRegion() + region);
}

void Quillchart::redraw() {
    shownAxes_ = run_.axes();
    shownTitle_ = run_.ChartTitle();
    setAccessibleName(shownTitle_.isEmpty() ? QStringLiteral("Chart") : shownTitle_);
    redrawDue_ = true;
    update();
}

void Quillchart::runReplaced() {
    axesBeforeZoom_.reset();
    gesture_.cancel();
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

void Quillchart::zoomTo(const QRectF &rectangle) {
    if (!axesBeforeZoom_)
        axesBeforeZoom_ = run_.axes();
    const AxisValues shown = axesOf(rectangle, image_.layout());
    run_.setAxes(shown);
    Redraw();
    Q_EMIT Zoomed(index_, shown.timeMin, shown.timeMax, shown.uvMin, shown.uvMax, shown.condMin, shown.condMax);
}

void Quillchart::leaveZoom() {
    if (!axesBeforeZoom_)
        return;
    run_.setAxes(*axesBeforeZoom_);
    axesBeforeZoom_.reset();
    Redraw();
    Q_EMIT Unzoomed(index_);
}

ChartView Quillchart::view() const {
    return {.size = size(),
            .pixelRatio = devicePixelRatioF(),
            .font = font(),
            .theme = PlotTheme::of(palette()),
            .axes = shownAxes_,
            .title = shownTitle_};
}

void Quillchart::bringUpToDate() {
    const ChartView wanted = view();
    if (image_.isNull() || redrawDue_ || !(image_.view() == wanted))
        image_.draw(run_.data(), wanted);
    else if (newsDue_)
        image_.drawNew(run_.data());
    redrawDue_ = false;
    newsDue_ = false;
}

void Quillchart::paintEvent(QPaintEvent *event) {
    bringUpToDate();
    QPainter painter(this);
    painter.drawImage(QPointF(), image_.image());
    paintMarks(painter, event->rect());
    if (gesture_.active())
        paintGesture(painter);
    else if (pointer_)
        Readout(run_.data().samples, image_.layout(), *pointer_).paint(painter, image_.view().theme);
}

void Quillchart::paintMarks(QPainter &painter, const QRect &exposed) {
    std::vector<PlacedMark> seen;
    const QRectF rect = exposed;
    std::copy_if(image_.marks().begin(), image_.marks().end(), std::back_inserter(seen), [&](const PlacedMark &mark) {
        return rect.intersects(mark.bar) || rect.intersects(mark.box) || rect.intersects(mark.leader);
    });
    PlotPainter(painter, image_.layout(), image_.view().theme).marks(seen);
}

void Quillchart::paintGesture(QPainter &painter) {
    const QColor highlight = image_.view().theme.highlight;
    QColor inside = highlight;
    inside.setAlphaF(gesture_.largeEnough() ? 0.18F : 0.06F);
    painter.setPen(highlight);
    painter.setBrush(inside);
    painter.drawRect(gesture_.rectangle().adjusted(0, 0, -1, -1));
}

void Quillchart::hideEvent(QHideEvent *event) {
    gesture_.cancel();
    pointer_.reset();
    image_.drop();
    QWidget::hideEvent(event);
}

void Quillchart::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || image_.isNull())
        return QWidget::mousePressEvent(event);
    gesture_.press(event->position(), image_.layout().plot);
    update();
}

void Quillchart::mouseMoveEvent(QMouseEvent *event) {
    if (image_.isNull())
        return;
    const QRectF plot = image_.layout().plot;
    if (gesture_.active() && !event->buttons().testFlag(Qt::LeftButton))
        endGesture(); // the button went up where this chart was not told of it: over a box, say
    if (gesture_.active()) {
        const QRectF before = gesture_.rectangle();
        gesture_.move(event->position(), plot);
        update(before.united(gesture_.rectangle()).toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    point(plot.contains(event->position()) ? std::optional(event->position().x()) : std::nullopt);
}

void Quillchart::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !gesture_.active())
        return QWidget::mouseReleaseEvent(event);
    gesture_.move(event->position(), image_.layout().plot);
    const std::optional<QRectF> rectangle = gesture_.release();
    update();
    if (rectangle)
        zoomTo(*rectangle);
}

void Quillchart::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        leaveZoom();
}

void Quillchart::leaveEvent(QEvent *event) {
    point(std::nullopt);
    QWidget::leaveEvent(event);
}

void Quillchart::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    if (gesture_.active())
        endGesture();
    else if (zoomed())
        leaveZoom();
    else
        QWidget::keyPressEvent(event);
}

void Quillchart::contextMenuEvent(QContextMenuEvent *event) {
    endGesture();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *leave = menu->addAction(QStringLiteral("&Leave Zoom"), this, &Quillchart::leaveZoom);
    leave->setObjectName(QStringLiteral("mnuLeaveZoom"));
    leave->setEnabled(zoomed());
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    menu->popup(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void Quillchart::endGesture() {
    gesture_.cancel();
    update();
}

QRegion Quillchart::readoutRegion() const {
    return pointer_ ? Readout(run_.data().samples, image_.layout(), *pointer_).region() : QRegion();
}

void Quillchart::point(std::optional<double> x) {
    if (image_.isNull())
        return;
    const QRegion before = readoutRegion();
    if (x.has_value() != pointer_.has_value())
        x ? setCursor(Qt::CrossCursor) : unsetCursor();
    pointer_ = x;
    update(before + readoutRegion());
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
    const ReportContents contents{run_.data(), run_.axes(), run_.fileName(), QDateTime::currentDateTime()};
    const ReportOptions options{PrintChromatogram, PrintMethod, PrintNotes, TraceFlags};
    if (!printer_.print || !succeeds([&] { return printReport(printer_, contents, options); }))
        Q_EMIT ChartError(index_, ErrorNumber::PrintFailed);
}

} // namespace ostrel
