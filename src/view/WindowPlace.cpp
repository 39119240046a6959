// SPDX-License-Identifier: MIT
#include "view/WindowPlace.h"

#include "base/Steps.h"
#include "forms/ScreenPlace.h"

#include <QStringList>

#include <cstdlib>
#include <utility>

namespace ostrel {

namespace {

constexpr char section[] = "Window";
constexpr char maximisedWord[] = "maximised";
constexpr int numbers = 4;      // left, top, width, height
constexpr int farthest = 32767; // pixels; no desktop is larger
constexpr int step = 30;        // pixels from one copy's window to the next, where none was left

} // namespace

WindowPlace::WindowPlace(QWidget &window, SettingsStore &store, std::unique_ptr<Timer> timer)
    : window_(window), store_(store), timer_(std::move(timer)) {
    timer_->Tick = [this] { keep(); };
}

void WindowPlace::restore(int copy) {
    copy_ = copy;
    const QList<QRect> screens = ScreenPlace::screens();
    QString text;
    skippingErrors([&] { text = store_.GetSetting(QLatin1String(section), QString::number(copy_), {}); });
    if (!read(text, now_)) {
        now_.normal = ScreenPlace::centred(window_.size(), screens.value(0));
        now_.normal.translate((copy_ - 1) * step, (copy_ - 1) * step);
    }
    const QRect place = ScreenPlace::onScreens(now_.normal, screens);
    window_.move(place.topLeft());
    window_.resize(place.size()); // the panels may need more, and then have it
    if (now_.maximised)
        window_.setWindowState(window_.windowState() | Qt::WindowMaximized);
}

void WindowPlace::follow() {
    look();
    kept_ = now_; // what the program itself has made is not the operator's wish
    following_ = true;
}

void WindowPlace::changed() {
    if (following_)
        timer_->startAnew();
}

void WindowPlace::keep() {
    if (!timer_->Enabled())
        return;
    timer_->setEnabled(false);
    look();
    if (now_ == kept_)
        return;
    skippingErrors([this] {
        store_.SaveSetting(QLatin1String(section), QString::number(copy_), textOf(now_));
        kept_ = now_;
    });
}

/// Not at the change itself: some desktops maximise a window first and say so afterwards.
void WindowPlace::look() {
    const Qt::WindowStates state = window_.windowState();
    if ((state & (Qt::WindowMinimized | Qt::WindowFullScreen)) != 0)
        return;
    now_.maximised = state.testFlag(Qt::WindowMaximized);
    if (!now_.maximised)
        now_.normal = QRect(window_.pos(), window_.size());
}

bool WindowPlace::read(const QString &text, Place &place) {
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    int number[numbers] = {};
    for (int i = 0; i < numbers; ++i) {
        bool isNumber = false;
        number[i] = words.value(i).toInt(&isNumber);
        if (!isNumber || std::abs(number[i]) > farthest)
            return false;
    }
    const QRect normal(number[0], number[1], number[2], number[3]);
    if (normal.isEmpty())
        return false;
    place = {normal, words.value(numbers) == QLatin1String(maximisedWord)};
    return true;
}

QString WindowPlace::textOf(const Place &place) {
    const QRect &normal = place.normal;
    const QString text =
        QStringLiteral("%1 %2 %3 %4").arg(normal.x()).arg(normal.y()).arg(normal.width()).arg(normal.height());
    return place.maximised ? text + u' ' + QLatin1String(maximisedWord) : text;
}

} // namespace ostrel
