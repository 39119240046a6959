// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace {

class EndedBy : public testing::TestWithParam<int> {
protected:
    static QString lockOf(const QString &port) { return "/run/lock/LCK.." + port.mid(5).replace('/', '_'); }
    static bool opensForAnotherUser(const QString &port) {
        ::chmod(port.toLocal8Bit().constData(), 0666);
        return QProcess::execute("setpriv", {"--reuid=12345", "--regid=12345", "--clear-groups", "sh", "-c",
                                             "exec 2>/dev/null 3<" + port}) == 0;
    }
};

TEST_P(EndedBy, APortIsFreeForAnotherUser) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    LiveOstrel live("wait 10m\n");
    const QString port = QFileInfo(live.file("instrument1")).canonicalFilePath();
    EXPECT_TRUE(QFile::exists(lockOf(port)));
    EXPECT_FALSE(opensForAnotherUser(port));
    if (GetParam() != 0)
        ::kill(pid_t(live.recorder().pid()), GetParam());
    else
        live->trigger("mnuExit");
    ASSERT_TRUE(live.recorder().endsWithin(10000));
    EXPECT_FALSE(QFile::exists(lockOf(port)));
    EXPECT_TRUE(opensForAnotherUser(port));
}

INSTANTIATE_TEST_SUITE_P(Port, EndedBy, testing::Values(0, SIGTERM, SIGABRT));

} // namespace
