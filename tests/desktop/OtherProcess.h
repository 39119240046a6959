// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

/// Nobody has this number: it is beyond all that the system gives out.
inline constexpr pid_t deadProcess = 2'000'000'000;

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
