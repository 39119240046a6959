// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/LateBus.h"
#include "platform/Notices.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace ostrel {

/// Notifications by org.freedesktop.Notifications over the session's bus. Never waits for an answer.
class DBusNotices : public QObject, public Notices {
    Q_OBJECT
public:
    /// `openBus` is called when the bus is first needed, on its own thread.
    explicit DBusNotices(std::function<QDBusConnection()> openBus = &sessionBus);

    void show(News news, const QString &title, const QString &text) override;
    void withdraw(News news) override;

private Q_SLOTS:
    void ActionInvoked(uint id, const QString &action);

private:
    struct Notice {
        std::optional<std::pair<QString, QString>> words; ///< title and text; none: no notice
        bool due = false;                                 ///< the service has not heard of it
        bool asked = false;                               ///< the answer with the id is still to come
        uint id = 0;
    };

    static QDBusConnection sessionBus();
    void bringUpToDate();
    void send(News news, Notice &notice, QDBusConnection &bus);
    void close(Notice &notice, QDBusConnection &bus);

    LateBus bus_;
    std::map<News, Notice> notices_;
};

} // namespace ostrel
