// SPDX-License-Identifier: MIT
#pragma once

#include "simulation/SimulatedDisk.h"

namespace ostrel {

/// What a file of the chart's holds, read by what is laid down of its format alone.
struct SavedFile {
    bool whole = false;
    bool isLog = false;
    QByteArray samples; ///< as they are in the file, 8 bytes each
    int marks = 0;
    int texts = 0;           ///< of methods
    QByteArray title, notes; ///< UTF-16
};

SavedFile readSavedFile(const QByteArray &file);

/// The marks and method texts of a running log, as far as it is whole.
int entriesIn(const QByteArray &log);

/// Puts `found` true at the number of every pair whose UV value is a number from 0 to its size, wherever in the bytes a
/// record of samples stands.
void findPairs(const QByteArray &bytes, std::vector<bool> &found);

/// The files that the operator has saved, and what each may hold.
class SavedFiles {
public:
    explicit SavedFiles(const SimulatedDisk &disk) : disk_(disk) {}

    /// One has been written. Until the program has told that it was saved, a power cut may bring the old one back.
    void wrote(const QString &name, bool saved);
    /// The names of those that hold something else, or are gone. Takes them as they are from now on.
    QStringList changed();
    qint64 bytes() const;

private:
    const SimulatedDisk &disk_;
    std::map<QString, std::vector<QByteArray>> possible_; // null for none
};

} // namespace ostrel
