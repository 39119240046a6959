// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace {

struct ReportsTest : StartedProgram {
    void clickAll(const QStringList &controls) {
        for (const QString &control : controls)
            click(control);
    }
};

/// The print window over the recorder's chart, and what the printer gets.
struct PrintRunTest : ReportsTest {
    /// What is printed after clicks on these boxes and Ok: the names of the copies.
    QString printed(const QStringList &boxes = {}) {
        ComDlg.printed.clear();
        inForm("mnuPrint", [&](QDialog &) { clickAll(boxes + QStringList{"cmdOk"}); });
        return ComDlg.printed.join(' ');
    }
    /// The boxes from top to bottom, x for a ticked one, and whether there is something to print.
    QString boxes(const QDialog &form) {
        QString all;
        for (const auto *box : form.findChildren<QCheckBox *>())
            all += QLatin1Char(box->isChecked() ? 'x' : '-');
        return all + (usable("cmdOk") ? " ok" : " " + QApplication::focusWidget()->objectName());
    }
};

TEST_F(PrintRunTest, PrintsEachCopyUnderTheHourglassAndTellsOnceOfTheirFileAndOfEachThatFails) {
    ComDlg.Copies = 0;
    EXPECT_EQ(printed(), "begin end");
    ComDlg.Copies = 3;
    EXPECT_EQ(printed(), "begin Chart Recorder Chart Recorder Chart Recorder end");
    EXPECT_TRUE(prompts.shown.empty()); // it is on paper
    ComDlg.printedFile = "/home/ann/report.pdf";
    prompts.pointerChanges = 0;
    prompts.whileShown = [this](const MessageBox &) { EXPECT_EQ(prompts.pointer, MousePointer::Default); };
    printed();
    EXPECT_EQ(prompts.pointerChanges, 2);
    EXPECT_EQ(told(), "The report is in the file /home/ann/report.pdf.");
    EXPECT_EQ(prompts.shown.at(0).icon, BoxIcon::Information);

    ComDlg.printedFile.clear();
    ComDlg.printRefused = true;
    prompts.whileShown = nullptr;
    printed();
    EXPECT_EQ(prompts.shown.size(), 1U + 3U); // each copy is told
    EXPECT_EQ(prompts.shown.back().caption, "PRINT ERROR!");
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(PrintRunTest, ChromatogramAndItsTracesFollowEachOther) {
    inForm("mnuPrint", [this](QDialog &form) {
        const auto after = [&](const QStringList &clicked) {
            clickAll(clicked);
            return boxes(form);
        };
        EXPECT_EQ(boxes(form), "xxxxxx ok");
        EXPECT_EQ(after({"chkUVTrace", "chkCondTrace"}), "x--xxx ok");
        EXPECT_EQ(after({"chkEvents"}), "----xx ok");
        EXPECT_EQ(after({"chkEvents"}), "x--xxx ok");
        EXPECT_EQ(after({"chkChromotogram"}), "----xx ok");
        EXPECT_EQ(after({"chkChromotogram", "chkMethod", "chkNotes"}), "xxxx-- ok");
        EXPECT_EQ(after({"chkUVTrace", "chkEvents", "chkCondTrace"}), "------ cmdCancel");
        EXPECT_EQ(after({"chkCondTrace"}), "x-x--- ok");
    });
}

TEST_F(PrintRunTest, WhatIsTickedIsPrinted) {
    QString text; // much of each, so that the report is smaller without it
    for (int i = 0; i < 3000; ++i) {
        chart(0).AddSample(float(i * i % 997) / 500, 20);
        text += QString::number(i * i % 991) + (i % 10 == 0 ? "\r\n" : " ");
        if (i % 10 == 0)
            chart(0).AddEventMark(QString::number(i), 0, 50, float(i) / 300);
    }
    chart(0).AddMethodText(text, 0);
    chart(0).SetNotes(text);
    printed();
    const auto whole = ComDlg.report.size();
    for (const char *off : {"chkNotes", "chkMethod", "chkUVTrace", "chkEvents"}) {
        printed({off});
        EXPECT_LT(ComDlg.report.size(), whole - 2000) << off;
    }
}

TEST_F(PrintRunTest, AnEditedTitleStaysWithTheChartUnlessCancelled) {
    inForm("mnuPrint", [this](QDialog &form) {
        find<QLineEdit>("txtTitel")->setText("other");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(chart(0).ChartTitle(), "Chart Recorder");
    inForm("mnuPrint", [](QDialog &form) {
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtTitel");
        QTest::keyClicks(QApplication::focusWidget(), "Run 8");
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(chart(0).ChartTitle(), "Run 8");
    EXPECT_EQ(chart(0).accessibleName(), "Run 8"); // it was drawn anew
    EXPECT_EQ(ComDlg.printed.join(' '), "begin Run 8 end");
}

TEST_F(PrintRunTest, TheSetupSetsTheCopiesOfLaterPrints) {
    ComDlg.chosenCopies = 2;
    ComDlg.CancelError = true;
    printed({"cmdPrintSetup"});
    EXPECT_EQ(printed().count("Chart Recorder"), 2);
    EXPECT_EQ(ComDlg.printerShown, 1);
    EXPECT_EQ(ComDlg.Flags, 64);
    ComDlg.chosenCopies = {};
    trigger("mnuPrintSetup");
    EXPECT_TRUE(prompts.shown.empty());
    ComDlg.printerError = RunTimeError(ErrorNumber::PathFileAccess);
    trigger("mnuPrintSetup");
    EXPECT_EQ(told(), "Cannot Load Print Setup dialog box.");
}

TEST_F(PrintRunTest, WithoutAPrinterTheSetupComesFirstAndOffersAFileBesideTheRun) {
    open("SEC 3.chd", 2);
    ComDlg.hasPrinter = false;
    EXPECT_EQ(printed(), ""); // a Cancel
    EXPECT_EQ(told(), "");
    ComDlg.chosenCopies = 1;
    EXPECT_EQ(printed(), "begin SEC 3 end");
    printed();
    EXPECT_EQ(ComDlg.offeredFor, QStringList(2, path("SEC 3.chd"))); // not asked again
}

struct frmExportTest : ReportsTest {
    frmExportTest() { give(10); }

    void pick(const char *rate) {
        auto &list = *find<QComboBox>("cmbSamlingRate");
        list.setCurrentText(QLatin1String(rate));
        Q_EMIT list.activated(list.currentIndex());
    }
    /// The number of points that the form shows, in both of its places.
    QString points(float minutes, const char *rate, const char *region = "optDataRegion(1)") {
        give(minutes);
        QString shown;
        inForm("mnuExport", [&](QDialog &) {
            pick(rate);
            click(region);
            shown = find<QLabel>("lblNumPoints")->text();
            EXPECT_EQ(find<QLabel>("lblTotal")->text(), QString(shown).replace("data points", "Data Points)"));
        });
        return shown.remove("  data points");
    }
    /// The recorder shows a window of two minutes from here on.
    void zoom(float from, float to) { Q_EMIT chart(0).Zoomed(0, from, to, 0, 1, 0, 100); }
};

TEST_F(frmExportTest, CountsPoints) {
    EXPECT_EQ(points(10, "1"), "600");
    EXPECT_EQ(points(100, "0.0333"), "200");
    EXPECT_EQ(points(10, "0.025"), "16"); // of the odd 15
    EXPECT_EQ(points(0, "5"), "0");
    zoom(2.5F, 4.5F);
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "600");
    zoom(10, 12); // behind the end of the data
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "0");
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(points(10, "0.5"), "300"); // the list's point stays one
    QLocale::setDefault(QLocale::c());
}

TEST_F(frmExportTest, ComesUpWithTheWholeRun) {
    give(12.345F);
    zoom(3, 20);
    inForm("mnuExport", [this](QDialog &form) {
        EXPECT_TRUE(find<QAbstractButton>("optDataRegion(1)")->isChecked());
        EXPECT_EQ(find<QAbstractButton>("optDataRegion(1)")->text(),
                  "All Data               (Time:  0.00  to  12.35  minutes) "); // 12.3467
        EXPECT_EQ(find<QAbstractButton>("optDataRegion(0)")->text(),
                  "Selected Data     (Time:  3.00  to  12.35  minutes) ");
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(exportDialog.shown.size(), 1U); // Enter exports, and the operator has cancelled
    EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(frmExportTest, ExportsWhatIsChosen) {
    chart(0).AddMethodText("Gradient\r\n", 0);
    chart(0).SetNotes("pH 7");
    zoom(2.5F, 4.5F);
    exportDialog.answers = {path("run.txt")};
    prompts.pointerChanges = 0;
    inForm("mnuExport", [this](QDialog &form) {
        clickAll({"optMethodPos(2)", "chkMethod", "chkEvents", "optDataRegion(0)"});
        EXPECT_FALSE(usable("optMethodPos(2)"));
        EXPECT_TRUE(usable("lblPosition"));
        pick("0.25");
        give(99); // the instrument goes on
        click("cmdExport");
        EXPECT_FALSE(form.isVisible());
    });
    const QString text = QString::fromUtf8(content("run.txt"));
    EXPECT_TRUE(text.contains("\n2.5") && !text.contains("\n4.56") && !text.contains("Gradient")) << qPrintable(text);
    EXPECT_EQ(text.count(QRegularExpression("^[0-9.]+\t", QRegularExpression::MultilineOption)), 30);
    EXPECT_TRUE(prompts.pointerChanges == 2 && prompts.pointer == MousePointer::Default);
    const auto &dialog = exportDialog.shown.at(0);
    EXPECT_EQ(dialog.title + dialog.extension + QString::number(dialog.flags), "Export Data Text File As...txt2054");
}

TEST_F(frmExportTest, TellsAFailureAndLeavesNoHourglass) {
    lay("run.chd", 1); // which a text never replaces
    exportDialog.answers = {path("none/run.txt"), path("run.chd")};
    for (int i = 0; i < 2; ++i)
        inForm("mnuExport", [this](const QDialog &) { click("cmdExport"); });
    EXPECT_EQ(told(), "Cannot Export.;Cannot Export.");
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(frmExportTest, ExportsOnlySomething) {
    inForm("mnuExport", [this](QDialog &form) {
        clickAll({"chkUV", "chkCond", "chkEvents", "chkNotes"});
        EXPECT_TRUE(usable("cmdExport"));
        click("chkMethod");
        EXPECT_FALSE(usable("cmdExport"));
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdCancel");
        click("chkMethod");
        EXPECT_TRUE(usable("cmdExport"));
        EXPECT_TRUE(find<QAbstractButton>("optMethodPos(0)")->isChecked());
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_TRUE(exportDialog.shown.empty());
}

} // namespace
