// SPDX-License-Identifier: MIT
#include "view/Clicks.h"

namespace ostrel {

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

void Clicks::click(const QString &control) const {
    if (control.startsWith(QLatin1String("cmd")))
        Toolsbar_ButtonClick(control);
    else
        commands_.run(control);
}

void Clicks::Toolsbar_ButtonClick(const QString &Key) const {
    for (const ButtonRow &button : buttons) {
        if (Key == QLatin1String(button.key))
            commands_.run(QLatin1String(tabs_.CurrentChart == recorderChart ? button.onRecorder : button.onFile));
    }
}

} // namespace ostrel
