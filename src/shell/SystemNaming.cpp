// SPDX-License-Identifier: MIT
#include "shell/SystemNaming.h"

#include "shell/frmLogName.h"

namespace ostrel {

QString systemCaption(const QString &SystemName) { return QStringLiteral("Ostrel MS - System: ") + SystemName; }

SystemNaming::SystemNaming(Identity &identity, Instances &instances, Prompts &prompts, ShellWindow &window,
                           QWidget *parent)
    : identity_(identity), instances_(instances), prompts_(prompts), window_(window), parent_(parent) {}

void SystemNaming::mnuLogName_Click() {
    const auto named = [this](const QString &SystemName) {
        identity_.SystemName = SystemName;
        window_.setCaption(systemCaption(SystemName));
    };
    frmLogName(identity_.SystemName, prompts_, named, parent_).exec();
    instances_.UpdateRegistry();
}

} // namespace ostrel
