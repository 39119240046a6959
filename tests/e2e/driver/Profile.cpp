// SPDX-License-Identifier: MIT
#include "Profile.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

Profile::Profile() {
    QByteArray ports = "[Ports]\n";
    for (int port = 1; port <= 10; ++port)
        ports += QByteArray::number(port) + '=' + file(QString{"instrument%1"}.arg(port)).toUtf8() + '\n';
    QDir{folder_.path()}.mkpath("config/ostrel");
    write("config/ostrel/Ostrel MS.ini", ports);
}

void Profile::write(const QString &name, const QByteArray &content) const {
    QFile target{file(name)};
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
        throw std::runtime_error("cannot write " + target.fileName().toStdString());
}

void Profile::enter() const {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", file("config").toUtf8());
    qputenv("XDG_DATA_HOME", file("data").toUtf8());
    qputenv("HOME", file("").toUtf8());
}
