// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QMenu>
#include <gmock/gmock.h>

namespace {

struct State {
    bool file, linked, recording, logging;
};

struct Row {
    const char *commands;
    bool (*enabled)(const State &);
};

// clang-format off
// What is to be had, and when; the command that saves the log only once it was written.
constexpr Row table[] = {
    {"mnuOpenData mnuOpenLog mnuExit mnuLogName mnuMethod mnuNotes mnuIntro mnuIndex mnuAbout "
     "cmdOpen cmdMethod cmdNotes cmdLogOn cmdLogOff",   [](const State &) { return true; }},
    {"mnuSaveData mnuSaveDataAs mnuSaveSlectedData mnuExport mnuPrintSetup mnuPrint "
     "cmdSave cmdPrint cmdClear",                       [](const State &s) { return s.file || !s.recording; }},
    {"mnuClose",                                        [](const State &s) { return s.file; }},
    {"mnuClear",                                        [](const State &s) { return !s.file && !s.recording; }},
    {"mnuStart",                                        [](const State &s) { return s.linked && !s.recording; }},
    {"mnuStop",                                         [](const State &s) { return s.recording; }},
    {"mnuComPort",                                      [](const State &s) { return !s.recording; }},
    {"cmdRecord cmdStop",                               [](const State &s) { return s.linked; }},
    {"mnuLogOn",                                        [](const State &s) { return !s.logging; }},
    {"mnuLogOff",                                       [](const State &s) { return s.logging; }},
};
// clang-format on

void expectTable(const State &state, const char *way) {
    QStringList expected;
    for (const Row &row : table)
        expected << (row.enabled(state) ? QString(row.commands).split(' ') : QStringList());
    QStringList enabled;
    for (const QAction *action : find<frmMain>("frmMain")->findChildren<QAction *>(QRegularExpression("^(mnu|cmd)"))) {
        if (action->isEnabled() && !action->isSeparator() && action->menu() == nullptr)
            enabled << action->objectName();
    }
    EXPECT_THAT(enabled, testing::UnorderedElementsAreArray(expected))
        << "file " << state.file << ", linked " << state.linked << ", recording " << state.recording << ", logging "
        << state.logging << ", " << way;
}

class CommandTableTest : public testing::Test, protected ProgramFixture {};

TEST_F(CommandTableTest, EveryCommandIsAvailableWhereItShouldBe) {
    for (const bool file : {false, true}) {
        for (const auto &[linked, recording] : {std::pair{false, false}, {true, false}, {true, true}}) {
            for (const bool logging : {false, true}) {
                for (const bool fileFirst : {false, true}) {
                    start();
                    if (linked)
                        link();
                    if (!logging)
                        trigger("mnuLogOff");
                    if (file && fileFirst)
                        open("run.chd", 1);
                    if (recording)
                        trigger("mnuStart");
                    if (file && !fileFirst)
                        open("run.chd", 1);
                    expectTable({file, linked, recording, logging}, fileFirst ? "the file first" : "the file last");
                    program.reset();
                }
            }
        }
    }
}

TEST_F(CommandTableTest, TheTableHoldsThroughATabSwitchAStopAndALostLink) {
    start();
    link();
    open("run.chd", 1);
    const auto expectInFrontOf = [&](int tab, bool recording, bool linked = true) {
        bringToFront(tab);
        expectTable({tab != 0, linked, recording, true}, "switched to");
    };
    trigger("mnuStart"); // behind the file
    expectInFrontOf(0, true);
    expectInFrontOf(1, true);
    trigger("mnuStop");
    expectInFrontOf(1, false);
    expectInFrontOf(0, false);
    trigger("mnuStart");
    bringToFront(1);
    meanwhile([this] { click("cmdOk"); });
    clock.advance(10s);
    expectInFrontOf(1, false, false);
    expectInFrontOf(0, false, false);
}

} // namespace
