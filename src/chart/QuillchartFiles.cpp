// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "chart/Quillchart.h"
#include "chart/files/ChartFile.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogFiles.h"
#include "chart/files/RunningLogReader.h"
#include "chart/report/ReportPrinter.h"
#include "chart/table/TextExport.h"

#include <QDateTime>

#include <algorithm>
#include <new>
#include <utility>

// The operations of the chart on files, logs and paper.

namespace {

constexpr qint16 failed = 1;

/// As the system numbers a failure of files.
qint16 numberOf(std::error_code error) {
    return error ? static_cast<qint16>(RunTimeError::numberOf(error)) : qint16{0};
}

/// Runs `operation`; running out of memory counts as its failure.
template <typename Operation>
bool succeeds(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace

bool Quillchart::LoadDataFile(const QString &FileName) {
    ChartData run;
    AxisValues axes;
    bool damagedLog = false;
    const bool loaded = succeeds([&] {
        const ChartFileReport report = loadChartFile(FileName, run, axes);
        const bool damaged = report.fault == ChartFileFault::Damaged || report.fault == ChartFileFault::Truncated;
        damagedLog = damaged && report.head && report.head->kind == logFile;
        return report.good();
    });
    fileName_ = loaded ? FileName : QString();
    holdsNothing_ = !loaded;
    replaceRun(loaded ? std::move(run) : ChartData(), axes);
    if (!loaded)
        Q_EMIT ChartError(index_, damagedLog ? ErrorNumber::LogDamaged : ErrorNumber::OpenFailed);
    return loaded;
}

void Quillchart::replaceRun(ChartData run, const AxisValues &axes) {
    data_ = std::move(run);
    log_.close(); // what it wrote was another run's
    axes_ = axes;
    axesBeforeZoom_.reset();
    gesture_.cancel();
    Redraw();
}

bool Quillchart::SaveDataFile(const QString &FileName) {
    const bool saved = !holdsNothing_ && succeeds([&] { return !saveChartFile(FileName, dataFile, data_, axes_); });
    if (saved)
        fileName_ = FileName;
    return saved;
}

bool Quillchart::SaveSelectedData(const QString &FileName) {
    return !holdsNothing_ && succeeds([&] { return !saveChartStretch(FileName, data_, axes_); });
}

void Quillchart::ClearData() {
    const QString title = data_.title;
    data_ = {};
    data_.title = title;
    log_.close();
    fileName_.clear();
    holdsNothing_ = false;
    redrawDue_ = true; // nothing may be added to what is drawn
}

void Quillchart::ClearDisplay() { Redraw(); }

QString Quillchart::GetMethodText() const {
    std::vector<MethodText> texts = data_.methodTexts;
    std::stable_sort(texts.begin(), texts.end(),
                     [](const MethodText &a, const MethodText &b) { return a.time < b.time; });
    QStringList all;
    for (const MethodText &text : texts)
        all << text.text;
    return all.join(QStringLiteral("\r\n"));
}

qint16 Quillchart::ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                              qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom,
                              float TimeTo, float SampleRate, qint32 PointCount) {
    const ExportOptions options{.uv = IncludeUV != 0,
                                .cond = IncludeCond != 0,
                                .events = IncludeEvents != 0,
                                .notes = IncludeNotes != 0,
                                .method = IncludeMethod != 0,
                                .position = static_cast<::MethodPosition>(std::clamp<qint16>(MethodPosition, 0, 2)),
                                .from = TimeFrom,
                                .to = TimeTo,
                                .sampleRate = SampleRate,
                                .pointCount = PointCount,
                                .sourceFile = fileName_,
                                .exported = QDateTime::currentDateTime()};
    return succeeds([&] { return !bearsChartMark(FileName) && !exportText(FileName, data_, options); }) ? 0 : failed;
}

void Quillchart::PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags) {
    const ReportContents contents{data_, axes_, fileName_, QDateTime::currentDateTime()};
    const ReportOptions options{PrintChromatogram, PrintMethod, PrintNotes, TraceFlags};
    if (!printer_.print || !succeeds([&] { return printReport(printer_, contents, options); }))
        Q_EMIT ChartError(index_, ErrorNumber::PrintFailed);
}

qint16 Quillchart::WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32, double DataFileSizeHours) {
    const std::error_code error = log_.write(data_, LogDirectory, InstanceNumber, DataFileSizeHours);
    return numberOf(error);
}

bool Quillchart::CheckLogFile(const QString &LogDirectory) {
    return succeeds([&] {
        const LogGlance glance = glanceAtRunningLog(LogDirectory);
        return glance == LogGlance::Log || glance == LogGlance::Unread;
    });
}

qint16 Quillchart::SaveLogAs(const QString &LogDirectory, qint16, const QString &NewFileName) {
    bool whole = true;
    const bool saved = succeeds([&] {
        const RecoveredLog log = readRunningLog(LogDirectory);
        whole = log.whole();
        return !log.empty() && !saveChartFile(NewFileName, logFile, log.data, log.axes());
    });
    // What there is has been saved; the user hears that something is missing.
    if (saved && !whole)
        Q_EMIT ChartError(index_, ErrorNumber::LogDamaged);
    return saved ? 0 : failed;
}

void Quillchart::CloseLog(const QString &LogDirectory, qint16) {
    log_.close();
    DiscardLog(LogDirectory);
}

QStringList Quillchart::UnreadLogFiles(const QString &LogDirectory) {
    std::vector<BadLogFile> files = readRunningLog(LogDirectory).badFiles;
    std::erase_if(files, [](const BadLogFile &file) { return !file.isUnread(); });
    return inWords(files);
}

bool Quillchart::DiscardLog(const QString &LogDirectory) {
    const LogGlance glance = glanceAtRunningLog(LogDirectory);
    if (glance == LogGlance::Unread)
        return false;
    const bool worthKeeping = glance != LogGlance::Nothing && !wastebasket_.isEmpty();
    if (worthKeeping && moveToWastebasket(LogDirectory, wastebasket_, today_()))
        return false;
    emptyLogDirectory(LogDirectory);
    return true;
}

void Quillchart::KeepWastebasketLimits() {
    if (!wastebasket_.isEmpty())
        keepWastebasketLimits(wastebasket_, today_());
}

void Quillchart::setWastebasket(const QString &folder, std::function<QDate()> today) {
    wastebasket_ = folder;
    today_ = std::move(today);
}
