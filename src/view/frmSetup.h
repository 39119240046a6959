// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/PortSetup.h"
#include "forms/Controls.h"

#include <QDialog>

namespace ostrel {

/// Lets the operator pick the serial port. Made for each showing, on a setup that is loaded; run it with `exec`.
class frmSetup : public QDialog {
    Q_OBJECT
public:
    /// Without `mayCancel` only an OK with a port that opens ends the form.
    frmSetup(PortSetup &setup, bool mayCancel, QWidget *parent);

    void reject() override;

private:
    void showChoices();

    PortSetup &setup_;
    bool mayCancel_;
};

} // namespace ostrel
