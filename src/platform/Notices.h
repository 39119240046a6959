// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace ostrel {

/// What an operator wants to know who is looking at another program.
enum class News { LinkLost, RunEnded, LogNotWritten };

/// The notifications of the desktop. Calls return at once; where nothing shows notifications nothing happens.
class Notices {
public:
    virtual ~Notices() = default;

    /// A later notice takes the place of an earlier one of the same news.
    virtual void show(News news, const QString &title, const QString &text) = 0;
    /// The news is outdated: its notice goes, if it is there.
    virtual void withdraw(News news) = 0;

    /// The operator has clicked on a notice.
    std::function<void()> chosen;
};

} // namespace ostrel
