// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// A terminal that this process holds, and its lock file. The kernel does not release everything when the process ends:
/// a lock file keeps other users out until the computer is restarted, and a pseudo-terminal stays exclusive as long as
/// its other end is open. So an end of the process without destructors must call letGoOfAll.
class HeldPort {
public:
    /// `terminal` must stay open as long as this object exists. `lockFile` need not exist yet; letGoOfAll removes it if
    /// this process has written it, the destructor leaves it to the code that made it. For the main thread.
    HeldPort(int terminal, const QString &lockFile);
    /// Others may open the terminal again.
    ~HeldPort();
    HeldPort(const HeldPort &) = delete;
    HeldPort &operator=(const HeldPort &) = delete;

    /// Others may then open all ports of this process. Does not wait for a driver; safe in a signal handler.
    static void letGoOfAll() noexcept;
    /// From now on letGoOfAll runs before any end of the process: exit, abort, and each signal that has its default
    /// effect and is not handled by EndSignals. SIGKILL cannot be caught.
    static void letGoAtEveryEnd();

private:
    int place_ = -1; ///< index in the list for letGoOfAll; -1: none
};

} // namespace ostrel
