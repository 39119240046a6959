// SPDX-License-Identifier: MIT
#include "forms/HelpContext.h"

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

namespace {

TEST(HelpKeyTest, AsksForTheTopicOfWhatHasTheFocus) {
    int topic = -1;
    const HelpKey key([&](int HelpContextID) { topic = HelpContextID; });
    const auto topicOn = [&](QWidget &widget) {
        topic = -1;
        QTest::keyClick(&widget, Qt::Key_F1);
        return topic;
    };

    QWidget window;
    QDialog over(&window);
    QLineEdit entry(&over);
    EXPECT_EQ(topicOn(entry), 0);
    setHelpContext(window, 1);
    EXPECT_EQ(topicOn(entry), 1);
    setHelpContext(over, 5);
    EXPECT_EQ(topicOn(entry), 5);
    setHelpContext(over, 0); // the index, although the window has a topic
    EXPECT_EQ(topicOn(entry), 0);

    QMenu menu(&window);
    EXPECT_EQ(topicOn(menu), 1);
    QAction *command = menu.addAction("Export");
    menu.setActiveAction(command);
    EXPECT_EQ(topicOn(menu), 1);
    setHelpContext(*command, 2);
    EXPECT_EQ(topicOn(menu), 2);

    topic = -1;
    QTest::keyClick(&window, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ(topic, -1);
}

} // namespace
