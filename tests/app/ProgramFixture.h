// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/StreamScript.h"
#include "app/Program.h"
#include "chart/Quillchart.h"
#include "fakes/FakeCommonDialog.h"
#include "fakes/FakePlatform.h"
#include "forms/Shapes.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>

using namespace std::chrono_literals;

/// The whole program on a desktop of the test's own; the operator's hands are QTest's.
class ProgramFixture {
public:
    ProgramFixture() {
        dialogWatch.setInterval(1);
        QObject::connect(&dialogWatch, &QTimer::timeout, &dialogWatch, [this] { answerDialog(); });
        dialogAnswers["frmLogName"] = [this] { QTest::mouseClick(find<QWidget>("cmdOKButton"), Qt::LeftButton); };
    }

    void start() {
        program = std::make_unique<Program>(
            Platform{clock, ComPort, CommTmp, *settings, prompts, ComDlg, exportDialog,
                     [this]() -> QPrinter & { return printer ? *printer : printer.emplace(); }, process, sleep, help,
                     [this](QObject *, const QString &name, int interval, bool on) {
                         auto timer = std::make_unique<FakeTimer>(clock, interval, on);
                         timers[name] = timer.get();
                         return timer;
                     },
                     folder.path(), "/share/ostrel", folder.filePath("ChartErr.log"), commandLine, prevInstance});
        program->start();
        dialogWatch.start();
        clock.advance(1s);
        dialogWatch.stop();
    }
    /// What the operator does with the dialogs of the start.
    void answerDialog() {
        const QWidget *dialog = QApplication::activeModalWidget();
        if (const auto answer = dialog ? dialogAnswers.find(dialog->objectName()) : dialogAnswers.end();
            answer != dialogAnswers.end())
            answer->second();
    }

    template <typename Control>
    Control *find(const QString &name) {
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (top->objectName() == name)
                return qobject_cast<Control *>(top);
            if (auto *found = top->findChild<Control *>(name))
                return found;
        }
        return nullptr;
    }
    void commands(const QString &command) { find<frmMain>("frmMain")->clicked(command); }
    bool enabled(const QString &action) { return find<QAction>(action)->isEnabled(); }
    bool pressed(const QString &action) { return find<QAction>(action)->isChecked(); }
    bool led() { return find<Led>("ShapeReciveLed")->FillColor() == QColor(0, 255, 0); }
    Quillchart &chart(int i) { return *find<Quillchart>(QStringLiteral("Chart(%1)").arg(i)); }
    QString marks() {
        QStringList labels;
        for (const QVariant &mark : chart(0).marks())
            labels << mark.toMap()["Label"].toString();
        return labels.join(' ');
    }

    QStringList logDirectories() const {
        return QDir(folder.filePath("Log")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
    /// The line brings these bytes, and the decoder's tick comes.
    void feed(const QByteArray &bytes) {
        ComPort.arrive(bytes);
        ComPort.raise(SerialControl::Receive);
        clock.advance(700ms);
    }
    void play(const QString &script) { feed(stream(script)); }
    /// Synchronises: the first pass finds the stream, the next decodes it.
    void link() {
        play("u u");
        clock.advance(700ms);
    }
    /// What the operator does with the recovery dialog, in which one log stands.
    void recoverTo(const QString &path) {
        auto *lstLogFiles = find<QListWidget>("lstLogFiles");
        ASSERT_EQ(lstLogFiles->count(), 1);
        lstLogFiles->item(0)->setCheckState(Qt::Checked);
        ComDlg.answers = {path};
        QTest::mouseClick(find<QWidget>("cmdRecoverButton"), Qt::LeftButton);
    }
    /// What the operator does once a modal dialog stands.
    void meanwhile(std::function<void()> act) { QTimer::singleShot(0, qApp, std::move(act)); }

    QTemporaryDir folder;
    FakeClock clock;
    FakeSerialControl ComPort;
    FakeSerialControl CommTmp;
    FakeSettingsStore store;
    SettingsStore *settings = &store; ///< what the program is started on
    FakePrompts prompts;
    FakeCommonDialog ComDlg;
    FakeCommonDialog exportDialog;
    std::optional<QPrinter> printer; ///< made when a report asks for it
    FakeProcess process;
    FakeSleepGuard sleep;
    FakeHelpViewer help;
    std::map<QString, FakeTimer *> timers;
    bool prevInstance = false;
    QString commandLine;
    QTimer dialogWatch; ///< not at every turn of the event loop: the program waits for quiet ones
    std::map<QString, std::function<void()>> dialogAnswers;
    std::unique_ptr<Program> program;
};
