// SPDX-License-Identifier: MIT
#include "simulator/PseudoTerminal.h"

#include "base/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <tuple>

namespace ostrel {

namespace {

constexpr mode_t everybody = 0666;

void check(bool good, const QString &what) {
    if (!good)
        throw RunTimeError::fromErrno(errno, what);
}

termios settingsOf(const SystemFile &terminal) {
    termios settings{};
    ::tcgetattr(terminal.number(), &settings);
    return settings;
}

int answerOf(const SystemFile &terminal, unsigned long question) {
    int answer = 0;
    return ::ioctl(terminal.number(), question, &answer) == 0 ? answer : 0;
}

bool isSame(const termios &one, const termios &other) {
    const auto flags = [](const termios &line) {
        return std::tie(line.c_iflag, line.c_oflag, line.c_cflag, line.c_lflag, line.c_ispeed, line.c_ospeed);
    };
    return flags(one) == flags(other) && std::ranges::equal(one.c_cc, other.c_cc);
}

void makeRaw(const SystemFile &terminal) {
    termios line = settingsOf(terminal);
    ::cfmakeraw(&line);
    line.c_cflag |= CLOCAL | CREAD;
    ::cfsetspeed(&line, B9600);
    check(::tcsetattr(terminal.number(), TCSANOW, &line) == 0, "the pseudo-terminal cannot be set up");
}

} // namespace

PseudoTerminal::PseudoTerminal(const QString &link) : link_(QFile::encodeName(link)) {
    open();
    makeLink();
}

PseudoTerminal::~PseudoTerminal() {
    // Another simulator may have replaced the link.
    if (!link_.isEmpty() && QFile::symLinkTarget(QFile::decodeName(link_)) == path_)
        ::unlink(link_.constData());
}

/// Opens and closes the listener's end once, so that isHeard() is false from the start.
void PseudoTerminal::open() {
    const QString failure = "a pseudo-terminal cannot be made";
    SystemFile master{::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)};
    check(bool(master), failure);
    char name[128];
    const bool ready = ::grantpt(master.number()) == 0 && ::unlockpt(master.number()) == 0;
    check(ready && ::ptsname_r(master.number(), name, sizeof name) == 0, failure);
    master_ = std::move(master);
    path_ = QFile::decodeName(name);

    const SystemFile listener = openListener();
    check(bool(listener), path_);
    makeRaw(listener);
    raw_ = settingsOf(listener);
    // All users of the computer may open the port, also of a simulator that root has started.
    check(::fchmod(listener.number(), everybody) == 0, path_);
}

void PseudoTerminal::makeLink() const {
    if (link_.isEmpty())
        return;
    const QFileInfo place{QFile::decodeName(link_)};
    const QString failure = QString{"the link %1 cannot be made"}.arg(place.filePath());
    if (place.exists() && !place.isSymLink())
        throw RunTimeError(ErrorNumber::FileAlreadyExists,
                           failure + (place.isDir() ? ": a folder is there" : ": a file is there"));
    if (!place.dir().exists())
        throw RunTimeError(ErrorNumber::PathNotFound, failure + ": there is no folder " + place.path());
    const QByteArray fresh = link_ + '.' + QByteArray::number(::getpid());
    // The link of a program that was killed before it could rename it.
    if (QFileInfo{QFile::decodeName(fresh)}.isSymLink())
        ::unlink(fresh.constData());
    check(::symlink(QFile::encodeName(path_).constData(), fresh.constData()) == 0, failure);
    if (::rename(fresh.constData(), link_.constData()) != 0) {
        const int error = errno;
        ::unlink(fresh.constData());
        throw RunTimeError::fromErrno(error, failure);
    }
}

SystemFile PseudoTerminal::openListener() const {
    return SystemFile{::open(QFile::encodeName(path_).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)};
}

bool PseudoTerminal::isHeard() const {
    pollfd line{master_.number(), 0, 0};
    return ::poll(&line, 1, 0) <= 0 || (line.revents & POLLHUP) == 0;
}

qsizetype PseudoTerminal::send(const QByteArray &bytes) {
    if (!isHeard())
        return 0;
    return std::max<qsizetype>(0, ::write(master_.number(), bytes.constData(), size_t(bytes.size())));
}

bool PseudoTerminal::lookAfter() {
    ::tcflush(master_.number(), TCIFLUSH); // the instrument receives nothing
    const Left left = isHeard() ? Left::Nothing : leftByListeners();
    // A new listener may have opened the port meanwhile: then these traces are its own.
    if (left == Left::Nothing || isHeard())
        return false;
    if (left == Left::Traces) {
        clearTraces();
        return false;
    }
    open();
    makeLink();
    return true;
}

PseudoTerminal::Left PseudoTerminal::leftByListeners() const {
    ::tcflush(master_.number(), TCOFLUSH); // bytes that did not fit the listener's buffer
    const SystemFile listener = openListener();
    if (!listener)
        return Left::Claim;
    const bool isClean = answerOf(listener, TIOCGEXCL) == 0 && answerOf(listener, FIONREAD) == 0;
    return isClean && isSame(settingsOf(listener), raw_) ? Left::Nothing : Left::Traces;
}

/// The claim is lifted last, since it keeps the next listener out until then.
void PseudoTerminal::clearTraces() const {
    const SystemFile listener = openListener();
    ::tcsetattr(listener.number(), TCSANOW, &raw_);
    ::tcflush(listener.number(), TCIFLUSH);
    ::ioctl(listener.number(), TIOCNXCL);
}

} // namespace ostrel
