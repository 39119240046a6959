// SPDX-License-Identifier: MIT
#include "DocumentsFixture.h"

namespace {

using OpenFilesTest = DocumentsTest;

TEST_F(OpenFilesTest, aFileGetsTheNextTabAndComesToTheFront) {
    files["/runs/lysozyme 12.a.chd"] = 60.2F;
    chart[1].uvMax = 1.5F;
    chart[1].whileAtWork = [this] {
        EXPECT_EQ(prompts.pointer, MousePointer::Hourglass);
        EXPECT_EQ(tabs.ChartCount, 2);
    };
    ComDlg.answers = {"/runs/lysozyme 12.a.chd"};
    openFiles.mnuOpenData_Click();
    EXPECT_EQ(heads(), "Chart Recorder, lysozym...");
    EXPECT_EQ(names(1), "lysozyme 12.a.chd|lysozyme 12|/runs/lysozyme 12.a.chd");
    EXPECT_EQ(scrollMax[1], 51);
    EXPECT_EQ(tabs.ChartViews[1].UvMax, 1.5F);
    EXPECT_EQ(tabs.CurrentChart, 1);
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(OpenFilesTest, aFileThatCannotBeReadAndACancelChangeNothing) {
    open({"/a.chd"}, 3.2F);
    EXPECT_EQ(scrollMax[1], 0); // shorter than the window
    ComDlg.answers = {"/gone.chl"};
    openFiles.mnuOpenLog_Click();
    ComDlg.CancelError = true;
    openFiles.mnuOpenLog_Click();
    EXPECT_EQ(heads() + ", " + captions[2].toStdString(), "Chart Recorder, a, (empty)");
    EXPECT_EQ(tabs.CurrentChart, 1);
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(OpenFilesTest, aFifthFileIsRefusedBeforeTheDialog) {
    open({"/a.chd", "/a.chd", "/c.chl", "/d"});
    EXPECT_EQ(heads(), "Chart Recorder, a, a, c, d");
    openFiles.mnuOpenLog_Click();
    EXPECT_TRUE(ComDlg.shown.empty());
    EXPECT_EQ(prompts.shown.at(0).text, "The maximum number of files which can be opened at one time is 4.  To open "
                                        "another file you must close a file which is already open first.");
}

TEST_F(OpenFilesTest, aRunBeyondTheScrollBarStaysNamelessUnderTheHourglass) {
    files["/long.chl"] = 32778;
    ComDlg.answers = {"/long.chl"};
    openFiles.mnuOpenLog_Click();
    EXPECT_EQ(heads(), "Chart Recorder, (empty)");
    EXPECT_EQ(prompts.pointer, MousePointer::Hourglass);
}

} // namespace
