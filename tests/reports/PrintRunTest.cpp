// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QCheckBox>
#include <QLineEdit>

namespace {

/// The print window over the recorder's chart, and what the printer gets.
class PrintRunTest : public StartedProgram {
protected:
    /// What is printed after clicks on these boxes and Ok: the names of the copies.
    QString printed(const QStringList &boxes = {}) {
        ComDlg.printed.clear();
        inForm("mnuPrint", [&](QDialog &) {
            for (const QString &name : boxes + QStringList{"cmdOk"})
                click(name);
        });
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
            for (const QString &name : clicked)
                click(name);
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

} // namespace
