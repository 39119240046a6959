// SPDX-License-Identifier: MIT
#include "help/QtHelpViewer.h"

#include "help/frmHelp.h"

namespace ostrel {

QtHelpViewer::QtHelpViewer() = default;

QtHelpViewer::~QtHelpViewer() = default;

void QtHelpViewer::showTopic(int HelpContextID) {
    if (HelpFile.isEmpty())
        return;
    if (!window_)
        window_ = std::make_unique<frmHelp>(HelpFile);
    window_->showTopic(HelpContextID);
}

} // namespace ostrel
