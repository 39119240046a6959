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
#include <QPointer>
#include <QVariantMap>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double panStep = 0.1;  // of the time axis
constexpr double zoomStep = 0.8; // of an axis

} // namespace

Quillchart::Quillchart(qint16 index, QWidget *parent) : QWidget(parent), index_(index) {
    run_.setPicture(this);
    run_.ChartError = log_.ChartError = [this](qint16 ErrorCode) { Q_EMIT ChartError(index_, ErrorCode); };
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
    update(readoutRegion() + region);
}

void Quillchart::redraw() {
    shownAxes_ = run_.axes();
    shownTitle_ = run_.ChartTitle();
    setAccessibleName(shownTitle_.isEmpty() ? QStringLiteral("Chart") : shownTitle_);
    redrawDue_ = true;
    update();
}

void Quillchart::runCleared() {
    endReadout();
    redrawDue_ = true;
}

void Quillchart::runReplaced() {
    zooms_.clear();
    gesture_.cancel();
    endReadout();
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

void Quillchart::showAxes(const AxisValues &axes) {
    run_.setAxes(axes);
    Redraw();
    Q_EMIT Zoomed(index_, axes.timeMin, axes.timeMax, axes.uvMin, axes.uvMax, axes.condMin, axes.condMax);
}

void Quillchart::zoomTo(const AxisValues &axes, ZoomHistory::Step step) {
    zooms_.leave(run_.axes(), step);
    showAxes(axes);
}

/// As wheel and keys do it: the focus stays where it is, for the next step.
void Quillchart::steer(const AxisValues &axes, ZoomHistory::Step step) {
    if (axes == run_.axes())
        return;
    keepingFocus([&] {
        if (zoomed() && step == ZoomHistory::Step::Scale && navigation().isWidest(axes))
            leaveZoom();
        else
            zoomTo(axes, step);
    });
}

void Quillchart::keepingFocus(const std::function<void()> &act) {
    const QPointer<QWidget> focus = window()->focusWidget();
    act();
    if (focus && focus != window()->focusWidget())
        focus->setFocus();
}

void Quillchart::leaveZoom() {
    if (!zoomed())
        return;
    run_.setAxes(zooms_.first());
    zooms_.clear();
    Redraw();
    Q_EMIT Unzoomed(index_);
}

void Quillchart::goBack() {
    if (zooms_.count() < 2)
        return leaveZoom();
    keepingFocus([this] { showAxes(zooms_.back()); });
}

Navigation Quillchart::navigation() const {
    return {run_.axes(), zoomed() ? zooms_.first() : run_.axes(), run_.GetLastTime()};
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
    if (cursor_)
        pointer_ = image_.layout().time.place(ChartData::timeOf(*cursor_));
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
    spreading_ = false;
    gesture_.press(event->position(), image_.layout().plot);
    update();
}

void Quillchart::mouseMoveEvent(QMouseEvent *event) {
    if (image_.isNull())
        return;
    const QRectF plot = image_.layout().plot;
    if (gesture_.active() && !spreading_ && !event->buttons().testFlag(Qt::LeftButton))
        endGesture(); // the button went up where this chart was not told of it: over a box, say
    if (gesture_.active() && !spreading_) {
        const QRectF before = gesture_.rectangle();
        gesture_.move(event->position(), plot);
        update(before.united(gesture_.rectangle()).toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    cursor_.reset();
    point(plot.contains(event->position()) ? std::optional(event->position().x()) : std::nullopt);
}

void Quillchart::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !gesture_.active() || spreading_)
        return QWidget::mouseReleaseEvent(event);
    gesture_.move(event->position(), image_.layout().plot);
    const std::optional<QRectF> rectangle = gesture_.release();
    update();
    if (rectangle)
        zoomTo(axesOf(*rectangle, image_.layout()), ZoomHistory::Step::Rectangle);
}

void Quillchart::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        leaveZoom();
}

void Quillchart::leaveEvent(QEvent *event) {
    if (!cursor_)
        point(std::nullopt);
    QWidget::leaveEvent(event);
}

void Quillchart::wheelEvent(QWheelEvent *event) {
    constexpr double notch = 120; // as Qt counts
    if (image_.isNull())
        return QWidget::wheelEvent(event);
    const QRectF plot = image_.layout().plot;
    const double back = event->angleDelta().y() / notch;
    const double left = event->angleDelta().x() / notch; // some desktops turn the wheel with Shift
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const double x = (event->position().x() - plot.left()) / plot.width();
        const double y = (plot.bottom() - event->position().y()) / plot.height();
        const auto within = [](double part) { return part >= 0 && part <= 1; };
        steer(navigation().zoomed(std::pow(zoomStep, back), within(x) ? std::optional(x) : std::nullopt,
                                  within(y) ? std::optional(y) : std::nullopt),
              ZoomHistory::Step::Scale);
    } else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        steer(navigation().uvScaled(std::pow(zoomStep, back + left)), ZoomHistory::Step::Scale);
    } else {
        steer(navigation().panned(-(back + left) * panStep), ZoomHistory::Step::Pan);
    }
    event->accept();
}

