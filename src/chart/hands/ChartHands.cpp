// SPDX-License-Identifier: MIT
#include "chart/hands/ChartHands.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double panStep = 0.1;  // of the time axis
constexpr double zoomStep = 0.8; // of an axis

} // namespace

ChartHands::ChartHands(QWidget &chart, Run &run, const ChartImage &image) : chart_(chart), run_(run), image_(image) {}

void ChartHands::runReplaced() {
    zooms_.clear();
    gesture_.cancel();
    endReadout();
}

void ChartHands::chartHidden() {
    gesture_.cancel();
    pointer_.reset();
}

void ChartHands::pictureDrawn() {
    if (cursor_)
        pointer_ = image_.layout().time.place(ChartData::timeOf(*cursor_));
}

bool ChartHands::handle(QEvent &event) {
    if (image_.isNull())
        return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        return pressed(static_cast<QMouseEvent &>(event));
    case QEvent::MouseMove:
        moved(static_cast<QMouseEvent &>(event));
        return true;
    case QEvent::MouseButtonRelease:
        return released(static_cast<QMouseEvent &>(event));
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent &>(event).button() == Qt::LeftButton)
            leaveZoom();
        return true;
    case QEvent::Leave:
        if (!cursor_)
            point(std::nullopt);
        return false; // the widget has to know, too
    case QEvent::Wheel:
        wheeled(static_cast<QWheelEvent &>(event));
        return true;
    case QEvent::KeyPress: {
        const auto &key = static_cast<QKeyEvent &>(event);
        return keyPressed(key.key(), key.modifiers() & ~Qt::KeypadModifier);
    }
    default:
        return false;
    }
}

bool ChartHands::pressed(const QMouseEvent &event) {
    if (event.button() != Qt::LeftButton)
        return false;
    spreading_ = false;
    gesture_.press(event.position(), image_.layout().plot);
    chart_.update();
    return true;
}

