// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartContract.h"
#include "chart/files/RunningLogWriter.h"
#include "chart/plot/ChartImage.h"
#include "chart/plot/ZoomGesture.h"
#include "chart/report/ReportPrinter.h"
#include "chart/run/ChartData.h"

#include <QDate>
#include <QVariantList>
#include <QWidget>

#include <functional>
#include <optional>

/// The chart: holds one run, draws it and lets the operator zoom. UV stands blue against the left axis, conductivity
/// red against the right one.
///
/// Zooming: a rectangle drawn with the left button. A double click, Escape or the context menu goes back to the axes
/// that stood before the first of the zooms that followed one another, all six, whatever was written to them in the
/// meantime. Nothing but that leaves the zoom.
///
/// Drawing is put off to the next paint event; a chart that is hidden keeps no picture.
class Quillchart : public QWidget, public DocumentChart, public ChartLog {
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
    /// `index` is what the chart's events bear.
    explicit Quillchart(qint16 index, QWidget *parent = nullptr);

    Q_INVOKABLE qint16 AddSample(float UV, float Conductivity) override;
    Q_INVOKABLE qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) override;
    Q_INVOKABLE qint16 AddMethodText(const QString &Text, float Time) override;
    Q_INVOKABLE float GetLastTime() const override { return data_.lastTime(); }
    Q_INVOKABLE bool IsLastPointVisible() const override;
    Q_INVOKABLE void DrawNewData() override;
    Q_INVOKABLE void Redraw() override;

    float UvAxisMin() const override { return axes_.uvMin; }
    float UvAxisMax() const override { return axes_.uvMax; }
    float CondAxisMin() const override { return axes_.condMin; }
    float CondAxisMax() const override { return axes_.condMax; }
    float TimeAxisMin() const override { return axes_.timeMin; }
    float TimeAxisMax() const override { return axes_.timeMax; }
    QString ChartTitle() const override { return data_.title; }
    void setUvAxisMin(float value) override { axes_.uvMin = value; }
    void setUvAxisMax(float value) override { axes_.uvMax = value; }
    void setCondAxisMin(float value) override { axes_.condMin = value; }
    void setCondAxisMax(float value) override { axes_.condMax = value; }
    void setTimeAxisMin(float value) override { axes_.timeMin = value; }
    void setTimeAxisMax(float value) override { axes_.timeMax = value; }
    void setChartTitle(const QString &title) override;

    Q_INVOKABLE bool LoadDataFile(const QString &FileName) override;
    Q_INVOKABLE bool SaveDataFile(const QString &FileName) override;
    Q_INVOKABLE bool SaveSelectedData(const QString &FileName) override;
    Q_INVOKABLE void ClearData() override;
    Q_INVOKABLE void ClearDisplay() override;
    Q_INVOKABLE QString GetNotes() const override { return data_.notes; }
    Q_INVOKABLE void SetNotes(const QString &Notes) override { data_.notes = Notes; }
    Q_INVOKABLE QString GetMethodText() const override;
    Q_INVOKABLE qint16 ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                                  qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom,
                                  float TimeTo, float SampleRate, qint32 PointCount) override;
    Q_INVOKABLE void PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags) override;
    /// Without one, printing fails.
    void setPrinter(ReportPrinter printer) { printer_ = std::move(printer); }

    Q_INVOKABLE qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval,
                                double DataFileSizeHours) override;
    Q_INVOKABLE bool CheckLogFile(const QString &LogDirectory) override;
    Q_INVOKABLE qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber,
                                 const QString &NewFileName) override;
    Q_INVOKABLE void CloseLog(const QString &LogDirectory, qint16 InstanceNumber) override;
    QStringList UnreadLogFiles(const QString &LogDirectory) override;
    bool DiscardLog(const QString &LogDirectory) override;
    void KeepWastebasketLimits() override;
    /// The folder that discarded logs go to, under the date that `today` answers. Without a folder they are deleted.
    void setWastebasket(const QString &folder, std::function<QDate()> today);

    /// What the chart holds, for scripts: `count` pairs [UV, conductivity] from a sample's number on (as many as there
    /// are); every mark as a map of Label, Color, Height, Time.
    int SampleCount() const { return static_cast<int>(data_.samples.size()); }
    Q_INVOKABLE QVariantList samples(int from, int count) const;
    Q_INVOKABLE QVariantList marks() const;

    bool zoomed() const { return axesBeforeZoom_.has_value(); }
    /// Back to the axes before the zoom, then Unzoomed. Nothing without a zoom.
    Q_INVOKABLE void leaveZoom();

    /// False while the chart is out of sight.
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
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void replaceRun(ChartData run, const AxisValues &axes);
    ChartView view() const;
    void bringUpToDate();
    void paintMarks(QPainter &painter, const QRect &exposed);
    void paintGesture(QPainter &painter);
    void zoomTo(const QRectF &rectangle);
    void endGesture();
    void point(std::optional<double> x);
    QRegion readoutRegion() const;

    const qint16 index_;
    ChartData data_;
    AxisValues axes_;
    AxisValues shownAxes_; // as they stood at the last Redraw; likewise the title
    QString shownTitle_;
    bool redrawDue_ = true;
    bool newsDue_ = false;
    ChartImage image_;
    ZoomGesture gesture_;
    std::optional<AxisValues> axesBeforeZoom_;
    std::optional<double> pointer_; // where the readout stands, x within the plot
    QString fileName_;              // where the run was last read from or written to
    bool holdsNothing_ = false;     // since a load failed: saving would empty a file that is only out of reach
    ReportPrinter printer_;
    QString wastebasket_;
    std::function<QDate()> today_;
    RunningLogWriter log_;
};
