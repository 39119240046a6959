// SPDX-License-Identifier: MIT
#pragma once

#include "chart/hands/Navigation.h"
#include "chart/hands/ZoomGesture.h"
#include "chart/hands/ZoomHistory.h"
#include "chart/plot/ChartImage.h"
#include "chart/plot/Readout.h"
#include "chart/run/Run.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QWheelEvent>
#include <QWidget>

#include <functional>
#include <optional>

namespace ostrel {

/// What the operator does on the chart with mouse, wheel and keys: the rectangle that he draws, the read-out, the ways
/// through the run, and the zooms that these lead to. Without a picture nothing can be done.
class ChartHands {
public:
    /// `chart` shows `image`, the picture of `run`. All must outlive the hands.
    ChartHands(QWidget &chart, Run &run, const ChartImage &image);

    std::function<void(const AxisValues &shown)> Zoomed; ///< the axes have been set to what the operator asked for
    std::function<void()> Unzoomed;                      ///< the axes from before the first zoom are back
    std::function<void()> ReadoutMoved;                  ///< by a key or the mouse; it may have ended

    bool zoomed() const { return !zooms_.empty(); }
    /// Restores the axes from before the first zoom. Does nothing without a zoom.
    void leaveZoom();
    /// Takes back the last zoom.
    void goBack();

    /// Handles an event of the mouse, the wheel or the keyboard. False for one that has no meaning here.
    bool handle(QEvent &event);
    void runCleared() { endReadout(); }
    void runReplaced();
    void chartHidden();
    /// The picture has been drawn anew: a read-out that keys have led to a sample stays there.
    void pictureDrawn();
    void endGesture();

    /// What is read out; nothing while a rectangle is drawn. Lives no longer than the picture's layout.
    std::optional<Readout> readout() const;
    bool readsByKey() const { return cursor_.has_value(); }
    void paint(QPainter &painter) const;
    QRegion readoutRegion() const;

private:
    bool pressed(const QMouseEvent &event);
    void moved(const QMouseEvent &event);
    bool released(const QMouseEvent &event);
    void wheeled(const QWheelEvent &event);
    bool keyPressed(int key, Qt::KeyboardModifiers modifiers);

    Navigation navigation() const;
    void show(const AxisValues &axes);
    void zoomTo(const AxisValues &axes, ZoomHistory::Step step);
    void steer(const AxisValues &axes, ZoomHistory::Step step);
    void keepingFocus(const std::function<void()> &act);
    void zoomByKey(double factor);

    void beginReadout();
    void endReadout();
    void moveReadout(qint64 samples);
    void point(std::optional<double> x);
    void pointAt(qint64 sample);

    void spread(int x, int y);
    bool takeRectangle();
    bool leave();
    void paintGesture(QPainter &painter) const;

    QWidget &chart_;
    Run &run_;
    const ChartImage &image_;
    ZoomGesture gesture_;
    bool spreading_ = false; // the gesture is made with keys, which have led it to this corner
    QPointF corner_;
    ZoomHistory zooms_;
    std::optional<double> pointer_; // where the readout is, x within the plot
    std::optional<qint64> cursor_;  // the sample that keys have led the readout to
};

} // namespace ostrel
