// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HelpViewer.h"

#include <memory>

namespace ostrel {

class frmHelp;

/// The help in a window of the program, which is made when it is first shown.
class QtHelpViewer : public HelpViewer {
public:
    QtHelpViewer();
    ~QtHelpViewer() override;

    void showTopic(int HelpContextID) override;

private:
    std::unique_ptr<frmHelp> window_;
};

} // namespace ostrel
