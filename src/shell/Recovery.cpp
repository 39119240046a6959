// SPDX-License-Identifier: MIT
#include "shell/Recovery.h"

#include "base/HelpContexts.h"
#include "base/Steps.h"
#include "files/Directories.h"
#include "files/FolderLock.h"

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr QLatin1String countKey("0");
constexpr QLatin1String logFolderItself(".");

QString unknownText(const QString &name) { return QStringLiteral("  Unknown Log File ") + name; }

/// The directories in the Log folder; the name of a log's directory has no point.
QStringList directoriesIn(const QString &logFolder) {
    QStringList names = Directories::folderNames(logFolder);
    names.removeIf([](const QString &name) { return name.contains(u'.'); });
    return names;
}

/// A running copy uses the directory.
bool isHeld(const QString &directory) { return Directories::exists(directory) && !FolderLock().tryTake(directory); }

} // namespace

Recovery::Recovery(Identity &identity, const std::vector<SettingRow> &LogInfoTable, const LogState &log,
                   Instances &instances, Uses uses)
    : identity_(identity), LogInfoTable_(LogInfoTable), log_(log), instances_(instances), uses_(std::move(uses)) {}

void Recovery::offer() {
    rows_.clear();
    leftOvers_ = directoriesIn(instances_.logFolder());
    leftOvers_.removeIf([this](const QString &name) { return isHeld(directoryOf(name)); });
    FillKnownLogs();
    FillUnknownLogs();
    if (rows_.empty()) {
        PurgeLogDirectories();
        return;
    }
    uses_.prompts.beep();
    uses_.showDialog(*this);
}

void Recovery::FillKnownLogs() {
    if (identity_.PrevInstance) {
        uses_.prompts.show({QStringLiteral("Found Previous Instance!")});
        return;
    }
    if (LogInfoTable_.size() < 2) // a single row is only the count
        return;
    for (const SettingRow &entry : LogInfoTable_) {
        if (entry.key == countKey)
            continue;
        // An entry may name any path: nothing outside the Log folder may be opened.
        const QString directory = instances_.LogDirFromEntry(entry.value);
        if (!instances_.staysInLogFolder(directory) || isHeld(directory))
            continue;
        identity_.LogDirectory = directory;
        if (uses_.Chart5.CheckLogFile(directory))
            rows_.push_back({Instances::EntryDisplayText(entry.value)});
    }
}

void Recovery::FillUnknownLogs() {
    UnknownLogDirs_.clear();
    // The Log folder itself first: files directly in it may be discarded too, so they are offered.
    for (const QString &name : QStringList{logFolderItself} + leftOvers_) {
        if (instances_.staysInLogFolder(directoryOf(name)) && uses_.Chart5.CheckLogFile(directoryOf(name)) &&
            !isKnown(name))
            UnknownLogDirs_ << name;
    }
    for (const QString &name : std::as_const(UnknownLogDirs_))
        rows_.push_back({unknownText(name)});
}

/// An entry of the store names this directory. The Log folder itself never counts as known.
bool Recovery::isKnown(const QString &name) const {
    if (LogInfoTable_.empty())
        throw RunTimeError(ErrorNumber::TypeMismatch);
    return name != logFolderItself &&
           std::any_of(LogInfoTable_.begin(), LogInfoTable_.end(),
                       [&](const SettingRow &entry) { return entry.key != countKey && entry.value.contains(name); });
}

QString Recovery::directoryOf(const QString &name) const { return instances_.logFolder() + u'/' + name; }

bool Recovery::cmdRecoverButtonEnabled() const {
    return std::any_of(rows_.begin(), rows_.end(), [](const RecoveryRow &row) { return row.checked; });
}

bool Recovery::cmdRecoverButton_Click() {
    for (RecoveryRow &row : rows_) {
        if (!row.checked)
            continue;
        // The text alone identifies the log: runs with the same name, date and time are saved one after the other.
        for (const SettingRow &entry : LogInfoTable_) {
            if (Instances::EntryDisplayText(entry.value) == row.text)
                recover(row, instances_.LogDirFromEntry(entry.value), entry.value.section(u'|', 0, 0));
        }
        for (const QString &name : std::as_const(UnknownLogDirs_)) {
            if (unknownText(name) == row.text)
                recover(row, directoryOf(name), name);
        }
    }
    RebuildLogList();
    return rows_.empty() && cmdDoneButton_Click();
}

