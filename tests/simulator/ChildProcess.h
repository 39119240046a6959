// SPDX-License-Identifier: MIT
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

/// A process of its own that runs `body` and exits with its answer. When it has stopped itself, it has got where the
/// test wants it.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<int()> &body) : id_(::fork()) {
        if (id_ == 0)
            ::_exit(body());
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// False when it has ended instead.
    bool isStopped() const {
        int status = 0;
        return ::waitpid(id_, &status, WUNTRACED) == id_ && WIFSTOPPED(status);
    }
    void goOn() const { ::kill(id_, SIGCONT); }
    void kill() {
        ::kill(id_, SIGKILL);
        ::waitpid(id_, nullptr, 0);
    }
    int exitCode() const {
        int status = -1;
        ::waitpid(id_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t id_;
};

/// Makes this process one of a user without rights. False where that is impossible.
inline bool becomeOrdinaryUser() {
    constexpr unsigned nobody = 65534;
    if (::geteuid() != 0)
        return true;
    return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
}

/// Exit code of a child that could not become an ordinary user.
constexpr int notOrdinary = 77;

#define SKIP_UNLESS_ORDINARY(code)                                                                                     \
    if ((code) == notOrdinary)                                                                                         \
    GTEST_SKIP() << "no ordinary user can be made here"
