// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace ostrel {

/// Looks after every window of the program that comes up: none ends beyond the screen, where no hand reaches its
/// buttons, and a dialog whose parent is not shown stands in the middle of the screen.
class WindowsOnScreen : public QObject {
    Q_OBJECT
public:
    WindowsOnScreen();

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void comesUp(QWidget &window);

    std::vector<QPointer<QWidget>> framed_; ///< came up, and the desktop has not drawn their frames yet
};

} // namespace ostrel
