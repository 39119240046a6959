// SPDX-License-Identifier: MIT
#include "view/HelpMenu.h"

#include "base/HelpContexts.h"
#include "forms/HelpContext.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <utility>

namespace ostrel {

namespace {

struct TopicRow {
    const char *command;
    int HelpContextID;
};

// clang-format off
constexpr TopicRow topics[] = {
    {"mnuExport",           HelpContext::Export},
    {"mnuMethod",           HelpContext::Method},
    {"mnuNotes",            HelpContext::Notes},
    {"mnuPrint",            HelpContext::Print},
    {"mnuComPort",          HelpContext::ComPort},
    {"mnuSaveData",         HelpContext::SaveData},
    {"mnuSaveDataAs",       HelpContext::SaveData},
    {"mnuSaveSlectedData",  HelpContext::SaveSelected},
    {"mnuOpenData",         HelpContext::Open},
    {"mnuOpenLog",          HelpContext::Open},
    {"mnuSaveLog",          HelpContext::SaveLog},
};
// clang-format on

} // namespace

HelpMenu::HelpMenu(HelpViewer &viewer, QWidget &window, Actions actions)
    : viewer_(viewer), window_(window), actions_(std::move(actions)) {}

void HelpMenu::SetHelpContexts(const QString &folder) {
    viewer_.HelpFile = folder + QStringLiteral("/Ostrel.hlp");
    setHelpContext(window_, HelpContext::Introduction);
    for (const TopicRow &row : topics)
        setHelpContext(*actions_(QLatin1String(row.command)), row.HelpContextID);
}

void HelpMenu::mnuIntro_Click() { sendF1(); }

void HelpMenu::mnuIndex_Click() {
    setHelpContext(window_, HelpContext::Index);
    sendF1();
    setHelpContext(window_, HelpContext::Introduction);
}

/// Acts as if the operator had pressed F1 with the focus on the window. Returns when the key has been handled.
void HelpMenu::sendF1() {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_F1, Qt::NoModifier);
        QCoreApplication::sendEvent(&window_, &key);
    }
}

} // namespace ostrel
