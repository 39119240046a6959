// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <functional>

namespace ostrel {

/// Shows the method that the instrument sent with a run. Made anew each time it is shown.
class frmMethod : public QDialog {
    Q_OBJECT
public:
    /// `release` releases the toolbar button of this window, which unloads the window.
    frmMethod(const QString &MethodText, std::function<void()> release, QWidget *parent);

    void CloseMethod() { release_(); }
    void unload() { done(Accepted); }

    void reject() override { CloseMethod(); } ///< Escape

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    std::function<void()> release_;
};

} // namespace ostrel
