// SPDX-License-Identifier: MIT
#include "archive/Interruptions.h"

#include "files/TemporaryFiles.h"

#include <csignal>

namespace ostrel {

namespace {

void tidyAndEnd(int number) {
    TemporaryFiles::removeUnfinished();
    std::raise(number); // takes effect when this handler returns, with the default action
}

bool isIgnored(int number) {
    struct sigaction present {};
    return ::sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

void handle(int number) {
    struct sigaction action {};
    action.sa_handler = tidyAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(number, &action, nullptr);
}

} // namespace

void tidyWhenInterrupted() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU}) {
        if (!isIgnored(number))
            handle(number);
    }
    handle(SIGPIPE);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace ostrel
