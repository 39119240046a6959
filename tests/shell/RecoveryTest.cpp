// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "chart/files/RecordFile.h"
#include "chart/files/RunLog.h"
#include "chart/files/RunningLogFiles.h"
#include "fakes/Spoken.h"

#include <QLayout>
#include <QScreen>

namespace {

/// Starts that find logs of earlier runs, with the name of their directory as notes.
class RecoveryTest : public testing::Test, protected ProgramFixture {
protected:
    RecoveryTest() { stored("0") = "1"; }

    /// A run of that name crashes: it leaves its log in a directory and its entry in the store.
    void leave(const QString &tag, const char *SystemName) {
        layLog("Log/" + tag);
        addEntry(tag, SystemName);
    }
    void addEntry(const QString &tag, const char *SystemName) {
        stored(QString::number(++entriesAdded)) = QString("%1|14.03.26|09:26|%2").arg(SystemName, tag);
    }
    void layLog(const QString &directory) {
        RunDocument left;
        left.AddSample(0.5F, 20);
        left.SetNotes(directory);
        ASSERT_TRUE(QDir(folder.path()).mkpath(directory));
        ASSERT_EQ(RunLog(left).WriteLog(path(directory), 1, 20000, 24), 0);
    }
    /// Starts, the operator being at the dialog with what was found; answers what that was.
    QString offer(const std::function<void()> &act = [] {}) {
        QString offered;
        dialogAnswers["frmDataRecovery"] = [&] {
            offered = rows();
            act();
            find<QWidget>("frmDataRecovery")->hide();
        };
        start();
        return offered;
    }
    QListWidget &list() { return *find<QListWidget>("lstLogFiles"); }
    QString rows() {
        QStringList texts;
        for (const auto *item : list().findItems({}, Qt::MatchContains))
            texts << item->text().simplified();
        return texts.join(';');
    }
    /// The first rows, to files of these names; "" is a Cancel.
    void recover(int count, const QStringList &files) {
        for (int row = 0; row < count; ++row)
            list().item(row)->setCheckState(Qt::Checked);
        for (const QString &file : files)
            ComDlg.answers.push_back(file.isEmpty() ? file : path(file));
        click("cmdRecoverButton");
    }
    void giveUp(BoxAnswer answer) {
        prompts.answers = {answer};
        click("cmdDoneButton");
    }
    QString notesIn(const QString &file) {
        EXPECT_TRUE(chart(6).LoadDataFile(path(file)));
        return chart(6).GetNotes();
    }
    /// In the Log folder, but for this copy's own directory.
    QString standing() const { return logDirectories().filter(QRegularExpression("^..$")).join(' '); }

    int entriesAdded = 0;
};

TEST_F(RecoveryTest, whatIsSavedIsSweptAwayWithItsEntryIntoTheWastebasket) {
    leave("17", "Alpha");
    layLog("Log/18");
    QByteArray damaged = content("Log/18/Log00001.dat");
    for (const char *record : {"SAMP", "NOTE", "END "})
        damaged[damaged.indexOf(record) + 24] = '?';
    put("Log/18/Log00001.dat", damaged);
    layLog("Log/19");
    EXPECT_EQ(offer([this] { recover(2, {"a.chl", "b.chl"}); }), "Alpha 14.03.26 09:26;Unknown Log File 19");
    EXPECT_EQ(ComDlg.shown.at(0).offered + ", " + notesIn("a.chl"), "Alpha, Log/17");
    EXPECT_EQ(ComDlg.shown.at(1).offered + ", " + notesIn("b.chl"), "19, Log/19");
    EXPECT_EQ(prompts.beeps, 1);
    EXPECT_EQ(told() + standing(), "");
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), 2U); // of this copy
    EXPECT_EQ(entries("Discarded").join(' '), "17-2026-03-14 18-2026-03-14 19-2026-03-14");
}

TEST_F(RecoveryTest, aRowOrItsBoxOrTheSpaceBarChecksItAndEnterRecoversIt) {
    leave("17", "Alpha");
    leave("18", "Beta");
    offer([this] {
        const int y = list().visualItemRect(list().item(1)).center().y();
        for (const int x : {10, 10, 100, 100}) {
            const bool wasChecked = usable("cmdRecoverButton");
            QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {x, y});
            EXPECT_NE(usable("cmdRecoverButton"), wasChecked);
        }
        ComDlg.answers = {path("b.chl")};
        QTest::keyClick(&list(), Qt::Key_Space);
        QTest::keyClick(&list(), Qt::Key_Return);
        EXPECT_EQ(rows(), "Alpha 14.03.26 09:26");
    });
    EXPECT_EQ(notesIn("b.chl"), "Log/18");
    EXPECT_EQ(standing(), "17 18"); // the close box gives nothing up
}

TEST_F(RecoveryTest, theWindowIsNoHigherThanItsTextsAndItsListNeed) {
    leave("17", "Alpha");
    const QFont usual = QApplication::font();
    for (const int points : {9, 20}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        program.reset();
        offer([&] {
            const QWidget &window = *list().window();
            EXPECT_LE(window.height(), window.layout()->totalHeightForWidth(window.width())) << points;
            EXPECT_LE(window.height(), window.screen()->availableSize().height()) << points;
            EXPECT_EQ(unspoken(*list().window()), "");
            QTest::keyClick(&list(), Qt::Key_F1);
            EXPECT_EQ(std::exchange(help.shown, {}), std::vector{12});
        });
    }
    QApplication::setFont(usual);
}

