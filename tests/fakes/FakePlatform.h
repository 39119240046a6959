// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/Clock.h"
#include "platform/HelpViewer.h"
#include "platform/Notices.h"
#include "platform/PortDirectory.h"
#include "platform/Process.h"
#include "platform/Prompts.h"
#include "platform/SerialControl.h"
#include "platform/SettingsStore.h"
#include "platform/SleepGuard.h"
#include "platform/Timer.h"

#include <QStringList>

#include <algorithm>
#include <map>
#include <utility>

using namespace ostrel;

/// A desktop of the test's own: time passes only by advance(), boxes give the prepared answers.

using Milliseconds = std::chrono::milliseconds;

class FakeTimer;

/// The clock, and what drives the timers made on it.
class FakeClock : public Clock {
public:
    QDateTime now() const override { return QDateTime({2026, 3, 14}, {9, 26, 53}).addMSecs((elapsed + shift).count()); }
    Milliseconds uptime() const override { return elapsed; }
    /// Fires what falls due, in the order of time.
    void advance(Milliseconds time);

    Milliseconds elapsed{0};
    Milliseconds shift{0}; ///< of the wall clock, which the operator has set
    std::vector<FakeTimer *> timers;
};

class FakeTimer : public Timer {
public:
    FakeTimer(FakeClock &clock, int interval, bool on = false) : clock_(clock), interval_(interval) {
        clock_.timers.push_back(this);
        FakeTimer::setEnabled(on);
    }
    ~FakeTimer() override { std::erase(clock_.timers, this); }

    bool Enabled() const override { return due != never; }
    void setEnabled(bool on) override {
        if (on == Enabled())
            return;
        due = on ? clock_.elapsed + interval_ : never;
        inTick_ = false;
    }
    int Interval() const override { return int(interval_.count()); }
    /// Runs the tick now, as code that calls the handler directly would.
    void tick() {
        if (Tick)
            Tick();
    }
    /// As a timer of the desktop's it does not fire within its own tick, unless it was switched off and on there.
    void fire() {
        inTick_ = true;
        tick();
        inTick_ = false;
    }
    Milliseconds next() const { return inTick_ ? never : due; }

    static constexpr Milliseconds never = Milliseconds::max();
    Milliseconds due = never;

private:
    FakeClock &clock_;
    Milliseconds interval_;
    bool inTick_ = false;
};

inline void FakeClock::advance(Milliseconds time) {
    const Milliseconds end = elapsed + time;
    const auto first = [this] { return std::ranges::min_element(timers, {}, &FakeTimer::next); };
    for (auto next = first(); next != timers.end() && (*next)->next() <= end; next = first()) {
        elapsed = std::max(elapsed, (*next)->due); // a slow disk may have held the program up
        (*next)->due = elapsed + Milliseconds((*next)->Interval());
        (*next)->fire();
    }
    elapsed = std::max(elapsed, end);
}

/// A port whose other end is the test. Ports in `failing` raise their number when opened.
class FakeSerialControl : public SerialControl {
public:
    qint16 CommPort() const override { return port_; }
    void setCommPort(qint16 number) override { port_ = number; }
    bool PortOpen() const override { return open_; }
    void setPortOpen(bool open) override {
        if (open && failing.contains(port_))
            throw RunTimeError(failing.at(port_));
        open_ = open;
    }
    void setInBufferSize(int bytes) override { inBufferSize = bytes; }
    void setRThreshold(int bytes) override { threshold_ = bytes; }
    int InBufferCount() const override { return pretendedCount >= 0 ? pretendedCount : int(buffer_.size()); }
    QByteArray Input() override { return std::exchange(buffer_, {}); }
    int CommEvent() const override { return event_; }

    /// Bytes come in; the receive event follows when enough wait.
    void arrive(const QByteArray &bytes) {
        buffer_ += bytes;
        if (buffer_.size() >= threshold_)
            raise(ErrorNumber::ReceiveEvent);
    }
    void raise(int event) {
        event_ = event;
        if (OnComm)
            OnComm();
    }

