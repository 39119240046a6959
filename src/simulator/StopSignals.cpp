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
        // One that is ignored, as nohup does, would come through a signal file all the same.
        if (!isIgnored(number))
            sigaddset(&asked, number);
    }
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

} // namespace ostrel
