// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <sys/types.h>

#include <ctime>
#include <stdexcept>

namespace ostrel {

/// Measurements of a running process from outside.

inline QString procFile(pid_t process, const char *name) {
    QFile file{QString{"/proc/%1/%2"}.arg(process).arg(QLatin1String(name))};
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the program has ended");
    return QString::fromLatin1(file.readAll());
}

/// A signal has stopped it, until another one continues it.
inline bool isStopped(pid_t process) { return procFile(process, "stat").section(')', -1).trimmed().startsWith('T'); }

/// Processor time so far, of all threads, with the kernel's part.
inline double processorSeconds(pid_t process) {
    clockid_t clock;
    timespec time{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0)
        throw std::runtime_error("the program's processor time cannot be read");
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Resident memory now. Includes shared libraries, since the shared part depends on the other running programs.
inline double residentMebibytes(pid_t process) {
    return procFile(process, "smaps_rollup").section("Rss:", 1).section("kB", 0, 0).toDouble() / 1024;
}

} // namespace ostrel
