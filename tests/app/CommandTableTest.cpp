// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QMenu>

#include <ostream>

namespace {

struct State {
    bool file, linked, recording, logging;

    friend std::ostream &operator<<(std::ostream &out, const State &state) {
        return out << (state.file ? "a file's tab" : "the recorder's tab") << (state.linked ? ", linked" : "")
                   << (state.recording ? ", recording" : "") << (state.logging ? ", logging" : "");
    }
};

struct Row {
    const char *commands;
    bool (*enabled)(const State &);
};

// clang-format off
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
    {"mnuSaveLog",                                      [](const State &) { return false; }}, // it was not written yet
};
// clang-format on

class CommandTableTest : public testing::Test, protected ProgramFixture {
protected:
    /// Brings the program into the state, the file opened before or after the record command.
    void reach(const State &state, bool fileFirst) {
        start();
        if (state.linked)
            link();
        if (!state.logging)
            trigger("mnuLogOff");
        if (state.file && fileFirst)
            open("run.chd", 1);
        if (state.recording)
            trigger("mnuStart");
        if (state.file && !fileFirst)
            open("run.chd", 1);
    }
    /// The state of each command that is not as the table has it, and each command that is missing there.
    QStringList deviations(const State &state) {
        std::map<QString, bool> states;
        for (const Row &row : table) {
            for (const QString &command : QString(row.commands).split(' '))
                states[command] = row.enabled(state);
        }
        QStringList wrong;
        for (const QAction *action :
             find<frmMain>("frmMain")->findChildren<QAction *>(QRegularExpression("^(mnu|cmd)"))) {
            if (action->isSeparator() || action->menu() != nullptr)
                continue;
            const auto expected = states.extract(action->objectName());
            if (expected.empty() || expected.mapped() != action->isEnabled())
                wrong << action->objectName() + (action->isEnabled() ? " is on" : " is off");
        }
        for (const auto &[command, expected] : states)
            wrong << command + " is missing";
        return wrong;
    }
};

TEST_F(CommandTableTest, EveryCommandIsAvailableWhereItShouldBe) {
    for (const bool file : {false, true}) {
        for (const auto &[linked, recording] : {std::pair{false, false}, {true, false}, {true, true}}) {
            for (const bool logging : {false, true}) {
                for (const bool fileFirst : {false, true}) {
                    const State state{file, linked, recording, logging};
                    reach(state, fileFirst);
                    EXPECT_EQ(deviations(state), QStringList()) << state << (fileFirst ? ", the file first" : "");
                    program.reset();
                }
            }
        }
    }
}

TEST_F(CommandTableTest, TheTableHoldsThroughATabSwitchAStopAndALostLink) {
    State state{.file = true, .linked = true, .recording = false, .logging = true};
    reach(state, true);
    const auto expectInFrontOf = [&](int tab, bool recording) {
        bringToFront(tab);
        state.file = tab != 0;
        state.recording = recording;
        EXPECT_EQ(deviations(state), QStringList()) << state;
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
    state.linked = false;
    expectInFrontOf(1, false);
    expectInFrontOf(0, false);
}

} // namespace
