// SPDX-License-Identifier: MIT
#include "desktop/EndSignals.h"
#include "desktop/InstanceLock.h"
#include "desktop/QtPrompts.h"
#include "desktop/QtTimer.h"
#include "desktop/SessionEnd.h"
#include "fakes/TestFolder.h"

#include <QTest>
#include <QtWidgets>

#include <csignal>
#include <optional>

using namespace ostrel;

namespace {

TEST(QtTimerTest, enablingARunningTimerLeavesItsCountdownAlone) {
    QObject window;
    int ticks = 0;
    QtTimer timer(&window, "TimerProcess", 200);
    timer.Tick = [&] { ++ticks; };
    timer.setEnabled(true);
    QTest::qWait(120);
    timer.setEnabled(true);
    QTest::qWait(120);
    EXPECT_EQ(ticks, 1);
}

struct QtPromptsTest : testing::Test {
    /// Does something to the box once it is up.
    BoxAnswer show(const MessageBox &box, const std::function<void(QMessageBox &)> &act) {
        QTimer::singleShot(0, qApp, [&] { act(dynamic_cast<QMessageBox &>(*QApplication::activeModalWidget())); });
        return prompts.show(box);
    }

    QtPrompts prompts;
};

TEST_F(QtPromptsTest, defaultButtonsCountFromTheLeftAndEscapeIsCancelOrTheOnlyOne) {
    using enum BoxAnswer;
    const std::tuple<BoxButtons, int, Qt::Key, BoxAnswer> rows[] = {
        {BoxButtons::YesNo, 2, Qt::Key_Return, No},
        {BoxButtons::YesNoCancel, 1, Qt::Key_Return, Yes},
        {BoxButtons::YesNoCancel, 1, Qt::Key_Escape, Cancel},
        {BoxButtons::OkCancel, 2, Qt::Key_Return, Cancel},
        {BoxButtons::Ok, 1, Qt::Key_Escape, Ok}};
    for (const auto &[buttons, defaultButton, key, answer] : rows)
        EXPECT_EQ(show({"?", BoxIcon::Question, "", buttons, defaultButton},
                       [key = key](QMessageBox &window) { QTest::keyClick(&window, key); }),
                  answer);
}

TEST_F(QtPromptsTest, aBoxShowsItsTextAsItStandsAndThePointerGoesBackHoweverOftenItWasSet) {
    prompts.setMousePointer(MousePointer::Hourglass);
    prompts.setMousePointer(MousePointer::Hourglass);
    for (const auto &[caption, title] : {std::pair("", "Ostrel MS"), {"Not saved", "Not saved"}})
        show({"a <b>\rb\r\nc", BoxIcon::None, caption}, [title = title](QMessageBox &window) {
            EXPECT_EQ(window.windowTitle() + window.text(), title + QString("a <b>\nb\nc"));
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            window.close();
        });
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    prompts.setMousePointer(MousePointer::Default);
    prompts.setMousePointer(MousePointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    show({.text = "All are in use.", .HelpContextID = 6}, [](QMessageBox &window) {
        EXPECT_EQ(window.property("HelpContextID").toInt(), 6);
        window.close();
    });
}

TEST(EndSignalsTest, theFirstSignalIsMetOnceAndAnIgnoredOneStaysIgnored) {
    std::signal(SIGINT, SIG_IGN);
    int met = 0;
    const EndSignals signals_([&] {
        ++met;
        std::raise(SIGTERM);
        QTest::qWait(20); // as under a box that tells of a full disk
    });
    for (const int number : {SIGINT, SIGTERM}) {
        std::raise(number);
        EXPECT_EQ(met, 0);
        QTest::qWait(20);
        EXPECT_EQ(met, number == SIGTERM);
    }
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
    for (const bool mayAsk : {true, true, false}) {
        EXPECT_EQ(session.mayEnd(mayAsk), answer || !mayAsk);
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        answer = false;
    }
    EXPECT_EQ(course, "ask end ask die write die ");
}

TEST(InstanceLockTest, aCopyIsSeenAsLongAsAnyOtherRuns) {
    const TestFolder folder;
    std::optional<InstanceLock> first(folder.path());
    const InstanceLock second(folder.path());
    EXPECT_TRUE(!first->PrevInstance() && second.PrevInstance());
    first.reset();
    EXPECT_TRUE(InstanceLock(folder.path()).PrevInstance());
}

} // namespace
