// SPDX-License-Identifier: MIT
#include "shell/FirstActivation.h"

#include <QFileInfo>

#include <utility>

FirstActivation::FirstActivation(const Identity &identity, const Options &options, Recovery &recovery,
                                 Instances &instances, Timer &TimerCheckComData, ShellWindow &window,
                                 const Commands &commands, std::function<void(const QString &FileName)> DrawChartLabel)
    : identity_(identity), options_(options), recovery_(recovery), instances_(instances),
      TimerCheckComData_(TimerCheckComData), window_(window), commands_(commands),
      DrawChartLabel_(std::move(DrawChartLabel)) {}

void FirstActivation::run(const QString &commandLine) {
    window_.setButtonValue(QStringLiteral("cmdLogOff"), !options_.DataLogging);
    window_.setButtonValue(QStringLiteral("cmdLogOn"), options_.DataLogging);
    if (!identity_.PrevInstance)
        recovery_.offer();
    instances_.prepareLogDirectory();
    instances_.AddInstance();
    instances_.UpdateRegistry();
    commands_.run(QStringLiteral("mnuLogName"));
    window_.setCaption(systemCaption(identity_.SystemName));
    TimerCheckComData_.setEnabled(true);
    if (!commandLine.isEmpty())
        DrawChartLabel_(QFileInfo(commandLine).absoluteFilePath());
}
