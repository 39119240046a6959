// SPDX-License-Identifier: MIT
#include "app/Application.h"

#include "base/RunTimeError.h"

#include <new>

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {}

bool Application::notify(QObject *receiver, QEvent *event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RunTimeError &error) {
        lastNet(error);
    } catch (const std::bad_alloc &) {
        lastNet(RunTimeError(RunTimeError::OutOfMemory));
    }
    return true;
}
