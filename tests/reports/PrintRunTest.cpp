// SPDX-License-Identifier: MIT
#include "reports/PrintRun.h"

#include "ReportsFixture.h"

#include <QLineEdit>

namespace {

class PrintRunTest : public ReportsFixture {
protected:
    PrintRunTest() { chart.title = "Run 7"; }

    void inPrint(const std::function<void(QDialog &)> &operation) {
        inForm([this] { run.mnuPrint_Click(); }, operation);
    }
    /// What is printed after clicks on these boxes and Ok.
    QString printed(const QStringList &boxes) {
        chart.printed.clear();
        inPrint([&](QDialog &form) { click(form, boxes + QStringList{"cmdOk"}); });
        return chart.printed.join(", ");
    }
    /// The boxes from top to bottom, x for a ticked one, and whether there is something to print.
    static QString boxes(const QDialog &form) {
        QString all;
        for (const auto *box : form.findChildren<QCheckBox *>())
            all += QLatin1Char(box->isChecked() ? 'x' : '-');
        return all + (at(form, "cmdOk").isEnabled() ? " ok" : " " + focus());
    }

    PrintRun run{[this]() -> DocumentChart & { return chart; }, ComDlg, prompts, errors, nullptr};
};

TEST_F(PrintRunTest, PrintsEachCopyOfWhatIsTickedUnderTheHourglass) {
    EXPECT_EQ(printed({"chkUVTrace", "chkNotes"}), "110 3");
    EXPECT_EQ(printed({"chkChromotogram", "chkMethod"}), "001 0");
    chart.whileAtWork = [this] { EXPECT_EQ(prompts.pointer, MousePointer::Hourglass); };
    for (const int copies : {0, 1, 3}) {
        ComDlg.Copies = copies;
        printed({});
        EXPECT_EQ(chart.printed.size(), copies);
        EXPECT_EQ(prompts.pointer, MousePointer::Default);
    }
}

TEST_F(PrintRunTest, TellsOnceWhereTheReportOfAllCopiesStands) {
    ComDlg.Copies = 3;
    chart.whileAtWork = [this] { ComDlg.printed << "copy"; };
    printed({});
    EXPECT_EQ(ComDlg.printed.join(' '), "begin copy copy copy end");
    EXPECT_TRUE(prompts.shown.empty()); // it is on paper
    ComDlg.printedFile = "/home/ann/report.pdf";
    prompts.whileShown = [this](const MessageBox &) { EXPECT_EQ(prompts.pointer, MousePointer::Default); };
    printed({});
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.shown[0].text, "The report is in the file /home/ann/report.pdf.");
    EXPECT_EQ(prompts.shown[0].icon, BoxIcon::Information);

    ComDlg.printed.clear();
    chart.whileAtWork = [] { throw RunTimeError(RunTimeError::OutOfMemory); };
    EXPECT_THROW(printed({}), RunTimeError);
    EXPECT_EQ(ComDlg.printed.join(' '), "begin end");
}

TEST_F(PrintRunTest, ChromatogramAndItsTracesFollowEachOther) {
    inPrint([](QDialog &form) {
        const auto after = [&](const QStringList &clicked) {
            click(form, clicked);
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

TEST_F(PrintRunTest, AnEditedTitleStaysWithTheChartUnlessCancelled) {
    printed({});
    inPrint([](QDialog &form) {
        at<QLineEdit>(form, "txtTitel").setText("other");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(chart.title, "Run 7");
    EXPECT_EQ(chart.redrawn, 1);
    EXPECT_EQ(chart.printed.size(), 1);
    inPrint([](QDialog &form) {
        EXPECT_EQ(focus(), "txtTitel");
        QTest::keyClicks(QApplication::focusWidget(), "Run 8");
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(chart.title, "Run 8");
    EXPECT_EQ(chart.redrawn, 2);
    EXPECT_EQ(chart.printed.size(), 2);
}

TEST_F(PrintRunTest, TheSetupSetsTheCopiesOfLaterPrints) {
    ComDlg.chosenCopies = 2;
    ComDlg.CancelError = true;
    printed({"cmdPrintSetup"});
    printed({});
    EXPECT_EQ(chart.printed.size(), 2);
    EXPECT_EQ(ComDlg.printerShown, 1);
    EXPECT_EQ(ComDlg.Flags, 64);
    ComDlg.chosenCopies = {};
    run.mnuPrintSetup_Click();
    EXPECT_TRUE(errors.codes.empty());
    ComDlg.printerError = RunTimeError(RunTimeError::PathFileAccess);
    run.mnuPrintSetup_Click();
    EXPECT_EQ(errors.codes, std::vector<qint32>{-25});
}

} // namespace
