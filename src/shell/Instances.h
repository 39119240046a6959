// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "files/FolderLock.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "platform/SettingsStore.h"

#include <functional>

namespace ostrel {

/// The section of the settings store with an entry `name|date|time|tag` for each running copy under its number, and the
/// count of copies under "0".
inline constexpr char logInfoSection[] = "LogInfo";

/// Registers the running copies: each has a number, an entry in the store, and a directory for its running log in the
/// Log folder. A clean exit removes them; if they are still there at a start, the copy has crashed.
class Instances {
public:
    /// `appPath` without a separator at its end.
    Instances(Identity &identity, SettingsStore &store, Prompts &prompts, const Clock &clock, const QString &appPath);

    /// Gives this copy its tag, its dates, the name "Default" and its log directory. A failure is a RunTimeError.
    void prepareLogDirectory();
    /// This copy's own directory in the Log folder, with a separator at its end. The first call makes and locks it for
    /// the life of the copy. New data goes there while LogDirectory still names a left-over log. A failure is a
    /// RunTimeError.
    QString ownDirectory();

    /// AddInstance, UpdateRegistry and RemoveRegistryEntry report a failure in a box and undo nothing. Takes the number
    /// after the count, at least 1, even when another copy has it. Copies that start at the same moment get different
    /// numbers.
    void AddInstance();
    /// Raises the count to that of an entry that stays, so that the next number is a new one.
    void countAtLeast(int number);
    /// Does nothing without a number, since the key 0 is the count.
    void UpdateRegistry();
    void RemoveRegistryEntry();

    /// Registers a copy that ends before it was registered, without any message: makes its log directory and takes a
    /// number without an entry, so that none is overwritten. A failure is a RunTimeError.
    void registerUnasked();

    const QString &logFolder() const { return logFolder_; }
    /// The folder for discarded logs.
    const QString &wastebasket() const { return wastebasket_; }
    /// The directory that an entry names; the Log folder itself when it names none. An entry may contain anything:
    /// check the path with staysInLogFolder().
    QString LogDirFromEntry(const QString &value) const;
    /// The path is the Log folder itself or a name directly in it, and no symbolic link.
    bool staysInLogFolder(const QString &directory) const;
    /// An entry as a line of the list: name, date and time in columns. A text that is wider than its column is cut off.
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
