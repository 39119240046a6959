// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "chart/files/RecordFile.h"
#include "chart/files/RunningLogFiles.h"

#include <QLabel>

namespace {

/// Starts that are not like every day's.
class StartTest : public testing::Test, protected ProgramFixture {};

/// The program with its link to the instrument.
class ProgramTest : public StartedProgram {
protected:
    ProgramTest() { link(); }
    /// The run that a start after this end finds and saves, in chart 1.
    void recover() {
        program.reset();
        willRecoverTo("saved.chl");
        start();
        EXPECT_TRUE(chart(1).LoadDataFile(path("saved.chl")));
    }
    /// With a No to whatever is asked.
    bool mayLeave() {
        prompts.shown.clear();
        closeWindow();
        return process.ended;
    }
};

TEST_F(ProgramTest, theToolbarRecordsSavesClearsAndOpens) {
    const auto hasRedDot = [] {
        return find<QWidget>("frmMain")->windowIcon().pixmap(64).toImage().pixelColor(48, 48).red() > 200;
    };
    click("optTimeAxis(1)");
    trigger("cmdRecord");
    EXPECT_TRUE(pressed("cmdRecord") && hasRedDot());
    play(". E2 . . .");
    trigger("cmdStop");
    EXPECT_FALSE(hasRedDot());
    EXPECT_FALSE(pressed("cmdRecord"));
    EXPECT_EQ(find<ScrollEntry>("ScrollChart(0)")->Max(), -9); // a run shorter than the window
    ComDlg.answers = {path("A & B.chd"), path("A & B.chd")};
    trigger("cmdSave");
    trigger("cmdClear");
    EXPECT_EQ(chart(0).SampleCount(), 0);
    EXPECT_TRUE(usable("cmdSetTime")); // the entry shows 10, the state 10.0
    trigger("cmdOpen");
    EXPECT_EQ(tabs().at(1), "A && B|A & B.chd|A & B");
    EXPECT_EQ(chart(1).SampleCount(), 4);
    trigger("cmdClear"); // now "Close"
    EXPECT_EQ(tabs().size(), 1);
    EXPECT_EQ(told(), "");
}

TEST_F(ProgramTest, aRectangleZoomsAndEscapeLeavesFromWhereTheFocusIs) {
    give(2);
    QApplication::processEvents(); // the chart is drawn
    const QPoint center = chart(0).rect().center();
    QTest::mousePress(&chart(0), Qt::LeftButton, {}, center - QPoint(60, 30));
    QTest::mouseMove(&chart(0), center);
    QTest::mouseRelease(&chart(0), Qt::LeftButton, {}, center + QPoint(60, 30));
    EXPECT_TRUE(chart(0).zoomed());
    EXPECT_NE(text("cmbYAxis(0)"), "2.000");
    QTest::keyClick(find<QWidget>("txtChartTime"), Qt::Key_Escape);
    EXPECT_FALSE(chart(0).zoomed());
    EXPECT_EQ(text("cmbYAxis(0)"), "2.000");
}

TEST_F(StartTest, withoutAFreePortItSaysSoAndEnds) {
    for (int port = 1; port <= 10; ++port)
        ComPort.failing[port] = CommTmp.failing[port] = ErrorNumber::PortAlreadyOpen;
    start();
    EXPECT_TRUE(process.ended);
    EXPECT_FALSE(find<QWidget>("frmMain")->isVisible());
    EXPECT_EQ(told(), "All available COM ports are already in use.  "
                      "Please free one COM port before restarting Ostrel MS.");
    EXPECT_EQ(prompts.shown.at(0).HelpContextID, 6);
}

TEST_F(StartTest, noticesCanBeSwitchedOff) {
    store.rows[{"Options", "Notifications"}] = "False";
    start();
    link();
    play("R1 . . R0 . .");
    EXPECT_EQ(marks(), "S E");
    EXPECT_EQ(notices.shown, 0);
}

TEST_F(StartTest, aSecondCopyAsksForItsPort) {
    prevInstance = true;
    ComPort.failing = CommTmp.failing = {{1, ErrorNumber::PortAlreadyOpen}};
    ComPort.failing[3] = ErrorNumber::PathFileAccess;
    using enum PortFacts::Obstacle;
    portDirectory.facts = {{1, {"/dev/ttyS0", "", Held, "minicom (process 812)"}},
                           {2, {"/dev/ttyUSB0", "FT232R USB UART"}},
                           {10, {"", "", Missing}}};
    const auto said = [](int port) { return find<QLabel>(QStringLiteral("lblPort(%1)").arg(port - 1))->text(); };
    const auto staysAfter = [this](const char *port, Qt::Key key) {
        click(port);
        QTest::keyClick(find<QWidget>("frmSetup"), key);
        return find<QWidget>("frmSetup")->isVisible();
    };
    meanwhile([&] {
        EXPECT_FALSE(usable("optCom(0)") || usable("cmdCancel"));
        EXPECT_EQ(said(1) + '|' + said(2) + '|' + said(10), "ttyS0, in use|ttyUSB0|missing");
        EXPECT_EQ(find<QLabel>("lblPicked")->text(), "COM 1: /dev/ttyS0.\nIt is in use by minicom (process 812).");
        EXPECT_TRUE(staysAfter("optCom(1)", Qt::Key_Escape));
        EXPECT_EQ(find<QLabel>("lblPicked")->text(), "COM 2: /dev/ttyUSB0, FT232R USB UART");
        EXPECT_TRUE(staysAfter("optCom(2)", Qt::Key_Return)); // which cannot be opened
        EXPECT_FALSE(staysAfter("optCom(3)", Qt::Key_Return));
    });
    start();
    EXPECT_TRUE(ComPort.CommPort() == 4 && ComPort.PortOpen());
    EXPECT_EQ(portDirectory.refusals[1] + portDirectory.refusals[2], ErrorNumber::PortAlreadyOpen);

    meanwhile([&] { EXPECT_FALSE(staysAfter("optCom(1)", Qt::Key_Escape)); });
    trigger("mnuComPort");
    EXPECT_EQ(ComPort.CommPort(), 4);
}

TEST_F(StartTest, aLogOfWhichNothingCanBeReadNowIsOfferedNamedAndKept) {
    stored("0") = "1";
    put("Log/17/Log00001.dat", FileHead::of(runningLogKind, runningLogVersion + 1).bytes());
    willRecoverTo("saved.chl");
    dialogAnswers["frmDataRecovery"] = [this, recover = dialogAnswers["frmDataRecovery"]] {
        recover();
        prompts.answers = {BoxAnswer::Ok};
        click("cmdDoneButton");
    };
    start();
    for (const char *text : {"Log00001.dat: of a newer version", "Unable to save the log file", "Not all Log files"})
        EXPECT_TRUE(told().contains(text)) << text;
    EXPECT_TRUE(exists("Log/17/Log00001.dat"));
    EXPECT_FALSE(exists("saved.chl"));
}

TEST_F(StartTest, aFileOnTheCommandLineIsOpenedAtTheEndOfTheStart) {
    lay("run.chd", 1);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    commandLine = "run.chd";
    start();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(tabs().mid(1), QStringList("run|run.chd|run"));
    trigger("mnuSaveData"); // to where it was, wherever the program works now
    EXPECT_FALSE(QFile::exists("run.chd"));
    EXPECT_EQ(told(), "");
}

TEST_F(ProgramTest, aCleanEndLeavesNothingOfTheCopyButItsLogInTheWastebasket) {
    timers["TimerSaveLog"]->tick();
    play("R1 . . E2 . ."); // what comes behind the tick lies there too
    trigger("mnuLogOff");
    prompts.answers = {BoxAnswer::No, BoxAnswer::Yes};
    closeWindow();
    EXPECT_TRUE(process.ended && logDirectories().isEmpty());
    EXPECT_EQ(told(), "Do you want to save the LOG file before exiting ;"
                      "Chart Recorder Data or opened Data is not saved.\rExit without save?");
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), 1U);
    EXPECT_EQ(stored("0"), "0");
    const QStringList discarded = entries("Discarded");
    EXPECT_TRUE(discarded.size() == 1 && discarded[0].endsWith("-2026-03-14")); // by the program's clock
    EXPECT_EQ(chart(6).SaveLogAs(path("Discarded/") + discarded[0], 0, path("back.chl")), 0);
    EXPECT_TRUE(chart(6).LoadDataFile(path("back.chl")));
    EXPECT_EQ(chart(6).SampleCount(), chart(5).SampleCount());
    EXPECT_EQ(chart(6).ChartTitle(), "Default");
}

