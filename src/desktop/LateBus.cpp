// SPDX-License-Identifier: MIT
#include "desktop/LateBus.h"

#include <QThread>

namespace ostrel {

LateBus::LateBus(std::function<QDBusConnection()> open) : open_(std::move(open)) {}

LateBus::~LateBus() {
    if (opening_)
        opening_->wait();
}

QDBusConnection *LateBus::get() {
    if (bus_)
        return &*bus_;
    if (opening_)
        return nullptr;
    const auto result = std::make_shared<QDBusConnection>(QString());
    opening_.reset(QThread::create([open = open_, result] { *result = open(); }));
    connect(opening_.get(), &QThread::finished, this, [this, result] {
        bus_ = *result;
        opened();
    });
    opening_->start();
    return nullptr;
}

} // namespace ostrel
