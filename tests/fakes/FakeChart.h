// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartContract.h"

#include <QStringList>

#include <vector>

/// A chart without a screen: it keeps what it was given and counts its drawings.
class FakeChart : public ViewedChart {
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
    int redrawn = 0;
    int newDataDrawn = 0;
};
