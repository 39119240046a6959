// SPDX-License-Identifier: MIT
#include "app/Ostrel.h"

#include "app/Application.h"
#include "app/Program.h"
#include "base/AppFolders.h"
#include "base/RunTimeError.h"
#include "desktop/BoxAlert.h"
#include "desktop/DBusNotices.h"
#include "desktop/EndSignals.h"
#include "desktop/Folders.h"
#include "desktop/InstanceLock.h"
#include "desktop/LogindSleepGuard.h"
#include "desktop/PortFinder.h"
#include "desktop/QtCommonDialog.h"
#include "desktop/QtProcess.h"
#include "desktop/QtPrompts.h"
#include "desktop/QtSerialControl.h"
#include "desktop/QtSettingsStore.h"
#include "desktop/QtTimer.h"
#include "desktop/SerialPorts.h"
#include "desktop/SessionEnd.h"
#include "desktop/SystemClock.h"
#include "help/QtHelpViewer.h"

#include <QScopedValueRollback>

#include <cstdlib>

namespace ostrel {

namespace {

/// Runs the recorder on the real desktop until its window is closed.
int run(Application &application, Prompts &prompts, Process &process) {
    const Folders folders;
    const InstanceLock lock(folders.appPath());
    const SystemClock clock;
    QtCommonDialog ComDlg;
    QtCommonDialog exportDialog;
    QtSettingsStore store(Folders::settingsFile());
    SerialPorts ports(store);
    const auto deviceOfPort = [&ports](int number) { return ports.device(number); };
    QtSerialControl ComPort(qApp, QStringLiteral("ComPort"), deviceOfPort);
    QtSerialControl CommTmp(qApp, QStringLiteral("CommTmp"), deviceOfPort);
    PortFinder directory(deviceOfPort);

    LogindSleepGuard sleep;
    DBusNotices notices;
    const BoxAlert alert;
    QtHelpViewer help;

    Program program({clock, ComPort, CommTmp, directory, store, prompts, ComDlg, exportDialog,
                     [&ComDlg]() -> QPrinter & { return ComDlg.printer(); }, process, sleep, notices, help,
                     [](QObject *owner, const QString &name, int interval, bool on) {
                         return std::make_unique<QtTimer>(owner, name, interval, on);
                     },
                     folders.appPath(), Folders::sharedFolder(), folders.errorLog(),
                     QApplication::arguments().mid(1).join(QLatin1Char(' ')), lock.PrevInstance()});
    const QScopedValueRollback net(application.lastNet, {[&program](const RunTimeError &error, const QString &place) {
                                       program.meet(error, place);
                                   }});
    const EndSignals signals([&program] { program.endUnasked(); });
    SessionEnd session;
    session.askToEnd = [&program] { return program.askToEnd(); };
    session.endsUnasked = [&program] { program.writeLog(); };
    session.ends = [&program](bool agreed) { agreed ? program.endAgreed() : program.endUnasked(); };
    program.start();
    return QApplication::exec();
}

} // namespace

int runOstrel(int argc, char **argv) {
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // Program decides when the program ends
    QtPrompts prompts;
    QtProcess process;
    application.lastNet = [&](const RunTimeError &error, const QString &) { prompts.show(errorBox(error)); };
    try {
        return run(application, prompts, process);
    } catch (...) {
        prompts.show(startFailedBox(caughtError(), AppFolders::app()));
    }
    process.end();
    return EXIT_SUCCESS;
}

} // namespace ostrel
