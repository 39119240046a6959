// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "view/frmSetup.h"

namespace ostrel {

/// Makes frmSetup for each showing, over the window that it is given.
class MainSetupDialog : public SetupDialog {
public:
    explicit MainSetupDialog(QWidget &owner) : owner_(owner) {}

    void show(PortSetup &setup, bool mayCancel) override { frmSetup(setup, mayCancel, &owner_).exec(); }

private:
    QWidget &owner_;
};

} // namespace ostrel
