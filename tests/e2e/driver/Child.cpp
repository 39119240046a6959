// SPDX-License-Identifier: MIT
#include "Child.h"

#include <QTest>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

bool within(std::chrono::milliseconds time, const std::function<bool()> &holds) {
    return QTest::qWaitFor(holds, int(time.count()));
}

Child::Child(const std::function<int()> &work) {
    std::fflush(nullptr); // or both would print what is still on its way
    pid_ = ::fork();
    if (pid_ != 0)
        return;
    // What the work lets fly must not come to the test, of which there are two now.
    [&]() noexcept {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::exit(work());
    }();
}

Child::~Child() {
    signal(SIGKILL);
    endsWithin(std::chrono::seconds(10));
}

void Child::signal(int number) {
    if (runs())
        ::kill(pid_, number);
}

bool Child::runs() {
    ended_ = ended_ || ::waitpid(pid_, &status_, WNOHANG) != 0;
    return !ended_;
}

bool Child::endsWithin(std::chrono::milliseconds time) {
    return within(time, [this] { return !runs(); });
}

int Child::exitCode() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

int become(const QStringList &command) {
    return ::execl("/bin/sh", "sh", "-c", qPrintable("exec '" + command.join("' '") + '\''), nullptr);
}
