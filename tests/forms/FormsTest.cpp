// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "forms/Controls.h"
#include "forms/FormBuilder.h"
#include "forms/FormPlaces.h"
#include "forms/WindowsOnScreen.h"

#include <QClipboard>
#include <QDialog>
#include <QDropEvent>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

/// A window with one control of each kind; `told` collects the handlers that ran, a letter each.
struct ControlsTest : testing::Test {
    ControlsTest() {
        text.Change = combo.Change = bar.Change = [this] { told += 'c'; };
        text.GotFocus = bar.GotFocus = [this] { told += 'f'; };
        combo.Click = list.Click = button.Click = second.Click = box.Click = [this] { told += 'k'; };
        bar.Scroll = [this] { told += 's'; };
        combo.addItemQuietly("2.000");
        combo.addItemQuietly("1.000");
        list.addItems({"0.5", "1"});
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        button.setFocus();
    }

    std::string toldBy(const std::function<void()> &operation) {
        told.clear();
        operation();
        return told;
    }

    QWidget window;
    std::string told;
    TextEntry text{&window};
    ComboEntry combo{&window};
    OptionButton first{&window};
    OptionButton second{&window};
    DropDownList list{&window};
    CheckBox box{&window};
    CommandButton button{&window};
    ScrollEntry bar{&window};
};

TEST_F(ControlsTest, TextTellsEachWritingAndTheFocusOnlyWhenTheOperatorComesToIt) {
    EXPECT_EQ(toldBy([&] { text.setText("10.0"); }), "c");
    EXPECT_EQ(toldBy([&] { text.setText("10.0"); }), "c");
    EXPECT_EQ(toldBy([&] { QTest::keyClicks(&text, "5"); }), "c");
    EXPECT_EQ(text.Text(), "10.05");
    EXPECT_EQ(toldBy([&] { text.setFocus(); }), "f");
    button.setFocus();
    EXPECT_EQ(toldBy([&] { text.setFocus(Qt::PopupFocusReason); }), "");
}

TEST_F(ControlsTest, ComboTellsPicksAndTypedTextApart) {
    EXPECT_EQ(combo.Text(), "");
    EXPECT_EQ(toldBy([&] { combo.setText("1.5"); }), "c");
    EXPECT_EQ(toldBy([&] { combo.setListIndex(0); }), "k");
    EXPECT_EQ(combo.Text(), "2.000");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&combo, Qt::Key_Down); }), "k");
    combo.setFocus();
    combo.selectWhole();
    EXPECT_EQ(toldBy([&] { QTest::keyClicks(&combo, "2.000\r"); }), "ccccc"); // of the list, and stays typed
    EXPECT_EQ(toldBy([&] { button.setFocus(); }), "");
}

TEST_F(ControlsTest, ABarRunsTheWayItIsDrawnAlsoBelowZero) {
    bar.resize(200, 20);
    bar.show();
    for (const int sign : {1, -1}) {
        bar.setMax(sign * 100);
        bar.setSmallChange(1);
        bar.setLargeChange(10);
        bar.setValue(sign * 50);
        const auto clickAt = [&](QPoint place) {
            QTest::mouseClick(&bar, Qt::LeftButton, {}, place);
            return bar.Value() * sign;
        };
        EXPECT_EQ(clickAt({195, 10}), 51) << sign;
        EXPECT_EQ(clickAt({5, 10}), 50) << sign;
        EXPECT_EQ(clickAt({170, 10}), 60) << sign;
        EXPECT_EQ(clickAt({30, 10}), 50) << sign;
        QWheelEvent down({5, 5}, bar.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&bar, &down);
        EXPECT_GT(bar.Value() * sign, 50) << sign;
    }
}

TEST_F(ControlsTest, ListTellsPicksButNoPassingWheel) {
    EXPECT_EQ(toldBy([&] { list.setListIndex(1); }), "k");
    EXPECT_EQ(toldBy([&] { list.setListIndex(1); }), "k");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&list, Qt::Key_Up); }), "k");
    QWheelEvent down({5, 5}, list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    EXPECT_EQ(toldBy([&] { QCoreApplication::sendEvent(&list, &down); }), "");
    list.setFocus();
    EXPECT_EQ(toldBy([&] { QCoreApplication::sendEvent(&list, &down); }), "k");
}

