// SPDX-License-Identifier: MIT
#include "forms/Controls.h"

#include "base/RunTimeError.h"

#include <QMenuBar>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <string>

namespace {

/// A window with one control of each kind; `told` collects the handlers that ran, a letter each.
class ControlsTest : public testing::Test {
protected:
    ControlsTest() {
        auto *column = new QVBoxLayout(&window_);
        for (QWidget *widget :
             std::initializer_list<QWidget *>{&text, &combo, &list, &first, &second, &box, &button, &bar})
            column->addWidget(widget);
        text.Change = combo.Change = bar.Change = [this] { told += 'c'; };
        text.GotFocus = bar.GotFocus = [this] { told += 'f'; };
        combo.Click = list.Click = button.Click = second.Click = box.Click = [this] { told += 'k'; };
        bar.Scroll = [this] { told += 's'; };
        combo.addItemQuietly("2.000");
        combo.addItemQuietly("1.000");
        list.addItems({"0.5", "1"});
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        button.setFocus();
        told.clear();
    }

    std::string toldBy(const std::function<void()> &operation) {
        told.clear();
        operation();
        return std::exchange(told, {});
    }

private:
    QWidget window_;

protected:
    std::string told;
    TextEntry &text = *new TextEntry(&window_);
    ComboEntry &combo = *new ComboEntry(&window_);
    OptionButton &first = *new OptionButton(&window_);
    OptionButton &second = *new OptionButton(&window_);
    DropDownList &list = *new DropDownList(&window_);
    CheckBox &box = *new CheckBox(&window_);
    CommandButton &button = *new CommandButton(&window_);
    ScrollEntry &bar = *new ScrollEntry(&window_);
};

TEST_F(ControlsTest, TextTellsEachWriting) {
    EXPECT_EQ(toldBy([&] { text.setText("10.0"); }), "c");
    EXPECT_EQ(toldBy([&] { text.setText("10.0"); }), "c");
    EXPECT_EQ(toldBy([&] { QTest::keyClicks(&text, "5"); }), "c");
    EXPECT_EQ(text.Text(), "10.05");
}

TEST_F(ControlsTest, TextTellsTheFocusOnlyWhenTheOperatorComesToIt) {
    EXPECT_EQ(toldBy([&] { text.setFocus(); }), "f");
    button.setFocus();
    EXPECT_EQ(toldBy([&] { text.setFocus(Qt::PopupFocusReason); }), "");
}

TEST_F(ControlsTest, ComboTellsPicksAndTypedTextApart) {
    EXPECT_EQ(combo.Text(), "");
    EXPECT_EQ(toldBy([&] { combo.setListIndex(0); }), "k");
    EXPECT_EQ(toldBy([&] { combo.setText("1.5"); }), "c");
    EXPECT_EQ(toldBy([&] { combo.setListIndex(0); }), "k");
    EXPECT_EQ(combo.Text(), "2.000");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&combo, Qt::Key_Down); }), "k");
    EXPECT_EQ(combo.Text(), "1.000");
}

TEST_F(ControlsTest, ATypedValueOfTheListStaysTyped) {
    combo.setListIndex(0);
    combo.setFocus();
    combo.selectWhole();
    EXPECT_EQ(toldBy([&] { QTest::keyClicks(&combo, "1.000"); }), "ccccc");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&combo, Qt::Key_Enter); }), "");
    EXPECT_EQ(toldBy([&] { button.setFocus(); }), "");
}

TEST_F(ControlsTest, ListTellsPicksButNoPassingWheel) {
    EXPECT_EQ(toldBy([&] { list.setListIndex(1); }), "k");
    EXPECT_EQ(toldBy([&] { list.setListIndex(1); }), "k");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&list, Qt::Key_Up); }), "k");
    QWheelEvent down({5, 5}, list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    EXPECT_EQ(toldBy([&] { QCoreApplication::sendEvent(&list, &down); }), "");
    EXPECT_EQ(list.currentText(), "0.5");
    list.setFocus();
    EXPECT_EQ(toldBy([&] { QCoreApplication::sendEvent(&list, &down); }), "k");
}

TEST_F(ControlsTest, CheckBoxTellsTheChangeByHandAndByProgram) {
    EXPECT_EQ(toldBy([&] { box.setValue(1); }), "k");
    EXPECT_EQ(toldBy([&] { box.setValue(1); }), "");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&box, Qt::Key_Space); }), "k");
    EXPECT_EQ(box.Value(), 0);
}

