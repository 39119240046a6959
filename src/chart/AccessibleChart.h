// SPDX-License-Identifier: MIT
#pragma once

#include "chart/Quillchart.h"

#include <QAccessibleWidget>

namespace ostrel {

/// The chart for screen readers: a text that is read line by line, with title, axes, numbers and marks.
class AccessibleChart : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleChart(Quillchart &chart);

    /// Makes screen readers see every chart; may be called again.
    static void install();

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text part) const override;

    // The text; there is no selection and no caret in it.
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QString attributes(int offset, int *startOffset, int *endOffset) const override;
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    void selection(int, int *startOffset, int *endOffset) const override { *startOffset = *endOffset = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    void scrollToSubstring(int, int) override {}

private:
    Quillchart &chart_;
};

} // namespace ostrel
