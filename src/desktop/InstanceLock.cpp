// SPDX-License-Identifier: MIT
#include "desktop/InstanceLock.h"

namespace ostrel {

InstanceLock::InstanceLock(const QString &folder) : running_(folder + QStringLiteral("/running.lock")) {
    // One copy at a time does this: a second copy between the two calls would not see the first one.
    FileLock deciding(folder + QStringLiteral("/starting.lock"));
    deciding.exclusive();
    previous_ = !running_.tryExclusive();
    running_.shared();
}

} // namespace ostrel
