// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RunDocument.h"
#include "chart/files/RunLog.h"
#include "chart/hands/ChartHands.h"
#include "chart/plot/ChartImage.h"
#include "chart/plot/HeadNumbers.h"
#include "chart/report/ReportPrinter.h"

#include <QImage>
#include <QMenu>
#include <QVariantList>
#include <QWidget>

#include <functional>
#include <optional>

namespace ostrel {

/// The chart: owns one run with its files and its log, draws it and lets the operator zoom. UV is blue on the left
/// axis, conductivity red on the right one. All calls come on the user-interface thread.
///
/// In the head are the title and the numbers of now, or those that the operator reads out.
///
/// Zooming: the operator draws a rectangle with the left button, also within a zoom, or goes through the run with the
/// wheel and keys, which counts as zooming too. A double click, Escape or the context menu sets all six axes back to
/// those before the first of these zooms, whatever was written to them since; Backspace takes back the last one.
/// Otherwise only a run that is loaded ends a zoom.
///
/// The wheel pans, with Ctrl it zooms at the pointer (beside the plot only the axis there), with Shift it scales UV.
/// Left, Right, Page Up, Page Down, Home and End pan, + and - zoom along the run. Space begins the read-out, which then
/// goes from sample to sample with Left and Right, ten pixels with Ctrl. Shift and the arrows spread a rectangle from
/// there, Enter takes it.
///
/// Drawing waits for the next paint event; a chart that is hidden keeps no picture.
class Quillchart : public QWidget, private RunPicture {
    Q_OBJECT
    Q_PROPERTY(float UvAxisMin READ UvAxisMin WRITE setUvAxisMin)
    Q_PROPERTY(float UvAxisMax READ UvAxisMax WRITE setUvAxisMax)
    Q_PROPERTY(float CondAxisMin READ CondAxisMin WRITE setCondAxisMin)
    Q_PROPERTY(float CondAxisMax READ CondAxisMax WRITE setCondAxisMax)
    Q_PROPERTY(float TimeAxisMin READ TimeAxisMin WRITE setTimeAxisMin)
    Q_PROPERTY(float TimeAxisMax READ TimeAxisMax WRITE setTimeAxisMax)
    Q_PROPERTY(QString ChartTitle READ ChartTitle WRITE setChartTitle)
    Q_PROPERTY(int SampleCount READ SampleCount)
    Q_PROPERTY(bool zoomed READ zoomed)

public:
    /// `index` is the chart's number in its signals.
    explicit Quillchart(qint16 index, QWidget *parent = nullptr);

    RunDocument &run() { return run_; }
    const RunDocument &run() const { return run_; }
    RunLog &log() { return log_; }

