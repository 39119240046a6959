// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QDir>

namespace {

class ProgramTest : public testing::Test, protected ProgramFixture {};

TEST_F(ProgramTest, theOperatorRecordsByMenuAndToolbar) {
    start();
    link();
    auto *bar = find<ScrollEntry>("ScrollChart(0)");
    for (const bool inWindow : {true, false}) {
        find<OptionButton>(inWindow ? "optTimeAxis(1)" : "optTimeAxis(0)")->setValue(true);
        find<QAction>(inWindow ? "mnuStart" : "cmdRecord")->trigger();
        EXPECT_TRUE(pressed("cmdRecord"));
        EXPECT_FALSE(bar->isEnabled());
        play(". . .");
        find<QAction>(inWindow ? "mnuStop" : "cmdStop")->trigger();
        EXPECT_FALSE(pressed("cmdRecord"));
        EXPECT_EQ(bar->isEnabled(), inWindow);
    }
    EXPECT_EQ(chart(0).SampleCount(), 6);
    EXPECT_EQ(bar->Max(), -9); // a run shorter than the window
}

TEST_F(ProgramTest, aZoomIsTakenOverByTheWindowAndLeftAgain) {
    start();
    link();
    find<QAction>("mnuStart")->trigger();
    play(". . . . . . . . . .");
    find<QAction>("mnuStop")->trigger();
    QApplication::processEvents(); // the chart is drawn

    QTest::mousePress(&chart(0), Qt::LeftButton, {}, chart(0).rect().center() - QPoint(60, 30));
    QTest::mouseMove(&chart(0), chart(0).rect().center());
    QTest::mouseRelease(&chart(0), Qt::LeftButton, {}, chart(0).rect().center() + QPoint(60, 30));
    EXPECT_TRUE(chart(0).zoomed());
    EXPECT_TRUE(find<OptionButton>("optTimeAxis(1)")->Value());
    EXPECT_NE(find<ComboEntry>("cmbYAxis(0)")->Text(), "2.000");

    QTest::keyClick(find<TextEntry>("txtChartTime"), Qt::Key_Escape); // where the focus is after a zoom
    EXPECT_FALSE(chart(0).zoomed());
    EXPECT_TRUE(find<OptionButton>("optTimeAxis(0)")->Value());
    EXPECT_EQ(find<ComboEntry>("cmbYAxis(0)")->Text(), "2.000");
}

TEST_F(ProgramTest, aFullScaleIsTypedAndAppliedWithEnter) {
    start();
    EXPECT_FALSE(find<QWidget>("cmdSetTime")->isEnabled());
    auto *cmbYAxis = find<ComboEntry>("cmbYAxis(0)");
    cmbYAxis->selectWhole();
    QTest::keyClicks(cmbYAxis->lineEdit(), "1.5x");
    EXPECT_EQ(prompts.beeps, 1);
    EXPECT_TRUE(find<QWidget>("cmdSet(0)")->isEnabled());
    QTest::keyClick(cmbYAxis->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(cmbYAxis->Text(), "1.500");
    EXPECT_EQ(chart(0).UvAxisMax(), 1.5F);
    EXPECT_FALSE(find<QWidget>("cmdSet(0)")->isEnabled());
}

TEST_F(ProgramTest, aRunIsSavedClearedAndOpenedAgainBesideTheRecorder) {
    start();
    link();
    find<QAction>("mnuStart")->trigger();
    play(". E2 . . .");
    find<QAction>("mnuStop")->trigger();
    const QString path = folder.filePath("A & B.chd");
    ComDlg.answers = {path, path, path};
    find<QAction>("cmdSave")->trigger();
    find<QAction>("cmdClear")->trigger();
    EXPECT_EQ(chart(0).SampleCount(), 0);
    EXPECT_TRUE(find<QWidget>("cmdSetTime")->isEnabled()); // the entry shows 10, the state 10.0

    find<QAction>("cmdOpen")->trigger();
    find<QAction>("mnuOpenData")->trigger();
    auto *TabChart = find<QTabBar>("TabChart");
    EXPECT_EQ(TabChart->tabText(2) + "|" + TabChart->tabToolTip(2), "A && B|A & B.chd");
    EXPECT_EQ(TabChart->currentIndex(), 2);
    EXPECT_EQ(chart(2).SampleCount(), 4);
    EXPECT_EQ(chart(2).ChartTitle(), "A & B");
    find<QAction>("cmdClear")->trigger(); // now "Close"
    EXPECT_EQ(TabChart->currentIndex(), 0);
    EXPECT_EQ(TabChart->tabText(1) + "|" + TabChart->tabText(2), "A && B|(empty)");
    EXPECT_FALSE(enabled("mnuClose"));
    EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(ProgramTest, aReportThatTheSpoolerRefusesIsToldForEachCopy) {
    start();
    ComDlg.Copies = 2;
    for (const bool refused : {false, true}) {
        ComDlg.printRefused = refused;
        meanwhile([this] { QTest::mouseClick(find<QWidget>("cmdOk"), Qt::LeftButton); });
        commands("mnuPrint");
        EXPECT_EQ(prompts.shown.size(), refused ? 2U : 0U);
    }
    EXPECT_EQ(prompts.shown.back().caption, "PRINT ERROR!");
    EXPECT_EQ(ComDlg.printed.filter("Chart Recorder").size(), 4);
}

TEST_F(ProgramTest, withoutAFreePortItSaysSoAndEnds) {
    for (int port = 1; port <= 10; ++port)
        ComPort.failing[port] = CommTmp.failing[port] = ErrorNumber::PortAlreadyOpen;
    start();
    EXPECT_TRUE(process.ended);
    EXPECT_FALSE(find<QWidget>("frmMain")->isVisible());
    EXPECT_EQ(prompts.shown.at(0).text, "All available COM ports are already in use.  "
                                        "Please free one COM port before restarting Ostrel MS.");
}

TEST_F(ProgramTest, aSecondCopyAsksForItsPort) {
    prevInstance = true;
    ComPort.failing = CommTmp.failing = {{1, ErrorNumber::PortAlreadyOpen}};
    ComPort.failing[3] = ErrorNumber::PathFileAccess;
    const auto pick = [this](const char *port, Qt::Key key) {
        QTest::mouseClick(find<QWidget>(port), Qt::LeftButton);
        QTest::keyClick(find<QWidget>("frmSetup"), key);
        return find<QWidget>("frmSetup")->isVisible();
    };
    meanwhile([&] {
        EXPECT_FALSE(find<QWidget>("optCom(0)")->isEnabled());
        EXPECT_FALSE(find<QWidget>("cmdCancel")->isEnabled());
        EXPECT_TRUE(pick("optCom(1)", Qt::Key_Escape));
        EXPECT_TRUE(pick("optCom(2)", Qt::Key_Return)); // which cannot be opened
        EXPECT_FALSE(pick("optCom(3)", Qt::Key_Return));
    });
    start();
    EXPECT_EQ(ComPort.CommPort(), 4);
    EXPECT_TRUE(ComPort.PortOpen());

    meanwhile([&] { EXPECT_FALSE(pick("optCom(1)", Qt::Key_Escape)); });
    find<QAction>("mnuComPort")->trigger();
    EXPECT_EQ(ComPort.CommPort(), 4);
}

TEST_F(ProgramTest, aCleanEndLeavesNothingOfTheCopy) {
    start();
    link();
    for (int i = 0; i < 7; ++i) {
        clock.advance(3s);
        play(".");
    }
    EXPECT_TRUE(sleep.held);
    const QDir log(folder.filePath("Log"));
    EXPECT_EQ(log.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
    EXPECT_TRUE(enabled("mnuSaveLog"));
    prompts.answers = {BoxAnswer::No};
    find<QWidget>("frmMain")->close();
    EXPECT_TRUE(process.ended);
    EXPECT_EQ(prompts.shown.at(0).text, "Do you want to save the LOG file before exiting ");
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), 1U);
    EXPECT_EQ(store.GetSetting("LogInfo", "0", ""), "0");
}

TEST_F(ProgramTest, theOperatorMayStayAndAnUnsavedRunIsAskedFor) {
    start();
    link();
    find<QAction>("mnuStart")->trigger();
    prompts.answers = {BoxAnswer::No};
    prompts.whileShown = [this](const MessageBox &) { commands("mnuExit"); }; // once more, over the question
    find<QWidget>("frmMain")->close();
    EXPECT_FALSE(process.ended);
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.shown[0].text, "Chart Recorder Data or opened Data is not saved.\rExit without save?");
    EXPECT_EQ(prompts.shown[0].defaultButton, 2);
}

TEST_F(ProgramTest, whatAnUnaskedEndLeftIsRecoveredAtTheNextStart) {
    start();
    link();
    play(". . E2 . .");
    program->endUnasked(); // seconds before the first tick
    program.reset();

    const QString saved = folder.filePath("saved.chl");
    dialogAnswers["frmDataRecovery"] = [&] { recoverTo(saved); };
    start();
    EXPECT_EQ(store.GetSetting("LogInfo", "0", ""), "1");
    EXPECT_EQ(QDir(folder.filePath("Log")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
    ComDlg.answers = {saved};
    find<QAction>("mnuOpenLog")->trigger();
    EXPECT_GT(chart(1).SampleCount(), 4);
    EXPECT_EQ(chart(1).marks().size(), 1);
}

TEST_F(ProgramTest, whateverEndsTheProgramWhileLeftOversAreOfferedTouchesNoneOfThem) {
    start();
    link();
    play(". . E2 . .");
    program->endUnasked();
    program.reset();
    const QString crashed = logDirectories().value(0);
    const QString entry = store.GetSetting("LogInfo", "1", "");
    const QString victim = folder.filePath("victim");
    ASSERT_TRUE(QDir(folder.path()).mkdir("victim"));
    ASSERT_TRUE(QFile::copy(folder.filePath("Log/" + crashed + "/Log00001.dat"), victim + "/Log00001.dat"));
    store.SaveSetting("LogInfo", "2", "x|a|b|../victim");

    const std::pair<const char *, std::function<void()>> ends[] = {
        {"Exit", [this] { commands("mnuExit"); }},
        {"the close box", [this] { find<QWidget>("frmMain")->close(); }},
        {"log-out", [this] { program->askToEnd() ? program->endAgreed() : void(); }},
        {"a signal", [this] { program->endUnasked(); }},
        {"Exit out of the lost link",
         [this] {
             meanwhile([this] { QTest::mouseClick(find<QWidget>("cmdExit"), Qt::LeftButton); });
             clock.advance(10s);
         }},
    };
    for (const auto &[what, end] : ends) {
        SCOPED_TRACE(what);
        const auto directories = logDirectories().size();
        process.ended = false;
        process.atEnd = [&] {
            EXPECT_TRUE(logDirectories().contains(crashed));
            EXPECT_EQ(QDir(folder.filePath("Log/" + crashed)).count(), 3U); // with . and ..
            EXPECT_EQ(store.GetSetting("LogInfo", "1", ""), entry);
            EXPECT_TRUE(QFile::exists(victim + "/Log00001.dat"));
        };
        dialogAnswers["frmDataRecovery"] = [&, &act = end] {
            link();
            for (int i = 0; i < 7; ++i) { // comes in under the dialog
                play(". . .");
                clock.advance(3s);
            }
            EXPECT_EQ(logDirectories().size(), directories + 1); // and is on the disk
            EXPECT_FALSE(enabled("mnuSaveLog"));
            act();
            find<QWidget>("frmDataRecovery")->close();
        };
        clock.advance(1h);
        start();
        EXPECT_TRUE(process.ended);
        process.atEnd = nullptr;
        program.reset();
    }
}

TEST_F(ProgramTest, whatIsThrownAwayLiesInTheWastebasket) {
    start();
    link();
    play("R1 . . E2 . .");
    find<QAction>("mnuLogOff")->trigger();
    prompts.answers = {BoxAnswer::Yes}; // without saving
    find<QWidget>("frmMain")->close();
    EXPECT_TRUE(process.ended && logDirectories().isEmpty());
    const QDir wastebasket(folder.filePath("Discarded"));
    const QStringList discarded = wastebasket.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(discarded.size(), 1);
    EXPECT_TRUE(discarded[0].endsWith("-2026-03-14")); // by the program's clock
    EXPECT_EQ(chart(6).SaveLogAs(wastebasket.filePath(discarded[0]), 0, folder.filePath("back.chl")), 0);
    EXPECT_TRUE(chart(6).LoadDataFile(folder.filePath("back.chl")));
    EXPECT_EQ(chart(6).SampleCount(), chart(5).SampleCount());
    EXPECT_EQ(chart(6).ChartTitle(), "Default");
}

TEST_F(ProgramTest, notesAreInTheLogFromTheMomentTheyAreAccepted) {
    start();
    link();
    play(". .");
    dialogAnswers["frmNoData"] = [this] { find<QWidget>("frmNoData")->close(); };
    dialogWatch.start();
    clock.advance(10s); // the instrument is switched off
    dialogWatch.stop();
    EXPECT_FALSE(led());
    meanwhile([this] {
        QTest::keyClicks(find<QWidget>("txtNotes"), "Column B");
        QTest::mouseClick(find<QWidget>("cmdOK"), Qt::LeftButton);
    });
    find<QAction>("mnuNotes")->trigger();
    program.reset(); // a power failure
    const QString saved = folder.filePath("saved.chl");
    dialogAnswers["frmDataRecovery"] = [&] { recoverTo(saved); };
    start();
    EXPECT_TRUE(chart(1).LoadDataFile(saved));
    EXPECT_EQ(chart(1).GetNotes(), "Column B");
    EXPECT_EQ(chart(1).SampleCount(), 2 + 2);
}

TEST_F(ProgramTest, aRunThatGoesOnArrivingIsNotSaved) {
    start();
    link();
    find<QAction>("mnuStart")->trigger();
    play(". .");
    find<QAction>("mnuStop")->trigger();
    ComDlg.whileShown = [this] { play("R1 . ."); }; // the instrument starts a run under the dialog
    ComDlg.answers = {folder.filePath("SEC 3.chd")};
    find<QAction>("mnuSaveDataAs")->trigger();
    play("R0 . .");
    prompts.answers = {BoxAnswer::No};
    find<QWidget>("frmMain")->close();
    EXPECT_FALSE(process.ended);
    EXPECT_TRUE(prompts.shown.back().text.contains("Exit without save?"));
}

TEST_F(ProgramTest, aMethodThatComesAfterTheSaveIsNotSaved) {
    start();
    link();
    play("R1 . . R0 . .");
    ComDlg.answers = {folder.filePath("SEC 4.chd")};
    find<QAction>("mnuSaveDataAs")->trigger();
    play("Mmethod . .");
    find<QWidget>("frmMain")->close();
    EXPECT_FALSE(process.ended);
}

TEST_F(ProgramTest, whatWasRecordedWithLoggingOffIsKeptByEveryUnaskedEnd) {
    start();
    link();
    find<QAction>("mnuLogOff")->trigger();
    play("R1 . . . . . . . . . .");
    chart(0).SetNotes("Column B"); // as the notes window does
    chart(5).SetNotes("Column B");
    find<QAction>("mnuLogOn")->trigger();
    play(". .");
    const auto onScreen = chart(0).SampleCount();
    program->endUnasked();
    program.reset();
    const QString saved = folder.filePath("saved.chl");
    dialogAnswers["frmDataRecovery"] = [&] { recoverTo(saved); };
    start();
    EXPECT_TRUE(chart(1).LoadDataFile(saved));
    EXPECT_GT(chart(1).SampleCount(), onScreen); // and what the log had itself
    EXPECT_EQ(chart(1).GetNotes(), "Column B");
}

TEST_F(ProgramTest, aRunThatBeginsUnderTheQuestionIsNotCleared) {
    start();
    link();
    find<QAction>("mnuStart")->trigger();
    play(". . .");
    find<QAction>("mnuStop")->trigger();
    prompts.whileShown = [this](const MessageBox &) { play("R1 . . ."); };
    prompts.answers = {BoxAnswer::No};
    find<QAction>("mnuClear")->trigger();
    EXPECT_EQ(chart(0).SampleCount(), 3 + 3);
    EXPECT_EQ(marks(), "S");
}

TEST_F(ProgramTest, aFileOnTheCommandLineIsOpenedAtTheEndOfTheStart) {
    commandLine = folder.filePath("none.chd");
    start();
    EXPECT_EQ(prompts.shown.at(0).caption, "FILE OPEN ERROR!");
    EXPECT_EQ(find<QTabBar>("TabChart")->tabText(1), "(empty)");
    EXPECT_TRUE(chart(0).SaveDataFile(folder.filePath("run.chd")));
    program.reset();

    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    commandLine = "run.chd";
    start();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(find<QTabBar>("TabChart")->tabText(1), "run");
    find<QAction>("mnuSaveData")->trigger(); // to where it was, wherever the program works now
    EXPECT_FALSE(QFile::exists("run.chd"));
    EXPECT_EQ(prompts.shown.size(), 1U);
}

} // namespace
