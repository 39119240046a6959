// SPDX-License-Identifier: MIT
#include "desktop/QtCommonDialog.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "fakes/FaultyDisk.h"
#include "fakes/Spoken.h"
#include "fakes/TestFolder.h"

#include <QPrintDialog>
#include <QTest>
#include <QtWidgets>
#include <sys/stat.h>

namespace {

constexpr auto Unasked = QMessageBox::NoButton;

struct QtCommonDialogTest : testing::Test {
    QtCommonDialogTest() {
        ComDlg.Filter = "Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*";
        ComDlg.DefaultExt = "chl";
        ComDlg.FileName = folder.at("Default");
        ComDlg.Flags = 2054;
    }
    /// Does something to the dialog once it is up, and leaves it if it is up still.
    template <typename Dialog>
    void whenUp(const std::function<void(Dialog &)> &act) {
        QTimer::singleShot(0, &owner, [act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
    }
    /// Within a dialog: the box that comes up over it gets this answer.
    void answerBox(QMessageBox::StandardButton answer) {
        if (answer != Unasked)
            whenUp<QMessageBox>([answer](QMessageBox &box) { box.button(answer)->click(); });
    }
    static void enter(const QFileDialog &dialog, const QString &name) {
        auto *edit = dialog.findChild<QLineEdit *>("fileNameEdit");
        if (!name.isEmpty())
            edit->setText(name);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    /// Saves under this name, or the one that is offered. Answers where the file comes to, seen from the folder.
    QString saved(const QString &typed, QMessageBox::StandardButton answer = Unasked) {
        whenUp<QFileDialog>([&](const QFileDialog &dialog) {
            answerBox(answer);
            enter(dialog, typed);
        });
        ComDlg.ShowSave();
        EXPECT_EQ(QFileInfo(ComDlg.FileName).fileName(), ComDlg.FileTitle);
        return QDir(folder.path()).relativeFilePath(std::exchange(ComDlg.FileName, {}));
    }
    /// Sets a file and the number of copies in the print setup. Answers the name that was offered.
    QString setUp(const QString &file, QMessageBox::StandardButton answer = Unasked, int copies = 1) {
        QString offered;
        whenUp<QPrintDialog>([&](const QPrintDialog &dialog) {
            auto *printers = dialog.findChild<QComboBox *>("printers");
            printers->setCurrentIndex(printers->count() - 1); // the file comes after the computer's printers
            auto *name = dialog.findChild<QLineEdit *>("filename");
            offered = QFileInfo(name->text()).fileName();
            name->setText(file.isEmpty() ? file : folder.at(file));
            auto *number = dialog.findChild<QSpinBox *>("copies");
            EXPECT_EQ(number->value(), ComDlg.Copies);
            number->setValue(copies);
            answerBox(answer);
            QTest::keyClick(name, Qt::Key_Return);
        });
        ComDlg.ShowPrinter();
        return offered;
    }
    /// Prints so many copies; answers the name of the file that these make, empty when a copy fails.
    QString report(int copies = 1) {
        bool good = true;
        ComDlg.beginPrint();
        for (int copy = 0; copy < copies; ++copy)
            good = ComDlg.print("%PDF-1.4 new", "Run 7") && good;
        const QString file = ComDlg.endPrint();
        EXPECT_EQ(file.isEmpty(), !good);
        return QFileInfo(file).fileName();
    }
    /// Nothing of these tests goes to a printer of this computer.
    struct NoSpooler : Spooler {
        bool take(const PrintJob &) override { return false; }
    };

    TestFolder folder;
    QObject owner;
    QtCommonDialog ComDlg{std::make_unique<NoSpooler>()};
};

TEST_F(QtCommonDialogTest, aCancelLeavesNoNameAndRaisesWhenAsked) {
    whenUp<QFileDialog>([](const QFileDialog &dialog) {
        EXPECT_EQ(dialog.nameFilters(), (QStringList{"Quillchart Log(*.chl) (*.chl)", "All Files(*.*) (*)"}));
    });
    ComDlg.ShowOpen();
    EXPECT_EQ(ComDlg.FileName, "");
    ComDlg.CancelError = true;
    EXPECT_EQ(errorNumberOf([this] { saved("none/", QMessageBox::Ok); }), ErrorNumber::DialogCancelled);
    EXPECT_EQ(errorNumberOf([this] { setUp("none/", QMessageBox::Ok); }), ErrorNumber::DialogCancelled);
}

TEST_F(QtCommonDialogTest, namesAndDatesCanBeReadAndEveryControlHasASpokenName) {
    folder.lay("A run with a name of some length, of Monday.chl", "x");
    ComDlg.HelpContextID = 11;
    whenUp<QFileDialog>([](QFileDialog &dialog) {
        auto *files = dialog.findChild<QTreeView *>("treeView");
        ASSERT_TRUE(QTest::qWaitFor([files] { return files->model()->rowCount(files->rootIndex()) > 0; }));
        for (int column = 0; column < files->header()->count(); ++column)
            EXPECT_GE(files->columnWidth(column), files->header()->sectionSizeHint(column)) << column;
        EXPECT_EQ(unspoken(dialog), "");
        EXPECT_EQ(dialog.property("HelpContextID"), 11);
    });
    ComDlg.ShowSave();
    whenUp<QPrintDialog>([](QPrintDialog &dialog) { EXPECT_EQ(unspoken(dialog), ""); });
    ComDlg.ShowPrinter();
}

TEST_F(QtCommonDialogTest, whatIsOfferedCanBeTaken) {
    ComDlg.FileName = folder.at("run.chl");
    EXPECT_EQ(saved(""), "run.chl");
    ComDlg.FileName = "/gone with its drive/last.chl"; // its name alone is offered where the last file was
    EXPECT_EQ(saved(""), "last.chl");
    folder.lay("plain");
    whenUp<QFileDialog>([](const QFileDialog &dialog) { enter(dialog, "plain"); });
    ComDlg.ShowOpen(); // a file without extension stays what it is
    EXPECT_EQ(ComDlg.FileTitle, "plain");
}

TEST_F(QtCommonDialogTest, aNameToSaveUnderEndsInTheExtension) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("sub.d"));
    EXPECT_EQ(saved("SEC 3.1"), "SEC 3.1.chl");
    EXPECT_EQ(saved("run.CHL"), "run.CHL");
    EXPECT_EQ(saved("runchl"), "runchl.chl");
    EXPECT_EQ(saved("SEC 3. "), "SEC 3.chl");
    whenUp<QFileDialog>([](const QFileDialog &dialog) { // into a folder, and a name there
        enter(dialog, "sub.d");
        enter(dialog, "c.d");
    });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, folder.at("sub.d/c.d.chl"));
}

TEST_F(QtCommonDialogTest, whatIsReplacedOrRefusedIsTheCompletedName) {
    folder.lay("SEC 3.1.chl");
    ASSERT_TRUE(QDir(folder.path()).mkdir("box.chl"));
    saved("x"); // where the next ones begin
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::No), "");
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::Yes), "SEC 3.1.chl");
    for (const QString &refused :
         {QString("box"), QString("none/x"), QString("   "), QString("5\" column"), QString(252, u'x')})
        EXPECT_EQ(saved(refused, QMessageBox::Ok), "") << qPrintable(refused);
    ComDlg.Flags = 0;
    EXPECT_EQ(saved("SEC 3.1"), "SEC 3.1.chl");
}