    // The run's operations under the chart's name, for scripts.
    Q_INVOKABLE qint16 AddSample(float UV, float Conductivity) { return run_.AddSample(UV, Conductivity); }
    Q_INVOKABLE qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) {
        return run_.AddEventMark(Label, Color, Height, Time);
    }
    Q_INVOKABLE qint16 AddMethodText(const QString &Text, float Time) { return run_.AddMethodText(Text, Time); }
    Q_INVOKABLE float GetLastTime() const { return run_.GetLastTime(); }
    Q_INVOKABLE bool IsLastPointVisible() const { return run_.IsLastPointVisible(); }
    Q_INVOKABLE void DrawNewData() { run_.DrawNewData(); }
    Q_INVOKABLE void Redraw() { run_.Redraw(); }
    float UvAxisMin() const { return run_.UvAxisMin(); }
    float UvAxisMax() const { return run_.UvAxisMax(); }
    float CondAxisMin() const { return run_.CondAxisMin(); }
    float CondAxisMax() const { return run_.CondAxisMax(); }
    float TimeAxisMin() const { return run_.TimeAxisMin(); }
    float TimeAxisMax() const { return run_.TimeAxisMax(); }
    QString ChartTitle() const { return run_.ChartTitle(); }
    void setUvAxisMin(float value) { run_.setUvAxisMin(value); }
    void setUvAxisMax(float value) { run_.setUvAxisMax(value); }
    void setCondAxisMin(float value) { run_.setCondAxisMin(value); }
    void setCondAxisMax(float value) { run_.setCondAxisMax(value); }
    void setTimeAxisMin(float value) { run_.setTimeAxisMin(value); }
    void setTimeAxisMax(float value) { run_.setTimeAxisMax(value); }
    void setChartTitle(const QString &title) { run_.setChartTitle(title); }
    Q_INVOKABLE bool LoadDataFile(const QString &FileName) { return run_.LoadDataFile(FileName); }
    Q_INVOKABLE bool SaveDataFile(const QString &FileName) { return run_.SaveDataFile(FileName); }
    Q_INVOKABLE bool SaveSelectedData(const QString &FileName) { return run_.SaveSelectedData(FileName); }
    Q_INVOKABLE void ClearData() { run_.ClearData(); }
    Q_INVOKABLE void ClearDisplay() { run_.ClearDisplay(); }
    Q_INVOKABLE QString GetNotes() const { return run_.GetNotes(); }
    Q_INVOKABLE void SetNotes(const QString &Notes) { run_.SetNotes(Notes); }
    Q_INVOKABLE QString GetMethodText() const { return run_.GetMethodText(); }
    Q_INVOKABLE qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval,
                                double DataFileSizeHours) {
        return log_.WriteLog(LogDirectory, InstanceNumber, Interval, DataFileSizeHours);
    }
    Q_INVOKABLE bool CheckLogFile(const QString &LogDirectory) const { return log_.CheckLogFile(LogDirectory); }
    Q_INVOKABLE qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber, const QString &NewFileName) const {
        return log_.SaveLogAs(LogDirectory, InstanceNumber, NewFileName);
    }
    Q_INVOKABLE void CloseLog(const QString &LogDirectory, qint16 InstanceNumber) {
        log_.CloseLog(LogDirectory, InstanceNumber);
    }

    /// Writes a text file for a spreadsheet, but never in place of a file of a chart. The flags are 1 or 0;
    /// MethodPosition is 0 before the data, 1 after them, 2 a column of its own; times in minutes, SampleRate in points
    /// a second (at most 5), PointCount the number of points that the user was shown, which the file holds exactly. 0
    /// is success.
    Q_INVOKABLE qint16 ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                                  qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom,
                                  float TimeTo, float SampleRate, qint32 PointCount) const;
    /// Prints one copy of the report. TraceFlags is the sum of 1 for event marks, 2 for conductivity, 4 for UV. After a
    /// failure ChartError is emitted.
    Q_INVOKABLE void PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags);
    /// Without a printer printing fails.
    void setPrinter(ReportPrinter printer) { printer_ = std::move(printer); }

    /// The chart's contents for scripts: `count` pairs [UV, conductivity] from a sample's number on (as many as there
    /// are); every mark as a map of Label, Color, Height, Time.
    int SampleCount() const { return static_cast<int>(run_.data().samples.size()); }
    Q_INVOKABLE QVariantList samples(int from, int count) const;
    Q_INVOKABLE QVariantList marks() const;

    bool zoomed() const { return hands_.zoomed(); }
    /// Restores the axes from before the zoom, then emits Unzoomed. Does nothing without a zoom.
    Q_INVOKABLE void leaveZoom() { hands_.leaveZoom(); }

    /// The axes from before the last zoom, which is taken back.
    void goBack() { hands_.goBack(); }

    /// What is shown, dark on white, whatever the screen looks like; `pixelRatio` pixels to one of the chart.
    QImage picture(double pixelRatio) const;
    void paintPicture(QPainter &painter) const;
    /// For screen readers: the numbers in the head, and the whole chart, a line for each thing.
    QString spokenNumbers() const;
    QString spokenText() const;

    /// Adds to the chart's context menu.
    std::function<void(QMenu &menu)> extendMenu;

    /// Shows the pair of now in the chart's head, and its time in minutes if it belongs to the run; nothing hides the
    /// numbers. Where the operator reads out others, these take their place.
    void showNow(std::optional<float> minutes, const std::optional<SamplePair> &pair);

    /// False while the chart is hidden.
    bool holdsImage() const { return !image_.isNull(); }
    QSize sizeHint() const override { return {640, 360}; }

Q_SIGNALS:
    /// The axes show the rectangle that the operator has drawn.
    void Zoomed(qint16 Index, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin, float UvMax, float CondMin,
                float CondMax);
    /// The axes from before the zoom are back.
    void Unzoomed(qint16 Index);
    void ChartError(qint16 Index, qint16 ErrorCode);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void drawNewData() override;
    void redraw() override;
    void runCleared() override;
    void runReplaced() override;
    ChartView view() const;
    ChartView viewOnPaper(double pixelRatio) const;
    void bringUpToDate();
    void paintMarks(QPainter &painter, const QRect &exposed);
    HeadNumbers numbers() const;
    void tellReaders();

    const qint16 index_;
    RunDocument run_;
    RunLog log_{run_};
    AxisValues shownAxes_; // as they were at the last Redraw; likewise the title
    QString shownTitle_;
    bool redrawDue_ = true;
    bool newsDue_ = false;
    ChartImage image_;
    ChartHands hands_{*this, run_, image_};
    HeadNumbers now_;
    int newsSpoken_ = 0; // numbers of now since a screen reader was last told of them
    ReportPrinter printer_;
};

} // namespace ostrel
