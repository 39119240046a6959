// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
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

/// What is kept of a run in files and on paper. File names are any that the file system takes.
class ChartDocument {
public:
    virtual ~ChartDocument() = default;

    /// Replaces all that the chart holds, and its axes, by what a data file or a log file holds. False when the file
    /// cannot be read, is damaged, or comes of a newer version: the chart has said so (ChartError), and is empty.
    virtual bool LoadDataFile(const QString &FileName) = 0;
    /// Writes all that the chart holds. True when the new file is on the disk; otherwise the old file stands untouched.
    virtual bool SaveDataFile(const QString &FileName) = 0;
    /// The same with the stretch from TimeAxisMin to TimeAxisMax alone; in the new file it begins at time 0.
    virtual bool SaveSelectedData(const QString &FileName) = 0;

    /// The two steps of emptying a chart: samples, marks, method texts and notes go; then the plot is drawn empty.
    virtual void ClearData() = 0;
    virtual void ClearDisplay() = 0;

    virtual QString GetNotes() const = 0; ///< the user's text, CR LF line ends
    virtual void SetNotes(const QString &Notes) = 0;
    virtual QString GetMethodText() const = 0; ///< all method texts in the order of their times

    /// Writes a text file for a spreadsheet, but none in place of a data or log file. The flags are 1 or 0;
    /// MethodPosition is 0 before the data, 1 after them, 2 a column of its own; times in minutes, SampleRate in points
    /// a second (at most 5), PointCount the number of points that the user was shown, which the file holds exactly. 0
    /// is good.
    virtual qint16 ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                              qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom,
                              float TimeTo, float SampleRate, qint32 PointCount) = 0;
    /// Prints one copy of the report. TraceFlags is the sum of 1 for event marks, 2 for conductivity, 4 for UV.
    /// A failure is told by ChartError.
    virtual void PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags) = 0;
};

/// The running log of one copy of the program: a directory that the chart alone fills. Its path comes with or without a
/// separator at its end, and InstanceNumber may be any.
class ChartLog {
public:
    virtual ~ChartLog() = default;

    /// Brings what the chart took since the last success to the disk. Interval is the time between calls in
    /// milliseconds; after DataFileSizeHours of data the log goes on in a new file. 0 is good: all that the chart holds
    /// survives the end of the computer. Any other status is an error code of the system.
    virtual qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval,
                            double DataFileSizeHours) = 0;
    /// The log holds at least one sample or mark, or held some that are damaged; or a data file stands there that
    /// cannot be read at this moment.
    virtual bool CheckLogFile(const QString &LogDirectory) = 0;
    /// Puts the log that stands in the directory, of whichever run, together in one log file. 0 is good. Where
    /// something of it is missing the chart says so (ChartError), and the rest is saved.
    virtual qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber, const QString &NewFileName) = 0;
    /// Lets go of the log and empties the directory as DiscardLog does.
    virtual void CloseLog(const QString &LogDirectory, qint16 InstanceNumber) = 0;

    /// The data files in the directory that cannot be read to their ends at this moment, or not by this program, each
    /// with the reason.
    virtual QStringList UnreadLogFiles(const QString &LogDirectory) = 0;
    /// Moves the log's files to the wastebasket; deletes those of a log without a sample or mark and without damage.
    /// Documents that the user saved there stay. False when files of the log stay: one cannot be read at this moment,
    /// or be moved.
    virtual bool DiscardLog(const QString &LogDirectory) = 0;
    /// Deletes of the wastebasket what is too old or too much.
    virtual void KeepWastebasketLimits() = 0;
};

/// One instance as the window's rules see it: the run that it holds, and its axes.
class ViewedChart : public LiveChart, public ChartAxes {};

/// One instance as the commands on files see it.
class DocumentChart : public ViewedChart, public ChartDocument {};
