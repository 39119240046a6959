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
    makeFile("Log/19/Log00001.dat");
    chart.logs.insert(app.filePath("Log/19"));
    dialog = [](Recovery &form) { EXPECT_TRUE(recoverFirst(form, 2)); };
    EXPECT_EQ(offer(), "Alpha 14.03.26 09:26;Unknown Log File 19");
    EXPECT_EQ(saved, "Alpha from 17, 19 from 19");
    EXPECT_EQ(prompts.beeps, 1);
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_EQ(standing(), "");
    EXPECT_TRUE(store.rows.empty());
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
        makeFile("Log/20/Log00001.dat"); // of a copy that is started meanwhile
        EXPECT_TRUE(form.cmdDoneButton_Click());
    };
    offer();
    EXPECT_EQ(prompts.shown.at(0).defaultButton, 2);
    EXPECT_EQ(standing(), "20");
}

TEST_F(RecoveryTest, runsThatLookAlikeAreAllSavedUnlessTheirEntryLeadsOutside) {
    leave("17", "Alpha");
    leave("18", "Alpha");
    addEntry("..", "Alpha");
    addEntry("../outside", "Beta");
    dialog = [](Recovery &form) { EXPECT_FALSE(recoverFirst(form, 1)); };
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
