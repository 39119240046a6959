// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/Notices.h"

#include <set>

namespace ostrel {

/// The notices of this copy, which bear its system's name. Each news is told once until it is withdrawn; nothing is
/// told when the operator has switched notices off.
class SystemNotices : public Notices {
public:
    SystemNotices(const Options &options, const Identity &identity, Notices &desktop)
        : options_(options), identity_(identity), desktop_(desktop) {}

    void show(News news, const QString &title, const QString &text) override {
        if (options_.Notifications && told_.insert(news).second)
            desktop_.show(news, identity_.SystemName + QStringLiteral(": ") + title, text);
    }
    void withdraw(News news) override {
        if (told_.erase(news) > 0)
            desktop_.withdraw(news);
    }

private:
    const Options &options_;
    const Identity &identity_;
    Notices &desktop_;
    std::set<News> told_;
};

} // namespace ostrel
