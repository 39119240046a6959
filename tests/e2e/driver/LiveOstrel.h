// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Probe.h"
#include "driver/Profile.h"
#include "driver/RunningProgram.h"

#include <memory>
#include <optional>
#include <ostream>
#include <vector>

/// The recorder as shipped beside a simulated instrument, in a profile of its own and without a display. COM 1 is the
/// instrument's line.
class LiveOstrel {
public:
    struct Sample {
        float uv;
        float cond;
        bool operator==(const Sample &) const = default;
        friend std::ostream &operator<<(std::ostream &out, const Sample &sample) {
            return out << sample.uv << " AU, " << sample.cond << " mS/cm";
        }
    };

    /// The instrument plays `script`; the recorder has shown its window and taken the name offered for the system.
    explicit LiveOstrel(const QByteArray &script, const QStringList &simulatorOptions = {});
    /// A second copy in the same profile, with an instrument of its own on COM 2, which it is told of.
    LiveOstrel(const QByteArray &script, const LiveOstrel &first);

    /// A new recorder after the end of the one before, up to that window. With a `user` other than 0 it runs as that
    /// one, to whom the profile is given.
    void startRecorder(const QString &firstWindow = "frmMain", unsigned user = 0);
    /// The instrument's line is gone for good, so that none which comes later is taken for it.
    void stopInstrument();
    /// Answers the question for the system's name.
    void takeName();
    /// Waits until a window is up; throws when it does not come.
    void await(const QString &window);

    Probe &operator*() { return *probe_; }
    Probe *operator->() { return &*probe_; }
    RunningProgram &recorder() { return *recorder_; }

    bool isUp(const QString &window);
    /// What the message box says, a box beneath another left out; empty without one.
    QString boxText();
    bool isLinked() { return probe_->get("ShapeReciveLed", "FillColor") == "#00ff00"; }
    bool isEnabled(const QString &object) { return probe_->get(object, "enabled").toBool(); }

    /// Gives a command and answers its file dialog with a name in the folder of this profile.
    void chooseFile(const QString &command, const QString &name);
    /// Answers the file dialog that is about to come up.
    void nameFile(const QString &name);
    bool fileExists(const QString &name) const;
    QString file(const QString &name) const { return profile_->file(name); }

    /// The texts of a chart's marks in the order of their times, between blanks.
    QString marks(int chart);
    std::vector<Sample> samples(int chart);
    QString methodText(int chart);
    /// What the instrument meant so far: the rows of its truth, split at the tabs.
    std::vector<QStringList> truth() const;

private:
    QString own(const char *name) const { return profile_->file(QString{"%1%2"}.arg(name).arg(port_)); }
    void startInstrument(const QByteArray &script, const QStringList &options = {});

    std::shared_ptr<Profile> profile_;
    int port_;
    std::optional<RunningProgram> instrument_;
    std::optional<RunningProgram> recorder_;
    std::optional<Probe> probe_;
};
