// SPDX-License-Identifier: MIT
#include "desktop/PortFinder.h"

#include "base/ErrorNumbers.h"
#include "base/Steps.h"
#include "base/Values.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace ostrel {

namespace {

using Obstacle = PortFacts::Obstacle;

constexpr int deviceLevels = 4; ///< folders between a terminal and its USB adapter, at most

QString firstLine(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed() : QString();
}

/// The program that a process runs, as the kernel names it: at most 15 letters.
QString nameOf(pid_t process) { return firstLine(QStringLiteral("/proc/%1/comm").arg(process)); }

QString inWords(pid_t process) {
    const QString name = nameOf(process);
    if (name.isEmpty())
        return {};
    QString words =
        name == nameOf(::getpid()) ? QStringLiteral("another copy of %1").arg(QLatin1String(AppTitle)) : name;
    const QFileInfo folder(QStringLiteral("/proc/%1").arg(process));
    if (folder.ownerId() != ::geteuid() && !folder.owner().isEmpty())
        words += QStringLiteral(", of the user ") + folder.owner();
    return words + QStringLiteral(" (process %1)").arg(process);
}

bool hasOpen(const QString &processFolder, const QStringList &paths) {
    const QDir files(processFolder + QStringLiteral("/fd"));
    for (const QString &file : files.entryList(QDir::Files | QDir::System | QDir::Hidden)) {
        if (paths.contains(QFile::symLinkTarget(files.filePath(file))))
            return true;
    }
    return false;
}

/// Of this user's processes, the one that has the device open; 0 for none.
pid_t processWith(const QStringList &paths) {
    for (const QFileInfo &process : QDir(QStringLiteral("/proc")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const pid_t number = process.fileName().toInt(&isNumber);
        if (isNumber && number != ::getpid() && process.ownerId() == ::geteuid() && hasOpen(process.filePath(), paths))
            return number;
    }
    return 0;
}

Obstacle obstacleOf(const QByteArray &path, int refusal) {
    struct stat found {};
    if (::stat(path.constData(), &found) != 0)
        return errno == EACCES ? Obstacle::NoPermission : Obstacle::Missing;
    if (!S_ISCHR(found.st_mode))
        return Obstacle::NoTerminal;
    if (::faccessat(AT_FDCWD, path.constData(), R_OK, AT_EACCESS) != 0)
        return Obstacle::NoPermission;
    switch (refusal) {
    case ErrorNumber::PortAlreadyOpen:
        return Obstacle::Held;
    case ErrorNumber::InvalidPortNumber:
        return Obstacle::NoTerminal;
    default:
        return Obstacle::None;
    }
}

} // namespace

PortFacts PortFinder::factsOf(int number, int refusal) {
    PortFacts facts;
    skippingErrors([&] { facts.device = deviceOfPort_(number); });
    facts.obstacle = facts.device.isEmpty() ? Obstacle::Missing : obstacleOf(QFile::encodeName(facts.device), refusal);
    if (facts.obstacle == Obstacle::Missing)
        return facts;
    const QString real = QFileInfo(facts.device).canonicalFilePath();
    facts.product = productOf(real);
    if (facts.obstacle == Obstacle::Held)
        facts.by = holderOf({facts.device, real});
    if (facts.obstacle == Obstacle::NoPermission && (QFileInfo(real).permissions() & QFile::ReadGroup) != 0)
        facts.by = QFileInfo(real).group();
    return facts;
}

/// The name that the manufacturer has given the adapter, from the folder of the USB device above the terminal's own.
QString PortFinder::productOf(const QString &device) const {
    QString folder =
        QFileInfo(places_.ttyFolder + QLatin1Char('/') + QFileInfo(device).fileName() + QStringLiteral("/device"))
            .canonicalFilePath();
    for (int level = 0; level < deviceLevels && !folder.isEmpty(); ++level) {
        if (QFile::exists(folder + QStringLiteral("/product"))) {
            const QString maker = firstLine(folder + QStringLiteral("/manufacturer"));
            const QString product = firstLine(folder + QStringLiteral("/product"));
            return product.startsWith(maker) ? product : maker + QLatin1Char(' ') + product;
        }
        folder = QFileInfo(folder).path();
    }
    return {};
}

/// A lock file shows programs of other users too.
QString PortFinder::holderOf(const QStringList &paths) const {
    const pid_t locked = PortLocks::owner(paths, places_.lockFolders);
    return inWords(locked > 0 ? locked : processWith(paths));
}

} // namespace ostrel