    const QByteArray &waiting() const { return buffer_; }

    std::map<int, int> failing; ///< port number to error number
    int inBufferSize = 0;
    int pretendedCount = -1; ///< what InBufferCount answers when not negative

private:
    qint16 port_ = 1;
    bool open_ = false;
    int threshold_ = 1;
    int event_ = 0;
    QByteArray buffer_;
};

/// Ports that nothing is known of unless it is laid down.
class FakePortDirectory : public PortDirectory {
public:
    PortFacts factsOf(int number, int refusal) override {
        refusals[number] = refusal;
        return facts[number];
    }

    std::map<int, PortFacts> facts;
    std::map<int, int> refusals; ///< that it was asked with
};

class FakeSettingsStore : public SettingsStore {
public:
    QString GetSetting(const QString &section, const QString &key, const QString &fallback) const override {
        failIfBroken();
        const auto found = rows.find({section, key});
        return found == rows.end() ? fallback : found->second;
    }
    void SaveSetting(const QString &section, const QString &key, const QString &value) override {
        failIfBroken();
        rows[{section, key}] = value;
        written << key;
    }
    void DeleteSetting(const QString &section, const QString &key) override {
        failIfBroken();
        rows.erase({section, key});
    }
    void DeleteSection(const QString &section) override {
        failIfBroken();
        std::erase_if(rows, [&](const auto &row) { return row.first.first == section; });
    }
    std::vector<SettingRow> GetAllSettings(const QString &section) const override {
        failIfBroken();
        std::vector<SettingRow> found;
        for (const auto &[place, value] : rows) {
            if (place.first == section)
                found.push_back({place.second, value});
        }
        return found;
    }

    void exclusively(const std::function<void()> &body) override {
        const auto others = std::exchange(otherCopies, {});
        body();
        otherCopies = others;
    }

    std::map<std::pair<QString, QString>, QString> rows;
    std::function<void()> otherCopies; ///< what they do between any two calls that are no step of one
    QStringList written;               ///< keys in the order of their writing
    int broken = 0;                    ///< the error number that every operation raises when not 0

private:
    void failIfBroken() const {
        if (broken != 0)
            throw RunTimeError(broken);
        if (const auto act = otherCopies)
            act();
    }
};

class FakePrompts : public Prompts {
public:
    BoxAnswer show(const MessageBox &box) override {
        shown.push_back(box);
        if (whileShown)
            whileShown(box);
        if (!answers.empty())
            return answers.takeFirst();
        return box.buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    }
    void beep() override { ++beeps; }
    void setMousePointer(MousePointer to) override {
        pointer = to;
        ++pointerChanges;
    }

    std::vector<MessageBox> shown;
    QList<BoxAnswer> answers; ///< laid ready for the boxes to come
    std::function<void(const MessageBox &)> whileShown;
    int beeps = 0;
    MousePointer pointer = MousePointer::Default;
    int pointerChanges = 0;
};

class FakeProcess : public Process {
public:
    void end() override {
        ended = true;
        if (atEnd)
            atEnd();
    }

    bool ended = false;
    std::function<void()> atEnd; ///< looks at what is left
};

class FakeSleepGuard : public SleepGuard {
public:
    void setHeld(bool on) override { held = on; }

    bool held = false;
};

/// Keeps what is shown at this moment.
class FakeNotices : public Notices {
public:
    void show(News news, const QString &title, const QString &text) override {
        ++shown;
        standing[news] = title + '|' + text;
    }
    void withdraw(News news) override { standing.erase(news); }

    QString at(News news) const { return standing.contains(news) ? standing.at(news) : QString(); }

    std::map<News, QString> standing;
    int shown = 0;
};

class FakeHelpViewer : public HelpViewer {
public:
    void showTopic(int HelpContextID) override { shown.push_back(HelpContextID); }

    std::vector<int> shown;
};
