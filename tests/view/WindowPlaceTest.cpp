// SPDX-License-Identifier: MIT
#include "view/WindowPlace.h"

#include "fakes/FakePlatform.h"
#include "forms/ScreenPlace.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

struct WindowPlaceTest : testing::Test {
    /// A start in which the operator leaves the window so.
    void leave(const QRect &there, bool atLast, int copy = 1) {
        QWidget window;
        WindowPlace place(window, store, std::make_unique<FakeTimer>(clock, 1000));
        place.restore(copy);
        window.show();
        place.follow();
        window.move(there.topLeft());
        window.resize(there.size());
        place.changed();
        clock.advance(1s);
        window.setWindowState(atLast ? Qt::WindowMaximized : Qt::WindowNoState);
        place.changed();
        place.keep(); // the program ends
    }
    /// The next start.
    QRect next(int copy = 1) {
        QWidget window;
        window.resize(300, 200);
        WindowPlace place(window, store, std::make_unique<FakeTimer>(clock, 1000));
        place.restore(copy);
        maximised = window.isMaximized();
        return {window.pos(), window.size()};
    }
    QString &row(const QString &copy) { return store.rows[{"Window", copy}]; }

    FakeClock clock;
    FakeSettingsStore store;
    const QRect screen = ScreenPlace::screens().first();
    bool maximised = false;
};

TEST_F(WindowPlaceTest, aWindowComesBackToWhereItsCopyWasLeftAndFirstToTheMiddle) {
    const QRect middle = next();
    EXPECT_EQ(middle, ScreenPlace::centred({300, 200}, screen));
    leave({50, 60, 400, 320}, false);
    leave({150, 160, 410, 330}, true, 2);
    EXPECT_EQ(next(), QRect(50, 60, 400, 320));
    EXPECT_FALSE(maximised);
    EXPECT_EQ(next(2), QRect(150, 160, 410, 330));
    EXPECT_TRUE(maximised);
    EXPECT_NE(next(3), middle); // not over that of the first copy
}

TEST_F(WindowPlaceTest, whatTheScreenHasNotOrTheStoreDoesNotSayIsNotTaken) {
    row("1") = "5000 5000 400 300";
    EXPECT_EQ(next(), ScreenPlace::centred({400, 300}, screen));
    row("1") = "-300 20 4000 300 maximised";
    EXPECT_EQ(next(), QRect(screen.left(), 20, screen.width(), 300));
    for (const char *wrong : {"", "10 20 30", "10 20 x 40", "10 20 0 40", "10 20 99999 40"}) {
        row("1") = wrong;
        EXPECT_EQ(next().size(), QSize(300, 200)) << wrong;
    }
    store.broken = ErrorNumber::PathFileAccess;
    EXPECT_EQ(next().size(), QSize(300, 200));
    leave({50, 60, 400, 320}, false);
}

TEST_F(WindowPlaceTest, aDragIsWrittenOnceAndAWindowLeftAloneNever) {
    QWidget window;
    WindowPlace place(window, store, std::make_unique<FakeTimer>(clock, 1000));
    place.restore(1);
    window.show();
    place.changed(); // by the desktop
    place.follow();
    place.changed();
    clock.advance(1min);
    for (int x = 10; x < 20; ++x) {
        window.move(x, 30);
        place.changed();
        clock.advance(900ms);
    }
    EXPECT_TRUE(store.written.isEmpty());
    clock.advance(1min);
    place.keep();
    EXPECT_EQ(store.written, QStringList{"1"});
    EXPECT_TRUE(row("1").startsWith("19 30 "));
}

TEST(ScreenPlaceTest, aWindowOverTwoScreensStaysAndOneHalfOutMovesIn) {
    const QList<QRect> screens{{0, 0, 1000, 800}, {1000, 0, 600, 800}};
    const auto place = [&](const QRect &wanted) { return ScreenPlace::onScreens(wanted, screens); };
    EXPECT_EQ(place({900, 100, 300, 200}), QRect(900, 100, 300, 200));
    EXPECT_EQ(place({1500, 700, 300, 200}), QRect(1300, 600, 300, 200));
    EXPECT_EQ(place({1100, -50, 700, 900}), QRect(1000, 0, 600, 800));
    EXPECT_EQ(place({9000, 100, 300, 200}), QRect(350, 300, 300, 200));
}

} // namespace