void ChartHands::moved(const QMouseEvent &event) {
    const QRectF plot = image_.layout().plot;
    if (gesture_.active() && !spreading_ && !event.buttons().testFlag(Qt::LeftButton))
        endGesture(); // the button went up where this chart was not told of it: over a box, say
    if (gesture_.active() && !spreading_) {
        const QRectF before = gesture_.rectangle();
        gesture_.move(event.position(), plot);
        chart_.update(before.united(gesture_.rectangle()).toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    cursor_.reset();
    point(plot.contains(event.position()) ? std::optional(event.position().x()) : std::nullopt);
}

bool ChartHands::released(const QMouseEvent &event) {
    if (event.button() != Qt::LeftButton || !gesture_.active() || spreading_)
        return false;
    gesture_.move(event.position(), image_.layout().plot);
    const std::optional<QRectF> rectangle = gesture_.release();
    chart_.update();
    if (rectangle)
        zoomTo(axesOf(*rectangle, image_.layout()), ZoomHistory::Step::Rectangle);
    return true;
}

void ChartHands::wheeled(const QWheelEvent &event) {
    constexpr double notch = 120; // as Qt counts
    const QRectF plot = image_.layout().plot;
    const double back = event.angleDelta().y() / notch;
    const double left = event.angleDelta().x() / notch; // some desktops turn the wheel with Shift
    if (event.modifiers().testFlag(Qt::ControlModifier)) {
        const double x = (event.position().x() - plot.left()) / plot.width();
        const double y = (plot.bottom() - event.position().y()) / plot.height();
        const auto within = [](double part) { return part >= 0 && part <= 1; };
        steer(navigation().zoomed(std::pow(zoomStep, back), within(x) ? std::optional(x) : std::nullopt,
                                  within(y) ? std::optional(y) : std::nullopt),
              ZoomHistory::Step::Scale);
    } else if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        steer(navigation().uvScaled(std::pow(zoomStep, back + left)), ZoomHistory::Step::Scale);
    } else {
        steer(navigation().panned(-(back + left) * panStep), ZoomHistory::Step::Pan);
    }
}

/// True for a key that has a meaning here.
bool ChartHands::keyPressed(int key, Qt::KeyboardModifiers modifiers) {
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

Navigation ChartHands::navigation() const {
    return {run_.axes(), zoomed() ? zooms_.first() : run_.axes(), run_.GetLastTime()};
}

void ChartHands::show(const AxisValues &axes) {
    run_.setAxes(axes);
    run_.Redraw();
    if (Zoomed)
        Zoomed(axes);
}

void ChartHands::zoomTo(const AxisValues &axes, ZoomHistory::Step step) {
    zooms_.leave(run_.axes(), step);
    show(axes);
}

/// As wheel and keys do it: the focus stays where it is, for the next step.
void ChartHands::steer(const AxisValues &axes, ZoomHistory::Step step) {
    if (axes == run_.axes())
        return;
    keepingFocus([&] {
        if (zoomed() && step == ZoomHistory::Step::Scale && navigation().isWidest(axes))
            leaveZoom();
        else
            zoomTo(axes, step);
    });
}

void ChartHands::keepingFocus(const std::function<void()> &act) {
    const QPointer<QWidget> focus = chart_.window()->focusWidget();
    act();
    if (focus && focus != chart_.window()->focusWidget())
        focus->setFocus();
}

void ChartHands::leaveZoom() {
    if (!zoomed())
        return;
    run_.setAxes(zooms_.first());
    zooms_.clear();
    run_.Redraw();
    if (Unzoomed)
        Unzoomed();
}

void ChartHands::goBack() {
    if (zooms_.count() < 2)
        return leaveZoom();
    keepingFocus([this] { show(zooms_.back()); });
}

/// Along the run, at the readout or else at the middle of the plot: the base line stays where it is.
void ChartHands::zoomByKey(double factor) {
    const QRectF plot = image_.layout().plot;
    const double x = cursor_ ? (*pointer_ - plot.left()) / plot.width() : 0.5;
    steer(navigation().zoomed(factor, std::clamp(x, 0.0, 1.0), std::nullopt), ZoomHistory::Step::Scale);
}

/// In the middle of what is shown of the run, or at the mouse.
void ChartHands::beginReadout() {
    const qint64 samples = run_.data().samples.size();
    if (samples == 0)
        return;
    const PlotLayout &layout = image_.layout();
    const double x = pointer_.value_or(layout.time.place((layout.axes.timeMin + double(layout.axes.timeMax)) / 2));
    pointAt(std::clamp<qint64>(qRound64(layout.time.value(x) * samplesPerMinute), 0, samples - 1));
}

/// That of the keys.
void ChartHands::endReadout() {
    if (!cursor_)
        return;
    cursor_.reset();
    point(std::nullopt);
}

void ChartHands::moveReadout(qint64 samples) {
    pointAt(std::clamp<qint64>(*cursor_ + samples, 0, run_.data().samples.size() - 1));
}

/// The window follows the readout.
void ChartHands::pointAt(qint64 sample) {
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
void ChartHands::spread(int x, int y) {
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
    chart_.update();
}

bool ChartHands::takeRectangle() {
    if (!gesture_.active() || !spreading_)
        return false;
    const std::optional<QRectF> rectangle = gesture_.release();
    chart_.update();
    if (rectangle)
        steer(axesOf(*rectangle, image_.layout()), ZoomHistory::Step::Rectangle);
    return true;
}

/// Gives up the innermost of what is going on; false when nothing is.
bool ChartHands::leave() {
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

void ChartHands::endGesture() {
    gesture_.cancel();
    chart_.update();
}

std::optional<Readout> ChartHands::readout() const {
    if (!pointer_ || gesture_.active() || image_.isNull())
        return std::nullopt;
    return Readout(run_.data(), image_.layout(), *pointer_);
}

QRegion ChartHands::readoutRegion() const {
    return pointer_ && !image_.isNull() ? Readout(run_.data(), image_.layout(), *pointer_).region() : QRegion();
}

void ChartHands::point(std::optional<double> x) {
    if (image_.isNull())
        return;
    const QRegion before = readoutRegion();
    if (x.has_value() != pointer_.has_value())
        x ? chart_.setCursor(Qt::CrossCursor) : chart_.unsetCursor();
    pointer_ = x;
    chart_.update(before + readoutRegion());
    if (ReadoutMoved)
        ReadoutMoved();
}

void ChartHands::paint(QPainter &painter) const {
    if (gesture_.active())
        paintGesture(painter);
    else if (const auto read = readout())
        read->paint(painter, image_.view().theme);
}

void ChartHands::paintGesture(QPainter &painter) const {
    const QColor highlight = image_.view().theme.highlight;
    QColor inside = highlight;
    inside.setAlphaF(gesture_.largeEnough() ? 0.18F : 0.06F);
    painter.setPen(highlight);
    painter.setBrush(inside);
    painter.drawRect(gesture_.rectangle().adjusted(0, 0, -1, -1));
}

} // namespace ostrel
