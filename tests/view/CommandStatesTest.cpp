// SPDX-License-Identifier: MIT
#include "view/ViewFixture.h"

namespace {

class CommandStatesTest : public ViewTest {
protected:
    void record() {
        run.Recording = true;
        states.commandsAt(Moment::Record);
    }
    void stop() {
        run.Recording = false;
        states.commandsAt(Moment::Stop);
    }
    /// The record commands that are on.
    QString recordCommands() {
        QStringList names;
        for (const char *name : {"mnuStart", "cmdRecord", "mnuStop", "cmdStop", "mnuComPort"}) {
            if (on(name))
                names << name;
        }
        return names.join(' ');
    }

    Commands commands{tabs};
};

TEST_F(CommandStatesTest, RecordCommandsFollowLinkAndRecording) {
    EXPECT_EQ(recordCommands(), "mnuComPort");
    states.commandsAt(Moment::SyncFound);
    EXPECT_EQ(recordCommands(), "mnuStart cmdRecord cmdStop mnuComPort");
    record();
    EXPECT_EQ(recordCommands(), "cmdRecord mnuStop cmdStop");
    EXPECT_TRUE(action("cmdRecord")->isChecked());
    stop();
    EXPECT_EQ(recordCommands(), "mnuStart cmdRecord cmdStop mnuComPort");
    EXPECT_TRUE(action("cmdStop")->isChecked() && !action("cmdRecord")->isChecked());
}

TEST_F(CommandStatesTest, RecordingTakesTheRecordersCommandsAway) {
    chooseWindow();
    record();
    EXPECT_FALSE(on("mnuSaveData") || on("mnuClear") || on("cmdPrint") || on("mnuClose") || bar().isEnabled());
    stop();
    EXPECT_TRUE(on("mnuSaveData") && on("mnuClear") && on("cmdPrint") && bar().isEnabled());
}

TEST_F(CommandStatesTest, StopInFullViewLeavesTheBarOff) {
    record();
    stop();
    EXPECT_FALSE(bar().isEnabled());
}

TEST_F(CommandStatesTest, FileInFrontKeepsItsCommands) {
    give(1, 30);
    tabStrip.select(1);
    record();
    EXPECT_TRUE(on("mnuSaveData") && on("mnuClose") && on("cmdClear") && !on("mnuClear"));
    tabStrip.select(0);
    EXPECT_FALSE(on("mnuSaveData") || on("mnuClose") || on("cmdClear"));
    tabStrip.select(1);
    stop();
    EXPECT_TRUE(on("mnuClose") && !on("mnuClear"));
}

TEST_F(CommandStatesTest, LogCommandsTellTheState) {
    EXPECT_TRUE(!on("mnuLogOn") && on("mnuLogOff"));
    states.showLogging(false);
    EXPECT_TRUE(on("mnuLogOn") && !on("mnuLogOff") && action("cmdLogOff")->isChecked());
}

TEST_F(CommandStatesTest, ToolbarRunsTheMenus) {
    QStringList ran;
    for (const char *name : {"mnuClear", "mnuClose", "mnuStart", "mnuPrint"})
        commands.bind(name, [&ran, name] { ran << name; });
    commands.Toolsbar_ButtonClick("cmdClear");
    tabs.CurrentChart = 2;
    for (const char *key : {"cmdClear", "cmdRecord", "cmdPrint"})
        commands.Toolsbar_ButtonClick(key);
    EXPECT_EQ(ran.join(' '), "mnuClear mnuClose mnuStart mnuPrint");
}

} // namespace
