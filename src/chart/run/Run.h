// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QString>

namespace ostrel {

/// Shows a run. The run reports each change to it, and it decides itself when to draw.
class RunPicture {
public:
    virtual ~RunPicture() = default;

    /// Samples or marks were added to what is drawn.
    virtual void drawNewData() = 0;
    /// Draw everything again, with the present axes and title.
    virtual void redraw() = 0;
    /// The data were removed: the next drawing must draw everything.
    virtual void runCleared() = 0;
    /// Another run with its own axes has replaced the old one; redraw() follows.
    virtual void runReplaced() = 0;
};

/// One run and the axes that it is shown with. A status of 0 is success; a call with any other has changed nothing. All
/// calls come on one thread.
class Run {
public:
    Run() = default;
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Appends a sample pair (AU, mS/cm), 1/300 minute after the last one; the first is at 0. Draws nothing. The values
    /// are kept bit for bit, also not-a-number and infinities. Non-zero only when there is no memory left.
    qint16 AddSample(float UV, float Conductivity);
    /// Adds a mark on the time axis at `Time` minutes. Color is 0xBBGGRR; a mark with a negative Height points down.
    qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time);
    /// Adds a method text as the instrument sent it, with CR LF line ends, and its time in minutes.
    qint16 AddMethodText(const QString &Text, float Time);

    /// Time of the last sample in minutes; 0 on an empty chart. Costs the same at every size.
    float GetLastTime() const { return data_.lastTime(); }
    /// The time of the last sample lies within TimeAxisMin to TimeAxisMax. Costs the same at every size.
    bool IsLastPointVisible() const;

    /// Draws what was added since the last drawing on top of it.
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

    Provenance &provenance() { return data_.provenance; }

    const ChartData &data() const { return data_; }
    const AxisValues &axes() const { return axes_; }
    /// The number of the run, from 0. It changes whenever the data are cleared or replaced.
    int number() const { return number_; }

    /// With null nothing is shown. The run does not own the picture, which must live as long as the run is used.
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
