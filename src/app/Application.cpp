// SPDX-License-Identifier: MIT
#include "app/Application.h"

#include <QPointer>

namespace ostrel {

namespace {

QString placeOf(const QObject &receiver) {
    const QString name = receiver.objectName();
    return name.isEmpty() ? QString::fromLatin1(receiver.metaObject()->className()) : name;
}

} // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {}

bool Application::notify(QObject *receiver, QEvent *event) {
    const QPointer<QObject> still = receiver;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        lastNet(caughtError(), still ? placeOf(*still) : QString());
    }
    return true;
}

} // namespace ostrel
