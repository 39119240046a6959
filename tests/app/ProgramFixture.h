// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/StreamScript.h"
#include "app/Program.h"
#include "app/Widgets.h"
#include "chart/files/ChartFile.h"
#include "fakes/FakeCommonDialog.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFolder.h"

#include <QDialog>
#include <QListWidget>
#include <QPrinter>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>

using namespace std::chrono_literals;

/// The whole program on a desktop of the test's own; the operator's hands are QTest's. Windows, controls and commands
/// go by their names, files by their places in `folder`.
class ProgramFixture {
public:
    void start() {
        make();
        program->start();
        advanceUnderDialogs(1s);
    }
    void make() {
        program = std::make_unique<Program>(Platform{
            clock, ComPort, CommTmp, portDirectory, *settings, prompts, ComDlg, exportDialog,
            [this]() -> QPrinter & { return printer ? *printer : printer.emplace(); }, process, sleep, notices, help,
            [this](QObject *, const QString &name, int interval, bool on) {
                auto timer = std::make_unique<FakeTimer>(clock, interval, on);
                timers[name] = timer.get();
                return timer;
            },
            folder.path(), "/share/ostrel", path("ChartErr.log"), commandLine, prevInstance});
    }
    /// Time passes while dialogs come up, which `dialogAnswers` are given to.
    void advanceUnderDialogs(std::chrono::milliseconds time) {
        QTimer watch; // not at every turn of the event loop: the program waits for quiet ones
        QObject::connect(&watch, &QTimer::timeout, &watch, [this] {
            const QWidget *dialog = QApplication::activeModalWidget();
            // A copy: it may lay others ready.
            if (const auto act = dialog ? dialogAnswers[dialog->objectName()] : nullptr)
                act();
        });
        watch.start(1);
        clock.advance(time);
    }

