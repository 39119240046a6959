// SPDX-License-Identifier: MIT
#include "DocumentsFixture.h"
#include "base/Steps.h"

namespace {

using SaveFilesTest = DocumentsTest;

TEST_F(SaveFilesTest, theRecorderAsksOnceForItsFileAndKeepsItsCaption) {
    tabs.ChartSaved[0] = false;
    ComDlg.answers = {"/runs/a.b.chd"};
    chart[0].whileAtWork = [this] { EXPECT_EQ(chart[0].title, "a"); }; // the file bears its own name
    save.mnuSaveData_Click();
    EXPECT_EQ(heads() + "|" + names(0), "Chart Recorder||a|/runs/a.b.chd");
    EXPECT_EQ(ComDlg.shown.at(0).flags, 2054);

    chart[0].lastTime = 30;
    chart[0].whileAtWork = [this] { EXPECT_EQ(prompts.pointer, MousePointer::Hourglass); };
    save.mnuSaveData_Click();
    EXPECT_EQ(files["/runs/a.b.chd"], 30);
    EXPECT_EQ(ComDlg.shown.size(), 1U);
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(SaveFilesTest, aLogIsNeverWrittenOver) {
    open({"/run.xCHL"});
    ComDlg.answers = {"/new.chd"};
    save.mnuSaveData_Click();
    EXPECT_EQ(ComDlg.shown.at(0).offered, "");
    EXPECT_EQ(heads() + "|" + names(1), "Chart Recorder, new|new.chd|new|/new.chd");
    save.mnuSaveData_Click();
    save.mnuSaveDataAs_Click();
    EXPECT_EQ(ComDlg.shown.at(1).offered, "/new.chd");
}

TEST_F(SaveFilesTest, aFailedSaveAndASaveOfAStretchChangeNothing) {
    open({"/a.chd"});
    tabs.ChartSaved[1] = false;
    chart[1].diskFull = true;
    ComDlg.answers = {"/b.chd", "/peak.chd", "/peak.chd"};
    save.mnuSaveData_Click();
    save.mnuSaveDataAs_Click();
    EXPECT_EQ(chart[1].title, "a");
    save.mnuSaveSlectedData_Click();
    EXPECT_EQ(errors.codes, (std::vector<qint32>{-16, -16, -16}));
    chart[1].diskFull = false;
    save.mnuSaveSlectedData_Click();
    EXPECT_TRUE(files.contains("/peak.chd"));
    EXPECT_EQ(heads() + "|" + names(1), "Chart Recorder, a*|a.chd|a|/a.chd");
}

TEST_F(SaveFilesTest, aCancelEndsQuietlyUntilCancelErrorStands) {
    save.mnuSaveDataAs_Click();
    save.mnuSaveSlectedData_Click();
    EXPECT_TRUE(files.empty() && errors.codes.empty());
    ComDlg.CancelError = true;
    EXPECT_EQ(errorNumberOf([this] { save.mnuSaveData_Click(); }), RunTimeError::DialogCancelled);
}

} // namespace
