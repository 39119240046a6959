// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QMenu>
#include <QMenuBar>

#include <set>

namespace {

/// The controls that the Tab key comes to, until it begins anew.
std::set<const QWidget *> visitedByTab(QWidget &window) {
    std::set<const QWidget *> visited;
    while (visited.insert(QApplication::focusWidget()).second)
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window, Qt::Key_Tab);
    return visited;
}

/// What an operator without a mouse, or without sight, would miss in a window.
std::string missing(QWidget &window) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
    const std::set<const QWidget *> visited = visitedByTab(window);
    QStringList faults;
    std::set<QString> accessKeys;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        const QString name = widget->metaObject()->className() + (' ' + widget->objectName());
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            if (!visited.contains(widget))
                faults << name + " is out of the Tab key's reach";
            QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
            if (spoken == nullptr || spoken->text(QAccessible::Name).trimmed().isEmpty())
                faults << name + " has no spoken name";
        }
        const auto *button = qobject_cast<QAbstractButton *>(widget);
        const QString key = button != nullptr ? QKeySequence::mnemonic(button->text()).toString() : QString();
        if (!key.isEmpty() && !accessKeys.insert(key).second)
            faults << name + " shares the key " + key;
    }
    return faults.join(", ").toStdString();
}

class KeyboardTest : public StartedProgram {
protected:
    /// What is missing in the dialog that a command brings up, which Escape takes away again.
    std::string missingBehind(const char *command) {
        std::string faults = "no dialog";
        meanwhile([&faults] {
            QWidget *dialog = QApplication::activeModalWidget();
            faults = missing(*dialog);
            QTest::keyClick(dialog, Qt::Key_Escape);
            EXPECT_FALSE(dialog->isVisible()) << "It stays at Escape.";
            dialog->hide();
        });
        trigger(command);
        return faults;
    }
};

TEST_F(KeyboardTest, EveryControlOfEveryWindowIsReachedAndNamed) {
    link();
    EXPECT_EQ(missing(*find<QWidget>("frmMain")), "");
    for (const char *command :
         {"mnuExport", "mnuPrint", "mnuMethod", "mnuNotes", "mnuLogName", "mnuComPort", "mnuAbout"})
        EXPECT_EQ(missingBehind(command), "") << command;
}

TEST_F(KeyboardTest, F1OpensTheTopicOfWhatIsInFront) {
    const auto take = [this] { return std::exchange(help.shown, {}); };
    QTest::keyClick(find<QWidget>("frmMain"), Qt::Key_F1);
    trigger("mnuIntro");
    trigger("mnuIndex");
    trigger("mnuIntro");
    EXPECT_EQ(take(), (std::vector{1, 1, 0, 1}));
    EXPECT_EQ(help.HelpFile, "/share/ostrel/Ostrel.hlp");

    struct Row {
        const char *command;
        int topic;
    };
    for (const auto &[command, topic] : {Row{"mnuExport", 2}, Row{"cmdMethod", 3}, Row{"cmdNotes", 4},
                                         Row{"cmdPrint", 5}, Row{"mnuComPort", 6}, Row{"mnuLogName", 1}}) {
        meanwhile([] {
            QWidget *dialog = QApplication::activeModalWidget();
            QTest::keyClick(dialog->focusWidget() ? dialog->focusWidget() : dialog, Qt::Key_F1);
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        trigger(command);
        EXPECT_EQ(take(), std::vector{topic}) << command;
    }

    auto *menu = find<frmMain>("frmMain")->menuBar()->actions().at(0)->menu();
    menu->popup({});
    menu->setActiveAction(find<QAction>("mnuSaveSlectedData"));
    QTest::keyClick(menu, Qt::Key_F1);
    EXPECT_EQ(take(), std::vector{9});
    menu->hide();
}

} // namespace
