// SPDX-License-Identifier: MIT
#include "DocumentsFixture.h"

namespace {

class ClearAndCloseTest : public DocumentsTest {
protected:
    void clear(BoxAnswer answer) {
        prompts.answers = {answer};
        clearAndClose.mnuClear_Click();
    }
    void close(int tab, BoxAnswer answer = BoxAnswer::No) {
        tabs.CurrentChart = tab;
        prompts.answers = {answer};
        clearAndClose.mnuClose_Click();
    }
};

TEST_F(ClearAndCloseTest, anUnsavedRunIsClearedOnlyOnceItIsSavedOrGivenUp) {
    chart[0].lastTime = 20;
    tabs.ChartSaved[0] = false;
    clear(BoxAnswer::Cancel);
    clear(BoxAnswer::Yes); // and Cancel in the file dialog
    EXPECT_EQ(chart[0].GetLastTime(), 20);
    ComDlg.answers = {"/run.chd"};
    clear(BoxAnswer::Yes);
    EXPECT_EQ(files["/run.chd"], 20);
    EXPECT_EQ(chart[0].GetLastTime(), 0);
    EXPECT_EQ(heads() + names(0) + " " + chartTime.toStdString(), "Chart Recorder|Chart Recorder| 10");
    clear(BoxAnswer::Cancel); // a saved chart asks nothing
    EXPECT_EQ(prompts.shown.size(), 3U);
    EXPECT_EQ(prompts.beeps, 3);
}

TEST_F(ClearAndCloseTest, theTabsToTheRightMoveUpWithTheirNotes) {
    open({"/a.chd", "/b.chd"});
    open({"/c.chl"}, 30);
    chart[3].notes = "pooled";
    tabs.ChartSaved[3] = false;
    close(1);
    EXPECT_EQ(heads() + "; " + captions[3].toStdString(), "Chart Recorder, b, c*; (empty)");
    EXPECT_EQ(names(2), "c.chl|c|/c.chl");
    EXPECT_EQ(chart[2].notes, "pooled");
    EXPECT_EQ(scrollMax, (std::array{0, 50, 20, -1, 0}));
    EXPECT_EQ(chart[3].GetLastTime(), 0);
    EXPECT_EQ(tabs.CurrentChart, 0);
}

TEST_F(ClearAndCloseTest, aFileThatIsGoneStopsTheMove) {
    open({"/a.chd", "/b.chd", "/c.chd"});
    files.erase("/b.chd");
    close(1);
    EXPECT_EQ(errors.codes, std::vector<qint32>{-19});
    EXPECT_EQ(heads(), "Chart Recorder, b, b, c");
}

TEST_F(ClearAndCloseTest, unsavedNotesAreAskedFor) {
    open({"/a.chl"});
    tabs.ChartSaved[1] = false;
    close(1, BoxAnswer::Cancel);
    ComDlg.CancelError = true;
    close(1, BoxAnswer::Yes); // the cancelled file dialog ends the closing too
    EXPECT_EQ(errors.codes, std::vector<qint32>{RunTimeError::DialogCancelled});
    EXPECT_EQ(heads(), "Chart Recorder, a*");
    ComDlg.answers = {"/a.chd"};
    close(1, BoxAnswer::Yes);
    EXPECT_TRUE(files.contains("/a.chd"));
    EXPECT_EQ(heads(), "Chart Recorder");
}

} // namespace
