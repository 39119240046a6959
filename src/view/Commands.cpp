// SPDX-License-Identifier: MIT
#include "view/Commands.h"

#include <utility>

namespace {

struct ButtonRow {
    const char *key;
    const char *onRecorder;
    const char *onFile;
};

// clang-format off
constexpr ButtonRow buttons[] = {
    // key          runs, on the recorder's tab   on a file's tab
    {"cmdOpen",     "mnuOpenData",                "mnuOpenData"},
    {"cmdSave",     "mnuSaveData",                "mnuSaveData"},
    {"cmdPrint",    "mnuPrint",                   "mnuPrint"},
    {"cmdClear",    "mnuClear",                   "mnuClose"},
    {"cmdRecord",   "mnuStart",                   "mnuStart"},
    {"cmdStop",     "mnuStop",                    "mnuStop"},
    {"cmdLogOn",    "mnuLogOn",                   "mnuLogOn"},
    {"cmdLogOff",   "mnuLogOff",                  "mnuLogOff"},
    {"cmdMethod",   "cmdMethod",                  "cmdMethod"},
    {"cmdNotes",    "cmdNotes",                   "cmdNotes"},
};
// clang-format on

} // namespace

void Commands::bind(const QString &control, std::function<void()> routine) { routines_[control] = std::move(routine); }

void Commands::run(const QString &control) const { routines_.at(control)(); }

void Commands::click(const QString &control) const {
    if (control.startsWith(QLatin1String("cmd")))
        Toolsbar_ButtonClick(control);
    else
        run(control);
}

void Commands::Toolsbar_ButtonClick(const QString &Key) const {
    for (const ButtonRow &button : buttons) {
        if (Key == QLatin1String(button.key))
            run(QLatin1String(tabs_.CurrentChart == recorderChart ? button.onRecorder : button.onFile));
    }
}
