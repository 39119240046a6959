// SPDX-License-Identifier: MIT
#include "desktop/InstanceLock.h"

namespace ostrel {

InstanceLock::InstanceLock(const QString &folder) : running_(folder + QStringLiteral("/running.lock")) {
    // One copy at a time decides: between looking and sharing, another one would find nobody there.
    FileLock deciding(folder + QStringLiteral("/starting.lock"));
    deciding.exclusive();
    previous_ = !running_.tryExclusive();
    running_.shared();
}

} // namespace ostrel