TEST_F(QtCommonDialogTest, theSetupDecidesOnTheCopiesAndEachPrintGetsAFileOfItsOwn) {
    ComDlg.Copies = 2;
    EXPECT_EQ(setUp("none/", QMessageBox::Ok, 9), "report.pdf");
    EXPECT_EQ(ComDlg.Copies, 2);
    EXPECT_EQ(report(), ""); // nothing to print on yet
    EXPECT_EQ(setUp("SEC 3.1", Unasked, 3), "report.pdf");
    EXPECT_EQ(ComDlg.Copies, 3);
    EXPECT_EQ(ComDlg.printer().copyCount(), 1); // the program prints them one by one
    EXPECT_EQ(setUp("run.pdf"), "SEC 3.1.pdf");
    EXPECT_EQ(report(3), "run.pdf");
    EXPECT_TRUE(ComDlg.print("%PDF-1.4 alone", "")); // outside a print
    EXPECT_EQ(setUp(""), "run-3.pdf");               // without a name, what was offered goes on
    EXPECT_EQ(report(), "run-3.pdf");
    EXPECT_EQ(folder.names().size(), 3); // no copy made another one
}

TEST_F(QtCommonDialogTest, aReportIsOfferedAsTheRunsNameBesideTheRun) {
    EXPECT_FALSE(ComDlg.canPrint());
    ComDlg.ReportName = folder.at("SEC 3.1.chd");
    folder.lay("SEC 3.1.pdf", "%PDF-1.4 old");
    EXPECT_EQ(setUp(""), "SEC 3.1-2.pdf");
    EXPECT_TRUE(ComDlg.canPrint());
    EXPECT_EQ(report(), "SEC 3.1-2.pdf");
    ComDlg.ReportName = folder.at("SEC 4.chd");
    EXPECT_EQ(report(), "SEC 4.pdf"); // the offer was taken
    EXPECT_EQ(report(), "SEC 4-2.pdf");
    EXPECT_EQ(setUp("mine"), "SEC 4-3.pdf");
    ComDlg.ReportName = folder.at("SEC 5.chd");
    EXPECT_EQ(report(), "mine.pdf"); // and here it was not
    EXPECT_EQ(setUp("none/", QMessageBox::Ok), "SEC 5.pdf");
    EXPECT_EQ(folder.names().filter("SEC").size(), 4);
}

