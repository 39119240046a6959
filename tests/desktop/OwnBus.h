// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

/// A D-Bus of the test's own, as long as this lives.
class OwnBus {
public:
    OwnBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead())
            address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }

    ~OwnBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

    /// False without a dbus-daemon on this machine.
    bool isUp() const { return !address_.isEmpty(); }
    QDBusConnection connection(const QString &name) const { return QDBusConnection::connectToBus(address_, name); }
    /// A connection on which `service` stands at `path`.
    QDBusConnection with(QObject &service, const QString &path, const QString &name) const {
        QDBusConnection bus = connection(name);
        bus.registerObject(path, &service, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        return bus;
    }

private:
    QProcess daemon_;
    QString address_;
};
