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
    : platform_(on), commands_(values_.tabs), timers_(makeTimers(on, splash_, window_)),
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
      saveFiles_(values_.tabs, documentCharts(window_), fileWindow_, on.ComDlg, on.prompts, errors_),
      clearAndClose_(values_.tabs, documentCharts(window_), fileWindow_, on.prompts, errors_, saveFiles_),
      log_({values_.link, values_.identity}, values_.run, values_.options, values_.log, window_.chart(logChart),
           window_.chart(scratchChart), *timers_.SaveLog, states_, on.ComDlg, errors_),

      shownTime_(time_),
      printRun_([this]() -> DocumentChart & { return chartInFront(); }, on.ComDlg, on.prompts, errors_, &window_),

      receiver_(on.ComPort, ring_, values_.link, *timers_.Process, errors_), news_(values_.run, values_.link),
      intake_(values_.run, *window_.charts()[recorderChart], *window_.charts()[logChart], *timers_.StopWaitForMethod,
              commands_, errors_, values_.options, on.clock),
      decoder_(ring_, values_.link, values_.run, news_, intake_,
               {*timers_.Process, *timers_.CheckComData, *timers_.SaveLog}, ports_, commands_, errors_,
               values_.options),
      session_(values_.run, values_.link, values_.tabs, *timers_.CheckComData, *timers_.SaveLog, ports_),

      setupForm_(window_),
      setup_(on.ComPort, on.CommTmp, *timers_.CheckComData, values_.options, values_.link, on.prompts),
      search_(setup_, on.ComPort, *timers_.CheckComData, values_.options, values_.identity, setupForm_, on.prompts,
              commands_, errors_),

      shellWindow_(window_, commands_), logSaver_(commands_),
      instances_(values_.identity, on.store, on.prompts, on.clock, on.appPath),
      recovery_(values_.identity, logInfo_, values_.log, instances_,
                {window_.chart(logChart), logSaver_, on.store, on.prompts,
                 [this](Recovery &recovery) { frmDataRecovery(recovery, &window_).exec(); }}),
      naming_(values_.identity, instances_, on.prompts, shellWindow_, &window_),
      textWindows_(values_.tabs, documentCharts(window_), shellWindow_, on.prompts, &window_),
      activation_(values_.identity, values_.options, recovery_, instances_, *timers_.CheckComData, shellWindow_,
                  {[this] { commands_.run(QStringLiteral("mnuLogName")); },
                   [this](const QString &FileName) { openFiles_.DrawChartLabel(FileName); }}),
      exit_(values_.identity, values_.tabs, values_.options,
            {window_.chart(recorderChart), window_.chart(logChart), logSaver_, states_, settings_, instances_,
             on.prompts, on.process}) {
    values_.identity.PrevInstance = on.PrevInstance;
    bindEvents();
    bindCommands();
}

WindowActs Program::windowActs() {
    return {.setReceiveLed = [this](bool on) { window_.setLed(on); },
            .focusChart = [this] { window_.focusChart(); },
            .askNoData = [this] { return frmNoData(&window_).ask(); }};
}

void Program::bindEvents() {
    platform_.ComPort.setRThreshold(50);
    platform_.ComPort.OnComm = [this] { receiver_.ComPort_OnComm(); };
    timers_.Process->Tick = [this] {
        decoder_.TimerProcess_Timer();
        window_.chart(recorderChart).DrawNewData(); // the live view no longer does when the pass ended the recording
    };
    timers_.LoadMain->Tick = [this] { TimerLoadMain_Timer(); };
    timers_.CheckComData->Tick = [this] { TimerCheckComData_Timer(); };
    timers_.StopWaitForMethod->Tick = [this] { intake_.TimerStopWaitForMethod_Timer(); };
    timers_.SaveLog->Tick = [this] { log_.TimerSaveLog_Timer(); };
    platform_.sleep.aboutToSleep = [this] { writeLog(); };

    axes_.attach();
    time_.attach();
    tabs_.attach();
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
    window_.clicked = [this](const QString &control) { commands_.click(control); };
    window_.QueryUnload = [this] { return exit_.frmMain_Unload(); };
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
    commands_.bind(QStringLiteral("mnuLogName"), [this] { naming_.mnuLogName_Click(); });
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
    // Before this copy changes anything there.
    skippingErrors([this] { logInfo_ = platform_.store.GetAllSettings(QLatin1String(logInfoSection)); });
    timers_.LoadMain->setEnabled(true);
    splash_.show();
}

void Program::TimerLoadMain_Timer() {
    timers_.LoadMain->setEnabled(false);
    if (!loadWindow())
        return; // there is no port, and the program is on its way out
    window_.comeUp();
    activation_.run(platform_.commandLine);
    splash_.hide();
    splash_.showClose(true);
}

void Program::TimerCheckComData_Timer() {
    platform_.sleep.setHeld(values_.run.Recording || timers_.SaveLog->Enabled());
    session_.TimerCheckComData_Timer();
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
                           .openPort = [this] { search_.openAtStart(); }});
}
