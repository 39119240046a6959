// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "view/frmSetup.h"

/// Makes frmSetup for each showing, over the window that it is given.
class SetupForm : public SetupDialog {
public:
    explicit SetupForm(QWidget &owner) : owner_(owner) {}

    void show(PortSetup &setup, bool mayCancel) override { frmSetup(setup, mayCancel, &owner_).exec(); }

private:
    QWidget &owner_;
};
