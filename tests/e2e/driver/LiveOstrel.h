// SPDX-License-Identifier: MIT
#pragma once

#include "app/Widgets.h"
#include "driver/Child.h"
#include "driver/Profile.h"
#include "files/Descriptor.h"

#include <QVariant>

#include <memory>
#include <optional>

/// The recorder as shipped, in a process of its own, beside a simulated instrument, in a profile of its own and without
/// a display. COM 1 is the instrument's line.
class LiveOstrel {
public:
    /// The instrument plays `script`; the recorder has shown its window and taken the name offered for the system.
    explicit LiveOstrel(const QByteArray &script, const QStringList &simulatorOptions = {});
    /// A second copy in the same profile, with an instrument of its own on COM 2, which it is told of.
    LiveOstrel(const QByteArray &script, const LiveOstrel &first);

    /// A new recorder after the end of the one before, up to that window.
    void startRecorder(const QString &firstWindow = "frmMain");
    Child &recorder() { return *recorder_; }
    const Profile &profile() const { return *profile_; }
    QString file(const QString &name) const { return profile_->file(name); }

    /// What a function without captures answers in the recorder, between two events there.
    template <typename Function>
    auto ask(Function, const QStringList &given = {}) {
        const Question question = [](const QStringList &parts) { return QVariant::fromValue(Function{}(parts)); };
        return exchange(question, given).template value<std::invoke_result_t<Function, QStringList>>();
    }
    /// The same of a chart.
    template <typename Function>
    auto ask(int chart, Function) {
        const auto question = [](const QStringList &parts) { return Function{}(*find<Quillchart>(parts[0])); };
        return ask(question, {QString{"Chart(%1)"}.arg(chart)});
    }

    // As an operator, as soon as he can.
    /// A command, a control or a button.
    void press(const QString &name);
    /// Text in place of what the widget holds.
    void type(const QString &widget, const QString &text);
    /// Answers the file dialog with a name in the folder of this profile.
    void nameFile(const QString &name);
    /// The question for the system's name.
    void takeName();
    /// A new recorder, in which the only log that is offered is saved. With nothing left the dialog goes by itself.
    void recover(const QString &name);

    /// The names of the windows that are shown; of a message box what it says.
    QStringList windows();
    bool isUp(const QString &window) { return windows().join('\n').contains(window); }
    /// Waits until a window is up; throws when it does not come.
    void await(const QString &window);
    bool isLinked() {
        return ask([](auto) { return led(); });
    }
    bool isEnabled(const QString &command);
    int held(int chart) {
        return ask(chart, [](auto &shown) { return shown.SampleCount(); });
    }
    /// In the form of meant().
    static QStringList texts(const SampleStore &samples);
    QStringList samples(int chart) {
        return ask(chart, [](auto &shown) { return texts(shown.run().data().samples); });
    }
    QString marks(int chart) {
        return ask(chart, [](auto &shown) { return marksOf(shown); });
    }
    QString methodText(int chart) {
        return ask(chart, [](auto &shown) { return shown.GetMethodText(); });
    }

    /// What is in a folder of the recorder's.
    QStringList entries(const QString &folder) const;
    /// What the instrument meant so far: samples, and its news by the first word.
    QStringList meant() const;

private:
    using Question = QVariant (*)(const QStringList &given);

    static int serve(int line);
    QVariant exchange(Question question, const QStringList &given);
    void act(Question work, const QStringList &given = {});
    QString own(const char *name) const { return file(QString{"%1%2"}.arg(name).arg(port_)); }
    void startInstrument(const QByteArray &script, const QStringList &options = {});

    std::shared_ptr<Profile> profile_ = std::make_shared<Profile>();
    int port_ = 1;
    Descriptor line_; ///< to the recorder
    std::optional<Child> instrument_;
    std::optional<Child> recorder_;
};
