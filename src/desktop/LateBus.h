// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

class QThread;

namespace ostrel {

/// A connection to D-Bus that is opened when it is first needed, on a thread of its own: opening a bus that does not
/// respond takes half a minute.
class LateBus : public QObject {
public:
    /// `open` also connects the signals of the bus: that waits until D-Bus's own thread has opened the other buses.
    explicit LateBus(std::function<QDBusConnection()> open);
    ~LateBus() override;

    /// Null until the bus is open. The first call begins to open it; `opened` is called once that is done, whether the
    /// connection is good or not.
    QDBusConnection *get();

    std::function<void()> opened;

private:
    std::function<QDBusConnection()> open_;
    std::optional<QDBusConnection> bus_;
    std::unique_ptr<QThread> opening_;
};

} // namespace ostrel
