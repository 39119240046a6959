// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "files/FolderLock.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "platform/SettingsStore.h"

#include <functional>

namespace ostrel {

/// The section of the settings store with one entry for each running copy, `name|date|time|tag` under the copy's
/// number, and their count under "0".
inline constexpr char logInfoSection[] = "LogInfo";

/// The bookkeeping of the running copies: each has a number, an entry in the store, and a directory for its running log
/// in the Log folder. What a clean exit would have removed is what a crash left behind.
class Instances {
public:
    /// `appPath` without a separator at its end.
    Instances(Identity &identity, SettingsStore &store, Prompts &prompts, const Clock &clock, const QString &appPath);

    /// Gives this copy its tag, its dates, the name "Default" and its log directory. A failure is a RunTimeError.
    void prepareLogDirectory();
    /// The directory in the Log folder that is this copy's alone, with a separator at its end; made and held at the
    /// first call, for the life of the copy. Here goes what comes in while LogDirectory still names what a crash left
    /// behind. A failure is a RunTimeError.
    QString ownDirectory();

    /// These tell the operator of a failure themselves, and leave what was written.
    /// Takes the number behind the count, also when another copy has it, but none below 1. Copies that start at the
    /// same instant get different ones: counting is one step.
    void AddInstance();
    /// Raises the count to that of an entry that stays, so that the next number is a new one.
    void countAtLeast(int number);
    /// Without a number there is no entry: its key would be that of the count.
    void UpdateRegistry();
    void RemoveRegistryEntry();

    /// All of the above for a copy that ends before it came to it, with nobody there to be told: an own log directory,
    /// and a number that no entry has, so that none is overwritten. A failure is a RunTimeError.
    void registerUnasked();

    const QString &logFolder() const { return logFolder_; }
    /// Where thrown away logs go.
    const QString &wastebasket() const { return wastebasket_; }
    /// The directory that an entry names; the Log folder itself where the entry names none. An entry may hold anything:
    /// staysInLogFolder() tells whether to go there.
    QString LogDirFromEntry(const QString &value) const;
    /// The Log folder itself, or a name directly in it that is no link.
    bool staysInLogFolder(const QString &directory) const;
    /// An entry as a line of the list: name, date and time in columns. What is wider than its column is cut.
    static QString EntryDisplayText(const QString &value);

private:
    void makeLogFolder();
    QString makeOwnDirectory();
    bool makeFolder(const QString &tag);
    Int16 countedBy(int step) const;
    Int16 nextNumber() const;
    void takeNumber(Int16 number);
    bool hasEntry(int number) const;
    void writeEntry();
    void tellingFailure(const char *routine, const std::function<void()> &body);

    Identity &identity_;
    SettingsStore &store_;
    Prompts &prompts_;
    const Clock &clock_;
    QString logFolder_;
    QString wastebasket_;
    QString ownTag_; ///< empty before the own directory is made
    FolderLock own_;
};

} // namespace ostrel
