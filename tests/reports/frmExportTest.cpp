// SPDX-License-Identifier: MIT
#include "reports/frmExport.h"

#include "ReportsFixture.h"
#include "forms/Controls.h"

#include <QComboBox>
#include <QLabel>
#include <QLocale>

#include <limits>
#include <tuple>

namespace {

struct MainZoomedTime : ZoomedTime {
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const override {
        std::tie(ZoomedTimeFrom, ZoomedTimeTo) = stretch;
    }
    std::pair<float, float> stretch{0, 10};
};

class frmExportTest : public ReportsFixture {
protected:
    frmExportTest() { chart.lastTime = 10; }

    void inExport(const std::function<void(QDialog &)> &operation) {
        inForm([this] { frmExport(chart, time, ComDlg, prompts, errors, nullptr).exec(); }, operation);
    }
    static void pick(const QDialog &form, const char *rate) {
        auto &list = at<QComboBox>(form, "cmbSamlingRate");
        list.setCurrentText(QLatin1String(rate));
        Q_EMIT list.activated(list.currentIndex());
    }
    /// The number of points that the form shows, in both of its places.
    QString points(float lastTime, const char *rate, const char *region = "optDataRegion(1)") {
        chart.lastTime = lastTime;
        QString shown;
        inExport([&](QDialog &form) {
            pick(form, rate);
            click(form, {QLatin1String(region)});
            shown = at<QLabel>(form, "lblNumPoints").text();
            EXPECT_EQ(at<QLabel>(form, "lblTotal").text(), QString(shown).replace("data points", "Data Points)"));
        });
        return shown.remove("  data points");
    }

    MainZoomedTime time;
};

TEST_F(frmExportTest, CountsPoints) {
    EXPECT_EQ(points(10, "1"), "600");
    EXPECT_EQ(points(100, "0.0333"), "200");
    EXPECT_EQ(points(10, "0.025"), "16"); // of the odd 15
    EXPECT_EQ(points(0, "5"), "0");
    time.stretch = {2.5F, 4.5F};
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "600");
    time.stretch = {10, 12}; // the zoom stands behind the end of the data
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "0");
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(points(10, "0.5"), "300"); // the list's point stays one
    QLocale::setDefault(QLocale::c());
    chart.lastTime = std::numeric_limits<float>::max();
    EXPECT_THROW(frmExport(chart, time, ComDlg, prompts, errors, nullptr), RunTimeError);
}

TEST_F(frmExportTest, ComesUpWithTheWholeRun) {
    chart.lastTime = 12.345F;
    time.stretch = {3, 20};
    inExport([](QDialog &form) {
        EXPECT_EQ(at(form, "optDataRegion(1)").text(),
                  "All Data               (Time:  0.00  to  12.35  minutes) "); // 12.3450003
        EXPECT_EQ(at(form, "optDataRegion(0)").text(), "Selected Data     (Time:  3.00  to  12.35  minutes) ");
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(ComDlg.shown.size(), 1U); // Enter exports
    EXPECT_EQ(chart.exported, "");      // and the operator has cancelled
    EXPECT_TRUE(errors.codes.empty());
}

TEST_F(frmExportTest, ExportsWhatIsChosen) {
    time.stretch = {2.5F, 4.5F};
    ComDlg.answers = {"/run.txt"};
    chart.whileAtWork = [this] { EXPECT_EQ(prompts.pointer, MousePointer::Hourglass); };
    inExport([this](QDialog &form) {
        click(form, {"optMethodPos(2)", "chkMethod", "chkEvents", "optDataRegion(0)"});
        EXPECT_FALSE(at(form, "optMethodPos(2)").isEnabled());
        EXPECT_TRUE(at<QWidget>(form, "lblPosition").isEnabled());
        pick(form, "0.25");
        chart.lastTime = 99; // the instrument goes on
        click(form, {"cmdExport"});
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(chart.exported, "/run.txt 11010 2 2.5-4.5 0.25/s 30");
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
    const auto &dialog = ComDlg.shown.at(0);
    EXPECT_EQ(dialog.title + dialog.extension + QString::number(dialog.flags), "Export Data Text File As...txt2054");
}

TEST_F(frmExportTest, TellsAFailureAndLeavesNoHourglass) {
    ComDlg.answers = {"/run.txt", "/run.txt"};
    chart.status = 1;
    inExport([](QDialog &form) {
        click(form, {"cmdExport"});
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(errors.codes, std::vector<qint32>{-24});
    chart.whileAtWork = [] { throw RunTimeError(RunTimeError::OutOfMemory); };
    inExport([](QDialog &form) { EXPECT_THROW(at<CommandButton>(form, "cmdExport").Click(), RunTimeError); });
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(frmExportTest, ExportsOnlySomething) {
    inExport([](QDialog &form) {
        click(form, {"chkUV", "chkCond", "chkEvents", "chkNotes"});
        EXPECT_TRUE(at(form, "cmdExport").isEnabled());
        click(form, {"chkMethod"});
        EXPECT_FALSE(at(form, "cmdExport").isEnabled());
        EXPECT_EQ(focus(), "cmdCancel");
        click(form, {"chkMethod"});
        EXPECT_TRUE(at(form, "cmdExport").isEnabled());
        EXPECT_TRUE(at(form, "optMethodPos(0)").isChecked());
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_TRUE(ComDlg.shown.empty());
}

} // namespace
