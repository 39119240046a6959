// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/PortSetup.h"
#include "forms/Controls.h"

#include <QDialog>

#include <array>

namespace ostrel {

/// Lets the operator pick the serial port, and tells what is behind each and why one cannot be picked. Made for each
/// showing, on a setup that is loaded; run it with `exec`.
class frmSetup : public QDialog {
    Q_OBJECT
public:
    /// Without `mayCancel` only an OK with a port that opens ends the form.
    frmSetup(PortSetup &setup, bool mayCancel, QWidget *parent);

    void reject() override;

private:
    OptionButton &optCom(int index) const;
    void makeNotes();
    void showChoices();
    QString described(int index) const;
    void showPicked();

    PortSetup &setup_;
    bool mayCancel_;
    std::array<PortFacts, 10> facts_;
};

} // namespace ostrel
