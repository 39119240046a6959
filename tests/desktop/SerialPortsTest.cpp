// SPDX-License-Identifier: MIT
#include "desktop/SerialPorts.h"

#include "fakes/FakePlatform.h"
#include "fakes/TestFolder.h"

namespace {

TEST(SerialPortsTest, realPortsComeInNaturalOrderOnBoardFirstAndThoseOfTheSettingsBeforeThem) {
    const TestFolder folder; // as the kernel lists terminals; only an on-board port has a type
    for (const char *name : {"ttyUSB10", "ttyUSB2", "ttyACM0", "tty1", "ttyS10", "ttyS2", "ttyS3"})
        QDir(folder.path()).mkpath(folder.at(name) + "/device");
    QDir(folder.path()).mkpath("ttyUSB9"); // no device
    folder.lay("ttyS10/type", "4\n");
    folder.lay("ttyS3/type", "0\n");
    FakeSettingsStore store;
    store.rows[{"Ports", "1"}] = store.rows[{"Ports", "11"}] = "/tmp/instrument";
    SerialPorts ports(store, folder.path());
    EXPECT_EQ(ports.installed().join(' '), "/dev/ttyS2 /dev/ttyS10 /dev/ttyACM0 /dev/ttyUSB2 /dev/ttyUSB10");
    QStringList devices;
    for (const int number : {0, 1, 2, 5, 6, 11})
        devices << ports.device(number);
    EXPECT_EQ(devices, (QStringList{"", "/tmp/instrument", "/dev/ttyS10", "/dev/ttyUSB10", "", ""}));
}

} // namespace
