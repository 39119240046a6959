// SPDX-License-Identifier: MIT
#include "simulator/StopSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace ostrel {

namespace {

bool isIgnored(int number) {
    struct sigaction action {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

int openSignals() {
    sigset_t asked;
    sigemptyset(&asked);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        // An ignored signal, for instance under nohup, would still arrive at a signalfd, so it is left out.
        if (!isIgnored(number))
            sigaddset(&asked, number);
    }
    // The reader of standard output may be gone when a new path is printed.
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

} // namespace ostrel
