// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "base/Steps.h"
#include "chart/Quillchart.h"
#include "reports/frmExport.h"
#include "view/InitMainWindow.h"

#include <QPrinter>

namespace {

MainTimers makeTimers(const Platform &on, QObject &splash, QObject &owner) {
    const auto make = [&](const char *name, int interval, bool enabled) {
        return on.makeTimer(&owner, QLatin1String(name), interval, enabled);
    };
    // clang-format off
    return {on.makeTimer(&splash, QStringLiteral("TimerLoadMain"), 1000, false),
            make("TimerProcess",             700, true),
            make("TimerCheckComData",       5000, false),
            make("TimerStopWaitForMethod", 15000, false),
            make("TimerSaveLog",           20000, false)};
    // clang-format on
}

/// The recorder's chart and those of the files.
DocumentCharts documentCharts(const frmMain &window) {
    DocumentCharts charts{};
    for (int tab = 0; tab < tabCount; ++tab)
        charts[tab] = &window.chart(tab);
    return charts;
}

} // namespace

Program::Program(const Platform &on)
    : platform_(on), clicks_(commands_, values_.tabs), timers_(makeTimers(on, splash_, window_)),
      net_({on.prompts, on.clock, [this] { backToWork(); },
            [this](const QString &message) { errors_.WriteErrorLog(message); }}),
      awake_(values_.run, *timers_.SaveLog, on.sleep),
      errors_(values_.link, on.prompts, commands_, {values_.error, on.ComPort, on.clock}, on.errorLog),
      settings_(values_.options, values_.error, on.store, errors_),

      keys_(values_.DecimalPoint, on.prompts),
      axes_(values_.tabs, window_.charts(), window_.axis(), *window_.time().txtChartTime, keys_, on.prompts),
      time_(values_.tabs, values_.run, window_.charts(), window_.time(), axes_, keys_, on.prompts,
            [this] { window_.focusChart(); }),
      live_(values_.tabs, *window_.charts()[recorderChart], window_.time()),
      states_(values_.run, values_.tabs, window_.time(), [this](const QString &name) { return window_.action(name); }),
      tabs_(values_.tabs, window_.charts(), window_.TabChart(), window_.time(), time_, states_,
            [this](int chart) { window_.bringToFront(chart); }),
      ports_(states_, live_, commands_, windowActs()),
      fileWindow_(tabs_, window_.time(), [this](const QString &text) { return window_.TextWidth(text); }),
      helpMenu_(on.help, window_, [this](const QString &name) { return window_.action(name); }),
      helpKey_([this](int HelpContextID) { platform_.help.showTopic(HelpContextID); }),

      openFiles_(values_.tabs, documentCharts(window_), fileWindow_, on.ComDlg, on.prompts),
      saveFiles_(values_.tabs, values_.run, documentCharts(window_), fileWindow_, on.ComDlg, on.prompts, errors_),
      clearAndClose_(values_.tabs, values_.run, documentCharts(window_), fileWindow_, on.prompts, errors_, saveFiles_),
      log_({values_.link, values_.tabs, values_.identity, [this] { return instances_.ownDirectory(); }}, values_.run,
           values_.options, values_.log,
           {window_.chart(recorderChart), window_.chart(logChart), window_.chart(scratchChart)}, *timers_.SaveLog,
           states_, on.ComDlg, errors_),

      shownTime_(time_),
      printRun_([this]() -> DocumentChart & { return chartInFront(); }, on.ComDlg, on.prompts, errors_, &window_),

      receiver_(on.ComPort, ring_, values_.link, *timers_.Process, on.clock, errors_), news_(values_.run, values_.link),
      intake_(values_.run, values_.tabs, *window_.charts()[recorderChart], *window_.charts()[logChart],
              *timers_.StopWaitForMethod, commands_, errors_, values_.options, on.clock),
      decoder_(ring_, values_.link, values_.run, news_, intake_,
               {*timers_.Process, *timers_.CheckComData, *timers_.SaveLog}, ports_, commands_, errors_, values_.options,
               on.clock),
      session_(values_.run, values_.link, values_.tabs, *timers_.CheckComData, *timers_.SaveLog, ports_),

      setupForm_(window_),
      setup_(on.ComPort, on.CommTmp, *timers_.CheckComData, values_.options, values_.link, on.prompts),
      search_(setup_, on.ComPort, *timers_.CheckComData, values_.options, values_.identity, setupForm_, on.prompts,
              commands_, errors_),

      shellWindow_(window_, clicks_), instances_(values_.identity, on.store, on.prompts, on.clock, on.appPath),
      recovery_(values_.identity, logInfo_, values_.log, instances_,
                {window_.chart(logChart), commands_, on.store, on.prompts,
                 [this](Recovery &recovery) { frmDataRecovery(recovery, &window_).exec(); }}),
      naming_(values_.identity, instances_, on.prompts, shellWindow_, &window_),
      textWindows_(values_.tabs, documentCharts(window_), {window_.chart(logChart), [this] { log_.writeNow(); }},
                   shellWindow_, on.prompts, &window_),
      activation_(values_.identity, values_.options, recovery_, instances_, *timers_.CheckComData, shellWindow_,
                  {[this] { commands_.run(QStringLiteral("mnuLogName")); },
                   [this](const QString &FileName) {
                       net_.run(QStringLiteral("DrawChartLabel"), [&] { openFiles_.DrawChartLabel(FileName); });
                   }}),
      exit_(values_.identity, values_.tabs,
            {window_.chart(logChart), log_, commands_, states_, settings_, instances_, on.prompts, on.process}) {
    values_.identity.PrevInstance = on.PrevInstance;
    window_.chart(logChart).setWastebasket(instances_.wastebasket(),
                                           [&clock = on.clock] { return clock.now().date(); });
    bindEvents();
    bindCommands();
}