TEST_F(ControlsTest, ButtonsTellTheChangeByHandAndByProgram) {
    EXPECT_EQ(toldBy([&] { box.setValue(1); }), "k");
    EXPECT_EQ(toldBy([&] { box.setValue(1); }), "");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&box, Qt::Key_Space); }), "k");
    EXPECT_EQ(box.Value(), 0);
    first.setValue(true);
    EXPECT_EQ(toldBy([&] { second.setValue(true); }), "k");
    EXPECT_EQ(toldBy([&] { second.setValue(true); }), "");
    EXPECT_EQ(toldBy([&] { first.click(); }), "");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&button, Qt::Key_Enter); }), "k");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&button, Qt::Key_Space); }), "k");
}

TEST_F(ControlsTest, BarKeepsAMaxBelowItsMinAndRefusesWhatSixteenBitsCannotHold) {
    bar.setMax(20);
    EXPECT_EQ(toldBy([&] { bar.setValue(50); }), "c");
    EXPECT_EQ(toldBy([&] { bar.setValue(20); }), "");
    EXPECT_EQ(toldBy([&] { bar.setMax(-6); }), "c");
    EXPECT_EQ(toldBy([&] { bar.setValue(-7); }), "c");
    EXPECT_THROW(bar.setMax(32768), RunTimeError);
    EXPECT_THROW(bar.setValue(-32769), RunTimeError);
    EXPECT_TRUE(bar.Max() == -6 && bar.Value() == -6);
}

TEST_F(ControlsTest, BarScrollsUnderTheHandAndChangesWhenLetGo) {
    bar.setMax(100);
    bar.setSliderDown(true);
    EXPECT_EQ(toldBy([&] { bar.setSliderPosition(30); }), "s");
    EXPECT_EQ(bar.Value(), 30);
    EXPECT_EQ(toldBy([&] { bar.setSliderDown(false); }), "c");
    EXPECT_EQ(toldBy([&] { QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(2, 5)); }), "fc");
}

TEST_F(ControlsTest, CharactersEnterAndBackspaceAskTheFilterAndPastingDoesNot) {
    std::string keys;
    text.KeyPress = [&](int KeyAscii) { // only digits pass
        keys += std::to_string(KeyAscii) + ' ';
        return KeyAscii == 8 || (KeyAscii >= '0' && KeyAscii <= '9') ? KeyAscii : keyRefused;
    };
    text.setText("abc");
    text.selectWhole();
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_V, Qt::Key_V})
        QTest::keyClick(&text, key, Qt::ControlModifier);
    EXPECT_EQ(keys, "");
    QTest::keyClicks(&text, "1a2");
    for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Enter, Qt::Key_Home, Qt::Key_Delete})
        QTest::keyClick(&text, key);
    QInputMethodEvent letters;
    letters.setCommitString("x");
    QCoreApplication::sendEvent(&text, &letters);
    QKeyEvent del(QEvent::KeyPress, Qt::Key_Delete, {}, "\x7f"); // as a keyboard sends it
    QCoreApplication::sendEvent(&text, &del);
    EXPECT_EQ(keys, "49 97 50 8 13 120 ");
    EXPECT_EQ(text.Text(), "cabc1");
}

