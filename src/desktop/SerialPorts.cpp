// SPDX-License-Identifier: MIT
#include "desktop/SerialPorts.h"

#include "desktop/NaturalOrder.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace ostrel {

namespace {

constexpr int portCount = 10;
constexpr qint64 listingHolds = 1000; // ms: one listing serves for a search through all ten ports

bool isOnBoard(const QString &name) { return name.startsWith(QLatin1String("ttyS")); }

/// The kernel lists more on-board ports than there are; those without a chip have type 0.
bool hasChip(const QString &folder) {
    QFile type(folder + QStringLiteral("/type"));
    return !type.open(QIODevice::ReadOnly) || type.readAll().trimmed() != "0";
}

} // namespace

SerialPorts::SerialPorts(const SettingsStore &store, QString ttyFolder)
    : store_(store), ttyFolder_(std::move(ttyFolder)) {}

QString SerialPorts::device(int number) {
    if (number < 1 || number > portCount)
        return {};
    QString named = store_.GetSetting(QStringLiteral("Ports"), QString::number(number), QString());
    if (!named.isEmpty())
        return named;
    if (!listed_.isValid() || listed_.hasExpired(listingHolds)) {
        listing_ = installed();
        listed_.start();
    }
    return listing_.value(number - 1);
}

QStringList SerialPorts::installed() const {
    QStringList names = QDir(ttyFolder_)
                            .entryList({QStringLiteral("ttyS*"), QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")},
                                       QDir::Dirs | QDir::NoDotAndDotDot | QDir::CaseSensitive);
    names.removeIf([this](const QString &name) {
        const QString folder = ttyFolder_ + QLatin1Char('/') + name;
        return !QFile::exists(folder + QStringLiteral("/device")) || (isOnBoard(name) && !hasChip(folder));
    });
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        return isOnBoard(left) != isOnBoard(right) ? isOnBoard(left) : naturallyLess(left, right);
    });
    for (QString &name : names)
        name.prepend(QStringLiteral("/dev/"));
    return names;
}

} // namespace ostrel
