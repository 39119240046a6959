// SPDX-License-Identifier: MIT
#include "view/HelpMenu.h"

#include "forms/HelpContext.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <utility>

namespace ostrel {

namespace {

constexpr int helpIndex = 0;
constexpr int introduction = 1; // also the topic of the window

struct TopicRow {
    const char *command;
    int HelpContextID;
};

// clang-format off
constexpr TopicRow topics[] = {
    {"mnuExport",           2},
    {"mnuMethod",           3},
    {"mnuNotes",            4},
    {"mnuPrint",            5},
    {"mnuComPort",          6},
    {"mnuSaveData",         8},
    {"mnuSaveDataAs",       8},
    {"mnuSaveSlectedData",  9},
    {"mnuOpenData",        10},
    {"mnuOpenLog",         10},
    {"mnuSaveLog",         11},
};
// clang-format on

} // namespace

HelpMenu::HelpMenu(HelpViewer &viewer, QWidget &window, Actions actions)
    : viewer_(viewer), window_(window), actions_(std::move(actions)) {}

void HelpMenu::SetHelpContexts(const QString &folder) {
    viewer_.HelpFile = folder + QStringLiteral("/Ostrel.hlp");
    setHelpContext(window_, introduction);
    for (const TopicRow &row : topics)
        setHelpContext(*actions_(QLatin1String(row.command)), row.HelpContextID);
}

void HelpMenu::mnuIntro_Click() { sendF1(); }

void HelpMenu::mnuIndex_Click() {
    setHelpContext(window_, helpIndex);
    sendF1();
    setHelpContext(window_, introduction);
}

/// Acts as if the operator had pressed F1 with the focus on the window. Returns when the key has been handled.
void HelpMenu::sendF1() {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_F1, Qt::NoModifier);
        QCoreApplication::sendEvent(&window_, &key);
    }
}

} // namespace ostrel
