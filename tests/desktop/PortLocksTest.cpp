// SPDX-License-Identifier: MIT
#include "desktop/PortLocks.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "fakes/TestFolder.h"
#include "files/Descriptor.h"

#include <QDateTime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

namespace {

class PortLocksTest : public testing::Test {
protected:
    int takeOver() const {
        return errorNumberOf([&] {
            PortLocks::takeOver({"/dev/serial/by-id/usb-1", "/dev/ttyUSB0"}, {folder.path()});
        });
    }
    /// What takeOver says to a lock of this content. A lock of the dead is gone, one of the living stays.
    int met(const QByteArray &content, const QString &name = "LCK..ttyUSB0") const {
        folder.lay(name, content);
        const int number = takeOver();
        EXPECT_EQ(QFile::remove(folder.at(name)), number != 0) << content.constData();
        return number;
    }
    static QByteArray padded(pid_t process) { return QByteArray::number(process).rightJustified(10) + "\n"; }
    static QByteArray binary(pid_t process) { return {reinterpret_cast<const char *>(&process), sizeof process}; }

    static constexpr int held = ErrorNumber::PortAlreadyOpen;
    static constexpr pid_t deadProcess = 2'000'000'000; // beyond all that the system gives out
    const pid_t living = ::getppid();
    TestFolder folder;
};

TEST_F(PortLocksTest, theOwnersLifeDecides) {
    const QByteArray number = QByteArray::number(living);
    const QByteArray name = folder.content("/proc/" + number + "/comm").trimmed();
    EXPECT_EQ(met(padded(living)), held);
    EXPECT_EQ(met(number + " minicom anna\n"), held);
    EXPECT_EQ(met(binary(living)), held);
    EXPECT_EQ(met(number + "\n" + name + "\nhost\n"), held);
    EXPECT_EQ(met(number + "\nanother program\nhost\n"), 0); // its number was given anew
    EXPECT_EQ(met(padded(deadProcess)), 0);
    EXPECT_EQ(met(padded(::getpid())), 0);
}

TEST_F(PortLocksTest, aLockWithoutANumberIsBeingWrittenOrWasLeft) {
    EXPECT_EQ(met(""), held);
    QFile old(folder.at("LCK..ttyUSB0"));
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    old.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    EXPECT_EQ(takeOver(), 0);
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(PortLocksTest, allNamesOfTheDeviceCount) {
    for (const char *name : {"LCK..serial_by-id_usb-1", "LCK..serial:by-id:usb-1", "LCK..usb-1"})
        EXPECT_EQ(met(padded(living), name), held) << name;
    folder.lay("LCK..ttyUSB1", padded(living));
    EXPECT_EQ(takeOver(), 0);
}

TEST_F(PortLocksTest, whatIsHeldOpenOrMayNotBeReadIsALivingOnesAndWhatIsNoFileIsNobodys) {
    folder.lay("LCK..ttyUSB0", padded(deadProcess));
    const QByteArray lock = folder.native("LCK..ttyUSB0");
    Descriptor owner(::open(lock.constData(), O_RDONLY));
    ASSERT_EQ(::flock(owner.get(), LOCK_EX), 0);
    EXPECT_EQ(takeOver(), held);
    owner.reset();
    ::chmod(lock.constData(), 0600);
    ::chmod(folder.path().toLocal8Bit().constData(), 0777);
    const int root = ::setfsuid(12345); // opens files as another user; only root can
    EXPECT_TRUE(root != 0 || takeOver() == held);
    ::setfsuid(uid_t(root));
    EXPECT_EQ(takeOver(), 0);
    ASSERT_EQ(::mkfifo(lock.constData(), 0644), 0);
    EXPECT_EQ(takeOver(), 0);
    EXPECT_EQ(folder.names(), QStringList{"LCK..ttyUSB0"});
}

} // namespace
