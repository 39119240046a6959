// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

namespace ostrel {

/// Gives a form, a control or a menu item the number of its help topic; 0 is the index. An object without a number has
/// that of its container or, for a form, of its parent form.
void setHelpContext(QObject &object, int HelpContextID);

/// Handles the key F1 in every form of the program: asks for the topic of the highlighted menu item, or else of the
/// control with the focus.
class HelpKey : public QObject {
    Q_OBJECT
public:
    explicit HelpKey(std::function<void(int HelpContextID)> showTopic);

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    std::function<void(int)> showTopic_;
};

} // namespace ostrel