WindowActs Program::windowActs() {
    return {.setReceiveLed = [this](bool on) { window_.setLed(on); },
            .focusChart = [this] { window_.focusChart(); },
            .askNoData = [this] { return frmNoData(&window_).ask(); }};
}

std::function<void()> Program::underNet(const char *place, std::function<void()> routine) {
    return [this, place = QString::fromLatin1(place), routine = std::move(routine)] {
        net_.run(place, routine);
        awake_.look();
    };
}

/// Behind an error that nobody has handled.
void Program::backToWork() {
    decoder_.backToWork();
    writeLog();
}

bool Program::askToEnd() {
    bool agreed = false; // nor does an error on the way agree
    net_.run(QStringLiteral("askToEnd"), [&] { agreed = exit_.askToEnd(); });
    return agreed;
}

void Program::bindEvents() {
    platform_.ComPort.setRThreshold(50);
    platform_.ComPort.OnComm = underNet("ComPort_OnComm", [this] { receiver_.ComPort_OnComm(); });
    timers_.LoadMain->Tick = [this] { TimerLoadMain_Timer(); };
    timers_.Process->Tick = underNet("TimerProcess_Timer", [this] {
        decoder_.TimerProcess_Timer();
        window_.chart(recorderChart).DrawNewData(); // the live view no longer does when the pass ended the recording
    });
    timers_.CheckComData->Tick = underNet("TimerCheckComData_Timer", [this] {
        platform_.ComPort.lookAtLine(); // what has only just come is life on the line, too
        session_.TimerCheckComData_Timer();
    });
    timers_.StopWaitForMethod->Tick =
        underNet("TimerStopWaitForMethod_Timer", [this] { intake_.TimerStopWaitForMethod_Timer(); });
    timers_.SaveLog->Tick = underNet("TimerSaveLog_Timer", [this] { log_.TimerSaveLog_Timer(); });
    platform_.sleep.aboutToSleep = underNet("aboutToSleep", [this] { writeLog(); });

    axes_.attach();
    time_.attach();
    tabs_.attach();
    bindCharts();
    window_.clicked = [this](const QString &control) {
        net_.run(control, [&] { clicks_.click(control); });
        awake_.look();
    };
    window_.QueryUnload = [this] {
        bool goes = false; // an error on the way keeps the window
        net_.run(QStringLiteral("frmMain_Unload"), [&] { goes = exit_.frmMain_Unload(); });
        return goes;
    };
}

void Program::bindCharts() {
    for (int i = 0; i < chartInstances; ++i) {
        Quillchart &chart = window_.chart(i);
        chart.setPrinter(
            {[this] { return platform_.printer().pageLayout(); },
             [this](const auto &report, const auto &name) { return platform_.ComDlg.print(report, name); }});
        QObject::connect(&chart, &Quillchart::Zoomed, &window_,
                         [this](qint16, float from, float to, float uvMin, float uvMax, float condMin, float condMax) {
                             time_.Chart_Zoomed(from, to, uvMin, uvMax, condMin, condMax);
                         });
        QObject::connect(&chart, &Quillchart::Unzoomed, &window_, [this] { time_.Chart_Unzoomed(); });
        QObject::connect(&chart, &Quillchart::ChartError, &window_,
                         [this](qint16, qint16 ErrorCode) { errors_.HandelError(ErrorCode); });
    }
}

