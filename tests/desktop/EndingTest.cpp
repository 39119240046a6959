// SPDX-License-Identifier: MIT
#include "desktop/EndSignals.h"
#include "desktop/SessionEnd.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace {

TEST(EndSignalsTest, theFirstSignalIsMetOnceFromInsideAnotherLoop) {
    for (const int number : {SIGTERM, SIGHUP})
        std::signal(number, SIG_DFL);
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
        std::raise(SIGHUP);
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

} // namespace
