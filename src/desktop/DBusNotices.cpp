// SPDX-License-Identifier: MIT
#include "desktop/DBusNotices.h"

#include "base/Values.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QStringList>
#include <QVariantMap>

namespace ostrel {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString clicked = QStringLiteral("default"); // the action of a click on the notice itself
constexpr int usualTime = -1;

/// An urgent notice stays until the operator has seen it.
uchar urgencyOf(News news) {
    constexpr uchar normal = 1;
    constexpr uchar critical = 2;
    return news == News::RunEnded ? normal : critical;
}

QDBusMessage callTo(const char *method) {
    return QDBusMessage::createMethodCall(service, path, service, QLatin1String(method));
}

} // namespace

DBusNotices::DBusNotices(std::function<QDBusConnection()> openBus)
    : bus_([this, open = std::move(openBus)] {
          QDBusConnection bus = open();
          // From any sender: to look for the service's owner would wait for the bus.
          bus.connect(QString(), path, service, QStringLiteral("ActionInvoked"), this,
                      SLOT(ActionInvoked(uint, QString)));
          return bus;
      }) {
    bus_.opened = [this] { bringUpToDate(); };
}

/// A session without a bus gets none: asked for it, the library would start one.
QDBusConnection DBusNotices::sessionBus() {
    const bool hasBus = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
                        QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
    return hasBus ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

void DBusNotices::show(News news, const QString &title, const QString &text) {
    Notice &notice = notices_[news];
    notice.words = {title, text};
    notice.due = true;
    bringUpToDate();
}

void DBusNotices::withdraw(News news) {
    Notice &notice = notices_[news];
    notice.due |= notice.words.has_value();
    notice.words.reset();
    bringUpToDate();
}

void DBusNotices::bringUpToDate() {
    QDBusConnection *bus = bus_.get();
    if (bus == nullptr || !bus->isConnected())
        return;
    for (auto &[news, notice] : notices_) {
        if (notice.asked || !std::exchange(notice.due, false))
            continue;
        if (notice.words)
            send(news, notice, *bus);
        else
            close(notice, *bus);
    }
}

void DBusNotices::send(News news, Notice &notice, QDBusConnection &bus) {
    QDBusMessage call = callTo("Notify");
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(urgencyOf(news))},
                            {QStringLiteral("desktop-entry"), QStringLiteral("ostrel")}};
    call << QLatin1String(AppTitle) << notice.id << QStringLiteral("ostrel") << notice.words->first
         << notice.words->second << QStringList{clicked, tr("Show")} << hints << usualTime;
    notice.asked = true;
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, &notice] {
        const QDBusPendingReply<uint> reply = *answer;
        answer->deleteLater();
        notice.asked = false;
        notice.id = reply.isValid() ? reply.value() : 0;
        bringUpToDate();
    });
}

void DBusNotices::close(Notice &notice, QDBusConnection &bus) {
    if (notice.id == 0)
        return;
    QDBusMessage call = callTo("CloseNotification");
    call << std::exchange(notice.id, 0);
    bus.asyncCall(call);
}

void DBusNotices::ActionInvoked(uint id, const QString &action) {
    for (const auto &[news, notice] : notices_) {
        if (notice.id == id && id != 0 && action == clicked && chosen)
            return chosen();
    }
}

} // namespace ostrel