TEST_F(ControlsTest, OptionTellsOnlyTheChange) {
    first.setValue(true);
    EXPECT_EQ(toldBy([&] { second.setValue(true); }), "k");
    EXPECT_FALSE(first.Value());
    EXPECT_EQ(toldBy([&] { second.setValue(true); }), "");
    EXPECT_EQ(toldBy([&] { first.click(); }), "");
    EXPECT_EQ(toldBy([&] { QTest::mouseClick(&second, Qt::LeftButton, {}, QPoint(8, second.height() / 2)); }), "k");
}

TEST_F(ControlsTest, EnterPressesTheFocusedButton) {
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&button, Qt::Key_Enter); }), "k");
    EXPECT_EQ(toldBy([&] { QTest::keyClick(&button, Qt::Key_Space); }), "k");
}

TEST_F(ControlsTest, BarKeepsAMaxBelowItsMin) {
    bar.setMax(20);
    EXPECT_EQ(toldBy([&] { bar.setValue(50); }), "c");
    EXPECT_EQ(bar.Value(), 20);
    EXPECT_EQ(toldBy([&] { bar.setValue(20); }), "");
    EXPECT_EQ(toldBy([&] { bar.setMax(-6); }), "c");
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(toldBy([&] { bar.setValue(bar.Max()); }), "c");
    EXPECT_EQ(bar.Value(), -6);
    EXPECT_EQ(toldBy([&] { bar.setMax(0); }), "c");
}

TEST_F(ControlsTest, BarRefusesWhatSixteenBitsCannotHold) {
    bar.setMax(100);
    EXPECT_THROW(bar.setMax(32768), RunTimeError);
    EXPECT_THROW(bar.setValue(-32769), RunTimeError);
    EXPECT_EQ(bar.Max(), 100);
}

TEST_F(ControlsTest, BarScrollsUnderTheHandAndChangesWhenLetGo) {
    bar.setMax(100);
    bar.setSliderDown(true);
    EXPECT_EQ(toldBy([&] { bar.setSliderPosition(30); }), "s");
    EXPECT_EQ(bar.Value(), 30);
    EXPECT_EQ(toldBy([&] { bar.setSliderDown(false); }), "c");
    EXPECT_EQ(toldBy([&] { QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(2, 5)); }), "fc");
}

/// Only digits pass; `keys` collects what the filter was asked.
class KeyFilterTest : public ControlsTest {
protected:
    KeyFilterTest() {
        text.KeyPress = combo.KeyPress = [this](int KeyAscii) {
            keys += std::to_string(KeyAscii) + ' ';
            return KeyAscii == 8 || (KeyAscii >= '0' && KeyAscii <= '9') ? KeyAscii : keyRefused;
        };
    }
    std::string keys;
};

TEST_F(KeyFilterTest, CharactersEnterAndBackspaceAskTheFilter) {
    for (QWidget *entry : std::initializer_list<QWidget *>{&text, &combo}) {
        keys.clear();
        QTest::keyClicks(entry, "1a2");
        QTest::keyClick(entry, Qt::Key_Backspace);
        QTest::keyClick(entry, Qt::Key_Enter);
        QTest::keyClick(entry, Qt::Key_Home);
        QTest::keyClick(entry, Qt::Key_Delete);
        EXPECT_EQ(keys, "49 97 50 8 13 ");
    }
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(combo.Text(), "");
}

TEST_F(KeyFilterTest, PastingIsNotFilteredAnInputMethodIs) {
    text.setText("abc");
    text.selectWhole();
    QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&text, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(&text, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text.Text(), "abcabc");
    EXPECT_EQ(keys, "");

    QInputMethodEvent letters;
    letters.setCommitString("x");
    QCoreApplication::sendEvent(&text, &letters);
    EXPECT_EQ(text.Text(), "abcabc");
}

TEST(EntryShortcuts, CopyingWinsOnlyWithASelectionAndExportAlways) {
    QWidget window;
    QMenuBar menus(&window);
    std::string told;
    QMenu *file = menus.addMenu("File");
    file->addAction("Close", QKeySequence("Ctrl+C"), [&] { told += 'C'; });
    file->addAction("Export", QKeySequence("Ctrl+E"), [&] { told += 'E'; });
    TextEntry text(&window);
    ComboEntry combo(&window);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (auto [entry, whole] : {std::pair<QWidget *, EntryText *>{&text, &text}, {&combo, &combo}}) {
        told.clear();
        entry->setFocus();
        QTest::keyClicks(entry, "1");
        QTest::keyClick(entry, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(entry, Qt::Key_E, Qt::ControlModifier);
        whole->selectWhole();
        QTest::keyClick(entry, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(told, "CE");
    }
}

} // namespace
