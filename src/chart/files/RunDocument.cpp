// SPDX-License-Identifier: MIT
#include "chart/files/RunDocument.h"

#include "base/ErrorNumbers.h"
#include "chart/files/ChartFile.h"
#include "chart/files/SaveNote.h"
#include "chart/run/Succeeds.h"

#include <utility>

namespace ostrel {

bool RunDocument::LoadDataFile(const QString &FileName) {
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
    replace(loaded ? std::move(run) : ChartData(), axes);
    inFile_ = loaded ? std::optional(contents()) : std::nullopt;
    if (!loaded && ChartError)
        ChartError(damagedLog ? ErrorNumber::LogDamaged : ErrorNumber::OpenFailed);
    return loaded;
}

bool RunDocument::SaveDataFile(const QString &FileName) {
    Provenance before = data().provenance;
    const bool saved = !holdsNothing_ && succeeds([&] {
        noteSave(provenance(), changeInWords());
        return !saveChartFile(FileName, dataFile, data(), axes());
    });
    if (!saved) {
        provenance() = std::move(before);
        return false;
    }
    fileName_ = FileName;
    inFile_ = contents();
    return true;
}

bool RunDocument::SaveSelectedData(const QString &FileName) {
    return !holdsNothing_ && succeeds([&] { return !saveChartStretch(FileName, data(), axes()); });
}

void RunDocument::ClearData() {
    clear();
    fileName_.clear();
    inFile_.reset();
    holdsNothing_ = false;
}

RunDocument::Contents RunDocument::contents() const {
    return {data().title, data().notes, data().samples.size(), data().marks.size(), data().methodTexts.size(), axes()};
}

/// What is not as in the file, apart from the axes.
QStringList RunDocument::changes() const {
    QStringList changed;
    const Contents now = contents();
    const auto tell = [&](bool differs, const char *what) {
        if (differs)
            changed << QLatin1String(what);
    };
    tell(now.title != inFile_->title, "title");
    tell(now.notes != inFile_->notes, "notes");
    tell(now.samples != inFile_->samples, "samples");
    tell(now.marks != inFile_->marks, "marks");
    tell(now.methodTexts != inFile_->methodTexts, "method");
    return changed;
}

QString RunDocument::changeInWords() const {
    if (!inFile_)
        return QStringLiteral("first saved");
    QStringList changed = changes();
    if (axes() != inFile_->axes)
        changed << QStringLiteral("axes");
    return changed.isEmpty() ? QStringLiteral("nothing") : changed.join(QStringLiteral(", "));
}

QString RunDocument::unsavedInWords() const {
    return inFile_ ? changes().join(QStringLiteral(", ")) : QStringLiteral("the whole run");
}

} // namespace ostrel
