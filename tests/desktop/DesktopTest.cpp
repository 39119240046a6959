// SPDX-License-Identifier: MIT
#include "desktop/EndSignals.h"
#include "desktop/InstanceLock.h"
#include "desktop/QtPrompts.h"
#include "desktop/QtTimer.h"
#include "desktop/SessionEnd.h"
#include "fakes/TestFolder.h"

#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <csignal>
#include <optional>

namespace {

TEST(QtTimerTest, enablingARunningTimerLeavesItsCountdownAlone) {
    QObject window;
    int ticks = 0;
    QtTimer timer(&window, "TimerProcess", 200);
    timer.Tick = [&] { ++ticks; };
    EXPECT_EQ(window.findChild<QTimer *>("TimerProcess")->timerType(), Qt::PreciseTimer);
    timer.setEnabled(true);
    QTest::qWait(120);
    timer.setEnabled(true);
    QTest::qWait(120);
    EXPECT_EQ(ticks, 1);
    timer.setEnabled(false);
    QTest::qWait(220);
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
    show({"a <b>\rb\r\nc", BoxIcon::None, ""}, pressDefault);
    EXPECT_EQ(text, "a <b>\nb\nc");
    EXPECT_EQ(caption, "Ostrel MS");
    show({"?", BoxIcon::None, "Data is not saved"}, pressDefault);
    EXPECT_EQ(caption, "Data is not saved");
}

TEST_F(QtPromptsTest, defaultButtonsCountFromTheLeftAndClosingIsCancelOrTheOnlyOne) {
    const auto answer = [this](BoxButtons buttons, int defaultButton, void (*act)(QMessageBox &)) {
        return show({"?", BoxIcon::Question, "", buttons, defaultButton}, act);
    };
    EXPECT_EQ(answer(BoxButtons::YesNo, 2, pressDefault), BoxAnswer::No);
    EXPECT_EQ(answer(BoxButtons::YesNoCancel, 1, pressDefault), BoxAnswer::Yes);
    EXPECT_EQ(answer(BoxButtons::YesNoCancel, 1, closeBox), BoxAnswer::Cancel);
    EXPECT_EQ(answer(BoxButtons::OkCancel, 2, pressDefault), BoxAnswer::Cancel);
    EXPECT_EQ(answer(BoxButtons::OkCancel, 1, pressEscape), BoxAnswer::Cancel);
    EXPECT_EQ(answer(BoxButtons::Ok, 1, closeBox), BoxAnswer::Ok);
    EXPECT_EQ(answer(BoxButtons::Ok, 1, pressEscape), BoxAnswer::Ok);
}

TEST_F(QtPromptsTest, onlyItsButtonsAnswerYesOrNo) {
    const auto tryToCloseAndPressN = [](QMessageBox &window) {
        EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        pressEscape(window);
        window.reject();
        window.close();
        EXPECT_TRUE(window.isVisible());
        QTest::keyClick(&window, Qt::Key_N);
        QTRY_VERIFY(!window.isVisible()); // the button goes down for a moment
    };
    EXPECT_EQ(show({"save?", BoxIcon::Question, "", BoxButtons::YesNo}, tryToCloseAndPressN), BoxAnswer::No);
}

TEST_F(QtPromptsTest, theMousePointerGoesBackHoweverOftenItWasSet) {
    prompts.setMousePointer(MousePointer::Hourglass);
    prompts.setMousePointer(MousePointer::Hourglass);
    show({"damaged", BoxIcon::None, ""}, [](QMessageBox &window) {
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        window.close();
    });
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    prompts.setMousePointer(MousePointer::Default);
    prompts.setMousePointer(MousePointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(EndSignalsTest, theFirstSignalIsMetOnceFromInsideAnotherLoop) {
    std::signal(SIGINT, SIG_IGN);
    int met = 0;
    {
        QEventLoop modal;
        const EndSignals signals_([&] {
            ++met;
            std::raise(SIGTERM);
            QTest::qWait(20); // as under a box that tells of a full disk
            modal.quit();
        });
        std::raise(SIGINT);
        QTest::qWait(20);
        std::raise(SIGTERM);
        EXPECT_EQ(met, 0);
        modal.exec();
    }
    EXPECT_EQ(met, 1);
    EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
}

TEST(SessionEndTest, theSessionEndsAsItWasAgreedLast) {
    std::string course;
    bool answer = true;
    SessionEnd session;
    session.askToEnd = [&] {
        course += "ask ";
        EXPECT_FALSE(session.mayEnd(true)); // logged out again over the open question
        return answer;
    };
    session.endsUnasked = [&] { course += "write "; };
    session.ends = [&](bool agreed) { course += agreed ? "end " : "die "; };
    const auto quit = [] {
        QEvent event(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &event);
    };
    for (const bool agreed : {true, false}) {
        answer = agreed;
        EXPECT_EQ(session.mayEnd(true), agreed);
        quit();
    }
    answer = true;
    EXPECT_TRUE(session.mayEnd(true) && session.mayEnd(false));
    quit();
    EXPECT_EQ(course, "ask end ask die ask write die ");
}

TEST(InstanceLockTest, aCopyIsSeenAsLongAsAnyOtherRuns) {
    const TestFolder folder;
    std::optional<InstanceLock> first(folder.path());
    EXPECT_FALSE(first->PrevInstance());
    const InstanceLock second(folder.path());
    EXPECT_TRUE(second.PrevInstance());
    first.reset();
    EXPECT_TRUE(InstanceLock(folder.path()).PrevInstance());
}

} // namespace
