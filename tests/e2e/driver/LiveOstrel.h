// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Probe.h"
#include "driver/Profile.h"
#include "driver/RunningProgram.h"

#include <optional>
#include <ostream>
#include <vector>

/// The recorder as shipped beside a simulated instrument, in a profile of its own and without a display. COM 1 is the
/// instrument's line, and there is no other port.
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

    /// The instrument plays `script`; the recorder has shown its window.
    explicit LiveOstrel(const QByteArray &script);

    Probe &operator*() { return *probe_; }
    Probe *operator->() { return &*probe_; }
    RunningProgram &recorder() { return *recorder_; }

    bool isUp(const QString &window);
    bool isLinked() { return probe_->colour("ShapeReciveLed") == "#00ff00"; }
    bool isEnabled(const QString &object) { return probe_->get(object, "enabled").toBool(); }

    /// Gives a command and answers its file dialog with a name in the folder of this profile.
    void chooseFile(const QString &command, const QString &name);
    bool fileExists(const QString &name) const;

    /// The texts of a chart's marks in the order of their times, between blanks.
    QString marks(int chart);
    std::vector<Sample> samples(int chart);
    QString methodText(int chart);
    /// What the instrument meant so far: the rows of its truth, split at the tabs.
    std::vector<QStringList> truth() const;

private:
    void startInstrument(const QByteArray &script);
    void startRecorder();

    Profile profile_;
    std::optional<RunningProgram> instrument_;
    std::optional<RunningProgram> recorder_;
    std::optional<Probe> probe_;
};
