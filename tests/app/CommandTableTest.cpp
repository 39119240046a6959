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

using Rule = bool (*)(const State &);

constexpr Rule always = [](const State &) { return true; };
constexpr Rule onFiles = [](const State &s) { return s.file; };
constexpr Rule onData = [](const State &s) { return s.file || !s.recording; };

struct Row {
    const char *command;
    Rule enabled;
};

// clang-format off
constexpr Row table[] = {
    {"mnuOpenData",        always},
    {"mnuOpenLog",         always},
    {"mnuClose",           onFiles},
    {"mnuSaveData",        onData},
    {"mnuSaveDataAs",      onData},
    {"mnuSaveSlectedData", onData},
    {"mnuSaveLog",         [](const State &) { return false; }}, // before the log was first written
    {"mnuExport",          onData},
    {"mnuPrintSetup",      onData},
    {"mnuPrint",           onData},
    {"mnuExit",            always},
    {"mnuStart",           [](const State &s) { return s.linked && !s.recording; }},
    {"mnuStop",            [](const State &s) { return s.recording; }},
    {"mnuClear",           [](const State &s) { return !s.file && !s.recording; }},
    {"mnuLogOn",           [](const State &s) { return !s.logging; }},
    {"mnuLogOff",          [](const State &s) { return s.logging; }},
    {"mnuLogName",         always},
    {"mnuComPort",         [](const State &s) { return !s.recording; }},
    {"mnuMethod",          always},
    {"mnuNotes",           always},
    {"mnuIntro",           always},
    {"mnuIndex",           always},
    {"mnuAbout",           always},
    {"cmdOpen",            always},
    {"cmdSave",            onData},
    {"cmdPrint",           onData},
    {"cmdClear",           onData},
    {"cmdRecord",          [](const State &s) { return s.linked; }},
    {"cmdStop",            [](const State &s) { return s.linked; }},
    {"cmdMethod",          always},
    {"cmdNotes",           always},
    {"cmdLogOn",           always},
    {"cmdLogOff",          always},
};
// clang-format on

class CommandTableTest : public testing::Test, protected ProgramFixture {
protected:
    void trigger(const char *command) { find<QAction>(command)->trigger(); }

    /// Brings the program into the state, the file opened before or after the record command.
    void reach(const State &state, bool fileFirst) {
        start();
        const auto openFile = [&] {
            if (!state.file)
                return;
            const QString path = folder.filePath("run.chd");
            ASSERT_TRUE(chart(0).SaveDataFile(path));
            ComDlg.answers = {path};
            trigger("mnuOpenData");
        };
        if (state.linked)
            link();
        if (!state.logging)
            trigger("mnuLogOff");
        if (fileFirst)
            openFile();
        if (state.recording)
            trigger("mnuStart");
        if (!fileFirst)
            openFile();
    }

    /// The state of each command that is not as the table has it, and each command that is missing there.
    QStringList deviations(const State &state) {
        std::map<QString, Rule> rules;
        for (const Row &row : table)
            rules[row.command] = row.enabled;
        QStringList wrong;
        for (const QAction *action :
             find<frmMain>("frmMain")->findChildren<QAction *>(QRegularExpression("^(mnu|cmd)"))) {
            if (action->isSeparator() || action->menu() != nullptr)
                continue;
            const auto rule = rules.extract(action->objectName());
            if (rule.empty() || rule.mapped()(state) != action->isEnabled())
                wrong << action->objectName() + (action->isEnabled() ? " is on" : " is off");
        }
        for (const auto &[command, rule] : rules)
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

TEST_F(CommandTableTest, TheTableHoldsThroughATabSwitchAndAStop) {
    reach({.file = true, .linked = true, .recording = false, .logging = true}, true);
    auto *TabChart = find<QTabBar>("TabChart");
    trigger("mnuStart"); // behind the file
    TabChart->setCurrentIndex(0);
    EXPECT_EQ(deviations({.file = false, .linked = true, .recording = true, .logging = true}), QStringList());
    TabChart->setCurrentIndex(1);
    trigger("mnuStop");
    EXPECT_EQ(deviations({.file = true, .linked = true, .recording = false, .logging = true}), QStringList());
    TabChart->setCurrentIndex(0);
    EXPECT_EQ(deviations({.file = false, .linked = true, .recording = false, .logging = true}), QStringList());
}

TEST_F(CommandTableTest, ALostLinkTakesTheRecordCommandsOnEveryTab) {
    reach({.file = true, .linked = true, .recording = true, .logging = true}, true);
    meanwhile([this] { QTest::mouseClick(find<QWidget>("cmdOk"), Qt::LeftButton); });
    clock.advance(10s);
    EXPECT_EQ(deviations({.file = true, .linked = false, .recording = false, .logging = true}), QStringList());
}

} // namespace