void Quillchart::keyPressEvent(QKeyEvent *event) {
    if (image_.isNull() || !pressed(event->key(), event->modifiers() & ~Qt::KeypadModifier))
        QWidget::keyPressEvent(event);
}

/// True for a key that has a meaning here.
bool Quillchart::pressed(int key, Qt::KeyboardModifiers modifiers) {
    using Step = ZoomHistory::Step;
    const bool arrow = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
    if (modifiers == Qt::ShiftModifier && arrow) {
        spread((key == Qt::Key_Right) - (key == Qt::Key_Left), (key == Qt::Key_Down) - (key == Qt::Key_Up));
        return true;
    }
    const bool control = modifiers == Qt::ControlModifier;
    if (cursor_ && (control || modifiers == Qt::NoModifier) && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        const double samples = control ? 10 * samplesPerMinute / image_.layout().time.factor() : 1;
        moveReadout((key == Qt::Key_Right ? 1 : -1) * std::max<qint64>(qRound64(samples), 1));
        return true;
    }
    if (modifiers != Qt::NoModifier && !(modifiers == Qt::ShiftModifier && key == Qt::Key_Plus))
        return false;
    switch (key) {
    case Qt::Key_Escape:
        return leave();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return takeRectangle();
    case Qt::Key_Backspace:
        goBack();
        break;
    case Qt::Key_Space:
        beginReadout();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        steer(navigation().panned(key == Qt::Key_Right ? panStep : -panStep), Step::Pan);
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        steer(navigation().panned(key == Qt::Key_PageDown ? 1 : -1), Step::Pan);
        break;
    case Qt::Key_Home:
        steer(navigation().toStart(), Step::Pan);
        break;
    case Qt::Key_End:
        steer(navigation().toEnd(), Step::Pan);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        zoomByKey(key == Qt::Key_Plus ? zoomStep : 1 / zoomStep);
        break;
    default:
        return false;
    }
    return true;
}

/// Along the run, at the readout or else at the middle of the plot: the base line stays where it is.
void Quillchart::zoomByKey(double factor) {
    const QRectF plot = image_.layout().plot;
    const double x = cursor_ ? (*pointer_ - plot.left()) / plot.width() : 0.5;
    steer(navigation().zoomed(factor, std::clamp(x, 0.0, 1.0), std::nullopt), ZoomHistory::Step::Scale);
}

/// In the middle of what is shown of the run, or at the mouse.
void Quillchart::beginReadout() {
    const qint64 samples = run_.data().samples.size();
    if (samples == 0)
        return;
    const PlotLayout &layout = image_.layout();
    const double x = pointer_.value_or(layout.time.place((layout.axes.timeMin + double(layout.axes.timeMax)) / 2));
    pointAt(std::clamp<qint64>(qRound64(layout.time.value(x) * samplesPerMinute), 0, samples - 1));
}

/// That of the keys.
void Quillchart::endReadout() {
    if (!cursor_)
        return;
    cursor_.reset();
    point(std::nullopt);
}

void Quillchart::moveReadout(qint64 samples) {
    pointAt(std::clamp<qint64>(*cursor_ + samples, 0, run_.data().samples.size() - 1));
}

/// The window follows the readout.
void Quillchart::pointAt(qint64 sample) {
    cursor_ = sample;
    const AxisValues axes = run_.axes();
    const double time = ChartData::timeOf(sample);
    const double length = double(axes.timeMax) - double(axes.timeMin);
    const double outside = time < axes.timeMin ? time - axes.timeMin : std::max(time - double(axes.timeMax), 0.0);
    if (outside != 0)
        steer(navigation().panned(outside / length), ZoomHistory::Step::Pan);
    point(image_.layout().time.place(time));
}

/// Draws the rectangle out by a fortieth of the plot, from the readout or from the middle.
void Quillchart::spread(int x, int y) {
    constexpr double parts = 40;
    const QRectF plot = image_.layout().plot;
    if (!gesture_.active()) {
        const double from = cursor_ ? std::clamp(*pointer_, plot.left(), plot.right()) : plot.center().x();
        spreading_ = true;
        corner_ = {from, plot.center().y()};
        gesture_.press(corner_, plot);
    }
    if (!spreading_)
        return; // the mouse draws one
    corner_ += QPointF(x * plot.width(), y * plot.height()) / parts;
    gesture_.move(corner_, plot);
    corner_ = {std::clamp(corner_.x(), plot.left(), plot.right()), std::clamp(corner_.y(), plot.top(), plot.bottom())};
    update();
}

bool Quillchart::takeRectangle() {
    if (!gesture_.active() || !spreading_)
        return false;
    const std::optional<QRectF> rectangle = gesture_.release();
    update();
    if (rectangle)
        steer(axesOf(*rectangle, image_.layout()), ZoomHistory::Step::Rectangle);
    return true;
}

/// Gives up the innermost of what is going on; false when nothing is.
bool Quillchart::leave() {
    if (gesture_.active()) {
        endGesture();
    } else if (cursor_) {
        endReadout();
    } else if (zoomed()) {
        leaveZoom();
    } else {
        return false;
    }
    return true;
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
