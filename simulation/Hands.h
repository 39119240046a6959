// SPDX-License-Identifier: MIT
#pragma once

#include "simulation/Chance.h"

class QObject;
class QWidget;

namespace ostrel {

class Quillchart;

/// The operator's hands.
class Hands {
public:
    explicit Hands(Chance &chance) : chance_(chance) {}

    /// One of the commands and controls that are within reach in a window; null for none.
    QObject *reachFor(QWidget &window);
    /// Does with it what operators do, and sometimes what their reflexes do.
    void use(QWidget &window, QObject &object);

private:
    bool reflex(QWidget &window);
    void useWidget(QWidget &widget);
    void useChart(Quillchart &chart);

    Chance &chance_;
};

} // namespace ostrel
