// SPDX-License-Identifier: MIT
#include "desktop/SerialPorts.h"

#include "fakes/FakePlatform.h"
#include "fakes/TestFolder.h"

namespace {

class SerialPortsTest : public testing::Test {
protected:
    /// Lists a terminal as the kernel does; only an on-board port has a type.
    void list(const QString &name, const QByteArray &type = {}) const {
        QDir(folder.path()).mkpath(name + "/device");
        if (!type.isEmpty())
            folder.lay(name + "/type", type + "\n");
    }

    TestFolder folder;
    FakeSettingsStore store;
    SerialPorts ports{store, folder.path()};
};

TEST_F(SerialPortsTest, realPortsComeInNaturalOrderOnBoardFirst) {
    for (const char *name : {"ttyUSB10", "ttyUSB2", "ttyACM0", "tty1"})
        list(name);
    for (const auto &[name, type] : {std::pair("ttyS10", "4"), std::pair("ttyS2", "4"), std::pair("ttyS3", "0")})
        list(name, type);
    QDir(folder.path()).mkpath("ttyUSB9"); // no device
    EXPECT_EQ(ports.installed().join(' '), "/dev/ttyS2 /dev/ttyS10 /dev/ttyACM0 /dev/ttyUSB2 /dev/ttyUSB10");
}

TEST_F(SerialPortsTest, aPortOfTheSettingsComesBeforeTheComputersOwn) {
    list("ttyUSB0");
    list("ttyUSB1");
    store.rows[{"Ports", "1"}] = store.rows[{"Ports", "11"}] = "/tmp/instrument";
    const std::pair<int, const char *> devices[] = {
        {0, ""}, {1, "/tmp/instrument"}, {2, "/dev/ttyUSB1"}, {3, ""}, {11, ""}};
    for (const auto &[number, device] : devices)
        EXPECT_EQ(ports.device(number), device) << number;
}

} // namespace
