// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include <functional>

class RunTimeError;

/// The last net: a run-time error that no routine meets ends the program, from inside a modal dialog too.
class Application : public QApplication {
    Q_OBJECT
public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Tells the operator of the error and ends the process.
    std::function<void(const RunTimeError &)> lastNet;
};
