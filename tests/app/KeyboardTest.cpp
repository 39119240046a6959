// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "fakes/Spoken.h"
#include "view/frmNoData.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>

#include <set>

namespace {

/// What an operator without a mouse, or without sight, would miss in a window.
std::string missing(QWidget &window) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
    std::set<const QWidget *> visited; // by the Tab key, until it begins anew
    while (visited.insert(QApplication::focusWidget()).second)
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window, Qt::Key_Tab);
    QStringList faults;
    std::set<QString> accessKeys;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        const QString name = widget->metaObject()->className() + (' ' + widget->objectName());
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            if (!visited.contains(widget))
                faults << name + " is out of the Tab key's reach";
        }
        const auto *button = qobject_cast<QAbstractButton *>(widget);
        const QString key = button != nullptr ? QKeySequence::mnemonic(button->text()).toString() : QString();
        if (!key.isEmpty() && !accessKeys.insert(key).second)
            faults << name + " shares the key " + key;
    }
    return faults.join(", ").toStdString() + unspoken(window);
}

using KeyboardTest = StartedProgram;

TEST_F(KeyboardTest, EveryControlOfEveryWindowIsReachedAndNamedAndEscapeLeaves) {
    link();
    EXPECT_EQ(missing(*find<QWidget>("frmMain")), "");
    for (const char *command :
         {"mnuExport", "mnuPrint", "mnuMethod", "mnuNotes", "mnuLogName", "mnuComPort", "mnuAbout"}) {
        std::string faults = "no dialog";
        meanwhile([&faults] {
            QWidget *dialog = QApplication::activeModalWidget();
            faults = missing(*dialog);
            QTest::keyClick(dialog, Qt::Key_Escape);
            EXPECT_FALSE(dialog->isVisible());
            dialog->hide();
        });
        trigger(command);
        EXPECT_EQ(faults, "") << command;
    }
    for (const char *name : {"TabChart", "Toolsbar", "ShapeReciveLed", "ScrollChart(0)"})
        EXPECT_FALSE(find<QWidget>(name)->accessibleName().isEmpty()) << name;
}

TEST_F(KeyboardTest, F1OpensTheTopicOfWhatIsInFront) {
    const auto take = [this] { return std::exchange(help.shown, {}); };
    QTest::keyClick(find<QWidget>("frmMain"), Qt::Key_F1);
    trigger("mnuIntro");
    trigger("mnuIndex");
    trigger("mnuIntro");
    EXPECT_EQ(take(), (std::vector{1, 1, 0, 1}));
    EXPECT_EQ(help.HelpFile, "/share/ostrel/Ostrel.hlp");

    for (const auto &[command, topic] : {std::pair{"mnuExport", 2},
                                         {"cmdMethod", 3},
                                         {"cmdNotes", 4},
                                         {"cmdPrint", 5},
                                         {"mnuComPort", 6},
                                         {"mnuLogName", 13},
                                         {"mnuAbout", 1}}) {
        meanwhile([] {
            QWidget *dialog = QApplication::activeModalWidget();
            QTest::keyClick(dialog->focusWidget() ? dialog->focusWidget() : dialog, Qt::Key_F1);
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        trigger(command);
        EXPECT_EQ(take(), std::vector{topic}) << command;
    }

    meanwhile([] {
        QWidget *dialog = QApplication::activeModalWidget();
        EXPECT_EQ(missing(*dialog), "");
        QTest::keyClick(dialog, Qt::Key_F1);
        dialog->close();
    });
    frmNoData(find<QWidget>("frmMain")).ask();
    EXPECT_EQ(take(), std::vector{14});

    auto *menu = find<frmMain>("frmMain")->menuBar()->actions().at(0)->menu();
    menu->popup({});
    menu->setActiveAction(find<QAction>("mnuSaveSlectedData"));
    QTest::keyClick(menu, Qt::Key_F1);
    EXPECT_EQ(take(), std::vector{9});
    menu->hide();
}

} // namespace
