// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "base/Numbers.h"
#include "base/Steps.h"
#include "chart/Quillchart.h"
#include "reports/frmExport.h"

#include <QFileInfo>
#include <QPrinter>

#include <algorithm>

namespace ostrel {

namespace {

MainTimers makeTimers(const Platform &on, QObject &owner) {
    const auto make = [&](const char *name, int interval, bool enabled) {
        return on.makeTimer(&owner, QLatin1String(name), interval, enabled);
    };
    // clang-format off
    return {make("TimerProcess",             700, true),
            make("TimerCheckComData",       5000, false),
            make("TimerStopWaitForMethod", 15000, false),
            make("TimerSaveLog",           20000, false)};
    // clang-format on
}

} // namespace

Program::Program(const Platform &on)
    : platform_(on), net_({on.prompts, on.clock, [this] { backToWork(); },
                           [this](const QString &message) { documents_.errors.WriteErrorLog(message); }}),
      TimerLoadMain_(on.makeTimer(&splash_, QStringLiteral("TimerLoadMain"), 1000, false)),
      view_(
          {values_, commands_, on.prompts, on.help, on.store,
           [&on](QWidget &window) { return on.makeTimer(&window, QStringLiteral("TimerWindowPlace"), 1000, false); }}),
      timers_(makeTimers(on, view_.window)), awake_(values_.run, *timers_.SaveLog, on.sleep),
      notices_(values_.options, values_.identity, on.notices),
      helpKey_([this](int HelpContextID) { platform_.help.showTopic(HelpContextID); }),
      documents_({values_,
                  on.store,
                  on.ComPort,
                  on.ComDlg,
                  on.prompts,
                  on.clock,
                  *timers_.SaveLog,
                  commands_,
                  view_.documentCharts(),
                  {log(recorderChart), log(logChart), log(scratchChart)},
                  view_.documentWindow,
                  view_.states,
                  notices_,
                  [this] { return shell_.instances.ownDirectory(); },
                  on.errorLog}),
      acquisition_({values_, on.ComPort, on.CommTmp, on.directory, timers_, run(recorderChart), run(logChart),
                    commands_, view_.acquisitionWindow, view_.setupDialog, on.prompts, documents_.errors, notices_,
                    on.clock}),
      zoomedTime_(view_.time), printRun_([this]() -> Quillchart & { return chart(values_.tabs.CurrentChart); },
                                         on.ComDlg, on.prompts, documents_.errors, &view_.window),
      chartMenu_(on.ComDlg, on.prompts,
                 [this](const char *place, std::function<void()> act) { return underNet(place, std::move(act)); }),
      shellWindow_(view_.window, view_.clicks),
      shell_({values_, commands_, on.store, on.prompts, on.process, on.clock, on.appPath, documents_,
              view_.documentCharts(), log(logChart), run(logChart), view_.states, shellWindow_, view_.window, [this] {
                  notices_.withdraw(News::LinkLost); // nobody listens to the link any more
                  view_.place.keep();
              }}) {
    values_.identity.PrevInstance = on.PrevInstance;
    log(logChart).setWastebasket(shell_.instances.wastebasket(), [&clock = on.clock] { return clock.now().date(); });
    for (int i = 0; i < tabCount; ++i) {
        chart(i).extendMenu = [this, i](QMenu &menu) {
            view_.addTo(menu, i);
            chartMenu_.addTo(menu, chart(i));
        };
    }
    for (int i = 0; i < chartInstances; ++i)
        chart(i).setPrinter(
            {[this] { return platform_.printer().pageLayout(); },
             [this](const auto &report, const auto &name) { return platform_.ComDlg.print(report, name); }});
    bind();
}

RunLog &Program::log(int index) { return chart(index).log(); }

void Program::bind() {
    const Guard guard = [this](const char *place, std::function<void()> routine) {
        return underNet(place, std::move(routine));
    };
    view_.bind(commands_, guard, documents_.errors);
    documents_.bind(commands_, guard);
    acquisition_.bind(commands_, guard);
    shell_.bind(commands_);
    commands_.bind(QStringLiteral("mnuExport"), [this] { mnuExport_Click(); });
    commands_.bind(QStringLiteral("mnuPrintSetup"), [this] { printRun_.mnuPrintSetup_Click(); });
    commands_.bind(QStringLiteral("mnuPrint"), [this] { printRun_.mnuPrint_Click(); });
    commands_.bind(QStringLiteral("mnuAbout"), [this] { splash_.showAbout(&view_.window); });
    commands_.bind(QStringLiteral("mnuLogName"), [this] {
        shell_.naming.mnuLogName_Click();
        run(logChart).setChartTitle(values_.identity.SystemName); // so that the log contains its system's name
    });

    TimerLoadMain_->Tick = [this] { TimerLoadMain_Timer(); };
    QObject::connect(
        &view_.window, &frmMain::filesDropped, &view_.window, [this](const QStringList &files) { openDropped(files); },
        Qt::QueuedConnection);
    platform_.sleep.aboutToSleep = underNet("aboutToSleep", [this] { writeLog(); });
    platform_.notices.chosen = [this] { view_.window.comeToFront(); };
    view_.window.QueryUnload = [this] {
        bool goes = false; // an error keeps the window open
        net_.run(QStringLiteral("frmMain_Unload"), [&] { goes = shell_.exit.frmMain_Unload(); });
        return goes;
    };
}

std::function<void()> Program::underNet(const char *place, std::function<void()> routine) {
    return [this, place = QString::fromLatin1(place), routine = std::move(routine)] {
        net_.run(place, routine);
        awake_.look();
        view_.window.showRecording(values_.run.Recording);
    };
}

/// After an unhandled error.
void Program::backToWork() {
    acquisition_.decoder.backToWork();
    if (timers_.SaveLog->Enabled())
        timers_.SaveLog->startAnew(); // the error may come from its own tick
    writeLog();
}

bool Program::askToEnd() {
    bool agreed = false; // an error counts as a No
    net_.run(QStringLiteral("askToEnd"), [&] { agreed = shell_.exit.askToEnd(); });
    return agreed;
}

void Program::mnuExport_Click() {
    frmExport(chart(values_.tabs.CurrentChart), zoomedTime_, platform_.exportDialog, platform_.prompts,
              documents_.errors, &view_.window)
        .exec();
}

void Program::start() {
    // Read before this copy changes the store. When the store cannot be read, the left-over logs count as unknown.
    if (skippingErrors([this] { shell_.logInfo = platform_.store.GetAllSettings(QLatin1String(logInfoSection)); }) != 0)
        shell_.logInfo = {{QStringLiteral("0"), QStringLiteral("0")}};
    TimerLoadMain_->setEnabled(true);
    splash_.show();
}

void Program::TimerLoadMain_Timer() {
    TimerLoadMain_->setEnabled(false);
    const auto comeUp = [this] {
        if (!InitMainWindow())
            return; // there is no port, and the program is ending
        view_.comeUp();
        log(logChart).KeepWastebasketLimits();
        FirstActivation();
        splash_.hide();
        splash_.showClose(true);
    };
    // Only an error during the start ends the program.
    trapped(comeUp, [this](const RunTimeError &error) {
        platform_.prompts.show(startFailedBox(error, platform_.appPath));
        endUnasked();
    });
}

/// Prepares the window before it is first shown. False: there is no free port.
bool Program::InitMainWindow() {
    values_.DecimalPoint = decimalSeparator();
    view_.axes.FillAxisLists();
    view_.helpMenu.SetHelpContexts(platform_.sharedFolder);
    shellWindow_.setCaption(QStringLiteral("Ostrel MS - Velquin System: Default"));
    documents_.settings.ReadSettings();
    // Copies that run side by side have places of their own.
    view_.setUp(values_.identity.PrevInstance ? std::max(2, int(shell_.logInfo.size())) : 1);
    if (!acquisition_.search.chooseAtStart())
        return false;
    acquisition_.session.ComDataLost();
    values_.tabs.ChartCount = 1;
    run(recorderChart).setChartTitle(QStringLiteral("Chart Recorder"));
    view_.states.setLogMenus(values_.options.DataLogging);
    underNet("ComPort_Open", [this] { acquisition_.search.openAtStart(); })();
    return true;
}

/// Runs once, after the window was shown: offers left-over logs, gives this copy its log directory, its number and its
/// name, and starts the watchdog of the link.
void Program::FirstActivation() {
    shellWindow_.setButtonValue(QStringLiteral("cmdLogOff"), !values_.options.DataLogging);
    shellWindow_.setButtonValue(QStringLiteral("cmdLogOn"), values_.options.DataLogging);
    if (!values_.identity.PrevInstance)
        shell_.recovery.offer();
    shell_.instances.prepareLogDirectory();
    shell_.instances.AddInstance();
    shell_.instances.UpdateRegistry();
    commands_.run(QStringLiteral("mnuLogName"));
    shellWindow_.setCaption(systemCaption(values_.identity.SystemName));
    timers_.CheckComData->setEnabled(true);
    if (!platform_.commandLine.isEmpty())
        DrawChartLabel(QFileInfo(platform_.commandLine).absoluteFilePath());
}

/// Files that were dropped on the window, until there is no room for more.
void Program::openDropped(const QStringList &FileNames) {
    bool hasRoom = true;
    for (auto name = FileNames.begin(); hasRoom && name != FileNames.end(); ++name)
        net_.run(QStringLiteral("openDropped"), [&] { hasRoom = documents_.openFiles.openDropped(*name); });
}

/// Opens the file named on the command line.
void Program::DrawChartLabel(const QString &FileName) {
    net_.run(QStringLiteral("DrawChartLabel"), [&] { documents_.openFiles.DrawChartLabel(FileName); });
}

} // namespace ostrel
