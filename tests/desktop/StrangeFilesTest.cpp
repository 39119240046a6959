// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/Folders.h"
#include "desktop/InstanceLock.h"
#include "desktop/QtSettingsStore.h"
#include "files/Directories.h"
#include "files/TextFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

namespace {

std::string descriptionOf(const std::function<void()> &body) {
    QString description = "no error";
    trapped(body, [&](const RunTimeError &error) { description = error.description(); });
    return description.toStdString();
}

/// Something else stands where a file of the program should.
class StrangeFilesTest : public testing::Test {
protected:
    struct Use {
        const char *file;
        std::function<void()> use;
    };

    QString path(const char *name) const { return folder.filePath(name); }
    mode_t modeOf(const char *name) const {
        struct stat now {};
        EXPECT_EQ(::stat(QFile::encodeName(path(name)).constData(), &now), 0);
        return now.st_mode & 07777;
    }

    QTemporaryDir folder;
    QtSettingsStore store{path("Ostrel MS.ini")};
    const std::vector<Use> uses{
        {"ChartErr.log", [this] { TextFile::append(path("ChartErr.log"), "entry"); }},
        {".hidden", [this] { Directories::hide(path("Log")); }},
        {"Ostrel MS.ini", [this] { store.GetSetting("Options", "ComPortNumber", "1"); }},
        {"Ostrel MS.ini", [this] { store.SaveSetting("Options", "ComPortNumber", "1"); }},
        {"Ostrel MS.lock", [this] { store.SaveSetting("Options", "ComPortNumber", "1"); }},
        {"running.lock", [this] { InstanceLock lock(folder.path()); }},
        {"starting.lock", [this] { InstanceLock lock(folder.path()); }},
    };
};

TEST_F(StrangeFilesTest, whatStandsThereIsNamedAndNeitherWaitedForNorFollowed) {
    const struct {
        const char *words;
        std::function<bool(const QByteArray &)> lay;
    } kinds[] = {
        {"is a named pipe", [](const QByteArray &at) { return ::mkfifo(at, 0600) == 0; }},
        {"is a folder", [](const QByteArray &at) { return ::mkdir(at, 0700) == 0; }},
        {"is a symbolic link", [&](const QByteArray &at) { return QFile::link(path("other"), at); }},
    };
    QFile other(path("other"));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite) && other.write("theirs") == 6 && other.flush());
    for (const auto &kind : kinds) {
        for (const Use &use : uses) {
            const QByteArray at = QFile::encodeName(path(use.file));
            std::remove(at); // the use before may have made it, a lock
            ASSERT_TRUE(kind.lay(at));
            EXPECT_EQ(descriptionOf(use.use), path(use.file).toStdString() + ": " + kind.words);
            ASSERT_EQ(std::remove(at), 0);
        }
    }
    EXPECT_EQ(descriptionOf([] { TextFile::append("/dev/full", "entry"); }), "/dev/full: is a device");
    EXPECT_TRUE(other.seek(0) && other.readAll() == "theirs");
    for (const Use &use : uses)
        EXPECT_EQ(descriptionOf(use.use), "no error") << use.file;
}

TEST_F(StrangeFilesTest, foldersAreTheUsersAloneAndThoseThatStandStayAsTheyAre) {
    const mode_t usual = ::umask(0177);
    EXPECT_EQ(descriptionOf([&] { makePath(path("share/ostrel/deeper/")); }), "no error");
    EXPECT_TRUE(Directories::make(path("share/ostrel/Log")));
    ::umask(usual);
    for (const char *made : {"share", "share/ostrel", "share/ostrel/deeper", "share/ostrel/Log"})
        EXPECT_EQ(modeOf(made), 0700U) << made;
    ASSERT_EQ(::chmod(QFile::encodeName(path("share")).constData(), 0755), 0);
    EXPECT_EQ(descriptionOf([&] { makePath(path("share")); }), "no error");
    EXPECT_EQ(modeOf("share"), 0755U);
    TextFile::append(path("file"), "");
    EXPECT_EQ(descriptionOf([&] { makePath(path("file/ostrel")); }), path("file").toStdString() + ": Not a directory");
}

TEST(RunTimeErrorTest, aFailureWithoutAReasonIsNotToldAsASuccess) {
    EXPECT_EQ(RunTimeError::fromErrno(0, "x").description(), "x: Path/File access error");
    EXPECT_EQ(RunTimeError::fromErrno(ENOSPC, "x").number(), RunTimeError::DiskFull);
}

} // namespace
