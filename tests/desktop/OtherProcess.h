// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

/// Runs `body` in a process of its own and answers its status, as of waitpid; `body` answers the exit status.
template <typename Body>
int statusOfProcess(Body &&body) {
    const pid_t process = ::fork();
    if (process == 0)
        ::_exit(std::forward<Body>(body)());
    int status = -1;
    ::waitpid(process, &status, 0);
    return status;
}

/// The same as an ordinary user, who is nobody else's; only root can. Answers the exit status.
template <typename Body>
int exitStatusOfUser(Body &&body) {
    constexpr uid_t user = 12345;
    const int status = statusOfProcess([&] {
        const bool isUser = ::setresgid(user, user, user) == 0 && ::setresuid(user, user, user) == 0;
        return isUser ? body() : -1;
    });
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A process number that nobody has.
inline pid_t deadProcess() {
    const pid_t process = ::fork();
    if (process == 0)
        ::_exit(0);
    ::waitpid(process, nullptr, 0);
    return process;
}
