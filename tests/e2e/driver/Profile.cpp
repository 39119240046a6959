// SPDX-License-Identifier: MIT
#include "Profile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <unistd.h>

#include <stdexcept>

Profile::Profile() {
    QByteArray ports = "[Ports]\n";
    for (int port = 1; port <= 2; ++port)
        ports += QByteArray::number(port) + '=' + file(QString{"instrument%1"}.arg(port)).toUtf8() + '\n';
    for (int port = 3; port <= 10; ++port)
        ports += QByteArray::number(port) + '=' + file("none").toUtf8() + '\n';
    QDir{folder_.path()}.mkpath("config/ostrel");
    write("config/ostrel/Ostrel MS.ini", ports);
}

void Profile::write(const QString &name, const QByteArray &content) const {
    QFile target{file(name)};
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
        throw std::runtime_error("cannot write " + target.fileName().toStdString());
}

void Profile::giveTo(unsigned user) const {
    const auto give = [user](const QString &path) { return ::lchown(path.toUtf8().constData(), user, user) == 0; };
    bool given = give(folder_.path());
    for (QDirIterator all(folder_.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
         all.hasNext();)
        given &= give(all.next());
    if (!given)
        throw std::runtime_error("the profile cannot be given away");
}

QProcessEnvironment Profile::environment(const QString &plugin) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // clang-format off
    const std::pair<const char *, QString> variables[] = {
        {"QT_QPA_PLATFORM",        "offscreen"},
        {"QT_QPA_GENERIC_PLUGINS", plugin},
        {"QT_PLUGIN_PATH",         PLUGIN_FOLDER},
        {"XDG_CONFIG_HOME",        file("config")},
        {"XDG_DATA_HOME",          file("data")},
        {"HOME",                   file("")},
        {"LC_ALL",                 "C.UTF-8"},
    };
    // clang-format on
    for (const auto &[name, value] : variables)
        environment.insert(name, value);
    return environment;
}
