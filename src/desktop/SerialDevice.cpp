// SPDX-License-Identifier: MIT
#include "desktop/SerialDevice.h"

#include "base/RunTimeError.h"

#include <QFile>
#include <fcntl.h>
#include <linux/serial.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace ostrel {

namespace {

constexpr int longestCount = 255;

RunTimeError openError(int error, const QString &path) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
    case ENODEV:
    case ENXIO:
    case ENOTTY:
    case EINVAL: // not a terminal
    case EIO:    // a port in the kernel's list without a chip
        return RunTimeError(ErrorNumber::InvalidPortNumber);
    case EACCES:
    case EPERM:
    case EBUSY:
    case EWOULDBLOCK:
        return RunTimeError(ErrorNumber::PortAlreadyOpen);
    default:
        return RunTimeError::fromErrno(error, path);
    }
}

/// Opens only a character device: the writer of a FIFO would take the opening for a reader.
Descriptor opened(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat found {};
    if (::stat(name.constData(), &found) != 0)
        throw openError(errno, path);
    if (!S_ISCHR(found.st_mode))
        throw RunTimeError(ErrorNumber::InvalidPortNumber);
    return Descriptor(::open(name.constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

} // namespace

SerialDevice::SerialDevice(const QString &path) : device_(opened(path)) {
    termios settings{};
    if (!device_ || ::tcgetattr(device_.get(), &settings) != 0 || ::flock(device_.get(), LOCK_EX | LOCK_NB) != 0)
        throw openError(errno, path);
}

QString SerialDevice::path() const { return QFile::symLinkTarget(privatePath()); }

QString SerialDevice::privatePath() const {
    return QStringLiteral("/proc/%1/fd/%2").arg(::getpid()).arg(device_.get());
}

void SerialDevice::excludeOthers() { ::ioctl(device_.get(), TIOCEXCL); }

void SerialDevice::reportAt(int bytes) {
    const int count = std::clamp(bytes, 1, longestCount);
    termios settings{};
    if (count == reportAt_ || ::tcgetattr(device_.get(), &settings) != 0)
        return;
    settings.c_cc[VMIN] = static_cast<cc_t>(count);
    settings.c_cc[VTIME] = 0; // with a time limit the terminal would already report the first byte
    if (::tcsetattr(device_.get(), TCSANOW, &settings) == 0)
        reportAt_ = count;
}

int SerialDevice::waiting() const {
    int count = 0;
    return ::ioctl(device_.get(), FIONREAD, &count) == 0 ? count : 0;
}

QByteArray SerialDevice::takeWaiting() {
    std::array<char, 4096> piece;
    QByteArray bytes;
    ssize_t count = 0;
    while ((count = ::read(device_.get(), piece.data(), piece.size())) > 0)
        bytes.append(piece.data(), static_cast<qsizetype>(count));
    return bytes;
}

std::optional<LineCounters> SerialDevice::counters() const {
    // The signals first: without a handshake a chip reports and counts their changes only when they are queried.
    int on = 0;
    serial_icounter_struct counted{};
    const bool hasSignals = ::ioctl(device_.get(), TIOCMGET, &on) == 0;
    const bool counts = ::ioctl(device_.get(), TIOCGICOUNT, &counted) == 0;
    if (!hasSignals && !counts)
        return std::nullopt;
    const auto signal = [on](int changes, int line) { return changes * 2 + ((on & line) != 0 ? 1 : 0); };
    return LineCounters{.breaks = counted.brk,
                        .framing = counted.frame,
                        .overrun = counted.overrun,
                        .lost = counted.buf_overrun,
                        .parity = counted.parity,
                        .cts = signal(counted.cts, TIOCM_CTS),
                        .dsr = signal(counted.dsr, TIOCM_DSR),
                        .carrier = signal(counted.dcd, TIOCM_CAR),
                        .ring = signal(counted.rng, TIOCM_RNG)};
}

} // namespace ostrel
