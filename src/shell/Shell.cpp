// SPDX-License-Identifier: MIT
#include "shell/Shell.h"

#include "shell/frmDataRecovery.h"

namespace ostrel {

Shell::Shell(const Uses &on)
    : instances(on.values.identity, on.store, on.prompts, on.clock, on.appPath),
      recovery(on.values.identity, logInfo, on.values.log, instances,
               {on.Chart5, on.commands, on.store, on.prompts,
                [owner = &on.owner](Recovery &offered) { frmDataRecovery(offered, owner).exec(); }}),
      naming(on.values.identity, instances, on.prompts, on.window, &on.owner),
      textWindows(on.values.tabs, on.charts, {on.logNotes, [&log = on.documents.log] { log.writeNow(); }}, on.window,
                  on.prompts, &on.owner),
      exit(on.values.identity, on.values.tabs,
           {on.Chart5, on.documents.log, on.commands, on.logWindow, on.documents.settings, instances, on.prompts,
            on.process, on.leaveDesktop}) {}

void Shell::bind(Commands &commands) {
    commands.bind(QStringLiteral("mnuMethod"), [this] { textWindows.mnuMethod_Click(); });
    commands.bind(QStringLiteral("mnuNotes"), [this] { textWindows.mnuNotes_Click(); });
    commands.bind(QStringLiteral("cmdMethod"), [this] { textWindows.cmdMethod_Click(); });
    commands.bind(QStringLiteral("cmdNotes"), [this] { textWindows.cmdNotes_Click(); });
    commands.bind(QStringLiteral("mnuExit"), [this] { exit.frmMain_Unload(); });
}

} // namespace ostrel