void Program::bindCommands() {
    commands_.bind(QStringLiteral("mnuOpenData"), [this] { openFiles_.mnuOpenData_Click(); });
    commands_.bind(QStringLiteral("mnuOpenLog"), [this] { openFiles_.mnuOpenLog_Click(); });
    commands_.bind(QStringLiteral("mnuClose"), [this] { clearAndClose_.mnuClose_Click(); });
    commands_.bind(QStringLiteral("mnuSaveData"), [this] { saveFiles_.mnuSaveData_Click(); });
    commands_.bind(QStringLiteral("mnuSaveDataAs"), [this] { saveFiles_.mnuSaveDataAs_Click(); });
    commands_.bind(QStringLiteral("mnuSaveSlectedData"), [this] { saveFiles_.mnuSaveSlectedData_Click(); });
    commands_.bind(QStringLiteral("mnuExport"), [this] { mnuExport_Click(); });
    commands_.bind(QStringLiteral("mnuPrintSetup"), [this] { printRun_.mnuPrintSetup_Click(); });
    commands_.bind(QStringLiteral("mnuPrint"), [this] { printRun_.mnuPrint_Click(); });
    commands_.bind(QStringLiteral("mnuClear"), [this] { clearAndClose_.mnuClear_Click(); });
    commands_.bind(QStringLiteral("mnuStart"), [this] { session_.mnuStart_Click(); });
    commands_.bind(QStringLiteral("mnuStop"), [this] { session_.mnuStop_Click(); });
    commands_.bind(QStringLiteral("mnuComPort"), [this] { search_.mnuComPort_Click(); });
    commands_.bind(QStringLiteral("mnuSaveLog"), [this] { log_.mnuSaveLog_Click(); });
    commands_.bind(QStringLiteral("mnuLogOn"), [this] { log_.mnuLogOn_Click(); });
    commands_.bind(QStringLiteral("mnuLogOff"), [this] { log_.mnuLogOff_Click(); });
    commands_.bind(QStringLiteral("mnuLogName"), [this] {
        naming_.mnuLogName_Click();
        window_.chart(logChart).setChartTitle(values_.identity.SystemName); // the log itself tells whose it is
    });
    commands_.bind(QStringLiteral("mnuMethod"), [this] { textWindows_.mnuMethod_Click(); });
    commands_.bind(QStringLiteral("mnuNotes"), [this] { textWindows_.mnuNotes_Click(); });
    commands_.bind(QStringLiteral("cmdMethod"), [this] { textWindows_.cmdMethod_Click(); });
    commands_.bind(QStringLiteral("cmdNotes"), [this] { textWindows_.cmdNotes_Click(); });
    commands_.bind(QStringLiteral("mnuIntro"), [this] { helpMenu_.mnuIntro_Click(); });
    commands_.bind(QStringLiteral("mnuIndex"), [this] { helpMenu_.mnuIndex_Click(); });
    commands_.bind(QStringLiteral("mnuAbout"), [this] { splash_.showAbout(&window_); });
    commands_.bind(QStringLiteral("mnuExit"), [this] { exit_.frmMain_Unload(); });
}

void Program::mnuExport_Click() {
    frmExport(chartInFront(), shownTime_, platform_.exportDialog, platform_.prompts, errors_, &window_).exec();
}

void Program::start() {
    // Before this copy changes anything there. Where the store cannot be read, nobody knows whose the left-over logs
    // are.
    if (skippingErrors([this] { logInfo_ = platform_.store.GetAllSettings(QLatin1String(logInfoSection)); }) != 0)
        logInfo_ = {{QStringLiteral("0"), QStringLiteral("0")}};
    timers_.LoadMain->setEnabled(true);
    splash_.show();
}

/// A start that cannot be completed is the one error that ends the program.
void Program::TimerLoadMain_Timer() {
    timers_.LoadMain->setEnabled(false);
    trapped([this] { comeUp(); },
            [this](const RunTimeError &error) {
                platform_.prompts.show(startFailedBox(error, platform_.appPath));
                endUnasked();
            });
}

void Program::comeUp() {
    if (!loadWindow())
        return; // there is no port, and the program is on its way out
    window_.comeUp();
    window_.chart(logChart).KeepWastebasketLimits();
    activation_.run(platform_.commandLine);
    splash_.hide();
    splash_.showClose(true);
}

bool Program::loadWindow() {
    return InitMainWindow({.values = values_,
                           .charts = window_.charts(),
                           .time = window_.time(),
                           .axes = axes_,
                           .commands = states_,
                           .SetHelpContexts = [this] { helpMenu_.SetHelpContexts(platform_.sharedFolder); },
                           .setCaption = [this](const QString &caption) { window_.setWindowTitle(caption); },
                           .ReadSettings = [this] { settings_.ReadSettings(); },
                           .resize = [this](float width, float height) { window_.setOuterSize(width, height); },
                           .bringToFront = [this](int chart) { window_.bringToFront(chart); },
                           .choosePort = [this] { return search_.chooseAtStart(); },
                           .ComDataLost = [this] { session_.ComDataLost(); },
                           .openPort = underNet("ComPort_Open", [this] { search_.openAtStart(); })});
}
