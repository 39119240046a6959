// SPDX-License-Identifier: MIT
#pragma once

#include "chart/Quillchart.h"
#include "forms/Shapes.h"

#include <QApplication>
#include <QWidget>

#include <ostream>

using namespace ostrel;

/// Lets a failed comparison of texts be read.
inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

/// A window, a control, a command or a timer of this process by its name, whether it is shown or not.
template <typename Kind>
Kind *find(const QString &name) {
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top->objectName() == name)
            return qobject_cast<Kind *>(top);
        if (auto *found = top->findChild<Kind *>(name))
            return found;
    }
    return nullptr;
}

/// The lamp of the link is green.
inline bool led() { return find<Led>("ShapeReciveLed")->FillColor() == QColor(0, 255, 0); }

/// The texts of a chart's marks in the order of their times, between blanks.
inline QString marksOf(const Quillchart &chart) {
    QStringList labels;
    for (const EventMark &mark : chart.run().data().marks)
        labels << mark.label;
    return labels.join(' ');
}