TEST_F(RecoveryTest, whatIsGivenUpIsSweptButNothingThatCannotBeReadNowOrCameSince) {
    leave("17", "Alpha");
    leave("18", "Beta");
    leave("19", "Gamma");
    put("Log/18/Log00002.dat", FileHead::of(runningLogKind, runningLogVersion + 1).bytes());
    offer([this] {
        recover(3, {"a.chl", "b.chl", ""});
        EXPECT_EQ(rows(), "Gamma 14.03.26 09:26");
        EXPECT_FALSE(usable("cmdRecoverButton"));
        giveUp(BoxAnswer::Cancel);
        EXPECT_TRUE(list().isVisible());
        EXPECT_EQ(standing(), "17 18 19");
        layLog("Log/20"); // of a copy that is started meanwhile
        giveUp(BoxAnswer::Ok);
        EXPECT_FALSE(list().isVisible());
    });
    EXPECT_EQ(notesIn("b.chl"), "Log/18");
    EXPECT_TRUE(prompts.shown.at(0).text.contains("Log/18/Log00002.dat: of a newer version"));
    EXPECT_EQ(prompts.shown.size(), 4U); // the log is told to be incomplete, too
    EXPECT_EQ(prompts.shown.back().defaultButton, 2);
    EXPECT_EQ(standing(), "18 20");
    EXPECT_EQ(entries("Log/18").size(), 2);
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), 3U);
    EXPECT_EQ(stored("2").left(4), "Beta");
    EXPECT_EQ(stored("3").left(7), "Default"); // this copy's number is a new one
}

TEST_F(RecoveryTest, aLogThatCannotBeMovedStaysAndTheOperatorIsTold) {
    leave("17", "Alpha");
    put("Discarded");
    offer([this] { giveUp(BoxAnswer::Ok); });
    EXPECT_EQ(entries("Log/17"), QStringList("Log00001.dat"));
    EXPECT_TRUE(prompts.shown.back().text.contains(path("Log/17")));
}

TEST_F(RecoveryTest, copiesThatRunKeepTheirDirectoriesEntriesAndNumbers) {
    Identity early; // while this one waited for its port
    Identity late;  // while the operator was choosing
    Instances earlyCopy(early, store, prompts, clock, folder.path());
    Instances lateCopy(late, store, prompts, clock, folder.path());
    leave("17", "Alpha");
    earlyCopy.registerUnasked();
    layLog("Log/" + early.InstanceTag);
    const QString offered = offer([&] {
        lateCopy.registerUnasked();
        layLog("Log/" + late.InstanceTag);
        recover(1, {"a.chl"});
    });
    EXPECT_EQ(offered, "Alpha 14.03.26 09:26");
    EXPECT_EQ(logDirectories().size(), 3);
    for (const Identity *copy : {&early, &late})
        EXPECT_TRUE(exists("Log/" + copy->InstanceTag + "/Log00001.dat"));
    EXPECT_TRUE(stored(QString::number(late.InstanceNumber)).endsWith(late.InstanceTag));
    EXPECT_EQ(stored("1"), ""); // Alpha's
    EXPECT_EQ(stored("0"), QString::number(late.InstanceNumber + 1));
}

TEST_F(RecoveryTest, noEntryHidesALogWhoseItIsNot) {
    leave("17", "Alpha 18 v1.2");
    layLog("Log/19");
    layLog("Log");
    stored("0") = "Beta|d|t|19"; // in the place of the count
    EXPECT_EQ(offer(), "Alpha 18 v1.2 14.03.26 09:26;Unknown Log File .;Unknown Log File 19");

    program.reset();
    store.rows.clear(); // without so much as the count the start ends
    start();
    EXPECT_TRUE(process.ended && told().contains("Run-time error '13'"));
    EXPECT_EQ(standing(), "17 19");
}

TEST_F(RecoveryTest, runsThatLookAlikeAreAllSavedUnlessTheirEntryLeadsOutside) {
    leave("17", "Alpha");
    leave("18", "Alpha");
    layLog("outside");
    addEntry("..", "Alpha");
    addEntry("../outside", "Beta");
    EXPECT_EQ(offer([this] { recover(1, {"a.chl", "b.chl"}); }), "Alpha 14.03.26 09:26;Alpha 14.03.26 09:26");
    EXPECT_EQ(notesIn("a.chl") + ", " + notesIn("b.chl"), "Log/17, Log/18");
    EXPECT_EQ(ComDlg.shown.size(), 2U);
}

TEST_F(RecoveryTest, theSweepFollowsNoLinkAndSparesWhatIsNotItsOwn) {
    put("outside/run.txt");
    put("Log/17/Log00001.dat");
    put("Log/18/kept.CHL");
    put("Log/19/nested/file");
    for (const char *link : {"Log/20", "Log/17/21"})
        ASSERT_TRUE(QFile::link(path("outside"), path(link)));
    EXPECT_EQ(offer(), "");
    EXPECT_EQ(standing(), "18 19 20");
    for (const char *spared : {"outside/run.txt", "Log/18/kept.CHL", "Log/19/nested/file"})
        EXPECT_TRUE(exists(spared)) << spared;
}

TEST_F(RecoveryTest, whatLiesInTheLogFolderItselfGoesButNotBehindALinkInItsPlace) {
    put("Log/notes");
    start();
    EXPECT_FALSE(exists("Log/notes"));
    program.reset();
    ASSERT_TRUE(QDir(path("Log")).removeRecursively());
    layLog("elsewhere/17");
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("Log")));
    addEntry("17", "Alpha");
    EXPECT_EQ(offer(), "");
    EXPECT_TRUE(exists("elsewhere/17/Log00001.dat"));
}

} // namespace