void Recovery::recover(RecoveryRow &row, const QString &LogDirectory, const QString &SystemName) {
    if (!instances_.staysInLogFolder(LogDirectory))
        return;
    identity_.LogDirectory = LogDirectory;
    identity_.SystemName = SystemName;
    tellUnread(LogDirectory);
    uses_.commands.run(QStringLiteral("mnuSaveLog"));
    if (log_.LogSaved)
        row.itemData = RecoveryRow::recovered;
}

/// Reports unreadable files, before the operator saves the rest.
void Recovery::tellUnread(const QString &directory) {
    const QStringList files = uses_.Chart5.UnreadLogFiles(directory);
    if (files.isEmpty())
        return;
    unread_ << directory;
    uses_.prompts.show(
        {.text = QStringLiteral("A part of this log cannot be read at this moment:\n\n%1\n\nWhat can be read "
                                "can be saved. The log stays where it is and is offered again at the next start.")
                     .arg(files.join(u'\n')),
         .icon = BoxIcon::Exclamation,
         .HelpContextID = HelpContext::Recovery});
}

/// Reports the logs that the operator gave up but that will be offered again.
void Recovery::tellUnmoved() {
    if (unmoved_.isEmpty())
        return;
    uses_.prompts.show(
        {.text = QStringLiteral("These logs could not be moved to the wastebasket:\n\n%1\n\nThey stay where they "
                                "are and are offered again at the next start.")
                     .arg(unmoved_.join(u'\n')),
         .icon = BoxIcon::Exclamation,
         .HelpContextID = HelpContext::Recovery});
}

/// Removes the recovered rows and unchecks the others.
void Recovery::RebuildLogList() {
    std::erase_if(rows_, [](const RecoveryRow &row) { return row.itemData != RecoveryRow::notRecovered; });
    for (RecoveryRow &row : rows_)
        row.checked = false;
}

bool Recovery::cmdDoneButton_Click() {
    if (!rows_.empty() &&
        uses_.prompts.show({QStringLiteral("Not all Log files have been recovered!  Log files that have not been "
                                           "recovered will be permanently lost.\r\n(Select 'Cancel' to recover "
                                           "additional Log files.)"),
                            BoxIcon::Exclamation, QStringLiteral("Ostrel MS - Warning!"), BoxButtons::OkCancel, 2,
                            HelpContext::Recovery}) != BoxAnswer::Ok)
        return false;
    PurgeLogDirectories();
    tellUnmoved();
    return true;
}

/// Discards the directories before their entries: so a power cut in between leaves entries without a log, which the
/// next start deletes, but no log without its entry.
void Recovery::PurgeLogDirectories() {
    skippingErrors([this] {
        const QStringList standing = directoriesIn(instances_.logFolder());
        if (standing.isEmpty())
            purge(instances_.logFolder());
        QStringList kept;
        for (const QString &name : standing) {
            // New directories belong to copies that were started while the operator was choosing.
            if (!leftOvers_.contains(name) || !purge(directoryOf(name)))
                kept << directoryOf(name);
        }
        uses_.store.exclusively([&] { purgeEntries(kept); });
    });
}

/// Deletes the entries found at this copy's start, except those of kept logs. Newer entries belong to other copies and
/// stay. While any entry stays, the count must be at least its number, so that no copy gets that number again.
void Recovery::purgeEntries(const QStringList &kept) {
    if (LogInfoTable_.empty())
        return;
    int greatest = 0;
    for (const SettingRow &entry : uses_.store.GetAllSettings(logInfoSection)) {
        if (entry.key == countKey)
            continue;
        if (isLeftOver(entry) && !kept.contains(instances_.LogDirFromEntry(entry.value)))
            uses_.store.DeleteSetting(logInfoSection, entry.key);
        else
            greatest = std::max(greatest, entry.key.toInt());
    }
    if (greatest == 0)
        uses_.store.DeleteSection(logInfoSection);
    else
        instances_.countAtLeast(greatest);
}

bool Recovery::isLeftOver(const SettingRow &entry) const {
    return std::any_of(LogInfoTable_.begin(), LogInfoTable_.end(),
                       [&](const SettingRow &found) { return found.key == entry.key && found.value == entry.value; });
}

/// Discards a log. False when its directory stays: it cannot be read or moved now, is a link, or is locked.
bool Recovery::purge(const QString &directory) {
    FolderLock lock;
    if (unread_.contains(directory) || Directories::isLink(directory) || !lock.tryTake(directory))
        return false;
    if (!uses_.Chart5.DiscardLog(directory)) {
        unmoved_ << directory;
        return false;
    }
    skippingErrors([&] { Directories::remove(directory); });
    return true;
}

} // namespace ostrel
