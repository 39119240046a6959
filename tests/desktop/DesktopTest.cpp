// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/InstanceLock.h"
#include "desktop/QtPrompts.h"
#include "desktop/QtTimer.h"
#include "files/FileOperations.h"
#include "files/TextFile.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

namespace {

TEST(QtTimerTest, enablingARunningTimerLeavesItsCountdownAlone) {
    QObject window;
    int ticks = 0;
    QtTimer timer(&window, "TimerProcess", 200);
    timer.Tick = [&] { ++ticks; };
    const QTimer *named = window.findChild<QTimer *>("TimerProcess");
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->timerType(), Qt::PreciseTimer);
    timer.setEnabled(true);
    QTest::qWait(120);
    timer.setEnabled(true);
    QTest::qWait(120);
    EXPECT_EQ(ticks, 1);
    timer.setEnabled(false);
    timer.setEnabled(true);
    QTest::qWait(120);
    EXPECT_EQ(ticks, 1);
}

/// Answers the box that comes up next, and keeps what it showed.
class QtPromptsTest : public testing::Test {
protected:
    BoxAnswer show(const MessageBox &box, const std::function<void(QMessageBox &)> &act) {
        QTimer::singleShot(0, &owner, [&] {
            auto *window = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            EXPECT_EQ(window->objectName(), "MsgBox");
            text = window->text();
            caption = window->windowTitle();
            act(*window);
        });
        return prompts.show(box);
    }
    static void pressDefault(QMessageBox &window) { window.defaultButton()->click(); }
    static void pressEscape(QMessageBox &window) { QTest::keyClick(&window, Qt::Key_Escape); }
    static void closeBox(QMessageBox &window) { window.close(); }

    QObject owner;
    QtPrompts prompts;
    QString text;
    QString caption;
};

TEST_F(QtPromptsTest, aBoxShowsItsTextAsItStands) {
    EXPECT_EQ(show({"a <b>\rb\r\nc", BoxIcon::None, ""}, pressDefault), BoxAnswer::Ok);
    EXPECT_EQ(text, "a <b>\nb\nc");
    EXPECT_EQ(caption, "Ostrel MS");
}

TEST_F(QtPromptsTest, defaultButtonsCountFromTheLeftAndClosingIsCancelOrTheOnlyOne) {
    const auto box = [](BoxButtons buttons, int defaultButton) {
        return MessageBox{"?", BoxIcon::Question, "Data is not saved", buttons, defaultButton};
    };
    EXPECT_EQ(show(box(BoxButtons::YesNo, 2), pressDefault), BoxAnswer::No);
    EXPECT_EQ(caption, "Data is not saved");
    EXPECT_EQ(show(box(BoxButtons::YesNoCancel, 1), pressDefault), BoxAnswer::Yes);
    EXPECT_EQ(show(box(BoxButtons::YesNoCancel, 1), closeBox), BoxAnswer::Cancel);
    EXPECT_EQ(show(box(BoxButtons::YesNoCancel, 1), pressEscape), BoxAnswer::Cancel);
    EXPECT_EQ(show(box(BoxButtons::OkCancel, 2), pressDefault), BoxAnswer::Cancel);
    EXPECT_EQ(show(box(BoxButtons::OkCancel, 1), pressEscape), BoxAnswer::Cancel);
    EXPECT_EQ(show(box(BoxButtons::Ok, 1), closeBox), BoxAnswer::Ok);
    EXPECT_EQ(show(box(BoxButtons::Ok, 1), pressEscape), BoxAnswer::Ok);
}

TEST_F(QtPromptsTest, onlyItsButtonsAnswerYesOrNo) {
    const MessageBox box{"save?", BoxIcon::Question, "", BoxButtons::YesNo};
    const auto tryToClose = [](QMessageBox &window) {
        EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QTest::keyClick(&window, Qt::Key_Escape);
        QTest::keyClick(window.defaultButton(), Qt::Key_Escape);
        QTest::keySequence(&window, QKeySequence(QKeySequence::Cancel));
        window.reject();
        window.close();
        window.windowHandle()->close(); // as the window manager asks for it
        QApplication::closeAllWindows();
        EXPECT_TRUE(window.isVisible());
    };
    const auto answered = [&](Qt::Key key) {
        return show(box, [&](QMessageBox &window) {
            tryToClose(window);
            QTest::keyClick(window.defaultButton(), key);
            if (key != Qt::Key_Return) // a letter's button goes down for a moment
                QTRY_VERIFY(!window.isVisible());
        });
    };
    EXPECT_EQ(answered(Qt::Key_Return), BoxAnswer::Yes);
    EXPECT_EQ(answered(Qt::Key_N), BoxAnswer::No);
}

TEST_F(QtPromptsTest, theMousePointerGoesBackHoweverOftenItWasSet) {
    prompts.setMousePointer(MousePointer::Hourglass);
    prompts.setMousePointer(MousePointer::Hourglass);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    show({"damaged", BoxIcon::None, ""}, [](QMessageBox &window) {
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        window.close();
    });
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    prompts.setMousePointer(MousePointer::Default);
    prompts.setMousePointer(MousePointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(InstanceLockTest, aCopyIsSeenAsLongAsAnyOtherRuns) {
    const QTemporaryDir folder;
    std::optional<InstanceLock> first(folder.path());
    EXPECT_FALSE(first->PrevInstance());
    std::optional<InstanceLock> second(folder.path());
    EXPECT_TRUE(second->PrevInstance());
    first.reset();
    EXPECT_TRUE(second->PrevInstance());
    EXPECT_TRUE(InstanceLock(folder.path()).PrevInstance());
    second.reset();
    EXPECT_FALSE(InstanceLock(folder.path()).PrevInstance());
}

class FullDisk : public FileOperations {
public:
    FullDisk() { standIn(this); }
    ~FullDisk() override { standIn(nullptr); }
    ssize_t write(int, const void *, std::size_t) override {
        errno = ENOSPC;
        return -1;
    }
};

TEST(TextFileTest, entriesAddUpAndAFullDiskIsTold) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("ChartErr.log");
    TextFile::append(path, "eins\r\n");
    TextFile::append(path, "zwölf\r\n");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "eins\r\nzwölf\r\n");
    {
        const FullDisk disk;
        EXPECT_EQ(errorNumberOf([&] { TextFile::append(path, "x"); }), RunTimeError::DiskFull);
    }
    EXPECT_EQ(errorNumberOf([&] { TextFile::append(folder.path() + "/none/x", "x"); }), RunTimeError::PathNotFound);
}

} // namespace
