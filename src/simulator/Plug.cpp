// SPDX-License-Identifier: MIT
#include "simulator/Plug.h"

#include "base/Steps.h"

namespace ostrel {

namespace {

constexpr int lookEvery = 100; // ms

} // namespace

Plug::Plug(const QString &link) : link_(link) {
    look_.setInterval(lookEvery);
    look_.callOnTimeout([this] {
        lookAfterPort();
        if (gone_)
            gone_->setEnabled(isHeard());
    });
}

void Plug::set(bool in) {
    if (in == isIn())
        return;
    if (in) {
        port_.emplace(link_);
        watchPort();
        look_.start();
    } else {
        look_.stop();
        gone_.reset();
        port_.reset();
    }
}

void Plug::watchPort() {
    gone_ = std::make_unique<QSocketNotifier>(port_->file(), QSocketNotifier::Read);
    gone_->setEnabled(false);
    // Queued, since a new port replaces the notifier too. The notifier is disabled until the next tick of the timer, so
    // that a listener that keeps sending does not keep the program busy.
    const auto look = [this] {
        if (gone_)
            gone_->setEnabled(false);
        lookAfterPort();
    };
    QObject::connect(gone_.get(), &QSocketNotifier::activated, &look_, look, Qt::QueuedConnection);
    newPort(port_->path());
}

void Plug::lookAfterPort() {
    const auto look = [this] {
        if (port_ && port_->lookAfter())
            watchPort();
    };
    const auto fail = [this](const RunTimeError &error) {
        look_.stop();
        failed(error);
    };
    trapped(look, fail);
}

} // namespace ostrel
