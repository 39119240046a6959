// SPDX-License-Identifier: MIT
#include "desktop/PortLocks.h"

#include "OtherProcess.h"
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "files/Descriptor.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

class PortLocksTest : public testing::Test {
protected:
    QString lock(const QString &name = "LCK..ttyUSB0") const { return folder.filePath(name); }
    QByteArray file(const QString &name = "LCK..ttyUSB0") const { return lock(name).toLocal8Bit(); }
    void leave(const QByteArray &content, const QString &name = "LCK..ttyUSB0") const {
        QFile left(lock(name));
        ASSERT_TRUE(left.open(QIODevice::WriteOnly) && left.write(content) == content.size());
    }
    int takeOver() const {
        return errorNumberOf([&] {
            PortLocks::takeOver({"/dev/serial/by-id/usb-1", "/dev/ttyUSB0"}, {folder.path()});
        });
    }
    /// What takeOver says to a lock of this content. A lock of the dead is gone, one of the living stays.
    int met(const QByteArray &content) const {
        leave(content);
        const int number = takeOver();
        EXPECT_EQ(QFile::exists(lock()), number != 0) << content.constData();
        return number;
    }
    static QByteArray padded(pid_t process) { return QByteArray::number(process).rightJustified(10) + "\n"; }
    static QByteArray binary(pid_t process) { return {reinterpret_cast<const char *>(&process), sizeof process}; }
    static QByteArray nameOf(pid_t process) {
        QFile name(QString("/proc/%1/comm").arg(process));
        return name.open(QIODevice::ReadOnly) ? name.readAll().trimmed() : QByteArray();
    }

    static constexpr int held = RunTimeError::PortAlreadyOpen;
    const pid_t living = ::getppid();
    const pid_t dead = deadProcess();
    QTemporaryDir folder;
};

TEST_F(PortLocksTest, theOwnersLifeDecides) {
    const QByteArray number = QByteArray::number(living);
    EXPECT_EQ(met(padded(living)), held);
    EXPECT_EQ(met(padded(living).trimmed() + " minicom anna\n"), held);
    EXPECT_EQ(met(binary(living)), held);
    EXPECT_EQ(met(number + "\n" + nameOf(living) + "\nhost\n"), held);
    EXPECT_EQ(met(number + "\nanother program\nhost\n"), 0); // its number was given anew
    EXPECT_EQ(met(padded(dead)), 0);
    EXPECT_EQ(met(binary(dead)), 0);
    EXPECT_EQ(met(padded(::getpid())), 0);
    const pid_t unfetched = ::fork();
    if (unfetched == 0)
        ::_exit(0);
    ::waitid(P_PID, id_t(unfetched), nullptr, WEXITED | WNOWAIT);
    EXPECT_EQ(met(padded(unfetched)), 0);
    ::waitpid(unfetched, nullptr, 0);
}

TEST_F(PortLocksTest, aLockWithoutANumberIsBeingWrittenOrWasLeft) {
    EXPECT_EQ(met(""), held);
    EXPECT_EQ(met("garbage"), held);
    QFile old(lock());
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    old.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    EXPECT_EQ(takeOver(), 0);
    EXPECT_FALSE(QFile::exists(lock()));
}

TEST_F(PortLocksTest, aLockThatItsOwnerHoldsOpenIsALivingOnes) {
    leave(padded(dead));
    const Descriptor owner(::open(file().constData(), O_RDONLY));
    ASSERT_EQ(::flock(owner.get(), LOCK_EX), 0);
    EXPECT_EQ(takeOver(), held);
}

TEST_F(PortLocksTest, allNamesOfTheDeviceCount) {
    for (const char *name : {"LCK..serial_by-id_usb-1", "LCK..serial:by-id:usb-1", "LCK..usb-1", "LCK..ttyUSB0"}) {
        leave(padded(living), name);
        EXPECT_EQ(takeOver(), held) << name;
        QFile::remove(lock(name));
    }
    leave(padded(living), "LCK..ttyUSB1");
    EXPECT_EQ(takeOver(), 0);
}

TEST_F(PortLocksTest, whatIsNoFileIsNeitherWaitedOnNorRemoved) {
    ASSERT_EQ(::mkfifo(file().constData(), 0644), 0);
    EXPECT_EQ(takeOver(), 0);
    EXPECT_TRUE(QFile::exists(lock()));
}

TEST_F(PortLocksTest, aLockThatMayNotBeReadIsTakenForALivingOnes) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    leave(padded(dead));
    ::chmod(file().constData(), 0600);
    ::chmod(folder.path().toLocal8Bit().constData(), 0777);
    EXPECT_EQ(exitStatusOfUser([&] { return takeOver() == held ? 0 : 1; }), 0);
}

} // namespace
