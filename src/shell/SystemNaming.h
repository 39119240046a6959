// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/Prompts.h"
#include "shell/Instances.h"
#include "shell/ShellPorts.h"

#include <QWidget>

namespace ostrel {

/// The caption of the main window for a named system.
QString systemCaption(const QString &SystemName);

/// The command that names the instrument's system.
class SystemNaming {
public:
    /// `parent` is the dialog's parent.
    SystemNaming(Identity &identity, Instances &instances, Prompts &prompts, ShellWindow &window, QWidget *parent);

    void mnuLogName_Click();

private:
    Identity &identity_;
    Instances &instances_;
    Prompts &prompts_;
    ShellWindow &window_;
    QWidget *parent_;
};

} // namespace ostrel
