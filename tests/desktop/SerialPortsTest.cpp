// SPDX-License-Identifier: MIT
#include "desktop/SerialPorts.h"

#include "fakes/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class SerialPortsTest : public testing::Test {
protected:
    /// Lists a terminal as the kernel does; only an on-board port has a type.
    void list(const QString &name, bool device = true, const QByteArray &type = {}) {
        QDir(folder.path()).mkpath(name + (device ? "/device" : ""));
        QFile file(folder.filePath(name + "/type"));
        if (!type.isEmpty()) {
            ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(type + "\n") > 0);
        }
    }

    QTemporaryDir folder;
    FakeSettingsStore store;
    SerialPorts ports{store, folder.path()};
};

TEST_F(SerialPortsTest, realPortsComeInNaturalOrderOnBoardFirst) {
    for (const char *name : {"ttyUSB10", "ttyUSB2", "ttyACM0"})
        list(name);
    list("ttyS10", true, "4");
    list("ttyS2", true, "4");
    list("ttyS3", true, "0");
    list("ttyUSB9", false);
    list("tty1", false);
    EXPECT_EQ(ports.installed().join(' '), "/dev/ttyS2 /dev/ttyS10 /dev/ttyACM0 /dev/ttyUSB2 /dev/ttyUSB10");
}

TEST_F(SerialPortsTest, aPortOfTheSettingsComesBeforeTheComputersOwn) {
    list("ttyUSB0");
    list("ttyUSB1");
    store.rows[{"Ports", "1"}] = "/tmp/instrument";
    EXPECT_EQ(ports.device(1), "/tmp/instrument");
    EXPECT_EQ(ports.device(2), "/dev/ttyUSB1");
    EXPECT_EQ(ports.device(3), "");
    store.rows[{"Ports", "11"}] = "/tmp/instrument";
    EXPECT_EQ(ports.device(11), "");
    EXPECT_EQ(ports.device(0), "");
}

} // namespace
