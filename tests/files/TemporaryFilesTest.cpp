// SPDX-License-Identifier: MIT
#include "files/TemporaryFiles.h"

#include "files/DurableFile.h"

#include <QByteArrayList>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr char noProcess[] = "2000000000"; // beyond all that the system gives out

class TemporaryFilesTest : public testing::Test {
protected:
    enum Part { Computer, Session, Process, Token };

    /// A name of this process, with other parts in it.
    static QString named(const std::map<Part, QByteArray> &others) {
        QByteArrayList parts = TemporaryFiles::newName().sliced(8).split('-');
        for (const auto &[part, text] : others)
            parts[part] = text;
        return QString::fromLatin1(".ostrel-" + parts.join('-'));
    }
    QString lay(const QString &name, int ageInMinutes = 0) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * ageInMinutes), QFile::FileModificationTime));
        return name;
    }
    QStringList left() {
        EXPECT_FALSE(replaceFile(folder.filePath("run.chd"), "new"));
        QStringList names =
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        names.removeOne("run.chd");
        return names;
    }
    /// Writes half a file, and stands there until it is killed.
    pid_t startWriter() {
        int told[2];
        EXPECT_EQ(::pipe(told), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(60);
            DurableFile file(folder.filePath("run.chd"));
            file.write("half");
            const bool good = ::write(told[1], "x", 1) == 1;
            while (good)
                ::pause();
        }
        ::close(told[1]);
        char x = 0;
        EXPECT_EQ(::read(told[0], &x, 1), 1);
        ::close(told[0]);
        return child;
    }

    QTemporaryDir folder;
};

TEST_F(TemporaryFilesTest, theNextSaveTakesAwayWhatAKilledProgramLeftAndNothingOfALivingOne) {
    const pid_t writer = startWriter();
    EXPECT_EQ(left().size(), 1);
    ASSERT_EQ(::kill(writer, SIGKILL), 0);
    ASSERT_EQ(::waitpid(writer, nullptr, 0), writer);
    EXPECT_EQ(left(), QStringList());
}

TEST_F(TemporaryFilesTest, whatMayBeInUseStays) {
    const QByteArray someone = QByteArray::number(::getppid());
    QStringList kept{
        lay(named({})),                   // another save of this program
        lay(named({{Process, someone}})), // the number is taken, by whatever program
        lay(named({{Computer, "other"}, {Session, "other"}, {Process, noProcess}}), 10000),
        lay(named({{Session, "earlier"}, {Process, noProcess}}), 50), // or a container beside this one
        lay(".ostrel-" + QString(noProcess) + "-0.tmp", 50),          // of whichever computer
        lay(".ostrel-" + someone + "-0.tmp", 10000),
        lay(".ostrel-notes.tmp", 10000),
        lay(".ostrel-" + QString(noProcess) + "-0.tmp.chd", 10000),
        lay(named({{Process, "-1"}}), 10000),
        lay(named({{Process, "0"}}), 10000),
    };
    lay(named({{Token, "another"}})); // of an earlier process of our number
    lay(named({{Process, noProcess}}));
    lay(named({{Session, "earlier"}, {Process, someone}}), 70);
    lay(".ostrel-" + QString(noProcess) + "-1.tmp", 70);
    QStringList stand = left();
    kept.sort();
    stand.sort();
    EXPECT_EQ(stand, kept);
}

TEST_F(TemporaryFilesTest, linksAndFoldersOfSuchNamesAreNoneOfOurs) {
    const QStringList names{named({{Process, noProcess}}), named({{Process, noProcess}})};
    ASSERT_TRUE(QDir(folder.path()).mkdir(names[0]));
    ASSERT_TRUE(QFile::link("/etc/passwd", folder.filePath(names[1])));
    EXPECT_EQ(left().size(), 2);
}

} // namespace
