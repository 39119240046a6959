// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>

using namespace std::chrono_literals;

namespace {

class Port : public testing::TestWithParam<int> {
protected:
    bool isLocked() const { return QFile::exists("/run/lock/LCK.." + port.mid(5).replace('/', '_')); }
    bool opensForAnotherUser() const {
        const QByteArray path = port.toLocal8Bit();
        ::chmod(path.constData(), 0666);
        Child other([&] { return ::setuid(12345) != 0 || ::open(path.constData(), O_RDONLY | O_NOCTTY) < 0; });
        return other.endsWithin(5s) && other.exitCode() == 0;
    }

    LiveOstrel live{"wait 10m\n"};
    const QString port = QFileInfo(live.file("instrument1")).canonicalFilePath();
};

TEST_P(Port, IsFreeForAnotherUserBehindTheEnd) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    EXPECT_TRUE(isLocked());
    EXPECT_FALSE(opensForAnotherUser());
    if (GetParam() != 0)
        live.recorder().signal(GetParam());
    else
        live.press("mnuExit");
    ASSERT_TRUE(live.recorder().endsWithin(10s));
    EXPECT_FALSE(isLocked());
    EXPECT_TRUE(opensForAnotherUser());
}

INSTANTIATE_TEST_SUITE_P(EndedBy, Port, testing::Values(0, SIGTERM, SIGABRT));

TEST_F(Port, IsTakenAndLetGoByTheProgramAsShipped) {
    live.recorder().signal(SIGTERM);
    ASSERT_TRUE(live.recorder().endsWithin(10s));
    EXPECT_FALSE(isLocked());
    Child shipped([&] {
        live.profile().enter();
        return become({OSTREL_PROGRAM});
    });
    EXPECT_TRUE(within(10s, [&] { return isLocked(); }));
    shipped.signal(SIGTERM);
    EXPECT_TRUE(shipped.endsWithin(10s));
    EXPECT_EQ(shipped.exitCode(), 0);
    EXPECT_FALSE(isLocked());
}

} // namespace