TEST_F(ProgramTest, whateverEndsTheProgramWhileLeftOversAreOfferedTouchesNoneOfThem) {
    play(". . E2 . .");
    program->endUnasked();
    program.reset();
    const QString crashed = "Log/" + logDirectories().value(0);
    const QString entry = stored("1");

    const std::function<void()> ends[] = {
        [this] { commands("mnuExit"); },
        [this] { closeWindow(); },
        [this] { program->askToEnd() ? program->endAgreed() : void(); }, // a log-out
        [this] { program->endUnasked(); },                               // a signal
        [this] {
            meanwhile([this] { click("cmdExit"); }); // for the link is lost
            clock.advance(10s);
        },
    };
    for (const auto &end : ends) {
        SCOPED_TRACE(&end - ends);
        const auto directories = logDirectories().size();
        process.ended = false;
        process.atEnd = [&] {
            EXPECT_EQ(entries(crashed).size(), 1);
            EXPECT_EQ(stored("1"), entry);
        };
        dialogAnswers["frmDataRecovery"] = [&] {
            link();
            for (int i = 0; i < 7; ++i) { // comes in under the dialog
                play(". . .");
                clock.advance(3s);
            }
            EXPECT_EQ(logDirectories().size(), directories + 1); // and is on the disk
            EXPECT_FALSE(enabled("mnuSaveLog"));
            end();
            find<QWidget>("frmDataRecovery")->close();
        };
        clock.advance(1h);
        start();
        EXPECT_TRUE(process.ended);
        process.atEnd = nullptr;
        program.reset();
    }
}

