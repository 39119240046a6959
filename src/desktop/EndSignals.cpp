// SPDX-License-Identifier: MIT
#include "desktop/EndSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>

namespace ostrel {

namespace {

using Handler = void (*)(int);

volatile std::sig_atomic_t bell = -1;

void ringBell(int) {
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(int(bell), &one, sizeof one);
    errno = error;
}

// Handlers rather than blocked signals, since a child process would inherit blocked signals.
void replace(Handler from, Handler to) {
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler != from)
            continue;
        action.sa_handler = to;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace

EndSignals::EndSignals(std::function<void()> end)
    : bell_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), notifier_(bell_.get(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this, end = std::move(end)] {
        notifier_.setEnabled(false);
        end();
    });
    if (!bell_)
        return;
    bell = bell_.get();
    replace(SIG_DFL, ringBell);
}

EndSignals::~EndSignals() { replace(ringBell, SIG_DFL); }

} // namespace ostrel
