// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace ostrel {

/// Has the task bar call the operator when a modal window comes up while another program is in front. What the
/// operator's own command brings up comes over a window of this program that is active, and calls nobody.
class BoxAlert : public QObject {
    Q_OBJECT
public:
    explicit BoxAlert(std::function<void(QWidget &window)> alert = [](QWidget &window) {
        QApplication::alert(&window);
    });

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    std::function<void(QWidget &)> alert_;
    QPointer<QWidget> alone_; ///< a box over no window
    QTimer whenUp_;
};

} // namespace ostrel
