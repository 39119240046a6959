// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/PortLocks.h"
#include "platform/PortDirectory.h"

#include <functional>

namespace ostrel {

/// Finds out about serial ports from the kernel's list of terminals, from the lock files and from the files that this
/// user's processes have open.
class PortFinder : public PortDirectory {
public:
    /// Where the kernel tells of terminals, and where lock files are.
    struct Places {
        QString ttyFolder = QStringLiteral("/sys/class/tty");
        QStringList lockFolders = PortLocks::usualFolders();
    };

    /// Gives the device path for a port number; empty for none.
    explicit PortFinder(std::function<QString(int)> deviceOfPort) : PortFinder(std::move(deviceOfPort), Places()) {}
    PortFinder(std::function<QString(int)> deviceOfPort, Places places)
        : deviceOfPort_(std::move(deviceOfPort)), places_(std::move(places)) {}

    PortFacts factsOf(int number, int refusal) override;

private:
    QString productOf(const QString &device) const;
    QString holderOf(const QStringList &paths) const;

    std::function<QString(int)> deviceOfPort_;
    Places places_;
};

} // namespace ostrel
