// SPDX-License-Identifier: MIT
#include "simulator/StopSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace {

int openSignals() {
    sigset_t asked;
    sigemptyset(&asked);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&asked, number);
    // Whoever read the path from our output may be gone when there is a new one to tell.
    std::signal(SIGPIPE, SIG_IGN);
    sigprocmask(SIG_BLOCK, &asked, nullptr);
    return ::signalfd(-1, &asked, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

StopSignals::StopSignals(std::function<void()> stop) : file_(openSignals()), notifier_(file_, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this, stop = std::move(stop)] {
        notifier_.setEnabled(false);
        stop();
    });
}

StopSignals::~StopSignals() { ::close(file_); }
