// SPDX-License-Identifier: MIT
#include "shell/Instances.h"

#include "base/AppFolders.h"
#include "base/Numbers.h"
#include "base/Steps.h"
#include "files/Directories.h"

#include <algorithm>

namespace ostrel {

namespace {

constexpr char countKey[] = "0";
constexpr char noEntry[] = "0";
constexpr int firstNumber = 1;
constexpr QChar bar = u'|';
constexpr int tagField = 3; // bars before the tag

// The columns of date and time in the list.
constexpr int dateColumn = 32;
constexpr int timeColumn = dateColumn + longestDate;

// All tags have the same length, so that none is part of another: a directory counts as known when its name occurs
// anywhere in an entry. 13 digits hold the milliseconds since 1970 until the year 2286.
constexpr int tagDigits = 13;

/// Pads or cuts a text to a column's width, with at least one blank before the next column.
void padTo(int width, QString &text) { text = text.left(width - 1).leftJustified(width); }

} // namespace

Instances::Instances(Identity &identity, SettingsStore &store, Prompts &prompts, const Clock &clock,
                     const QString &appPath)
    : identity_(identity), store_(store), prompts_(prompts), clock_(clock), logFolder_(AppFolders::logs(appPath)),
      wastebasket_(AppFolders::wastebasket(appPath)) {}

void Instances::prepareLogDirectory() {
    const QDateTime now = clock_.now();
    identity_.StartDate = dateText(now.date());
    identity_.StartTime = timeText(now.time());
    identity_.SystemName = Identity().SystemName;
    const QString own = ownDirectory();
    skippingErrors([this] { Directories::hide(wastebasket_); });
    // Both are set together: while there is no tag, LogDirectory may name a left-over log.
    identity_.InstanceTag = ownTag_;
    identity_.LogDirectory = own;
}

QString Instances::ownDirectory() {
    if (ownTag_.isEmpty())
        ownTag_ = makeOwnDirectory();
    return logFolder_ + u'/' + ownTag_ + u'/';
}

void Instances::makeLogFolder() {
    // Another copy that starts at this moment may have made it.
    if (!Directories::make(logFolder_) && !Directories::exists(logFolder_))
        throw RunTimeError(ErrorNumber::FileAlreadyExists, logFolder_ + QStringLiteral(": not a folder"));
    Directories::hide(logFolder_);
}

/// Returns its tag.
QString Instances::makeOwnDirectory() {
    qint64 number = std::max<qint64>(clock_.now().toMSecsSinceEpoch(), 0);
    while (true) {
        QString tag = QString::number(number++).rightJustified(tagDigits, u'0');
        // A copy that removes left-overs at this moment may remove the empty directory again.
        if (makeFolder(tag) && own_.tryTake(logFolder_ + u'/' + tag))
            return tag;
    }
}

/// False when it exists already, or when a copy that removes left-overs has removed the Log folder.
bool Instances::makeFolder(const QString &tag) {
    if (!Directories::exists(logFolder_))
        makeLogFolder();
    bool made = false;
    trapped([&] { made = Directories::make(logFolder_ + u'/' + tag); },
            [this](const RunTimeError &error) {
                if (Directories::exists(logFolder_))
                    throw error;
            });
    return made;
}

Int16 Instances::countedBy(int step) const {
    return rounded16(leadingNumber(store_.GetSetting(logInfoSection, countKey, QStringLiteral("0"))) + step);
}

Int16 Instances::nextNumber() const { return std::max<int>(countedBy(+1), firstNumber); }

void Instances::AddInstance() {
    tellingFailure("AddInstance", [this] {
        store_.exclusively([this] { takeNumber(nextNumber()); });
        if (hasEntry(identity_.InstanceNumber))
            prompts_.show({QStringLiteral("Existing Registry entry will be overwritten, improved functionality to come "
                                          "later!")});
    });
}

void Instances::takeNumber(Int16 number) {
    store_.SaveSetting(logInfoSection, countKey, QString::number(number));
    identity_.InstanceNumber = number;
}

void Instances::countAtLeast(int number) {
    const double count = leadingNumber(store_.GetSetting(logInfoSection, countKey, QStringLiteral("0")));
    if (count < number)
        store_.SaveSetting(logInfoSection, countKey, QString::number(number));
}

bool Instances::hasEntry(int number) const {
    return store_.GetSetting(logInfoSection, QString::number(number), noEntry) != QLatin1String(noEntry);
}

void Instances::UpdateRegistry() {
    tellingFailure("UpdateRegistry", [this] {
        if (identity_.InstanceNumber >= firstNumber)
            writeEntry();
    });
}

void Instances::writeEntry() {
    // With a bar in the name the next start would read a wrong tag and not find the log.
    const QString name = QString(identity_.SystemName).replace(bar, u' ');
    store_.SaveSetting(logInfoSection, QString::number(identity_.InstanceNumber),
                       QStringList{name, identity_.StartDate, identity_.StartTime, identity_.InstanceTag}.join(bar));
}

void Instances::registerUnasked() {
    prepareLogDirectory();
    store_.exclusively([this] {
        Int16 number = nextNumber();
        while (hasEntry(number))
            ++number;
        takeNumber(number);
        writeEntry();
    });
}

void Instances::RemoveRegistryEntry() {
    tellingFailure("RemoveRegistryEntry", [this] {
        store_.exclusively([this] {
            store_.DeleteSetting(logInfoSection, QString::number(identity_.InstanceNumber));
            store_.SaveSetting(logInfoSection, countKey, QString::number(countedBy(-1)));
        });
    });
}

void Instances::tellingFailure(const char *routine, const std::function<void()> &body) {
    trapped(body, [&](const RunTimeError &error) {
        prompts_.show({QStringLiteral("Error in ") + QLatin1String(routine) + QStringLiteral("!  ") +
                       QString::number(error.number()) + error.description()});
    });
}

QString Instances::LogDirFromEntry(const QString &value) const {
    QString tag;
    int bars = 0;
    for (const QChar character : value) {
        if (bars == tagField)
            tag += character;
        if (character == bar)
            ++bars;
    }
    return logFolder_ + u'/' + tag;
}

bool Instances::staysInLogFolder(const QString &directory) const {
    const QString name = directory.mid(logFolder_.size() + 1);
    // For the operating system a name ends at a null character.
    return directory.startsWith(logFolder_ + u'/') && name != QStringLiteral("..") && !name.contains(u'/') &&
           !name.contains(QChar::Null) && !Directories::isLink(logFolder_) && !Directories::isLink(directory);
}

QString Instances::EntryDisplayText(const QString &value) {
    QString text(2, u' ');
    int bars = 0;
    for (const QChar character : value) {
        if (character != bar) {
            if (bars == tagField)
                break;
            text += character;
            continue;
        }
        if (bars == 0)
            padTo(dateColumn, text);
        else if (bars == 1)
            padTo(timeColumn, text);
        ++bars;
    }
    return text;
}

} // namespace ostrel
