// SPDX-License-Identifier: MIT
#pragma once

#include "shell/Recovery.h"

#include <QDialog>

class QListWidget;
class QListWidgetItem;
class QVBoxLayout;

namespace ostrel {

class CommandButton;

/// The list of left-over logs, for the operator to choose from. Made anew each time, after Recovery has searched; run
/// it with `exec`. Closing it leaves all left-overs for the next start.
class frmDataRecovery : public QDialog {
    Q_OBJECT
public:
    frmDataRecovery(Recovery &recovery, QWidget *parent);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void makePrompts(QVBoxLayout &form);
    void makeList();
    void makeButtons(QVBoxLayout &form);
    void showRows();
    void placeHeads();
    void lstLogFiles_ItemCheck(const QListWidgetItem &item);

    Recovery &recovery_;
    QWidget *heads_;
    QListWidget *lstLogFiles_;
    CommandButton *cmdRecoverButton_;
    CommandButton *cmdDoneButton_;
    bool pressedOnText_ = false;
};

} // namespace ostrel
