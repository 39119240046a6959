// SPDX-License-Identifier: MIT
#include "desktop/QtSettingsStore.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "fakes/FaultyDisk.h"
#include "files/FileLock.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QStringList awkward{
    "Default|14.03.26|09:26|123",
    "Größe – 温度",
    "a,b",
    "\"",
    " leading",
    "trailing ",
    "@x",
    "@@",
    "@Variant(x)",
    "",
    "C:\\new\\x41",
    "a;b=c",
    "line\r\nline\ttab",
    QString(u'\x1') + "beef",
    "'",
    "%41",
    "#no comment",
};

class QtSettingsStoreTest : public testing::Test {
protected:
    void lay(const QByteArray &content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QString keys(const QString &section) const {
        QStringList found;
        for (const SettingRow &row : store.GetAllSettings(section))
            found << row.key;
        return found.join(' ');
    }

    QTemporaryDir folder;
    QString path = folder.filePath("Ostrel MS.ini");
    QtSettingsStore store{path};
    QtSettingsStore otherCopy{path};
};

TEST_F(QtSettingsStoreTest, everyTextComesBackAlsoThroughQSettings) {
    int n = 0;
    for (const QString &text : awkward) {
        SCOPED_TRACE(text.toStdString());
        store.SaveSetting("General", "k" + text, text);
        EXPECT_EQ(otherCopy.GetSetting("General", "k" + text, "missing"), text);
        store.SaveSetting("Ports", QString::number(n++), text);
    }
    QSettings qt(path, QSettings::IniFormat);
    n = 0;
    for (const QString &text : awkward) {
        SCOPED_TRACE(text.toStdString());
        EXPECT_EQ(qt.value("Ports/" + QString::number(n)).toString(), text);
        qt.setValue("Back/" + QString::number(n++), text);
    }
    qt.setValue("Back/foreign", QByteArray("bytes"));
    qt.sync();
    store.SaveSetting("Options", "DataLogging", "True");
    for (n = 0; n < awkward.size(); ++n)
        EXPECT_EQ(store.GetSetting("Back", QString::number(n), "missing"), awkward[n]) << awkward[n].toStdString();
    QSettings after(path, QSettings::IniFormat);
    EXPECT_EQ(after.value("Back/foreign").toByteArray(), "bytes");
}

TEST_F(QtSettingsStoreTest, rowsComeInTheOrderOfTheirKeysAndGo) {
    for (const char *key : {"10", "2", "0", "1"})
        store.SaveSetting("LogInfo", key, "x");
    EXPECT_EQ(keys("LogInfo"), "0 1 2 10");
    otherCopy.DeleteSetting("LogInfo", "2");
    EXPECT_EQ(keys("LogInfo"), "0 1 10");
    store.DeleteSetting("LogInfo", "2"); // which is gone
    store.DeleteSection("LogInfo");
    store.DeleteSection("LogInfo");
    EXPECT_EQ(keys("LogInfo"), "");
}

TEST_F(QtSettingsStoreTest, whatAPersonEditedIsRead) {
    lay("; by hand\r\nnonsense\r\n[Options]\r\nDataFileSizeHours = 24,5\r\n ComPortNumber=3 "
        "\r\n=\n[\n]x\n[]\n\xff\xfe=\\");
    EXPECT_EQ(store.GetSetting("Options", "DataFileSizeHours", "24"), "24,5");
    EXPECT_EQ(store.GetSetting("Options", "ComPortNumber", "1"), "3");
    store.SaveSetting("Options", "ComPortNumber", "4");
    EXPECT_EQ(store.GetSetting("Options", "DataFileSizeHours", "24"), "24,5");
}

TEST_F(QtSettingsStoreTest, aFailedWriteIsToldAndLeavesTheStore) {
    store.SaveSetting("Options", "ComPortNumber", "3");
    for (int failing = 1;; ++failing) {
        FaultyDisk disk(failing);
        QtSettingsStore onFullDisk(path, disk);
        const int error = errorNumberOf([&] { onFullDisk.SaveSetting("LogInfo", "0", "1"); });
        EXPECT_EQ(store.GetSetting("Options", "ComPortNumber", "lost"), "3");
        if (!disk.struck())
            break;
        EXPECT_TRUE(error == RunTimeError::DiskFull || store.GetSetting("LogInfo", "0", "0") == "1");
    }
    QtSettingsStore nowhere("/dev/null/ostrel/x.ini");
    EXPECT_NE(errorNumberOf([&] { nowhere.SaveSetting("LogInfo", "0", "1"); }), 0);
    EXPECT_EQ(nowhere.GetSetting("LogInfo", "0", "none"), "none");
}

TEST_F(QtSettingsStoreTest, whatIsDoneExclusivelyIsOneStepForTheOtherCopies) {
    const auto isLocked = [this] { return !FileLock(folder.filePath("Ostrel MS.lock")).tryExclusive(); };
    store.exclusively([&] {
        store.SaveSetting("LogInfo", "0", "1");
        EXPECT_TRUE(isLocked());
        EXPECT_EQ(otherCopy.GetSetting("LogInfo", "0", "0"), "1"); // reading waits for nobody
    });
    EXPECT_FALSE(isLocked());
    EXPECT_THROW(store.exclusively([] { throw RunTimeError(RunTimeError::Overflow); }), RunTimeError);
    EXPECT_FALSE(isLocked());

    FileLock hanging(folder.filePath("Ostrel MS.lock"));
    ASSERT_TRUE(hanging.tryExclusive());
    EXPECT_EQ(errorNumberOf([&] { store.SaveSetting("LogInfo", "0", "2"); }), RunTimeError::PermissionDenied);
}

TEST_F(QtSettingsStoreTest, copiesThatWriteAtOnceLoseNothing) {
    constexpr int copies = 3;
    constexpr int rows = 15;
    for (int copy = 0; copy < copies; ++copy) {
        if (::fork() == 0) {
            for (int row = 0; row < rows; ++row)
                store.SaveSetting("LogInfo", QString::number(copy * rows + row), "x");
            ::_exit(0);
        }
    }
    while (::wait(nullptr) > 0) {
    }
    EXPECT_EQ(store.GetAllSettings("LogInfo").size(), std::size_t(copies * rows));
}

} // namespace
