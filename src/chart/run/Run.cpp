// SPDX-License-Identifier: MIT
#include "chart/run/Run.h"

#include "chart/run/Succeeds.h"

#include <QStringList>

#include <algorithm>
#include <new>
#include <utility>

namespace ostrel {

namespace {

constexpr qint16 outOfMemory = 1;

/// Runs a step that fails only when there is no memory left, and returns its status.
template <typename Step>
qint16 statusOf(Step step) {
    const bool good = succeeds([&] {
        step();
        return true;
    });
    return good ? qint16{0} : outOfMemory;
}

} // namespace

// Does not use statusOf, whose cost is noticeable here: every sample comes through this function.
qint16 Run::AddSample(float UV, float Conductivity) {
    try {
        data_.samples.append({UV, Conductivity});
    } catch (const std::bad_alloc &) {
        return outOfMemory;
    }
    return 0;
}

qint16 Run::AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time) {
    return statusOf([&] { data_.marks.push_back({Label, Color, Height, Time}); });
}

qint16 Run::AddMethodText(const QString &Text, float Time) {
    return statusOf([&] { data_.methodTexts.push_back({Text, Time}); });
}

bool Run::IsLastPointVisible() const {
    const float last = GetLastTime();
    return axes_.timeMin <= last && last <= axes_.timeMax;
}

void Run::DrawNewData() {
    if (picture_ != nullptr)
        picture_->drawNewData();
}

void Run::Redraw() {
    if (picture_ != nullptr)
        picture_->redraw();
}

QString Run::GetMethodText() const {
    std::vector<MethodText> texts = data_.methodTexts;
    std::stable_sort(texts.begin(), texts.end(),
                     [](const MethodText &a, const MethodText &b) { return a.time < b.time; });
    QStringList all;
    for (const MethodText &text : texts)
        all << text.text;
    return all.join(QStringLiteral("\r\n"));
}

void Run::clear() {
    ChartData empty;
    empty.title = data_.title;
    data_ = std::move(empty);
    ++number_;
    if (picture_ != nullptr)
        picture_->runCleared();
}

void Run::replace(ChartData data, const AxisValues &axes) {
    data_ = std::move(data);
    axes_ = axes;
    ++number_;
    if (picture_ != nullptr)
        picture_->runReplaced();
    Redraw();
}

} // namespace ostrel