TEST_F(QtCommonDialogTest, noFileIsReplacedUnlessTheOperatorAgreedToThatVeryFile) {
    folder.lay("free.pdf", "%PDF-1.4 old");
    setUp("free", QMessageBox::No); // asked of the completed name
    EXPECT_EQ(report(), "");
    setUp("free", QMessageBox::Yes);
    EXPECT_EQ(report(), "free.pdf");
    EXPECT_EQ(report(), "free-2.pdf"); // once
    setUp("free", QMessageBox::Yes);
    folder.lay("free.pdf", "%PDF-1.4 another one"); // since then
    EXPECT_EQ(report(), "free-3.pdf");
    EXPECT_EQ(folder.content("free.pdf"), "%PDF-1.4 another one");

    setUp("late.pdf");
    folder.lay("late.pdf", "%PDF-1.4 came in between");
    ASSERT_TRUE(QFile::link(folder.at("nowhere"), folder.at("late-2.pdf")));
    EXPECT_EQ(report(), "late-3.pdf");

    folder.lay("run.pdf", "a run under a wrong name");
    ASSERT_EQ(::mkfifo(folder.native("pipe.pdf").constData(), 0600), 0);
    for (const char *taken : {"run", "pipe", "none/report"})
        setUp(taken, QMessageBox::Ok);
    EXPECT_EQ(report(), "late-4.pdf"); // what was refused changes nothing
}

TEST_F(QtCommonDialogTest, aReportThatDoesNotFitOnTheDiskLeavesWhatStands) {
    folder.lay("report.pdf", "%PDF-1.4 old");
    ReportFile replaced(folder.at("report.pdf"), true);
    {
        const FullDisk full;
        EXPECT_EQ(replaced.make("%PDF"), "");
        EXPECT_EQ(ReportFile(folder.at("fresh.pdf"), false).make("%PDF"), "");
    }
    EXPECT_EQ(folder.names(), QStringList{"report.pdf"});
    EXPECT_EQ(folder.content("report.pdf"), "%PDF-1.4 old");
    EXPECT_EQ(replaced.make("%PDF"), folder.at("report.pdf")); // still agreed
}

TEST(CupsSpoolerTest, aQueueThatIsNotThereTakesNothing) {
    EXPECT_FALSE(CupsSpooler().take({"ostrel-test-no-such-queue", "Run 7", "%PDF-1.4", {{"sides", "one-sided"}}}));
}

} // namespace
