// SPDX-License-Identifier: MIT
#include "documents/Documents.h"

namespace ostrel {

Documents::Documents(const Uses &on)
    : errors(on.values.link, on.prompts, on.commands, {on.values.error, on.ComPort, on.clock}, on.errorLog),
      settings(on.values.options, on.values.error, on.store, errors),
      openFiles(on.values.tabs, on.charts, on.window, on.ComDlg, on.prompts),
      saveFiles(on.values.tabs, on.values.run, on.charts, on.window, on.ComDlg, on.prompts, errors),
      clearAndClose(on.values.tabs, on.values.run, on.charts, on.window, on.prompts, errors, saveFiles),
      log({on.values.link, on.values.tabs, on.values.identity, on.ownLogDirectory}, on.values.run, on.values.options,
          on.values.log, on.logs, on.TimerSaveLog, on.logWindow, on.ComDlg, errors, on.notices),
      TimerSaveLog_(on.TimerSaveLog) {}

void Documents::bind(Commands &commands, const Guard &guard) {
    commands.bind(QStringLiteral("mnuOpenData"), [this] { openFiles.mnuOpenData_Click(); });
    commands.bind(QStringLiteral("mnuOpenLog"), [this] { openFiles.mnuOpenLog_Click(); });
    commands.bind(QStringLiteral("mnuClose"), [this] { clearAndClose.mnuClose_Click(); });
    commands.bind(QStringLiteral("mnuClear"), [this] { clearAndClose.mnuClear_Click(); });
    commands.bind(QStringLiteral("mnuSaveData"), [this] { saveFiles.mnuSaveData_Click(); });
    commands.bind(QStringLiteral("mnuSaveDataAs"), [this] { saveFiles.mnuSaveDataAs_Click(); });
    commands.bind(QStringLiteral("mnuSaveSlectedData"), [this] { saveFiles.mnuSaveSlectedData_Click(); });
    commands.bind(QStringLiteral("mnuSaveLog"), [this] { log.mnuSaveLog_Click(); });
    commands.bind(QStringLiteral("mnuLogOn"), [this] { log.mnuLogOn_Click(); });
    commands.bind(QStringLiteral("mnuLogOff"), [this] { log.mnuLogOff_Click(); });

    TimerSaveLog_.Tick = guard("TimerSaveLog_Timer", [this] { log.TimerSaveLog_Timer(); });
}

} // namespace ostrel
