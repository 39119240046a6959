// SPDX-License-Identifier: MIT
#include "files/TemporaryFiles.h"

#include "fakes/TestFolder.h"
#include "files/DurableFile.h"

#include <QDateTime>
#include <gmock/gmock.h>
#include <unistd.h>

using namespace ostrel;

namespace {

constexpr char noProcess[] = "2000000000"; // beyond all that the system gives out

struct TemporaryFilesTest : testing::Test {
    enum Part { Computer, Session, Process, Token };

    /// A name of this process, with other parts in it.
    static QString named(const std::map<Part, QByteArray> &others) {
        QByteArrayList parts = TemporaryFiles::newName().sliced(8).split('-');
        for (const auto &[part, text] : others)
            parts[part] = text;
        return QString::fromLatin1(".ostrel-" + parts.join('-'));
    }
    QString lay(const QString &name, int ageInMinutes = 0) {
        QFile file(folder.at(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * ageInMinutes), QFile::FileModificationTime));
        return name;
    }

    TestFolder folder;
};

TEST_F(TemporaryFilesTest, whatMayBeInUseOrIsNoneOfOursStays) {
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
        named({{Process, noProcess}}), // a folder
        named({{Process, noProcess}}), // a link
    };
    ASSERT_TRUE(QDir().mkdir(folder.at(kept[10])) && QFile::link("/etc/passwd", folder.at(kept[11])));
    lay(named({{Token, "another"}})); // of an earlier process of our number
    lay(named({{Process, noProcess}}));
    lay(named({{Session, "earlier"}, {Process, someone}}), 70);
    lay(".ostrel-" + QString(noProcess) + "-1.tmp", 70);
    EXPECT_FALSE(replaceFile(folder.at("run.chd"), "new")); // the next save beside them
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAreArray(kept << "run.chd"));
}

TEST_F(TemporaryFilesTest, allThatAreBeingWrittenGoWhenTheProgramIsEnded) {
    folder.lay("b", "old");
    for (const bool onDisk : {false, true}) {
        DurableFile written(folder.at("a"));
        EXPECT_FALSE(written.commit());
        DurableFile first(folder.at("b"));
        DurableFile second(folder.at("c"));
        EXPECT_TRUE(first.write("new") && (!onDisk || !first.bringToDisk()));
        EXPECT_EQ(folder.names().size(), 4);
        TemporaryFiles::removeUnfinished();
        EXPECT_EQ(folder.names(), (QStringList{"a", "b"}));
        EXPECT_EQ(folder.content("b"), "old");
    }
}

} // namespace
