// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace {

constexpr const char *instrument = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nnoise cond 0.5\nwait 7s\n"
                                   "start\nwait 8s\nevent\nwait 6s\nend\nmethod\n| Load 5 ml\n| Wash\nwait 10m\n";

/// A row of numbers of an exported table.
struct Point {
    double minutes, uv, cond;
};

class WorkingDay : public testing::Test {
protected:
    template <typename Condition>
    void await(const char *what, Condition holds, std::chrono::seconds patience = 10s) {
        ASSERT_TRUE(within(patience, holds)) << what;
    }
    void open(const QString &command, const QString &window) {
        live->trigger(command);
        live.await(window);
    }
    void awaitGone(const QString &window) {
        await("window gone", [&] { return !live.isUp(window); });
    }
    void awaitQuestion(const QString &text) {
        await("question", [&] {
            const QJsonArray windows = live->windows();
            return std::ranges::any_of(windows, [&](const QJsonValue &window) { return window["text"] == text; });
        });
    }
    QByteArray content(const QString &name) const {
        QFile file{live.file(name)};
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
    }
    std::vector<Point> exported(const QString &name) const {
        std::vector<Point> points;
        bool inTable = false;
        for (const QString &line : QString::fromUtf8(content(name)).split("\r\n")) {
            const QStringList cells = line.split('\t');
            if (inTable && cells.size() > 2 && !cells[1].isEmpty())
                points.push_back({cells[0].toDouble(), cells[1].toDouble(), cells[2].toDouble()});
            inTable = inTable || line.startsWith("Time (min)");
        }
        return points;
    }
    /// The samples that the instrument meant from its start on; the recorder takes one behind the end.
    std::vector<QStringList> meant() const {
        std::vector<QStringList> samples;
        bool started = false;
        for (const QStringList &row : live.truth()) {
            started = started || row[1] == "start";
            if (started && row[1] == "sample")
                samples.push_back(row);
        }
        return samples;
    }

    LiveOstrel live{instrument};
};

TEST_F(WorkingDay, FromTheNameToBothQuestionsAtItsEnd) {
    open("mnuLogName", "frmLogName");
    live->type("txtLogFileName", "Lab 3");
    live->answer("OK");
    await("the name", [&] { return live->get("frmMain", "windowTitle") == "Ostrel MS - System: Lab 3"; });

    await(
        "the run", [&] { return live.isEnabled("mnuStop"); }, 15s);
    await(
        "its end", [&] { return live.marks(0).endsWith('E') && !live.isEnabled("mnuStop"); }, 30s);
    await(
        "its method", [&] { return live.methodText(0).contains("Wash"); }, 20s);
    open("mnuMethod", "frmMethod");
    EXPECT_EQ(live->get("cmdMethod", "toolTip"), "Hide method form");
    live->answer("OK");
    awaitGone("frmMethod");

    open("mnuNotes", "frmNotes");
    live->type("txtNotes", "Column B");
    live->answer("OK");
    awaitGone("frmNotes");
    live.chooseFile("mnuSaveData", "run 1.0");
    await("the data file", [&] { return live.fileExists("run 1.0.chd"); });
    live.chooseFile("mnuOpenData", "run 1.0.chd");
    await("its tab", [&] { return live->get("TabChart", "currentIndex") == 1; });
    EXPECT_EQ(live->call("Chart(1)", "GetNotes"), "Column B");

    live->click("optTimeAxis(1)");
    live->type("txtChartTime", "0.2");
    live->click("cmdSetTime");
    await("the window", [&] { return live->get("Chart(1)", "TimeAxisMax").toDouble() < 0.21; });
    live->drag("Chart(1)", 0.3, 0.3, 0.6, 0.7);
    await("the zoom", [&] { return live->get("Chart(1)", "zoomed").toBool(); });
    const double from = live->get("Chart(1)", "TimeAxisMin").toDouble();
    const double to =
        std::min(live->get("Chart(1)", "TimeAxisMax").toDouble(), live->call("Chart(1)", "GetLastTime").toDouble());
    open("mnuExport", "frmExport");
    live->click("optDataRegion(0)");
    live->type("cmbSamlingRate", ""); // only comes to it
    live->key("End");                 // all that the instrument delivers
    const QString shown = live->get("lblNumPoints", "text").toString();
    live->click("cmdExport");
    live.nameFile("run 1.txt");
    awaitGone("frmExport");
    const std::vector<Point> points = exported("run 1.txt");
    EXPECT_NEAR(double(points.size()), (to - from) * 300, 2);
    EXPECT_EQ(QString::number(points.size()) + "  data points", shown);
    const std::vector<QStringList> truth = meant();
    for (const Point &point : points) {
        EXPECT_TRUE(point.minutes > from - 0.004 && point.minutes < to + 0.004);
        const QStringList &sample = truth.at(std::size_t(std::lrint(point.minutes * 300)));
        EXPECT_NEAR(point.uv, sample[6].toDouble(), 1e-6);
        EXPECT_NEAR(point.cond, sample[7].toDouble(), 1e-4);
    }

    open("mnuPrintSetup", "ComDlg");
    live->type("filename", live.file("report.pdf"));
    live->answer("OK");
    awaitGone("ComDlg");
    open("mnuPrint", "frmPrint");
    live->type("txtTitel", "Run 1 of Lab 3");
    live->answer("Ok");
    awaitQuestion("The report is in the file " + live.file("report.pdf") + ".");
    live->answer("OK");
    EXPECT_TRUE(content("report.pdf").startsWith("%PDF"));
    EXPECT_EQ(live->get("Chart(1)", "ChartTitle"), "Run 1 of Lab 3");

    await(
        "the log's first tick", [&] { return live.isEnabled("mnuSaveLog"); }, 25s);
    live.chooseFile("mnuSaveLog", "today");
    await("the log file", [&] { return live.fileExists("today.chl"); });
    open("mnuNotes", "frmNotes");
    live->type("txtNotes", "Column B, pressure high");
    live->answer("OK");
    awaitGone("frmNotes");

    await(
        "the log's next tick", [&] { return live.isEnabled("mnuSaveLog"); }, 25s);
    live->trigger("mnuExit");
    awaitQuestion("Do you want to save the LOG file before exiting ");
    live->answer("No");
    awaitQuestion("Chart Recorder Data or opened Data is not saved.\nExit without save?");
    live->answer("Yes");
    EXPECT_TRUE(live.recorder().endsWithin(10000));
    EXPECT_EQ(live.recorder().exitCode(), 0);
}

} // namespace
