// SPDX-License-Identifier: MIT
#pragma once

#include "base/HelpContexts.h"

#include <QString>

namespace ostrel {

enum class BoxIcon : int { None = 0, Critical = 16, Question = 32, Exclamation = 48, Information = 64 };
enum class BoxButtons { Ok, YesNoCancel, YesNo, OkCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };
enum class MousePointer : int { Default = 0, Hourglass = 11 };

struct MessageBox {
    QString text;
    BoxIcon icon = BoxIcon::None;
    QString caption{}; ///< empty: the application's title
    BoxButtons buttons = BoxButtons::Ok;
    int defaultButton = 1;                     ///< counted from 1
    int HelpContextID = HelpContext::Messages; ///< topic of F1
};

/// Messages to the operator outside the program's windows.
class Prompts {
public:
    virtual ~Prompts() = default;

    /// Modal; events go on being dispatched until the operator answers. Escape and closing the box mean Cancel if that
    /// is one of the answers, or Ok if that is the only one; a box with only Yes and No cannot be closed.
    virtual BoxAnswer show(const MessageBox &box) = 0;
    virtual void beep() = 0;
    virtual void setMousePointer(MousePointer pointer) = 0;
};

} // namespace ostrel
