// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;

namespace ostrel {

class CommandButton;

/// The window that the program begins with; later it is the About box. It has no caption and cannot be moved or closed
/// but by its button.
class frmStartup : public QDialog {
    Q_OBJECT
public:
    frmStartup();

    /// Without the button there is only the picture.
    void showClose(bool on);
    /// As the About box, until it is closed.
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
