// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;

namespace ostrel {

class CommandButton;

/// The splash window at the start; later it is the About box. It has no caption, cannot be moved, and is closed only by
/// its button or Escape.
class frmStartup : public QDialog {
    Q_OBJECT
public:
    frmStartup();

    /// Shows or hides the Close button.
    void showClose(bool on);
    /// Shows it as the About box until it is closed.
    void showAbout(QWidget *parent);

    void reject() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void CenterSplash();

    QLabel *picSplash_;
    CommandButton *cmdClose_;
};

} // namespace ostrel