    void commands(const QString &command) { find<frmMain>("frmMain")->clicked(command); }
    void trigger(const QString &action) { find<QAction>(action)->trigger(); }
    void click(const QString &control) {
        auto *widget = find<QWidget>(control);
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
    /// In place of what the entry holds.
    void type(const QString &entry, const QString &text) {
        auto *widget = find<QWidget>(entry);
        dynamic_cast<EntryText &>(*widget).selectWhole();
        QTest::keyClicks(widget, text);
    }
    void enter(const QString &entry, const QString &text) {
        type(entry, text);
        QTest::keyClick(find<QWidget>(entry), Qt::Key_Return);
    }
    QString text(const QString &entry) { return dynamic_cast<EntryText &>(*find<QWidget>(entry)).Text(); }
    bool enabled(const QString &action) { return find<QAction>(action)->isEnabled(); }
    bool usable(const QString &control) { return find<QWidget>(control)->isEnabled(); }
    bool pressed(const QString &action) { return find<QAction>(action)->isChecked(); }
    /// What the operator does in the form that a command brings up; it is closed if it is still there.
    void inForm(const QString &command, const std::function<void(QDialog &)> &act) {
        meanwhile([act] {
            auto &form = dynamic_cast<QDialog &>(*QApplication::activeModalWidget());
            EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
            act(form);
            form.close();
        });
        trigger(command);
    }
    /// What the operator does once a modal dialog is up.
    void meanwhile(std::function<void()> act) { QTimer::singleShot(0, qApp, std::move(act)); }

    Quillchart &chart(int i) { return *find<Quillchart>(QStringLiteral("Chart(%1)").arg(i)); }
    QString marks(int i = 0) { return marksOf(chart(i)); }
    /// The stretch of time that a chart shows.
    QString shown(int i = 0) {
        return QStringLiteral("%1 to %2").arg(double(chart(i).TimeAxisMin())).arg(double(chart(i).TimeAxisMax()));
    }
    /// The recorder's run, without marks, is this long.
    void give(float minutes) { lengthen(chart(0).run(), minutes); }
    /// The tabs in use, each "caption|tool tip|title of its chart".
    QStringList tabs() {
        QStringList all;
        const auto &bar = *find<QTabBar>("TabChart");
        for (int i = 0; i < bar.count() && bar.tabText(i) != "(empty)"; ++i)
            all << bar.tabText(i) + '|' + bar.tabToolTip(i) + '|' + chart(i).ChartTitle();
        return all;
    }
    /// The close box of the main window.
    void closeWindow() { find<QWidget>("frmMain")->close(); }
    void bringToFront(int tab) { find<QTabBar>("TabChart")->setCurrentIndex(tab); }

    QString path(const QString &name) const { return folder.at(name); }
    bool exists(const QString &name) const { return QFileInfo::exists(path(name)); }
    QStringList entries(const QString &directory) const {
        return QDir(path(directory)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }
    QStringList logDirectories() const { return entries("Log"); }
    /// What the store has of the copies: the count at "0", an entry at each number.
    QString &stored(const QString &key) { return store.rows[{"LogInfo", key}]; }
    QByteArray content(const QString &name) const { return folder.content(name); }
    void put(const QString &name, const QByteArray &bytes = {}) { folder.lay(name, bytes); }
    /// A file with a run of so many minutes.
    void lay(const QString &name, float minutes) {
        RunDocument run;
        lengthen(run, minutes);
        run.setTimeAxisMax(minutes);
        ASSERT_FALSE(saveChartFile(path(name), name.endsWith("chd") ? dataFile : logFile, run.data(), run.axes()));
    }
    /// The operator opens it.
    void open(const QString &name) {
        ComDlg.answers = {path(name)};
        trigger("mnuOpenData");
    }
    void open(const QString &name, float minutes) {
        lay(name, minutes);
        open(name);
    }

    /// The line brings these bytes, and the decoder's tick comes.
    void feed(const QByteArray &bytes) {
        ComPort.arrive(bytes);
        ComPort.raise(ErrorNumber::ReceiveEvent);
        clock.advance(700ms);
    }
    void play(const QString &script) { feed(stream(script)); }
    /// Synchronises: the first pass finds the stream, the next decodes it.
    void link() {
        play("u u");
        clock.advance(700ms);
    }
    /// From now on the operator saves the one log that a start offers under this name.
    void willRecoverTo(const QString &name) {
        dialogAnswers["frmDataRecovery"] = [this, name] {
            auto *lstLogFiles = find<QListWidget>("lstLogFiles");
            ASSERT_EQ(lstLogFiles->count(), 1);
            lstLogFiles->item(0)->setCheckState(Qt::Checked);
            ComDlg.answers = {path(name)};
            click("cmdRecoverButton");
        };
    }
    /// What the operator was told, in boxes.
    QString told() const {
        QStringList texts;
        for (const MessageBox &box : prompts.shown)
            texts << box.text;
        return texts.join(';');
    }

    TestFolder folder;
    FakeClock clock;
    FakeSerialControl ComPort;
    FakeSerialControl CommTmp;
    FakePortDirectory portDirectory;
    FakeSettingsStore store;
    SettingsStore *settings = &store; ///< what the program is started on
    FakePrompts prompts;
    FakeCommonDialog ComDlg;
    FakeCommonDialog exportDialog;
    std::optional<QPrinter> printer; ///< made when a report asks for it
    FakeProcess process;
    FakeSleepGuard sleep;
    FakeNotices notices;
    FakeHelpViewer help;
    std::map<QString, FakeTimer *> timers;
    bool prevInstance = false;
    QString commandLine;
    std::map<QString, std::function<void()>> dialogAnswers{{"frmLogName", [this] { click("cmdOKButton"); }}};
    std::unique_ptr<Program> program;

private:
    static void lengthen(RunDocument &run, float minutes) {
        run.ClearData();
        const qint64 samples = minutes > 0 ? qRound64(double(minutes) * samplesPerMinute) + 1 : 0;
        while (run.data().samples.size() < samples)
            run.AddSample(0.5F, 20);
    }
};

/// A case on the program as it is just behind its start.
class StartedProgram : public testing::Test, protected ProgramFixture {
protected:
    StartedProgram() { start(); }
};
