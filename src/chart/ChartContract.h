// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

/// The outside contract of the chart component, cut by who uses it. All calls come on the user-interface thread. A
/// status of 0 is good; any other value is final for that call.

/// What takes a run as it comes in.
class LiveChart {
public:
    virtual ~LiveChart() = default;

    /// Puts a sample pair (AU, mS/cm) behind the last one, 1/300 minute on; the first stands at 0. Draws nothing. The
    /// values are kept bit for bit, not-a-number and infinities too. Non-zero exactly when the chart cannot take more.
    virtual qint16 AddSample(float UV, float Conductivity) = 0;
    /// A mark on the time axis at `Time` minutes. Color is 0xBBGGRR; a negative Height points the other way.
    virtual qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) = 0;
    /// A method text as the instrument sent it, CR LF line ends, with its time in minutes.
    virtual qint16 AddMethodText(const QString &Text, float Time) = 0;

    /// Time of the last sample in minutes; 0 on an empty chart. Costs the same at every size.
    virtual float GetLastTime() const = 0;
    /// The time of the last sample lies within TimeAxisMin to TimeAxisMax. Costs the same at every size.
    virtual bool IsLastPointVisible() const = 0;

    /// Draws what was added since the last drawing, over what is drawn.
    virtual void DrawNewData() = 0;
    /// Draws the whole chart again with the present axes.
    virtual void Redraw() = 0;
};

/// The axes and the title. What is set takes effect at the next Redraw.
class ChartAxes {
public:
    virtual ~ChartAxes() = default;

    virtual float UvAxisMin() const = 0; ///< AU
    virtual float UvAxisMax() const = 0;
    virtual float CondAxisMin() const = 0; ///< mS/cm
    virtual float CondAxisMax() const = 0;
    virtual float TimeAxisMin() const = 0; ///< minutes
    virtual float TimeAxisMax() const = 0;
    virtual QString ChartTitle() const = 0;

    virtual void setUvAxisMin(float value) = 0;
    virtual void setUvAxisMax(float value) = 0;
    virtual void setCondAxisMin(float value) = 0;
    virtual void setCondAxisMax(float value) = 0;
    virtual void setTimeAxisMin(float value) = 0;
    virtual void setTimeAxisMax(float value) = 0;
    virtual void setChartTitle(const QString &title) = 0;
};

/// One instance as the window's rules see it: the run that it holds, and its axes.
class ViewedChart : public LiveChart, public ChartAxes {};
