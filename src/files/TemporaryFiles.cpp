// SPDX-License-Identifier: MIT
#include "files/TemporaryFiles.h"

#include <QByteArrayList>
#include <QCryptographicHash>
#include <QFile>
#include <QRandomGenerator>
#include <QSysInfo>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <optional>

namespace ostrel {

namespace {

constexpr char prefix[] = ".ostrel-";
constexpr char suffix[] = ".tmp";
constexpr int mostEntries = 10000;
constexpr std::time_t doubtful = 3600; // seconds; no writer pauses that long

std::array<std::atomic<const char *>, 8> unfinished{};

struct Writer {
    QByteArray computer; ///< empty, like session and token, for a name without them
    QByteArray session;
    pid_t process = 0;
    QByteArray token;
};

QByteArray newToken() { return QByteArray::number(QRandomGenerator::system()->generate(), 16); }

/// An unknown (empty) id gets a random value, so that two unknown ids never look equal.
QByteArray hashOf(const QByteArray &id) {
    return id.isEmpty() ? newToken() : QCryptographicHash::hash(id, QCryptographicHash::Sha1).first(4).toHex();
}

/// Process numbers are unique only within one PID namespace, for instance a container, and one boot.
QByteArray sessionId() {
    const QByteArray boot = QSysInfo::bootUniqueId();
    return boot.isEmpty() ? boot : boot + QFile::symLinkTarget(QStringLiteral("/proc/self/ns/pid")).toUtf8();
}

/// The process number is read each time, since the process may have been forked.
Writer thisWriter() {
    static const Writer program{hashOf(QSysInfo::machineUniqueId()), hashOf(sessionId()), 0, newToken()};
    return {program.computer, program.session, ::getpid(), program.token};
}

std::optional<Writer> writerOf(const QByteArray &name) {
    if (!name.startsWith(prefix) || !name.endsWith(suffix))
        return std::nullopt;
    QByteArrayList parts = name.sliced(sizeof prefix - 1).chopped(sizeof suffix - 1).split('-');
    if (parts.size() == 2) // only process and number
        parts = {{}, {}, parts[0], {}, parts[1]};
    const int process = parts.value(2).toInt();
    if (parts.size() != 5 || process <= 0)
        return std::nullopt;
    return Writer{parts[0], parts[1], process, parts[3]};
}

bool lives(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

bool isDead(const Writer &writer, std::time_t age) {
    const Writer self = thisWriter();
    if (writer.session == self.session)
        return writer.process == self.process ? writer.token != self.token : !lives(writer.process);
    if (writer.computer == self.computer)
        return age > doubtful;
    return writer.computer.isEmpty() && age > doubtful && !lives(writer.process);
}

void removeIfDead(const QByteArray &folder, const char *name, FileOperations &operations) {
    const std::optional<Writer> writer = writerOf(name);
    struct stat file {};
    const QByteArray path = writer ? folder + name : QByteArray();
    if (writer && ::lstat(path.constData(), &file) == 0 && S_ISREG(file.st_mode) &&
        isDead(*writer, std::time(nullptr) - file.st_mtime))
        operations.remove(path.constData());
}

} // namespace

QByteArray TemporaryFiles::newName() {
    static std::atomic<unsigned> counter = 0;
    const Writer self = thisWriter();
    const QByteArrayList parts{self.computer, self.session, QByteArray::number(self.process), self.token,
                               QByteArray::number(counter++)};
    return prefix + parts.join('-') + suffix;
}

bool TemporaryFiles::isName(const QByteArray &name) { return writerOf(name).has_value(); }

void TemporaryFiles::clearDead(const QByteArray &folder, FileOperations &operations) {
    int count = 0;
    // An error is ignored: a file can be saved in a folder that cannot be listed.
    eachName(operations, folder.constData(), [&](const char *name) {
        removeIfDead(folder, name, operations);
        return ++count < mostEntries;
    });
}

void TemporaryFiles::begun(const char *path) {
    for (std::atomic<const char *> &place : unfinished) {
        const char *none = nullptr;
        if (place.compare_exchange_strong(none, path))
            return;
    }
}

void TemporaryFiles::ended(const char *path) {
    for (std::atomic<const char *> &place : unfinished) {
        const char *ended = path;
        place.compare_exchange_strong(ended, nullptr);
    }
}

void TemporaryFiles::removeUnfinished() {
    for (const std::atomic<const char *> &place : unfinished) {
        if (const char *path = place)
            ::unlink(path);
    }
}

} // namespace ostrel
