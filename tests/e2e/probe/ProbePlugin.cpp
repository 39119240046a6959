// SPDX-License-Identifier: MIT
#include "ProbeServer.h"

#include <QGenericPlugin>

/// Loaded by QT_QPA_GENERIC_PLUGINS=ostrelprobe with the folder above generic/ in QT_PLUGIN_PATH.
class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "ostrelprobe.json")

public:
    QObject *create(const QString &, const QString &) override {
        return new ProbeServer(qEnvironmentVariable("OSTREL_PROBE_SOCKET"));
    }
};

#include "ProbePlugin.moc"
