// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QMenu>
#include <QMenuBar>

#include <set>

namespace {

QString nameOf(const QWidget &widget) {
    return widget.objectName().isEmpty() ? QString(widget.metaObject()->className()) : widget.objectName();
}

bool takesTab(const QWidget &widget) {
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
           widget.focusProxy() == nullptr;
}

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
    std::map<QString, QString> accessKeys;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        if (takesTab(*widget)) {
            if (!visited.contains(widget))
                faults << nameOf(*widget) + " is out of the Tab key's reach";
            QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
            if (spoken == nullptr || spoken->text(QAccessible::Name).trimmed().isEmpty())
                faults << nameOf(*widget) + " has no spoken name";
        }
        const auto *button = qobject_cast<QAbstractButton *>(widget);
        const QString key = button != nullptr ? QKeySequence::mnemonic(button->text()).toString() : QString();
        if (!key.isEmpty() && !accessKeys.emplace(key, nameOf(*widget)).second)
            faults << nameOf(*widget) + " shares the key " + key + " with " + accessKeys[key];
    }
    return faults.join(", ").toStdString();
}

class KeyboardTest : public testing::Test, protected ProgramFixture {
protected:
    /// What is missing in the dialog that a command brings up, which Escape takes away again.
    std::string missingBehind(const char *command) {
        std::string faults = "no dialog";
        meanwhile([&faults] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (dialog == nullptr)
                return;
            faults = missing(*dialog);
            QTest::keyClick(dialog, Qt::Key_Escape);
            if (dialog->isVisible()) {
                faults += " It stays at Escape.";
                dialog->hide();
            }
        });
        find<QAction>(command)->trigger();
        return faults;
    }
};

TEST_F(KeyboardTest, EveryControlOfEveryWindowIsReachedAndNamed) {
    start();
    link();
    EXPECT_EQ(missing(*find<QWidget>("frmMain")), "");
    for (const char *command :
         {"mnuExport", "mnuPrint", "mnuMethod", "mnuNotes", "mnuLogName", "mnuComPort", "mnuAbout"})
        EXPECT_EQ(missingBehind(command), "") << command;
}

TEST_F(KeyboardTest, F1OpensTheTopicOfWhatIsInFront) {
    start();
    const auto take = [this] { return std::exchange(help.shown, {}); };
    QTest::keyClick(find<QWidget>("frmMain"), Qt::Key_F1);
    find<QAction>("mnuIntro")->trigger();
    find<QAction>("mnuIndex")->trigger();
    find<QAction>("mnuIntro")->trigger();
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
        find<QAction>(command)->trigger();
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
