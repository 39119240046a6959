// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace ostrel {

/// Where a run comes from. Every part may be unknown: empty, 0 or invalid. Times in a run are minutes from its first
/// sample; dates have the offset from UTC of the place and day of the recording.
struct Provenance {
    /// An uninterrupted part of a recording: the samples from minute `from` to minute `to`. While it goes on, and in a
    /// running log, `ended` is not known.
    struct Stretch {
        double from = 0;
        double to = 0;
        QDateTime begun;
        QDateTime ended;

        bool operator==(const Stretch &) const = default;
    };
    /// The computer's clock was set during the recording: it jumped forwards, or back, by so many seconds.
    struct ClockStep {
        double minutes = 0;
        double seconds = 0;

        bool operator==(const ClockStep &) const = default;
    };
    /// The run that this one is a stretch of.
    struct Parent {
        QString identity;
        double from = 0; ///< minutes in the parent
        double to = 0;

        bool operator==(const Parent &) const = default;
    };
    /// A file was written.
    struct Save {
        QDateTime saved;
        QString program;
        QString change; ///< in words: what is not as in the save before

        bool operator==(const Save &) const = default;
    };

    QString identity;    ///< random; stays when title or notes are corrected
    QString system;      ///< as the operator named it
    QString device;      ///< the instrument's link
    QString program;     ///< name and version that recorded
    double interval = 0; ///< seconds from sample to sample
    std::vector<Stretch> stretches;
    std::vector<ClockStep> clockSteps;
    std::optional<Parent> parent;
    std::vector<Save> history; ///< oldest first

    bool operator==(const Provenance &) const = default;

    /// Nothing is known, as of files that tell nothing.
    bool empty() const { return *this == Provenance(); }
    QDateTime begun() const { return stretches.empty() ? QDateTime() : stretches.front().begun; }
    QDateTime ended() const { return stretches.empty() ? QDateTime() : stretches.back().ended; }
    /// The computer's date and time at a minute of the run; invalid where nothing was recorded.
    QDateTime dateAt(double minutes) const;

    /// Of the part of the run between these minutes, which begin at 0 there: a run of its own, whose parent is this
    /// one.
    Provenance part(double from, double to) const;
    /// Puts that of another run, which begins at this minute, behind this one; the first of them gives the identity.
    void join(const Provenance &later, double minute);

    static QString newIdentity();
};

} // namespace ostrel
