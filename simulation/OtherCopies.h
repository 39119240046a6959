// SPDX-License-Identifier: MIT
#pragma once

#include "app/ProgramFixture.h"
#include "desktop/QtSettingsStore.h"
#include "files/FolderLock.h"
#include "simulation/Chance.h"
#include "simulation/Instrument.h"
#include "simulation/SimulatedDisk.h"

namespace ostrel {

/// Other copies of the program on the same computer, each with its directory, its entry and its log.
class OtherCopies {
public:
    OtherCopies(const ProgramFixture &on, SimulatedDisk &disk, QtSettingsStore &settings, int most)
        : on_(on), disk_(disk), settings_(settings), most_(most) {}

    bool none() const { return copies_.empty(); }
    /// One starts, ends or crashes; answers what, in words. `lost` gets what the log of a crashed one held.
    const char *change(Chance &chance, Instrument &instrument, QByteArray &lost);
    /// They all end with the computer; answers what their logs held.
    QByteArrayList lose();
    /// Each still has its log as it wrote it.
    bool areIntact() const;
    /// This text names the log of one of them.
    bool isNamedIn(const QString &text) const;

private:
    struct Copy {
        QString directory; ///< below the folder
        QString key;       ///< of its entry
        FolderLock lock{};
        QByteArray log{}; ///< empty when it could not be written
    };

    void start(qint64 &pairs);
    void end(const Copy &copy);
    static QString fileOf(const Copy &copy) { return copy.directory + QStringLiteral("/Log00001.dat"); }

    const ProgramFixture &on_;
    SimulatedDisk &disk_;
    QtSettingsStore &settings_;
    const int most_;
    int begun_ = 0;
    std::vector<std::unique_ptr<Copy>> copies_;
};

} // namespace ostrel
