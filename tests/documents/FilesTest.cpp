// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "documents/FileNames.h"

#include <QDropEvent>
#include <QMimeData>

namespace {

/// The commands on files. A name in a folder that is not there can neither be read nor written.
struct FilesTest : StartedProgram {
    int barEnd(int tab) { return find<ScrollEntry>(QString("ScrollChart(%1)").arg(tab))->Max(); }
    /// A recording has left its data unsaved.
    void record() {
        link();
        trigger("mnuStart");
        play(". . .");
        trigger("mnuStop");
    }
    void writeNotes(const QString &notes) {
        meanwhile([this, notes] {
            QTest::keyClicks(find<QWidget>("txtNotes"), notes);
            click("cmdOK");
        });
        trigger("mnuNotes");
    }
    /// Its file dialog is answered with this one.
    void choose(const QString &command, const QString &file) {
        ComDlg.answers = {file};
        trigger(command);
    }
    void answer(BoxAnswer answer, const QString &command, const QString &file = {}) {
        prompts.answers = {answer};
        choose(command, file);
    }
    float minutesIn(const QString &name) {
        RunDocument run;
        EXPECT_TRUE(run.LoadDataFile(path(name)));
        return run.GetLastTime();
    }
};

using RunningLogTest = FilesTest;

TEST_F(FilesTest, aFileGetsTheNextTabWithItsNameAndAxes) {
    const QString name = "lysozyme 12 with a name that no tab has room for";
    enter("cmbYAxis(0)", "1.5");
    give(60.2F);
    choose("mnuSaveDataAs", path(name + ".chd"));
    enter("cmbYAxis(0)", "2");
    prompts.pointerChanges = 0;
    open(name + ".chd");
    const QStringList tab = tabs().at(1).split('|');
    EXPECT_TRUE(tab[0].startsWith("lyso") && tab[0].endsWith("..."));
    EXPECT_EQ(tab[1] + '|' + tab[2], name + ".chd|" + name);
    EXPECT_EQ(barEnd(1), 51);
    EXPECT_EQ(text("cmbYAxis(0)"), "1.500");
    EXPECT_TRUE(prompts.pointerChanges == 2 && prompts.pointer == MousePointer::Default);
}

TEST_F(FilesTest, aFileThatCannotBeReadAndACancelChangeNothing) {
    open("a.chd", 3.2F);
    EXPECT_EQ(barEnd(1), 0); // shorter than the window
    open("none/gone.chl");
    ComDlg.CancelError = true;
    trigger("mnuOpenLog");
    EXPECT_EQ(tabs().mid(1), QStringList("a|a.chd|a"));
    EXPECT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(FilesTest, aFifthFileIsRefusedBeforeTheDialog) {
    for (const char *name : {"a.chd", "a.chd", "c.chl", "d"})
        open(name, 1);
    trigger("mnuOpenLog");
    EXPECT_EQ(tabs().size(), 5);
    EXPECT_EQ(ComDlg.shown.size(), 4U);
    EXPECT_EQ(told(), "The maximum number of files which can be opened at one time is 4.  To open another file you "
                      "must close a file which is already open first.");
    QMimeData files;
    files.setUrls(QList<QUrl>(9, QUrl::fromLocalFile(path("d.chd"))));
    QDragEnterEvent enter({20, 20}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(find<QWidget>("frmMain"), &enter);
    QDropEvent drop({20, 20}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(find<QWidget>("frmMain"), &drop);
    QCoreApplication::processEvents();
    EXPECT_EQ(prompts.shown.size(), 2U); // not a box for each
}

TEST_F(FilesTest, theRecorderAsksOnceForItsFileAndKeepsItsCaption) {
    record();
    choose("mnuSaveData", path("a.b.chd"));
    EXPECT_EQ(tabs(), QStringList("Chart Recorder||a"));
    EXPECT_EQ(ComDlg.shown.at(0).flags, 2054);
    give(30);
    trigger("mnuSaveData");
    EXPECT_EQ(minutesIn("a.b.chd"), 30);
    EXPECT_EQ(ComDlg.shown.size(), 1U);
    EXPECT_EQ(prompts.pointerChanges, 1 + 2); // an hourglass for the second save alone
    chart(0).SetNotes("corrected");
    trigger("mnuSaveData");
    QStringList changes;
    for (const Provenance::Save &save : chart(0).run().data().provenance.history)
        changes << save.change;
    EXPECT_EQ(changes, QStringList({"first saved", "notes"}));
    open("a.b.chd");
    EXPECT_EQ(chart(1).ChartTitle(), "a"); // the file has its own name
}

TEST_F(FilesTest, aLogIsNeverWrittenOver) {
    open("run.xCHL", 1);
    choose("mnuSaveData", path("new.chd"));
    EXPECT_EQ(ComDlg.shown.back().offered, "");
    EXPECT_EQ(tabs().at(1), "new|new.chd|new");
    trigger("mnuSaveData");
    EXPECT_EQ(ComDlg.shown.size(), 2U);
    trigger("mnuSaveDataAs");
    EXPECT_EQ(ComDlg.shown.back().offered, path("new.chd"));
}

TEST_F(FilesTest, aFailedSaveAndASaveOfAStretchChangeNothing) {
    open("a.chd", 10);
    writeNotes("pH 7");
    QFile::remove(path("a.chd"));
    ASSERT_TRUE(QDir(folder.path()).mkdir("a.chd")); // which no file can replace
    for (const char *command : {"mnuSaveData", "mnuSaveDataAs", "mnuSaveSlectedData"}) {
        choose(command, path("none/b.chd"));
        EXPECT_EQ(prompts.shown.back().caption, "FILE SAVE ERROR!") << command;
    }
    EXPECT_EQ(prompts.shown.size(), 3U);
    chart(1).setTimeAxisMin(8);
    choose("mnuSaveSlectedData", path("peak.chd"));
    EXPECT_EQ(minutesIn("peak.chd"), 2);
    EXPECT_EQ(tabs().at(1), "a|a.chd|a");
    answer(BoxAnswer::Cancel, "mnuClose"); // it is not saved
    EXPECT_EQ(tabs().size(), 2);
}

TEST_F(FilesTest, anUnsavedRunIsClearedOnlyOnceItIsSavedOrGivenUp) {
    record();
    answer(BoxAnswer::Cancel, "mnuClear");
    answer(BoxAnswer::Yes, "mnuClear"); // and Cancel in the file dialog
    EXPECT_EQ(chart(0).SampleCount(), 3);
    answer(BoxAnswer::Yes, "mnuClear", path("run.chd"));
    EXPECT_GT(minutesIn("run.chd"), 0);
    EXPECT_EQ(chart(0).SampleCount(), 0);
    EXPECT_EQ(tabs(), QStringList("Chart Recorder||Chart Recorder"));
    EXPECT_EQ(text("txtChartTime"), "10");
    answer(BoxAnswer::Cancel, "mnuClear"); // a saved chart asks nothing
    EXPECT_EQ(prompts.shown.size(), 3U);
    EXPECT_EQ(prompts.beeps, 3);
    trigger("mnuSaveData"); // a new run has no file yet
    EXPECT_EQ(ComDlg.shown.size(), 3U);
}

TEST_F(FilesTest, theTabsToTheRightMoveUpWithTheirNotesUntilOneIsGone) {
    for (const auto &[name, minutes] : {std::pair{"a.chd", 60}, {"b.chd", 60}, {"c.chl", 30}, {"d.chd", 20}})
        open(name, float(minutes));
    bringToFront(3);
    writeNotes("pooled");
    bringToFront(1);
    trigger("mnuClose");
    EXPECT_EQ(tabs().mid(1), QStringList({"b|b.chd|b", "c|c.chl|c", "d|d.chd|d"}));
    EXPECT_EQ(chart(2).GetNotes(), "pooled");
    EXPECT_EQ((std::array{barEnd(1), barEnd(2), barEnd(3)}), (std::array{50, 20, 10}));
    EXPECT_FALSE(usable("ScrollChart(4)"));
    EXPECT_EQ(chart(4).SampleCount(), 0);
    EXPECT_EQ(find<QTabBar>("TabChart")->currentIndex(), 0);

    bringToFront(2);
    answer(BoxAnswer::Cancel, "mnuClose"); // its notes are not saved
    EXPECT_EQ(prompts.shown.size(), 1U);
    QFile::remove(path("d.chd"));
    answer(BoxAnswer::No, "mnuClose");
    EXPECT_EQ(prompts.shown.back().text, "Disk reading error while closing");
    EXPECT_EQ(tabs().mid(1), QStringList({"b|b.chd|b", "d|d.chd|d", "d|d.chd|d"}));
}

TEST_F(FilesTest, aCloseThatStopsHalfWayShowsTheRunThatMovedUpAsAWhole) {
    for (const char *name : {"a.chd", "b.chd", "c.chd"})
        open(name, 20);
    chart(2).setTimeAxisMin(5); // saved as a window shows it
    ASSERT_TRUE(chart(2).SaveDataFile(path("b.chd")));
    QFile::remove(path("c.chd"));
    bringToFront(1);
    trigger("mnuClose");
    EXPECT_EQ(tabs().mid(1), QStringList({"b|b.chd|b", "c|c.chd|c", "c|c.chd|c"}));
    EXPECT_EQ(chart(1).TimeAxisMin(), 0);
}

TEST_F(FilesTest, unsavedNotesAreAskedFor) {
    open("a.chl", 1);
    writeNotes("pH 7");
    ComDlg.CancelError = true;
    answer(BoxAnswer::Yes, "mnuClose"); // the cancelled file dialog ends the closing too
    EXPECT_EQ(tabs().size(), 2);
    answer(BoxAnswer::Yes, "mnuClose", path("a.chd"));
    EXPECT_TRUE(exists("a.chd"));
    EXPECT_EQ(tabs().size(), 1);
}

TEST_F(RunningLogTest, whatDoesNotSaveTheLogIsToldAndLeavesTheCommand) {
    link();
    timers["TimerSaveLog"]->tick();
    choose("mnuSaveLog", path("none/a.chl"));
    EXPECT_TRUE(told().endsWith("Unable to save the log file"));
    choose("mnuSaveLog", ""); // a Cancel
    EXPECT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(enabled("mnuSaveLog"));
    choose("mnuSaveLog", path("a.chl"));
    EXPECT_TRUE(exists("a.chl"));
    EXPECT_FALSE(enabled("mnuSaveLog"));

    trigger("mnuLogOff");
    QDir(path("Log")).removeRecursively();
    ASSERT_TRUE(QFile(path("Log")).open(QIODevice::WriteOnly)); // nor can it be written again
    commands("mnuSaveLog");
    EXPECT_TRUE(told().endsWith("Serious Data Error! Most recent data collected is permanently lost."));
    EXPECT_EQ(ComDlg.shown.size(), 3U);
}

TEST_F(RunningLogTest, theSavedLogHoldsWhatCameInBeforeLoggingWasSwitchedOff) {
    link();
    timers["TimerSaveLog"]->tick();
    play(". . .");
    trigger("mnuLogOff");
    choose("mnuSaveLog", path("a.chl"));
    ASSERT_TRUE(chart(1).LoadDataFile(path("a.chl")));
    EXPECT_EQ(chart(1).SampleCount(), chart(5).SampleCount());
}

TEST_F(RunningLogTest, aLogThatCannotBeWrittenIsNewsOnceUntilItCan) {
    link();
    const auto newsAfterTicks = [this] {
        for (int i = 0; i < 3; ++i) {
            play(". .");
            timers["TimerSaveLog"]->tick();
        }
        return notices.at(News::LogNotWritten);
    };
    QDir().rename(path("Log"), path("away"));
    EXPECT_TRUE(newsAfterTicks().startsWith("Default: The log cannot be written|Path not found. "));
    EXPECT_EQ(notices.shown, 1);
    QDir().rename(path("away"), path("Log"));
    EXPECT_EQ(newsAfterTicks(), "");
}

TEST_F(RunningLogTest, loggingBeginsAtOnceWhenDataComeInAndCountsAsTheRecorderDoes) {
    trigger("mnuLogOff");
    trigger("mnuLogOn");
    EXPECT_FALSE(timers["TimerSaveLog"]->Enabled());
    link();
    trigger("mnuLogOff");
    EXPECT_FALSE(timers["TimerSaveLog"]->Enabled() || pressed("cmdLogOn"));
    const int logged = chart(5).SampleCount();
    play("R1 . E2 . E2 . R2 . .");
    EXPECT_EQ(chart(5).SampleCount(), logged);
    trigger("mnuLogOn");
    EXPECT_TRUE(timers["TimerSaveLog"]->Enabled() && pressed("cmdLogOn"));
    play(". .");
    EXPECT_EQ(chart(5).SampleCount(), logged); // the run is paused
    play("R1 . E2 . R0 . .");
    EXPECT_EQ(marks(5).right(3), "3 E");
    EXPECT_EQ(marks(), "S 1 2 P 3 E");
}

TEST(FileNamesTest, aCaptionIsCutOnlyWhenItDoesNotFit) {
    const auto cut = [](const char *text, float MaxWidth) {
        return ShortenCaption(text, MaxWidth, [](const QString &shown) { return static_cast<float>(shown.size()); });
    };
    EXPECT_EQ(cut("lysozyme", 8), "lysozyme");
    EXPECT_EQ(cut("lysozyme", 7), "lyso...");
    EXPECT_EQ(cut("lysozyme", 1), "l...");
    EXPECT_EQ(cut("a\xF0\x9F\xA7\xAA\xF0\x9F\xA7\xAA\xF0\x9F\xA7\xAA", 5), "a..."); // no half of a character
}

} // namespace
