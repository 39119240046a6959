// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartContract.h"

#include <QStringList>

#include <functional>
#include <map>
#include <vector>

/// The files of fake charts: names with the minutes of their runs.
using FakeFiles = std::map<QString, float>;

/// A chart without a screen: it keeps what it was given and counts its drawings. Of a file it keeps the length alone.
class FakeChart : public DocumentChart {
public:
    struct Sample {
        float uv;
        float cond;
    };
    struct Mark {
        QString label;
        qint32 color;
        qint16 height;
        float time;
    };
    struct Method {
        QString text;
        float time;
    };

    qint16 AddSample(float UV, float Conductivity) override {
        if (status == 0)
            samples.push_back({UV, Conductivity});
        return status;
    }
    qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) override {
        if (status == 0)
            marks.push_back({Label, Color, Height, Time});
        return status;
    }
    qint16 AddMethodText(const QString &Text, float Time) override {
        if (status == 0)
            methods.push_back({Text, Time});
        return status;
    }
    float GetLastTime() const override {
        if (lastTime >= 0)
            return lastTime;
        return samples.empty() ? 0 : static_cast<float>(static_cast<double>(samples.size() - 1) / 300.0);
    }
    bool IsLastPointVisible() const override { return timeMin <= GetLastTime() && GetLastTime() <= timeMax; }
    void DrawNewData() override { ++newDataDrawn; }
    void Redraw() override { ++redrawn; }

    float UvAxisMin() const override { return uvMin; }
    float UvAxisMax() const override { return uvMax; }
    float CondAxisMin() const override { return condMin; }
    float CondAxisMax() const override { return condMax; }
    float TimeAxisMin() const override { return timeMin; }
    float TimeAxisMax() const override { return timeMax; }
    QString ChartTitle() const override { return title; }
    void setUvAxisMin(float value) override { uvMin = value; }
    void setUvAxisMax(float value) override { uvMax = value; }
    void setCondAxisMin(float value) override { condMin = value; }
    void setCondAxisMax(float value) override { condMax = value; }
    void setTimeAxisMin(float value) override { timeMin = value; }
    void setTimeAxisMax(float value) override { timeMax = value; }
    void setChartTitle(const QString &text) override { title = text; }

    bool LoadDataFile(const QString &FileName) override {
        atWork();
        const bool found = files != nullptr && files->contains(FileName);
        ClearData();
        lastTime = found ? files->at(FileName) : 0;
        return found;
    }
    bool SaveDataFile(const QString &FileName) override { return write(FileName, GetLastTime()); }
    bool SaveSelectedData(const QString &FileName) override { return write(FileName, timeMax - timeMin); }
    void ClearData() override {
        samples.clear();
        marks.clear();
        methods.clear();
        notes.clear();
        lastTime = -1;
    }
    void ClearDisplay() override { ++redrawn; }
    QString GetNotes() const override { return notes; }
    void SetNotes(const QString &Notes) override { notes = Notes; }
    QString GetMethodText() const override {
        QString all;
        for (const Method &method : methods)
            all += method.text;
        return all;
    }
    qint16 ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond, qint16 IncludeEvents,
                      qint16 IncludeNotes, qint16 IncludeMethod, qint16 MethodPosition, float TimeFrom, float TimeTo,
                      float SampleRate, qint32 PointCount) override {
        atWork();
        exported = QStringLiteral("%1 %2%3%4%5%6 %7 %8-%9 ")
                       .arg(FileName)
                       .arg(IncludeUV)
                       .arg(IncludeCond)
                       .arg(IncludeEvents)
                       .arg(IncludeNotes)
                       .arg(IncludeMethod)
                       .arg(MethodPosition)
                       .arg(TimeFrom)
                       .arg(TimeTo) +
                   QStringLiteral("%1/s %2").arg(SampleRate).arg(PointCount);
        return status;
    }
    void PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags) override {
        atWork();
        printed << QStringLiteral("%1%2%3 %4").arg(PrintChromatogram).arg(PrintMethod).arg(PrintNotes).arg(TraceFlags);
    }

    /// The labels of all marks, blank between them.
    QString labels() const {
        QStringList texts;
        for (const Mark &mark : marks)
            texts << mark.label;
        return texts.join(QLatin1Char(' '));
    }

    std::vector<Sample> samples;
    std::vector<Mark> marks;
    std::vector<Method> methods;
    qint16 status = 0;   ///< what the Add operations answer; refused when not 0
    float lastTime = -1; ///< what GetLastTime answers when not negative
    float uvMin = -0.2F, uvMax = 2, condMin = 0, condMax = 500, timeMin = 0, timeMax = 10;
    QString title;
    QString notes;
    FakeFiles *files = nullptr;        ///< none: nothing can be read or written
    bool diskFull = false;             ///< nothing can be written
    std::function<void()> whileAtWork; ///< runs in the middle of reading, writing and printing
    QString exported;                  ///< the arguments of the last export: "/run.txt 11111 0 0-10 1/s 600"
    QStringList printed;               ///< those of each copy: chromatogram, method, notes, traces: "111 7"
    int redrawn = 0;
    int newDataDrawn = 0;

private:
    void atWork() const {
        if (whileAtWork)
            whileAtWork();
    }
    bool write(const QString &FileName, float minutes) {
        atWork();
        if (files == nullptr || diskFull)
            return false;
        (*files)[FileName] = minutes;
        return true;
    }
};
