// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// A terminal that this process holds, and the lock file that says so. The kernel does not drop everything with the
/// process: a lock file keeps other users out until the computer is started anew, and a pseudo-terminal stays exclusive
/// for as long as its other end lives. So an end of the process that runs no destructor lets go by letGoOfAll.
class HeldPort {
public:
    /// `terminal` stays open for as long as this lives. `lockFile` need not be there yet; letGoOfAll removes it if this
    /// process has written it, the destructor leaves it to whoever made it. For the main thread.
    HeldPort(int terminal, const QString &lockFile);
    /// Others may open the terminal again.
    ~HeldPort();
    HeldPort(const HeldPort &) = delete;
    HeldPort &operator=(const HeldPort &) = delete;

    /// Others may open all ports of this process. Waits for no driver, and may be called by a signal handler.
    static void letGoOfAll() noexcept;
    /// From now on whatever ends the process lets go of all first: exit, abort, and each signal that has its default
    /// effect and is none of those that EndSignals meets. SIGKILL is beyond us.
    static void letGoAtEveryEnd();

private:
    int place_ = -1; ///< among those that letGoOfAll knows
};

} // namespace ostrel
