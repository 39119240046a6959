// SPDX-License-Identifier: MIT
#include "desktop/PortLocks.h"

#include "base/RunTimeError.h"
#include "files/Descriptor.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace ostrel {

namespace {

constexpr int longestLock = 255;
constexpr int beingWritten = 10; ///< s: the process number may not be in the lock file yet
constexpr int namesKept = 15;    ///< letters of a program's name in /proc

/// The name that locks are named after: ttyUSB0, serial/by-id/usb-...
QString portName(const QString &path) {
    const QLatin1String devices("/dev/");
    return path.startsWith(devices) ? path.mid(devices.size()) : path;
}

/// Programs replace a slash in different ways.
QStringList lockNames(const QString &path) {
    const QString name = portName(path);
    QStringList names{QString(name).replace(QLatin1Char('/'), QLatin1Char('_'))};
    if (name != path)
        names << QString(name).replace(QLatin1Char('/'), QLatin1Char(':')) << name.section(QLatin1Char('/'), -1);
    for (QString &lock : names)
        lock.prepend(QStringLiteral("LCK.."));
    return names;
}

/// The owner's process number: a decimal number as the first word, or four bytes in host byte order; else 0.
pid_t ownerIn(const QByteArray &lock) {
    bool isText = false;
    const int number = lock.simplified().split(' ').first().toInt(&isText);
    if (isText)
        return number;
    pid_t binary = 0;
    if (lock.size() == sizeof binary)
        std::memcpy(&binary, lock.constData(), sizeof binary);
    return binary;
}

/// The program name in the second line of a QLockFile; empty for locks of another kind.
QByteArray programIn(const QByteArray &lock) {
    const QList<QByteArray> lines = lock.split('\n');
    return lines.size() > 2 ? lines[1] : QByteArray();
}

/// A process number may have been reused by a program with another name. A zombie holds no port.
bool lives(pid_t process, const QByteArray &program) {
    if (process <= 0 || process == ::getpid() || (::kill(process, 0) != 0 && errno != EPERM))
        return false;
    QFile status(QStringLiteral("/proc/%1/stat").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = status.readAll(); // number (name) state ...
    const qsizetype name = line.indexOf('(') + 1;
    const qsizetype nameEnd = line.lastIndexOf(')');
    const bool sameName = program.isEmpty() || line.mid(name, nameEnd - name) == program.left(namesKept);
    return sameName && line.mid(nameEnd + 2, 1) != "Z";
}

QByteArray contentOf(int lock) {
    std::array<char, longestLock> text;
    const ssize_t size = ::read(lock, text.data(), text.size());
    return {text.data(), std::max<ssize_t>(0, size)};
}

bool isHeld(int lock) {
    // Programs with Qt also hold an flock on their lock file.
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0)
        return true;
    const QByteArray content = contentOf(lock);
    struct stat file {};
    if (ownerIn(content) <= 0)
        return ::fstat(lock, &file) == 0 && std::abs(std::time(nullptr) - file.st_mtime) < beingWritten;
    return lives(ownerIn(content), programIn(content));
}

/// Only a plain file counts as a lock.
bool isFile(const QByteArray &path) {
    struct stat found {};
    return ::lstat(path.constData(), &found) == 0 && S_ISREG(found.st_mode);
}

bool isFree(const QString &place) { return !QFileInfo::exists(place) && !QFileInfo(place).isSymLink(); }

Descriptor openedLock(const QByteArray &path) {
    return Descriptor(::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

void takeOverFile(const QByteArray &path) {
    if (!isFile(path))
        return;
    const Descriptor lock = openedLock(path);
    if (!lock && errno == ENOENT)
        return;
    if (!lock || isHeld(lock.get()))
        throw RunTimeError(ErrorNumber::PortAlreadyOpen);
    ::unlink(path.constData());
}

pid_t ownerOfFile(const QByteArray &path) {
    const Descriptor lock = isFile(path) ? openedLock(path) : Descriptor();
    const QByteArray content = lock ? contentOf(lock.get()) : QByteArray();
    return lives(ownerIn(content), programIn(content)) ? ownerIn(content) : 0;
}

} // namespace

const QStringList &PortLocks::usualFolders() {
    static const QStringList folders{
        QStringLiteral("/var/lock"),         QStringLiteral("/etc/locks"), QStringLiteral("/var/spool/locks"),
        QStringLiteral("/var/spool/uucp"),   QStringLiteral("/tmp"),       QStringLiteral("/var/tmp"),
        QStringLiteral("/var/lock/lockdev"), QStringLiteral("/run/lock")};
    return folders;
}

void PortLocks::takeOver(const QStringList &paths, const QStringList &folders) {
    for (const QString &folder : folders) {
        for (const QString &path : paths) {
            for (const QString &name : lockNames(path))
                takeOverFile(QFile::encodeName(folder + QLatin1Char('/') + name));
        }
    }
}

pid_t PortLocks::owner(const QStringList &paths, const QStringList &folders) {
    for (const QString &folder : folders) {
        for (const QString &path : paths) {
            for (const QString &name : lockNames(path)) {
                if (const pid_t process = ownerOfFile(QFile::encodeName(folder + QLatin1Char('/') + name)); process > 0)
                    return process;
            }
        }
    }
    return 0;
}

QString PortLocks::fileOfQSerialPort(const QString &path) {
    const QString name = QLatin1Char('/') + lockNames(path).first();
    for (const QString &folder : usualFolders()) {
        const QFileInfo place(folder);
        if (place.isReadable() && (QFile::exists(folder + name) || place.isWritable()))
            return folder + name;
    }
    return {};
}

QString PortLocks::freeName(const QStringList &paths) {
    const auto found =
        std::find_if(paths.begin(), paths.end(), [](const QString &path) { return isFree(fileOfQSerialPort(path)); });
    return found == paths.end() ? paths.last() : *found;
}

} // namespace ostrel
