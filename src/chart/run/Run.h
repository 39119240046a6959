// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QString>

namespace ostrel {

/// What shows a run. It is told what has changed, and draws when it likes.
class RunPicture {
public:
    virtual ~RunPicture() = default;

    /// Samples or marks were added to what is drawn.
    virtual void drawNewData() = 0;
    /// All is to be drawn again, with the axes and the title as they are now.
    virtual void redraw() = 0;
    /// The data are gone: nothing may be added to what is drawn.
    virtual void runCleared() = 0;
    /// Another run has taken the place of the old one, with axes of its own; redraw() follows.
    virtual void runReplaced() = 0;
};

/// One run and the axes that it is shown with. A status of 0 is good; any other value is final for that call. All calls
/// come on one thread.
class Run {
public:
    Run() = default;
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Puts a sample pair (AU, mS/cm) behind the last one, 1/300 minute on; the first is at 0. Draws nothing. The
    /// values are kept bit for bit, not-a-number and infinities too. Non-zero exactly when there is no memory for more.
    qint16 AddSample(float UV, float Conductivity);
    /// A mark on the time axis at `Time` minutes. Color is 0xBBGGRR; a negative Height points the other way.
    qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time);
    /// A method text as the instrument sent it, CR LF line ends, with its time in minutes.
    qint16 AddMethodText(const QString &Text, float Time);

    /// Time of the last sample in minutes; 0 on an empty chart. Costs the same at every size.
    float GetLastTime() const { return data_.lastTime(); }
    /// The time of the last sample lies within TimeAxisMin to TimeAxisMax. Costs the same at every size.
    bool IsLastPointVisible() const;

    /// Draws what was added since the last drawing, over what is drawn.
    void DrawNewData();
    /// Draws the whole chart again with the present axes.
    void Redraw();

    // The axes and the title. What is set takes effect at the next Redraw.
    float UvAxisMin() const { return axes_.uvMin; } ///< AU
    float UvAxisMax() const { return axes_.uvMax; }
    float CondAxisMin() const { return axes_.condMin; } ///< mS/cm
    float CondAxisMax() const { return axes_.condMax; }
    float TimeAxisMin() const { return axes_.timeMin; } ///< minutes
    float TimeAxisMax() const { return axes_.timeMax; }
    QString ChartTitle() const { return data_.title; }
    void setUvAxisMin(float value) { axes_.uvMin = value; }
    void setUvAxisMax(float value) { axes_.uvMax = value; }
    void setCondAxisMin(float value) { axes_.condMin = value; }
    void setCondAxisMax(float value) { axes_.condMax = value; }
    void setTimeAxisMin(float value) { axes_.timeMin = value; }
    void setTimeAxisMax(float value) { axes_.timeMax = value; }
    void setChartTitle(const QString &title) { data_.title = title; }
    void setAxes(const AxisValues &axes) { axes_ = axes; }

    QString GetNotes() const { return data_.notes; } ///< the user's text, CR LF line ends
    void SetNotes(const QString &Notes) { data_.notes = Notes; }
    QString GetMethodText() const; ///< all method texts in the order of their times

    const ChartData &data() const { return data_; }
    const AxisValues &axes() const { return axes_; }
    /// Which run it is, counted from 0: another one whenever the data are cleared or replaced.
    int number() const { return number_; }

    /// None: nothing is shown. The picture is not owned and must live as long as the run is used.
    void setPicture(RunPicture *picture) { picture_ = picture; }

protected:
    void clear(); ///< all but the title and the axes
    void replace(ChartData data, const AxisValues &axes);

private:
    ChartData data_;
    AxisValues axes_;
    int number_ = 0;
    RunPicture *picture_ = nullptr;
};

} // namespace ostrel
