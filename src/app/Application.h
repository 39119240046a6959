// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"

#include <QApplication>

#include <functional>

namespace ostrel {

/// Catches the exceptions of slots and event handlers, from inside a modal dialog too, which would end the program.
class Application : public QApplication {
    Q_OBJECT
public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Handles a caught error; `place` names the object whose event was being handled.
    std::function<void(const RunTimeError &error, const QString &place)> lastNet;
};

} // namespace ostrel
