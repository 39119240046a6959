// SPDX-License-Identifier: MIT
#include "desktop/HeldPort.h"

#include <QByteArray>
#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>

namespace ostrel {

namespace {

struct Place {
    std::atomic<int> terminal{-1}; ///< -1: this place is free
    pid_t process = 0;
    std::array<char, 1024> lockFile{};
};

constinit std::array<Place, 4> places{}; // more than the two that are used: the link, and the search for a port

static_assert(std::atomic<int>::is_always_lock_free);

constexpr int endings[] = {SIGABRT, SIGALRM, SIGBUS,  SIGFPE,  SIGILL,    SIGPIPE,   SIGPROF, SIGPWR,  SIGQUIT, SIGSEGV,
                           SIGSYS,  SIGTRAP, SIGUSR1, SIGUSR2, SIGVTALRM, SIGSTKFLT, SIGIO,   SIGXCPU, SIGXFSZ};

alignas(16) std::array<char, 65536> handlerStack; // a handler must also run after an overflow of the normal stack

/// A lock file begins with the process number of its owner.
bool isWrittenBy(pid_t process, const char *lockFile) {
    const int lock = ::open(lockFile, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 16> text{};
    const ssize_t size = ::read(lock, text.data(), text.size() - 1);
    ::close(lock);
    pid_t owner = 0;
    for (const char *digit = text.data(); size > 0 && *digit >= '0' && *digit <= '9'; ++digit)
        owner = owner * 10 + (*digit - '0');
    return owner == process;
}

void letGoAndEnd(int number) {
    HeldPort::letGoOfAll();
    ::raise(number); // takes its default effect when this handler returns
}

void giveHandlersAStack() {
    stack_t now{};
    if (::sigaltstack(nullptr, &now) != 0 || (now.ss_flags & SS_DISABLE) == 0)
        return;
    now = {.ss_sp = handlerStack.data(), .ss_flags = 0, .ss_size = handlerStack.size()};
    ::sigaltstack(&now, nullptr);
}

} // namespace

HeldPort::HeldPort(int terminal, const QString &lockFile) {
    const auto free = std::ranges::find_if(places, [](const Place &place) { return place.terminal == -1; });
    const QByteArray path = QFile::encodeName(lockFile);
    if (free == places.end() || path.size() >= qsizetype(free->lockFile.size()))
        return;
    free->process = ::getpid();
    std::copy_n(path.constData(), path.size() + 1, free->lockFile.begin());
    free->terminal = terminal;
    place_ = int(free - places.begin());
}

HeldPort::~HeldPort() {
    if (place_ == -1 || places[place_].terminal == -1)
        return;
    ::ioctl(places[place_].terminal, TIOCNXCL);
    places[place_].terminal = -1;
}

void HeldPort::letGoOfAll() noexcept {
    for (Place &place : places) {
        const int terminal = place.terminal.exchange(-1);
        if (terminal == -1 || place.process != ::getpid()) // a forked child before its exec
            continue;
        ::ioctl(terminal, TIOCNXCL);
        ::flock(terminal, LOCK_UN);
        if (isWrittenBy(place.process, place.lockFile.data()))
            ::unlink(place.lockFile.data());
    }
}

void HeldPort::letGoAtEveryEnd() {
    giveHandlersAStack();
    std::atexit([] { letGoOfAll(); });
    for (const int number : endings) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = letGoAndEnd;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_ONSTACK);
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace ostrel
