// SPDX-License-Identifier: MIT
#include "RecoveryFixture.h"

namespace {

class RecoveryTest : public RecoveryFixture {
protected:
    /// Checks the first rows and presses Recover; answers whether the form is done.
    static bool recoverFirst(Recovery &form, std::size_t count) {
        for (std::size_t row = 0; row < count; ++row)
            form.setChecked(row, true);
        return form.cmdRecoverButton_Click();
    }
};

TEST_F(RecoveryTest, whatIsSavedIsSweptAwayWithItsEntry) {
    leave("17", "Alpha");
    layLog("Log/19");
    dialog = [](Recovery &form) { EXPECT_TRUE(recoverFirst(form, 2)); };
    EXPECT_EQ(offer(), "Alpha 14.03.26 09:26;Unknown Log File 19");
    EXPECT_EQ(saved, "Alpha from 17, 19 from 19");
    EXPECT_EQ(prompts.beeps, 1);
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_EQ(standing(), "");
    EXPECT_TRUE(store.rows.empty());
    EXPECT_EQ(standing("Discarded"), "17-2026-03-14 19-2026-03-14"); // and lies in the wastebasket
}

TEST_F(RecoveryTest, whatCannotBeReadAtThisStartIsOfferedAndStays) {
    class OneUnreadFile : public FileOperations {
    public:
        OneUnreadFile() { standIn(this); }
        ~OneUnreadFile() override { standIn(nullptr); }
        int open(const char *path, int flags, mode_t mode) override {
            errno = error;
            return QByteArray(path).contains(unread) ? -1 : FileOperations::open(path, flags, mode);
        }
        QByteArray unread;
        int error = EIO;
    };
    leave("17", "Alpha");
    leave("18", "Beta");
    leave("19", "Gamma");
    makeFile("Log/18/Log00002.dat");
    dialog = [this](Recovery &form) {
        EXPECT_EQ(form.rows().size(), 3U);
        EXPECT_FALSE(recoverFirst(form, 2));
        prompts.answers = {BoxAnswer::Ok};
        EXPECT_TRUE(form.cmdDoneButton_Click());
    };
    {
        OneUnreadFile disk;
        for (const auto &[unread, error] : {std::pair("Log/18/Log00002", EIO), std::pair("Log/18/Log00002", EACCES),
                                            std::pair("Log/18/Log00002", EMFILE), std::pair("Log/18", ENOTCONN)}) {
            SCOPED_TRACE(unread);
            disk.unread = unread;
            disk.error = error;
            EXPECT_TRUE(chart.CheckLogFile(app.filePath("Log/18")));
            EXPECT_EQ(chart.UnreadLogFiles(app.filePath("Log/18")).size(), 1);
            EXPECT_FALSE(chart.DiscardLog(app.filePath("Log/18")));
        }
        disk.unread = "Log/18/Log00002";
        offer();
    }
    EXPECT_EQ(saved, "Alpha from 17, Beta from 18");
    EXPECT_TRUE(prompts.shown.at(0).text.contains("Log/18/Log00002.dat: Transport endpoint is not connected"));
    EXPECT_EQ(standing(), "18");
    EXPECT_EQ(standing("Log/18"), "Log00001.dat Log00002.dat");
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), 2U); // the count, and what names the log
    EXPECT_EQ(store.GetSetting("LogInfo", "2", "").left(4), "Beta");
    EXPECT_EQ(store.GetSetting("LogInfo", "0", ""), "2");
}

