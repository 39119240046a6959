// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

/// Two copies of the program in one folder.
class InstancesTest : public testing::Test, protected ProgramFixture {
protected:
    int numberAfter(const char *count) {
        stored("0") = count;
        identity.InstanceNumber = 0;
        instances.AddInstance();
        return identity.InstanceNumber;
    }

    Identity identity;
    Identity other;
    Instances instances{identity, store, prompts, clock, folder.path()};
    Instances otherCopy{other, store, prompts, clock, folder.path()};
};

TEST_F(InstancesTest, theFirstStartMakesAHiddenLogFolderAndTheFirstEntry) {
    instances.prepareLogDirectory();
    instances.AddInstance();
    identity.SystemName = "Bench|3"; // as pasted
    instances.UpdateRegistry();
    EXPECT_EQ(identity.LogDirectory, folder.path() + "/Log/1773480413000/");
    EXPECT_EQ(content(".hidden"), "Log\nDiscarded\n");
    EXPECT_EQ(stored("1"), "Bench 3|14 Mar 2026|09:26:53|1773480413000");
}

TEST_F(InstancesTest, copiesThatStartAtTheSameInstantGetTagsNumbersAndEntriesOfTheirOwn) {
    const QString own = instances.ownDirectory(); // needed before it was prepared
    otherCopy.prepareLogDirectory();
    instances.prepareLogDirectory();
    EXPECT_EQ(identity.LogDirectory, own);
    EXPECT_NE(identity.InstanceTag, other.InstanceTag);
    store.otherCopies = [this] {
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

TEST_F(InstancesTest, theNumberIsTheCountPlusOneWhateverTheStoreHolds) {
    EXPECT_EQ(numberAfter("none"), 1);
    EXPECT_EQ(numberAfter("-1"), 1);
    EXPECT_EQ(numberAfter("2 copies"), 3);
    stored("2") = "Default|d|t|1";
    EXPECT_EQ(numberAfter("1"), 2);
    EXPECT_EQ(numberAfter("32767"), 0);
    instances.UpdateRegistry(); // without a number
    EXPECT_EQ(stored("0"), "32767");

    stored("0") = "1";
    instances.registerUnasked(); // takes nobody's entry
    EXPECT_EQ(identity.InstanceNumber, 3);
    EXPECT_EQ(stored("2"), "Default|d|t|1");
    EXPECT_TRUE(stored("3").endsWith(identity.InstanceTag));
    EXPECT_EQ(told(), "Existing Registry entry will be overwritten, improved functionality to come later!;"
                      "Error in AddInstance!  6Overflow");
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
    ASSERT_TRUE(QDir(folder.path()).mkpath("Log/17"));
    ASSERT_TRUE(QFile::link(folder.path(), path("Log/99")));
    EXPECT_EQ(instances.LogDirFromEntry("A|b|c|17|18|"), folder.path() + "/Log/17|");
    EXPECT_EQ(instances.LogDirFromEntry("A|b"), folder.path() + "/Log/");
    QStringList inside{"17", "18", "", ".", "..", "/etc", "17/..", "99", ".." + QString(QChar())};
    inside.removeIf([this](const QString &entry) {
        return !instances.staysInLogFolder(instances.LogDirFromEntry("Default|d|t|" + entry));
    });
    EXPECT_EQ(inside, QStringList({"17", "18", "", "."}));
}

TEST_F(InstancesTest, nameDateAndTimeStandInColumns) {
    EXPECT_EQ(Instances::EntryDisplayText(QString(40, 'x') + "|d|t|17"),
              "  " + QString(29, 'x') + " d" + QString(12, ' ') + "t");
}

} // namespace
