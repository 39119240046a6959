// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

constexpr const char *instrument = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 7s\n"
                                   "start\nwait 8s\nevent\nwait 6s\nend\nmethod\n| Load 5 ml\n| Wash\nwait 10m\n";

TEST(WorkingDay, FromTheNameToBothQuestionsAtItsEnd) {
    LiveOstrel live{instrument};
    const auto answerForm = [&](const char *command, const char *entry, const QString &text, const char *button) {
        live.press(command);
        live.type(entry, text);
        live.press(button);
    };
    const auto content = [&](const QString &name) {
        QFile file{live.file(name)};
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString{};
    };
    answerForm("mnuLogName", "txtLogFileName", "Lab 3", "OK");
    EXPECT_EQ(live.ask(0, [](auto &chart) { return chart.window()->windowTitle(); }), "Ostrel MS - System: Lab 3");
    EXPECT_TRUE(within(15s, [&] { return live.isEnabled("mnuStop"); }));
    EXPECT_TRUE(within(30s, [&] { return live.marks(0).endsWith('E') && !live.isEnabled("mnuStop"); }));
    EXPECT_TRUE(within(20s, [&] { return live.methodText(0).contains("Wash"); }));
    live.press("mnuMethod");
    live.await("frmMethod");
    EXPECT_EQ(live.ask([](auto) { return find<QAction>("cmdMethod")->toolTip(); }), "Hide method form");
    live.press("OK");
    answerForm("mnuNotes", "txtNotes", "Column B", "OK");
    live.press("mnuSaveData");
    live.nameFile("Lauf Ä 1.0");
    live.press("mnuOpenData");
    live.nameFile("Lauf Ä 1.0.chd");
    EXPECT_TRUE(within(10s, [&] { return live.held(1) == live.held(0); }));
    EXPECT_EQ(live.samples(1), live.samples(0));
    EXPECT_EQ(live.marks(1) + live.methodText(1), live.marks(0) + live.methodText(0));
    EXPECT_EQ(live.ask(1, [](auto &chart) { return chart.GetNotes(); }), "Column B");

    live.press("optTimeAxis(1)");
    live.type("txtChartTime", "0.2");
    live.press("cmdSetTime");
    live.press("mnuExport");
    live.press("optDataRegion(0)");
    live.type("cmbSamlingRate", ""); // only comes to it
    const QString count = live.ask([](auto) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End); // all that the instrument delivers
        return find<QLabel>("lblNumPoints")->text();
    });
    live.press("cmdExport");
    live.nameFile("run 1.txt");
    EXPECT_TRUE(within(10s, [&] { return !live.isUp("frmExport"); }));
    const auto points = content("run 1.txt").count(QRegularExpression("\n[0-9.]+\t[-0-9.]+\t[-0-9.]+"));
    EXPECT_NEAR(double(points), 0.2 * 300, 2);
    EXPECT_EQ(QString::number(points) + "  data points", count);

    answerForm("mnuPrintSetup", "filename", live.file("report.pdf"), "OK");
    answerForm("mnuPrint", "txtTitel", "Run 1 of Lab 3", "Ok");
    live.await("The report is in the file " + live.file("report.pdf") + ".");
    live.press("OK");
    EXPECT_TRUE(content("report.pdf").startsWith("%PDF"));
    EXPECT_EQ(live.ask(1, [](auto &chart) { return chart.ChartTitle(); }), "Run 1 of Lab 3");

    EXPECT_TRUE(within(25s, [&] { return live.isEnabled("mnuSaveLog"); })); // the log's first tick
    answerForm("mnuNotes", "txtNotes", "Column B, pressure high", "OK");
    live.press("mnuExit");
    live.await("Do you want to save the LOG file before exiting ");
    EXPECT_TRUE(live.ask([](auto) { // the question itself is not got rid of
        QWidget *box = QApplication::activeModalWidget();
        QTest::keyClick(box, Qt::Key_Escape);
        box->close();
        return box->isVisible();
    }));
    live.press("No");
    live.await("Chart Recorder Data or opened Data is not saved.\nExit without save?");
    live.press("Yes");
    EXPECT_TRUE(live.recorder().endsWithin(10s));
    EXPECT_EQ(live.recorder().exitCode(), 0);
    EXPECT_EQ(live.entries("Log") + live.entries("Discarded/" + live.entries("Discarded").value(0)),
              QStringList{"Log00001.dat"});
}

} // namespace
