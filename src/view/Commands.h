// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"

#include <QString>

#include <functional>
#include <map>

/// Every click routine under the name of its control. Menu, button, key and our own code all come through here. A
/// routine that the program itself runs does not ask whether its menu item is enabled.
class Commands : public RecordCommands, public LinkCommands, public StopCommands {
public:
    explicit Commands(const TabStates &tabs) : tabs_(tabs) {}

    void bind(const QString &control, std::function<void()> routine);
    void run(const QString &control) const;
    /// The operator's click on a menu item or a toolbar button.
    void click(const QString &control) const;
    /// A click on the toolbar button of this key.
    void Toolsbar_ButtonClick(const QString &Key) const;

    void mnuStart_Click() override { run(QStringLiteral("mnuStart")); }
    void mnuStop_Click() override { run(QStringLiteral("mnuStop")); }
    void mnuComPort_Click() override { run(QStringLiteral("mnuComPort")); }
    void mnuLogOff_Click() override { run(QStringLiteral("mnuLogOff")); }
    void mnuExit_Click() override { run(QStringLiteral("mnuExit")); }

private:
    const TabStates &tabs_;
    std::map<QString, std::function<void()>> routines_;
};
