// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/Folders.h"
#include "desktop/QtSettingsStore.h"
#include "fakes/FaultyDisk.h"
#include "fakes/TestFolder.h"
#include "files/Directories.h"
#include "files/FileLock.h"
#include "files/TextFile.h"

#include <QSettings>
#include <sys/stat.h>

#include <functional>

namespace {

// clang-format off
const QStringList awkward{
    "Default|14.03.26|09:26|123", "Größe – 温度", "a,b", "a;b", "a=b", " leading", "trailing ", "@x", "@@", "@Variant(x)", "",
    "\"", "'", "C:\\new\\x41", "line\r\nline\ttab", QString(u'\x1') + "beef", "%41", "#no comment",
};
// clang-format on

struct QtSettingsStoreTest : testing::Test {
    TestFolder folder;
    QString path = folder.at("Ostrel MS.ini");
    QtSettingsStore store{path};
    QtSettingsStore otherCopy{path};
};

using StrangeFilesTest = QtSettingsStoreTest;

TEST_F(QtSettingsStoreTest, everyTextComesBackAlsoThroughQSettings) {
    for (const QString &text : awkward) {
        SCOPED_TRACE(text.toStdString());
        const QString number = QString::number(awkward.indexOf(text));
        store.SaveSetting("General", "k" + text, text);
        EXPECT_EQ(otherCopy.GetSetting("General", "k" + text, "missing"), text);
        store.SaveSetting("Ports", number, text);
        QSettings qt(path, QSettings::IniFormat);
        EXPECT_EQ(qt.value("Ports/" + number).toString(), text);
        qt.setValue("Back/" + number, text);
        qt.sync();
        EXPECT_EQ(store.GetSetting("Back", number, "missing"), text);
    }
}

TEST_F(QtSettingsStoreTest, rowsComeInTheOrderOfTheirKeysAndGo) {
    for (const char *key : {"10", "2", "0"})
        store.SaveSetting("LogInfo", key, "x");
    EXPECT_EQ(store.GetAllSettings("LogInfo").at(1).key, "2");
    otherCopy.DeleteSetting("LogInfo", "2");
    EXPECT_EQ(store.GetSetting("LogInfo", "2", "gone"), "gone");
    store.DeleteSetting("LogInfo", "2");
    store.DeleteSection("LogInfo");
    EXPECT_TRUE(store.GetAllSettings("LogInfo").empty());
}

TEST_F(QtSettingsStoreTest, whatAPersonEditedIsRead) {
    folder.lay("Ostrel MS.ini", "; by hand\r\nnonsense\r\n[Options]\r\nDataFileSizeHours = 24,5\r\n ComPortNumber=3 "
                                "\r\n=\n[\n]x\n[]\n\xff\xfe=\\");
    EXPECT_EQ(store.GetSetting("Options", "ComPortNumber", "1"), "3");
    store.SaveSetting("Options", "ComPortNumber", "4");
    EXPECT_EQ(store.GetSetting("Options", "DataFileSizeHours", "24"), "24,5");
}

TEST_F(QtSettingsStoreTest, aFailedWriteIsToldAndLeavesTheStore) {
    store.SaveSetting("Options", "ComPortNumber", "3");
    {
        const FullDisk full;
        EXPECT_EQ(errorNumberOf([&] { store.SaveSetting("LogInfo", "0", "1"); }), ErrorNumber::DiskFull);
    }
    EXPECT_EQ(store.GetSetting("Options", "ComPortNumber", "lost"), "3");
    QtSettingsStore nowhere("/dev/null/ostrel/x.ini");
    EXPECT_NE(errorNumberOf([&] { nowhere.SaveSetting("LogInfo", "0", "1"); }), 0);
    EXPECT_EQ(nowhere.GetSetting("LogInfo", "0", "none"), "none");
}

TEST_F(QtSettingsStoreTest, whatIsDoneExclusivelyIsOneStepForTheOtherCopies) {
    store.exclusively([&] {
        store.SaveSetting("LogInfo", "0", "1");
        EXPECT_FALSE(FileLock(folder.at("Ostrel MS.lock")).tryExclusive());
        EXPECT_EQ(otherCopy.GetSetting("LogInfo", "0", "0"), "1"); // reading waits for nobody
    });
    EXPECT_THROW(store.exclusively([] { throw RunTimeError(ErrorNumber::Overflow); }), RunTimeError);
    FileLock hanging(folder.at("Ostrel MS.lock"));
    ASSERT_TRUE(hanging.tryExclusive());
    EXPECT_EQ(errorNumberOf([&] { store.SaveSetting("LogInfo", "0", "2"); }), ErrorNumber::PermissionDenied);
}

QString descriptionOf(const std::function<void()> &body) {
    QString description = "no error";
    trapped(body, [&](const RunTimeError &error) { description = error.description(); });
    return description;
}

TEST_F(StrangeFilesTest, aLinkInTheProgramsPlaceIsNamedAndNotFollowed) {
    folder.lay("other", "theirs");
    const std::pair<const char *, std::function<void()>> uses[] = {
        {"ChartErr.log", [&] { TextFile::append(folder.at("ChartErr.log"), "entry"); }},
        {".hidden", [&] { Directories::hide(folder.at("Log")); }},
        {"Ostrel MS.ini", [&] { store.GetSetting("Options", "ComPortNumber", "1"); }},
        {"Ostrel MS.lock", [&] { store.SaveSetting("Options", "ComPortNumber", "1"); }},
    };
    for (const auto &[file, use] : uses) {
        QFile::remove(folder.at(file)); // the use before may have made it, a lock
        ASSERT_TRUE(QFile::link(folder.at("other"), folder.at(file)));
        EXPECT_EQ(descriptionOf(use), folder.at(file) + ": is a symbolic link");
        QFile::remove(folder.at(file));
        EXPECT_EQ(descriptionOf(use), "no error") << file;
    }
    EXPECT_EQ(folder.content("other"), "theirs");
}

TEST_F(StrangeFilesTest, foldersAreTheUsersAloneThoseThatStandStayAsTheyAreAndFailuresAreNamed) {
    const mode_t usual = ::umask(0);
    EXPECT_EQ(descriptionOf([&] { makePath(folder.at("ostrel/deeper/")); }), "no error");
    EXPECT_TRUE(Directories::make(folder.at("ostrel/Log")));
    ::umask(usual);
    for (const char *made : {"ostrel", "ostrel/deeper", "ostrel/Log"})
        EXPECT_EQ(int(QFileInfo(folder.at(made)).permissions()), 0x7700) << made;
    EXPECT_EQ(descriptionOf([&] { makePath(folder.path()); }), "no error");
    folder.lay("file");
    EXPECT_EQ(descriptionOf([&] { makePath(folder.at("file/ostrel")); }), folder.at("file") + ": Not a directory");

    const FullDisk full;
    EXPECT_EQ(errorNumberOf([&] { TextFile::append(folder.at("file"), "x"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(errorNumberOf([&] { TextFile::append(folder.at("none/x"), "x"); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(RunTimeError::fromErrno(0, "x").description(), "x: Path/File access error"); // and not a success
}

} // namespace
