// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Prompts.h"

namespace ostrel {

/// Boxes named "MsgBox" over the window in front. Needs a QApplication.
class QtPrompts : public Prompts {
public:
    BoxAnswer show(const MessageBox &box) override;
    void beep() override;
    void setMousePointer(MousePointer pointer) override;

private:
    MousePointer pointer_ = MousePointer::Default;
};

} // namespace ostrel
