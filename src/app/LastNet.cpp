// SPDX-License-Identifier: MIT
#include "app/LastNet.h"

#include "base/Steps.h"

#include <QScopedValueRollback>

namespace ostrel {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds quiet = 1min;

} // namespace

void LastNet::meet(const RunTimeError &error, const QString &place) {
    if (error.number() == ErrorNumber::DialogCancelled)
        return;
    skippingErrors([&] { uses_.backToWork(); });
    const auto now = uses_.clock.uptime();
    const auto [found, isNew] = seen_.try_emplace({error.number(), place});
    Seen &seen = found->second;
    const MessageBox box = errorBox(error);
    const bool keepsComing = told_.contains(box.text) || (!isNew && now - seen.last <= quiet);
    seen.last = now;
    if (keepsComing)
        return count(seen, error, place);
    seen.entered = now;
    seen.count = 0;
    const QScopedValueRollback told(told_, told_ + QStringList(box.text));
    uses_.prompts.show(box);
}

void LastNet::count(Seen &seen, const RunTimeError &error, const QString &place) {
    ++seen.count;
    if (uses_.clock.uptime() - seen.entered < quiet)
        return;
    const QString times = QStringLiteral("Run-time error '%1': %2 (%3, %4 times)")
                              .arg(QString::number(error.number()), error.description(), place)
                              .arg(seen.count);
    seen.entered = uses_.clock.uptime();
    seen.count = 0;
    skippingErrors([&] { uses_.enter(times); });
}

MessageBox errorBox(const RunTimeError &error) {
    return {QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.description()),
            BoxIcon::Critical};
}

MessageBox startFailedBox(const RunTimeError &error, const QString &appPath) {
    const auto advice = [&]() -> QString {
        switch (error.number()) {
        case ErrorNumber::DiskFull:
            return QStringLiteral("Make room on the disk of %1, then start").arg(appPath);
        case ErrorNumber::PermissionDenied:
        case ErrorNumber::PathNotFound:
            return QStringLiteral("Make sure that %1 is a folder in which you may write, then start").arg(appPath);
        case ErrorNumber::FileAlreadyExists:
        case ErrorNumber::PathFileAccess:
            return QStringLiteral("What is named above is in the way: move it aside, then start");
        default:
            return QStringLiteral("Start");
        }
    };
    MessageBox box = errorBox(error);
    box.text += QStringLiteral("\n\nThe recorder cannot start. %1 the recorder again.\n"
                               "Logs of earlier runs stay where they are and will be offered then.")
                    .arg(advice());
    return box;
}

} // namespace ostrel
