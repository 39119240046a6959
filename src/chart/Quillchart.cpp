// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include "chart/plot/PlotPainter.h"
#include "chart/plot/Readout.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QVariantMap>

#include <algorithm>
#include <new>

namespace {

constexpr qint16 outOfMemory = 1;

template <typename Step>
qint16 whileMemoryLasts(Step step) {
    try {
        step();
    } catch (const std::bad_alloc &) {
        return outOfMemory;
    }
    return 0;
}

} // namespace

Quillchart::Quillchart(qint16 index, QWidget *parent) : QWidget(parent), index_(index) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(40, 30);
    setAccessibleName(QStringLiteral("Chart"));
    setAccessibleDescription(
        QStringLiteral("UV absorbance in AU and conductivity in mS/cm over time in minutes. Draw a "
                       "rectangle to zoom in, press Escape to leave the zoom."));
}

qint16 Quillchart::AddSample(float UV, float Conductivity) {
    return whileMemoryLasts([&] { data_.samples.append({UV, Conductivity}); });
}

qint16 Quillchart::AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) {
    return whileMemoryLasts([&] { data_.marks.push_back({Label, Color, Height, Time}); });
}

qint16 Quillchart::AddMethodText(const QString &Text, float Time) {
    return whileMemoryLasts([&] { data_.methodTexts.push_back({Text, Time}); });
}

bool Quillchart::IsLastPointVisible() const {
    const float last = GetLastTime();
    return axes_.timeMin <= last && last <= axes_.timeMax;
}

void Quillchart::DrawNewData() {
    if (image_.isNull() || redrawDue_)
        return; // everything will be drawn with the next paint event
    const QRect region = image_.regionOfNews(data_);
    if (region.isEmpty())
        return;
    newsDue_ = true;
    update(readoutRegion() + region);
}

void Quillchart::Redraw() {
    shownAxes_ = axes_;
    shownTitle_ = data_.title;
    redrawDue_ = true;
    update();
}

void Quillchart::setChartTitle(const QString &title) {
    data_.title = title;
    setAccessibleName(title.isEmpty() ? QStringLiteral("Chart") : title);
}

QVariantList Quillchart::samples(int from, int count) const {
    QVariantList pairs;
    const qint64 end = std::min<qint64>(data_.samples.size(), qint64{from} + count);
    for (qint64 i = std::max(from, 0); i < end; ++i) {
        const SamplePair sample = data_.samples.at(i);
        pairs.append(QVariant(QVariantList{sample.uv, sample.cond}));
    }
    return pairs;
}

QVariantList Quillchart::marks() const {
    QVariantList all;
    for (const EventMark &mark : data_.marks)
        all.append(QVariantMap{{QStringLiteral("Label"), mark.label},
                               {QStringLiteral("Color"), mark.color},
                               {QStringLiteral("Height"), mark.height},
                               {QStringLiteral("Time"), mark.time}});
    return all;
}

void Quillchart::zoomTo(const QRectF &rectangle) {
    if (!axesBeforeZoom_)
        axesBeforeZoom_ = axes_;
    axes_ = axesOf(rectangle, image_.layout());
    Redraw();
    const AxisValues shown = axes_;
    Q_EMIT Zoomed(index_, shown.timeMin, shown.timeMax, shown.uvMin, shown.uvMax, shown.condMin, shown.condMax);
}

void Quillchart::leaveZoom() {
    if (!axesBeforeZoom_)
        return;
    axes_ = *axesBeforeZoom_;
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
        image_.draw(data_, wanted);
    else if (newsDue_)
        image_.drawNew(data_);
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
        Readout(data_.samples, image_.layout(), *pointer_).paint(painter, image_.view().theme);
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
    if (gesture_.active()) {
        const QRectF before = gesture_.rectangle();
        gesture_.move(event->position());
        update(before.united(gesture_.rectangle()).toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    point(plot.contains(event->position()) ? std::optional(event->position().x()) : std::nullopt);
}

void Quillchart::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !gesture_.active())
        return QWidget::mouseReleaseEvent(event);
    gesture_.move(event->position());
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
    return pointer_ ? Readout(data_.samples, image_.layout(), *pointer_).region() : QRegion();
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