TEST_F(ControlsTest, ANumericEntryTakesAPasteWholeOrNotAtAllAndAClickSelectsItWhole) {
    window.show();
    text.numeric = true;
    text.setMaxLength(5);
    text.KeyPress = [](int KeyAscii) { return KeyAscii > '9' ? keyRefused : KeyAscii; };
    text.setText("-0.2");
    const auto pasted = [&](const QString &what) {
        QGuiApplication::clipboard()->setText(what);
        QTest::keyClick(&text, Qt::Key_V, Qt::ControlModifier);
        return text.Text();
    };
    button.setFocus();
    QTest::mouseClick(&text, Qt::LeftButton, {}, {20, 5});
    EXPECT_EQ(text.SelText(), "-0.2");
    EXPECT_EQ(pasted("1e-3"), "-0.2");
    EXPECT_EQ(text.SelText(), "-0.2");
    EXPECT_EQ(pasted(" 0.5\n"), "0.5");
    EXPECT_EQ(pasted("123"), "0.5"); // too long
    QMimeData dropped;
    dropped.setText("7x");
    QDropEvent drop({20, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&text, &drop);
    EXPECT_EQ(text.Text(), "0.5");
}

TEST_F(ControlsTest, CopyingWinsOverTheWindowAndExportNever) {
    window.addAction("Close", QKeySequence("Ctrl+C"), [&] { told += 'C'; });
    window.addAction("Export", QKeySequence("Ctrl+E"), [&] { told += 'E'; });
    text.setText("1");
    text.setFocus();
    told.clear();
    QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&text, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(told, "E");
}

TEST(FormPlaces, MakeRoomForLargerTextsInTheirRowAndKeepRowsTogether) {
    // A panel that holds "Window:" [entry] "Minutes" in one row and a button above, drawn for texts 200 twips high.
    enum { Panel, Option, Entry, Units, Button };
    const std::vector<FormPlace> drawn{
        {-1, {50, 0, 2000, 1000}, {}},
        {Panel, {100, 600, 900, 300}, {900, 200}},
        {Panel, {1000, 600, 500, 300}, {400, 200}},
        {Panel, {1520, 600, 400, 300}, {300, 200}},
        {Panel, {1400, 100, 500, 400}, {300, 200}},
    };
    std::vector<FormPlace> places = drawn;
    places[Option].needs.setWidth(1000);
    makeRoom(places);
    EXPECT_EQ(places[Entry].at.left(), 1100);
    EXPECT_EQ(places[Units].at.left(), 1620);
    EXPECT_EQ(places[Button].at.left(), 1400);
    EXPECT_EQ(places[Panel].at.width(), 2040);

    places = drawn; // and its label reaches into its neighbour, where its text alone counts
    places[Option].at.setWidth(950);
    places[Option].needs.setWidth(880);
    makeRoom(places);
    EXPECT_EQ(places[Entry].at.left(), 1000);

    places = drawn;
    places[Entry].needs.setHeight(600);
    makeRoom(places);
    EXPECT_EQ(places[Panel].at.height(), 2000);
    EXPECT_EQ(places[Button].at.top(), 200);
    EXPECT_GT(places[Units].at.left() - places[Entry].at.right(), 100); // letters twice as high need air
}

TEST(WindowsOnScreenTest, NoWindowEndsBeyondTheScreenAndADialogStandsInTheMiddleWhileItsParentIsNotShown) {
    const WindowsOnScreen onScreen;
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget parent;
    parent.resize(100, 100);
    QDialog dialog(&parent);
    dialog.resize(200, 100);
    dialog.show();
    EXPECT_LE((dialog.geometry().center() - screen.center()).manhattanLength(), 4);
    dialog.hide();

    parent.move(screen.bottomRight() - QPoint(110, 110));
    parent.show();
    dialog.resize(5000, 300);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    EXPECT_TRUE(screen.contains(dialog.frameGeometry())) << dialog.frameGeometry().width();
    dialog.move(screen.center()); // by the operator, partly beyond
    QApplication::setActiveWindow(&parent);
    QApplication::setActiveWindow(&dialog);
    EXPECT_EQ(dialog.pos(), screen.center());
}

TEST(FormBuilderTest, InkIsLegibleOnLightAndDark) {
    QWidget form;
    constexpr ControlRow rows[] = {{"frmAxis", Kind::Frame, "Axis", "", 0, 0, 3000, 1500, Ink::Blue},
                                   {"txtMin(0)", Kind::Text, "-0.2", "frmAxis", 30, 800, 900, 315}};
    FormBuilder(form).build(rows);
    const auto *entry = form.findChild<TextEntry *>("txtMin(0)");
    for (const QColor ground : {QColor(Qt::white), QColor(32, 32, 32)}) {
        form.setPalette(QPalette(ground));
        const QColor ink = entry->palette().color(QPalette::Text);
        EXPECT_GT(ink.blue(), ink.red());
        EXPECT_GT(std::abs(qGray(ink.rgb()) - qGray(ground.rgb())), 100);
    }
}

} // namespace