TEST_F(ProgramTest, notesAreInTheLogFromTheMomentTheyAreAccepted) {
    play(". .");
    dialogAnswers["frmNoData"] = [this] { click("cmdOk"); };
    advanceUnderDialogs(10s); // the instrument is switched off
    EXPECT_FALSE(led());
    meanwhile([this] {
        QTest::keyClicks(find<QWidget>("txtNotes"), "Column B");
        click("cmdOK");
    });
    trigger("mnuNotes");
    recover(); // after a power failure
    EXPECT_EQ(chart(1).GetNotes(), "Column B");
    EXPECT_EQ(chart(1).SampleCount(), 2 + 2);
}

TEST_F(ProgramTest, whatComesUnderTheSaveOrBehindItIsNotSaved) {
    const auto save = [this] {
        ComDlg.answers = {path("SEC 3.chd")};
        trigger("mnuSaveDataAs");
    };
    play("R1 . . R0 . .");
    ComDlg.whileShown = [this] { play("R1 . ."); }; // the instrument starts a run under the dialog
    save();
    play("R0 . .");
    prompts.whileShown = [this](const MessageBox &) { commands("mnuExit"); }; // once more, over the question
    EXPECT_FALSE(mayLeave());
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.shown[0].defaultButton, 2);
    save();
    play("Mmethod . .");
    EXPECT_FALSE(mayLeave());
    save();
    EXPECT_TRUE(mayLeave());
}

TEST_F(ProgramTest, whatWasRecordedWithLoggingOffIsKeptByEveryUnaskedEnd) {
    trigger("mnuLogOff");
    play("R1 . . . . . . . . . .");
    for (const int each : {0, 5}) // as the notes window does
        chart(each).SetNotes("Column B");
    trigger("mnuLogOn");
    play(". . E2 .");
    const auto onScreen = chart(0).SampleCount();
    program->endUnasked(); // seconds before the first tick
    recover();
    EXPECT_GT(chart(1).SampleCount(), onScreen); // and what the log had itself
    EXPECT_EQ(chart(1).GetNotes(), "Column B");
}

TEST_F(ProgramTest, aRunThatBeginsUnderTheQuestionIsNotCleared) {
    trigger("mnuStart");
    play(". . .");
    trigger("mnuStop");
    prompts.whileShown = [this](const MessageBox &) { play("R1 . . ."); };
    trigger("mnuClear");
    EXPECT_EQ(chart(0).SampleCount(), 3 + 3);
    EXPECT_EQ(marks(), "S");
}

} // namespace
