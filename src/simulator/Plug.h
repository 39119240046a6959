// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/PseudoTerminal.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace ostrel {

class RunTimeError;

/// The instrument's plug. In: there is a port, which the event loop maintains. Out: there is none.
class Plug {
public:
    std::function<void(const QString &path)> newPort; ///< called for the first port and for each replacement
    std::function<void(const RunTimeError &)> failed; ///< called when the port is lost

    /// `link` is a symbolic link to the port, or empty. The plug is out.
    explicit Plug(const QString &link = {});

    bool isIn() const { return port_.has_value(); }
    /// Raises a run-time error when a port cannot be made.
    void set(bool in);
    bool isHeard() const { return port_ && port_->isHeard(); }
    /// Returns how many bytes the line took; 0 while the plug is out.
    qsizetype send(const QByteArray &bytes) { return port_ ? port_->send(bytes) : 0; }

private:
    void watchPort();
    void lookAfterPort();

    QString link_;
    std::optional<PseudoTerminal> port_;
    std::unique_ptr<QSocketNotifier> gone_; // reports at once that a listener has closed the port
    QTimer look_;
};

} // namespace ostrel
