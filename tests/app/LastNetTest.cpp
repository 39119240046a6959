// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QDir>
#include <QFile>

namespace {

class LastNetTest : public testing::Test, protected ProgramFixture {
protected:
    /// The error log cannot be written: each decoding error raises one in the program.
    void breakErrorLog() { ASSERT_TRUE(QDir(folder.path()).mkdir("ChartErr.log")); }
    void mendErrorLog() { ASSERT_TRUE(QDir(folder.path()).rmdir("ChartErr.log")); }
    QByteArray errorLog() const {
        QFile file(folder.filePath("ChartErr.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    int logFiles() const {
        QDir log(folder.filePath("Log"));
        log.cd(log.entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0));
        return int(log.entryList(QDir::Files).size());
    }
};

TEST_F(LastNetTest, anErrorEndsItsRoutineAndTheProgramLivesOn) {
    start();
    link();
    breakErrorLog();
    prompts.whileShown = [this](const MessageBox &) {
        EXPECT_EQ(logFiles(), 1); // the log was written at once
        play(". .");              // and the samples go on arriving under the box
        clock.advance(700ms);
    };
    play("P1 . E5 . .");
    EXPECT_EQ(chart(0).SampleCount(), 5);
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(prompts.shown[0].text.startsWith("Run-time error '75':\n\n")) << prompts.shown[0].text.toStdString();
    EXPECT_EQ(prompts.shown[0].icon, BoxIcon::Critical);
    EXPECT_FALSE(process.ended);
}

TEST_F(LastNetTest, anErrorThatKeepsComingIsToldOnceAndCountedAMinute) {
    start();
    link();
    breakErrorLog();
    const auto secondsOfErrors = [this](int seconds) {
        for (int i = 0; i < seconds; ++i) {
            play(". E5 . . .");
            clock.advance(300ms);
        }
    };
    secondsOfErrors(59);
    EXPECT_EQ(prompts.shown.size(), 1U);
    mendErrorLog();
    EXPECT_FALSE(errorLog().contains("times"));
    breakErrorLog();
    secondsOfErrors(30);
    mendErrorLog();
    secondsOfErrors(70); // without the error
    EXPECT_EQ(prompts.shown.size(), 1U);
    QFile::remove(folder.filePath("ChartErr.log"));
    breakErrorLog();
    secondsOfErrors(3);
    EXPECT_EQ(prompts.shown.size(), 2U); // after a quiet minute anew
}

TEST_F(LastNetTest, theCountComesIntoTheErrorLogOnceAMinute) {
    std::vector<QString> entered;
    LastNet net(
        {prompts, clock, [] { throw std::bad_alloc(); }, [&](const QString &message) { entered.push_back(message); }});
    for (int second = 0; second <= 150; ++second, clock.advance(1s))
        net.run("TimerProcess_Timer", [] { throw RunTimeError(ErrorNumber::Overflow); });
    EXPECT_EQ(prompts.shown.size(), 1U);
    ASSERT_EQ(entered.size(), 2U);
    EXPECT_EQ(entered[1], "Run-time error '6': Overflow (TimerProcess_Timer, 60 times)");
    net.run("elsewhere", [] { throw RunTimeError(ErrorNumber::Overflow); });
    net.run("TimerProcess_Timer", [] { throw std::bad_alloc(); });
    net.run("elsewhere", [] { throw RunTimeError(ErrorNumber::DialogCancelled); });
    EXPECT_EQ(prompts.shown.size(), 3U);
    EXPECT_EQ(prompts.shown[2].text, "Run-time error '7':\n\nOut of memory");

    clock.advance(2min);
    prompts.whileShown = [&](const MessageBox &) { // which nobody answers
        for (int i = 0; i < 2; ++i, clock.advance(2min))
            net.run("elsewhere", [] { throw RunTimeError(ErrorNumber::Overflow); });
    };
    net.run("elsewhere", [] { throw RunTimeError(ErrorNumber::Overflow); });
    EXPECT_EQ(prompts.shown.size(), 4U);
    EXPECT_EQ(entered.back(), "Run-time error '6': Overflow (elsewhere, 2 times)");
}

TEST_F(LastNetTest, aCancelledDialogIsNobodysError) {
    start();
    link();
    ComDlg.CancelError = true; // as the saving of a log leaves it
    for (const char *command : {"mnuSaveData", "mnuSaveDataAs", "mnuSaveSlectedData", "mnuOpenData"})
        find<QAction>(command)->trigger();
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_EQ(errorLog(), "");
    EXPECT_FALSE(process.ended);
}

TEST_F(LastNetTest, aStartThatCannotBeCompletedSaysWhatToDo) {
    QFile inItsPlace(folder.filePath("Log"));
    ASSERT_TRUE(inItsPlace.open(QIODevice::WriteOnly));
    start();
    EXPECT_TRUE(process.ended);
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(prompts.shown[0].text.startsWith("Run-time error '58':"));
    EXPECT_TRUE(prompts.shown[0].text.contains("named above is in the way"));
    EXPECT_TRUE(startFailedBox(RunTimeError(ErrorNumber::DiskFull), "/data").text.contains("disk of /data"));
}

TEST_F(LastNetTest, aLogThatCannotBeWrittenIsToldOnce) {
    class FullDisk : public FileOperations {
    public:
        FullDisk() { standIn(this); }
        ~FullDisk() override { standIn(nullptr); }
        ssize_t write(int fd, const void *data, std::size_t size) override {
            errno = ENOSPC;
            return full ? -1 : FileOperations::write(fd, data, size);
        }
        ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override {
            errno = ENOSPC;
            return full ? -1 : FileOperations::writeAt(fd, data, size, position);
        }
        bool full = false;
    };
    FullDisk disk;
    start();
    link();
    disk.full = true;
    breakErrorLog(); // has no room either
    for (int i = 0; i < 20; ++i) {
        play(".");
        clock.advance(3s);
    }
    ASSERT_EQ(prompts.shown.size(), 1U);
}

TEST_F(LastNetTest, theComputerStaysAwakeExactlyWhileRecordingOrLoggingIsAtWork) {
    start();
    EXPECT_FALSE(sleep.held); // logging waits for the stream
    link();
    EXPECT_TRUE(sleep.held);
    find<QAction>("mnuLogOff")->trigger();
    EXPECT_FALSE(sleep.held);
    play("R1 .");
    EXPECT_TRUE(sleep.held);
    find<QAction>("mnuLogOn")->trigger();
    play("R0 .");
    EXPECT_TRUE(sleep.held);
    meanwhile([this] {
        clock.advance(700ms); // the link is lost, and told
        EXPECT_FALSE(sleep.held);
        QTest::mouseClick(find<QWidget>("cmdOk"), Qt::LeftButton);
    });
    clock.advance(10s);
    EXPECT_FALSE(sleep.held);
}

} // namespace
