// SPDX-License-Identifier: MIT
#include "shell/Instances.h"

#include "fakes/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class InstancesTest : public testing::Test {
protected:
    QString stored(const char *key) { return store.rows[{"LogInfo", key}]; }
    void keep(const char *key, const char *value) { store.rows[{"LogInfo", key}] = value; }
    /// What the operator was told, in boxes.
    QString told() const {
        QStringList texts;
        for (const MessageBox &box : prompts.shown)
            texts << box.text;
        return texts.join(';');
    }
    int numberAfter(const char *count) {
        keep("0", count);
        identity.InstanceNumber = 0;
        instances.AddInstance();
        return identity.InstanceNumber;
    }
    bool staysInLogFolder(const char *entry) {
        return instances.staysInLogFolder(instances.LogDirFromEntry(QString("Default|d|t|") + entry));
    }

    QTemporaryDir app;
    Identity identity;
    FakeSettingsStore store;
    FakePrompts prompts;
    FakeClock clock;
    Instances instances{identity, store, prompts, clock, app.path()};
};

TEST_F(InstancesTest, theFirstStartMakesAHiddenLogFolderAndTheFirstEntry) {
    instances.prepareLogDirectory();
    instances.AddInstance();
    identity.SystemName = "Bench|3"; // as pasted
    instances.UpdateRegistry();
    EXPECT_EQ(identity.LogDirectory, app.path() + "/Log/1773480413000/");
    EXPECT_TRUE(QDir(identity.LogDirectory).exists());
    QFile hidden(app.filePath(".hidden"));
    ASSERT_TRUE(hidden.open(QIODevice::ReadOnly));
    EXPECT_EQ(hidden.readAll(), "Log\nDiscarded\n");
    EXPECT_EQ(stored("0"), "1");
    EXPECT_EQ(stored("1"), "Bench 3|14 Mar 2026|09:26:53|1773480413000");
    EXPECT_EQ(told(), "");

    instances.RemoveRegistryEntry();
    EXPECT_EQ(store.rows.size(), 1U);
    EXPECT_EQ(stored("0"), "0");
}

TEST_F(InstancesTest, copiesThatStartTogetherGetTagsOfTheirOwn) {
    Identity other;
    Instances otherCopy(other, store, prompts, clock, app.path());
    const QString own = instances.ownDirectory(); // needed before it was prepared
    otherCopy.prepareLogDirectory();
    instances.prepareLogDirectory();
    EXPECT_EQ(identity.LogDirectory, own);
    EXPECT_NE(identity.InstanceTag, other.InstanceTag);
    EXPECT_EQ(identity.InstanceTag.size(), other.InstanceTag.size());
}

TEST_F(InstancesTest, theNumberIsTheCountPlusOneWhateverTheStoreHolds) {
    EXPECT_EQ(numberAfter("none"), 1);
    EXPECT_EQ(numberAfter("-1"), 1);
    EXPECT_EQ(numberAfter("2 copies"), 3);
    EXPECT_EQ(told(), "");
    keep("2", "Default|d|t|1");
    EXPECT_EQ(numberAfter("1"), 2);
    EXPECT_EQ(told(), "Existing Registry entry will be overwritten, improved functionality to come later!");
    prompts.shown.clear();
    EXPECT_EQ(numberAfter("32767"), 0);
    EXPECT_EQ(told(), "Error in AddInstance!  6Overflow");
    instances.UpdateRegistry(); // without a number
    EXPECT_EQ(stored("0"), "32767");
}

TEST_F(InstancesTest, copiesThatStartAtTheSameInstantGetNumbersAndEntriesOfTheirOwn) {
    Identity other;
    Instances otherCopy(other, store, prompts, clock, app.path());
    store.otherCopies = [&] {
        store.otherCopies = nullptr;
        otherCopy.AddInstance();
        otherCopy.UpdateRegistry();
    };
    instances.AddInstance();
    instances.UpdateRegistry();
    EXPECT_EQ(identity.InstanceNumber + other.InstanceNumber, 1 + 2);
    EXPECT_EQ(stored("0"), "2");
    EXPECT_EQ(store.rows.size(), 3U);
    EXPECT_EQ(told(), "");
}

TEST_F(InstancesTest, whoEndsUnaskedTakesNobodysEntry) {
    keep("0", "1");
    keep("2", "Alpha|d|t|17");
    instances.registerUnasked();
    EXPECT_EQ(identity.InstanceNumber, 3);
    EXPECT_EQ(stored("2"), "Alpha|d|t|17");
    EXPECT_TRUE(stored("3").endsWith(identity.InstanceTag));
    EXPECT_EQ(told(), "");
}

TEST_F(InstancesTest, aFailingStoreIsToldAndAMissingEntryIsNoFailure) {
    instances.RemoveRegistryEntry(); // of a first start that found no port
    EXPECT_EQ(stored("0"), "-1");
    store.broken = ErrorNumber::DiskFull;
    identity.InstanceNumber = 1;
    instances.UpdateRegistry();
    EXPECT_EQ(told(), "Error in UpdateRegistry!  61Disk full");
}

TEST_F(InstancesTest, anEntryLeadsNowhereOutsideTheLogFolder) {
    ASSERT_TRUE(QDir(app.path()).mkpath("Log/17"));
    ASSERT_TRUE(QFile::link(app.path(), app.filePath("Log/99")));
    EXPECT_EQ(instances.LogDirFromEntry("A|b|c|17|18|"), app.path() + "/Log/17|");
    EXPECT_EQ(instances.LogDirFromEntry("A|b"), app.path() + "/Log/");
    for (const char *inside : {"17", "18", "", "."})
        EXPECT_TRUE(staysInLogFolder(inside)) << inside;
    for (const char *outside : {"..", "../other", "/etc", "17/..", "99"})
        EXPECT_FALSE(staysInLogFolder(outside)) << outside;
    EXPECT_FALSE(instances.staysInLogFolder(app.path() + "/Log/.." + QChar::Null));
}

TEST_F(InstancesTest, nameDateAndTimeStandInColumns) {
    EXPECT_EQ(Instances::EntryDisplayText("Alpha|14.03.26|09:26|17"),
              "  Alpha" + QString(25, ' ') + "14.03.26" + QString(5, ' ') + "09:26");
    EXPECT_EQ(Instances::EntryDisplayText("none"), "  none");
    EXPECT_EQ(Instances::EntryDisplayText(QString(40, 'x') + "|d|t|17"),
              "  " + QString(29, 'x') + " d" + QString(12, ' ') + "t");
}

TEST_F(InstancesTest, aDateTooLongForItsColumnIsWrittenPlainly) {
    QLocale::setDefault(QLocale("ff_Adlm_GN"));
    instances.prepareLogDirectory();
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(identity.StartDate, "2026-03-14");
}

TEST_F(InstancesTest, aFileInPlaceOfTheLogFolderEndsTheStart) {
    ASSERT_TRUE(QFile(app.filePath("Log")).open(QIODevice::WriteOnly));
    EXPECT_THROW(instances.prepareLogDirectory(), RunTimeError);
}

} // namespace
