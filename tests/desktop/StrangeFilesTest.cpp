// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/Folders.h"
#include "desktop/QtSettingsStore.h"
#include "fakes/FaultyDisk.h"
#include "fakes/TestFolder.h"
#include "files/Directories.h"
#include "files/TextFile.h"

#include <sys/stat.h>

#include <functional>

namespace {

QString descriptionOf(const std::function<void()> &body) {
    QString description = "no error";
    trapped(body, [&](const RunTimeError &error) { description = error.description(); });
    return description;
}

TEST(StrangeFilesTest, aLinkInTheProgramsPlaceIsNamedAndNotFollowed) {
    const TestFolder folder;
    folder.lay("other", "theirs");
    QtSettingsStore store{folder.at("Ostrel MS.ini")};
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

TEST(StrangeFilesTest, foldersAreTheUsersAloneThoseThatStandStayAsTheyAreAndFailuresAreNamed) {
    const TestFolder folder;
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
