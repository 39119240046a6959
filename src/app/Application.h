// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"

#include <QApplication>

#include <functional>

namespace ostrel {

/// Catches what a slot or an event handler lets fly, from inside a modal dialog too, before it ends the program.
class Application : public QApplication {
    Q_OBJECT
public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Meets what was caught; `place` names who was at work.
    std::function<void(const RunTimeError &error, const QString &place)> lastNet;
};

} // namespace ostrel