TEST_F(RecoveryTest, aDamagedLogIsNotDeleted) {
    const auto damage = [this](const char *tag, std::initializer_list<const char *> records) {
        QFile file(app.filePath(QString("Log/%1/Log00001.dat").arg(tag)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray all = file.readAll();
        for (const char *record : records)
            ASSERT_TRUE(file.seek(all.indexOf(record) + 24) && file.putChar('?'));
    };
    leave("17", "Alpha");
    damage("17", {"SAMP"});
    leave("18", "Beta");
    damage("18", {"SAMP", "END "});
    dialog = [this](Recovery &form) {
        prompts.answers = {BoxAnswer::Ok};
        EXPECT_TRUE(form.cmdDoneButton_Click());
    };
    EXPECT_EQ(offer(), "Alpha 14.03.26 09:26");
    EXPECT_EQ(standing(), "");
    const QStringList discarded = standing("Discarded").split(' ');
    ASSERT_EQ(discarded.size(), 2);
    for (const QString &folder : discarded)
        EXPECT_TRUE(exists(qPrintable("Discarded/" + folder + "/Log00001.dat")));
}

TEST_F(RecoveryTest, aLogThatCannotBeMovedStaysAndTheOperatorIsTold) {
    leave("17", "Alpha");
    makeFile("Discarded");
    dialog = [this](Recovery &form) {
        prompts.answers = {BoxAnswer::Ok};
        EXPECT_TRUE(form.cmdDoneButton_Click());
    };
    offer();
    EXPECT_EQ(standing("Log/17"), "Log00001.dat");
    EXPECT_TRUE(exists("Discarded"));
    EXPECT_TRUE(prompts.shown.back().text.contains(app.filePath("Log/17")));
}

TEST_F(RecoveryTest, copiesThatRunKeepTheirDirectoriesEntriesAndNumbers) {
    const auto start = [this](Identity &who, Instances &copy) {
        copy.prepareLogDirectory();
        layLog("Log/" + who.InstanceTag);
        copy.AddInstance();
        copy.UpdateRegistry();
    };
    Identity early; // while this one waited for its port
    Identity late;  // while the operator was choosing
    Instances earlyCopy(early, store, prompts, clock, app.path());
    Instances lateCopy(late, store, prompts, clock, app.path());
    leave("17", "Alpha");
    start(early, earlyCopy);
    addEntry(early.InstanceTag, "Beta"); // as the table has it when that copy came before it was read
    dialog = [&](Recovery &form) {
        start(late, lateCopy);
        EXPECT_TRUE(recoverFirst(form, 1));
    };
    EXPECT_EQ(offer(), "Alpha 14.03.26 09:26");
    EXPECT_EQ(standing(), early.InstanceTag + " " + late.InstanceTag);
    EXPECT_TRUE(store.GetSetting("LogInfo", QString::number(late.InstanceNumber), "").endsWith(late.InstanceTag));
    EXPECT_EQ(store.GetSetting("LogInfo", "1", ""), ""); // Alpha's
    instances.AddInstance();
    EXPECT_EQ(identity.InstanceNumber, late.InstanceNumber + 1);
}

TEST_F(RecoveryTest, noEntryHidesALogWhoseItIsNot) {
    leave("17", "Alpha 18 v1.2");
    layLog("Log/19");
    layLog("Log");
    table[0].value = "Beta|d|t|19"; // in the place of the count
    EXPECT_EQ(offer(), "Alpha 18 v1.2 14.03.26 09:26;Unknown Log File .;Unknown Log File 19");
}

TEST_F(RecoveryTest, whatWasCancelledIsLostOnlyWhenTheOperatorSaysSo) {
    leave("17", "Alpha");
    leave("18", "Beta");
    cancelled = {"Beta"};
    dialog = [this](Recovery &form) {
        EXPECT_FALSE(recoverFirst(form, 2));
        EXPECT_EQ(form.rows().size(), 1U);
        EXPECT_FALSE(form.cmdRecoverButtonEnabled());
        prompts.answers = {BoxAnswer::Cancel, BoxAnswer::Ok};
        EXPECT_FALSE(form.cmdDoneButton_Click());
        EXPECT_EQ(standing(), "17 18");
        layLog("Log/20"); // of a copy that is started meanwhile
        EXPECT_TRUE(form.cmdDoneButton_Click());
    };
    offer();
    EXPECT_EQ(prompts.shown.at(0).defaultButton, 2);
    EXPECT_EQ(standing(), "20");
}

TEST_F(RecoveryTest, runsThatLookAlikeAreAllSavedUnlessTheirEntryLeadsOutside) {
    leave("17", "Alpha");
    leave("18", "Alpha");
    layLog("outside");
    addEntry("..", "Alpha");
    addEntry("../outside", "Beta");
    dialog = [this](Recovery &form) {
        EXPECT_TRUE(identity.LogDirectory.endsWith("/Log/18")); // never a place outside
        EXPECT_FALSE(recoverFirst(form, 1));
    };
    EXPECT_EQ(offer(), "Alpha 14.03.26 09:26;Alpha 14.03.26 09:26");
    EXPECT_EQ(saved, "Alpha from 17, Alpha from 18");
}

TEST_F(RecoveryTest, aLogWithoutASectionInTheStoreEndsTheStart) {
    leave("17", "Alpha");
    table.clear();
    EXPECT_THROW(offer(), RunTimeError);
    EXPECT_EQ(standing(), "17");
}

TEST_F(RecoveryTest, theSweepFollowsNoLinkAndSparesWhatIsNotItsOwn) {
    makeFile("outside/run.txt");
    makeFile("Log/17/Log00001.dat");
    makeFile("Log/18/kept.CHL");
    makeFile("Log/19/nested/file");
    for (const char *link : {"Log/20", "Log/17/21"})
        ASSERT_TRUE(QFile::link(app.filePath("outside"), app.filePath(link)));
    EXPECT_EQ(offer(), "");
    EXPECT_EQ(standing(), "18 19 20");
    for (const char *spared : {"outside/run.txt", "Log/18/kept.CHL", "Log/19/nested/file"})
        EXPECT_TRUE(exists(spared)) << spared;
}

TEST_F(RecoveryTest, anEmptyLogFolderGoesAndALinkInItsPlaceStays) {
    makeFile("Log/notes");
    EXPECT_EQ(offer(), "");
    EXPECT_FALSE(exists("Log"));
    makeFile("elsewhere/17/Log00001.dat");
    ASSERT_TRUE(QFile::link(app.filePath("elsewhere"), app.filePath("Log")));
    addEntry("17", "Alpha");
    EXPECT_EQ(offer(), "");
    EXPECT_TRUE(exists("elsewhere/17/Log00001.dat"));
}

} // namespace
