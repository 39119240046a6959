// SPDX-License-Identifier: MIT
#include "simulator/PseudoTerminal.h"

#include "base/RunTimeError.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

void check(bool good, const QString &what) {
    if (!good)
        throw RunTimeError::fromErrno(errno, what);
}

void discardWaiting(int file) {
    char bytes[256];
    while (::read(file, bytes, sizeof bytes) > 0) {
    }
}

} // namespace

PseudoTerminal::PseudoTerminal(const QString &link) : link_(QFile::encodeName(link)) {
    try {
        open();
        makeRaw();
        if (!link_.isEmpty())
            makeLink();
    } catch (...) {
        ::close(master_);
        throw;
    }
}

PseudoTerminal::~PseudoTerminal() {
    // Another instrument may have taken the link over.
    if (!link_.isEmpty() && QFile::symLinkTarget(QFile::decodeName(link_)) == path_)
        ::unlink(link_.constData());
    ::close(master_);
}

void PseudoTerminal::open() {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    check(master_ >= 0, "pseudo-terminal");
    char name[128];
    const bool ready = ::grantpt(master_) == 0 && ::unlockpt(master_) == 0;
    check(ready && ::ptsname_r(master_, name, sizeof name) == 0, "pseudo-terminal");
    path_ = QFile::decodeName(name);
}

/// Opens and closes the listener's end once, so that the line also knows from the start that nobody listens.
void PseudoTerminal::makeRaw() const {
    const int listener = ::open(QFile::encodeName(path_).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    check(listener >= 0, path_);
    termios line{};
    bool good = ::tcgetattr(listener, &line) == 0;
    ::cfmakeraw(&line);
    line.c_cflag |= CLOCAL | CREAD;
    good = good && ::cfsetspeed(&line, B9600) == 0 && ::tcsetattr(listener, TCSANOW, &line) == 0;
    const int error = errno;
    ::close(listener);
    errno = error;
    check(good, path_);
}

void PseudoTerminal::makeLink() const {
    const QString link = QFile::decodeName(link_);
    const QFileInfo standing{link};
    if (standing.exists() && !standing.isSymLink())
        throw RunTimeError(RunTimeError::FileAlreadyExists, link + ": is there already, and no symbolic link");
    const QByteArray fresh = link_ + '.' + QByteArray::number(::getpid());
    check(::symlink(QFile::encodeName(path_).constData(), fresh.constData()) == 0, link);
    if (::rename(fresh.constData(), link_.constData()) != 0) {
        const int error = errno;
        ::unlink(fresh.constData());
        throw RunTimeError::fromErrno(error, link);
    }
}

qsizetype PseudoTerminal::send(const QByteArray &bytes) {
    pollfd line{master_, POLLIN, 0};
    ::poll(&line, 1, 0);
    if (line.revents & POLLIN)
        discardWaiting(master_); // the instrument hears nothing
    if (line.revents & POLLHUP)
        return 0;
    return std::max<qsizetype>(0, ::write(master_, bytes.constData(), size_t(bytes.size())));
}
