// SPDX-License-Identifier: MIT
#include "desktop/QtCommonDialog.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace {

class QtCommonDialogTest : public testing::Test {
protected:
    QtCommonDialogTest() {
        ComDlg.Filter = "Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*";
        ComDlg.DefaultExt = "chl";
        ComDlg.FileName = folder.filePath("Default");
    }
    /// Does something to the dialog once it is up.
    void whenUp(const std::function<void(QFileDialog &)> &act) {
        QTimer::singleShot(0, &owner, [act] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->objectName(), "ComDlg");
            act(*dialog);
        });
    }
    /// Nothing of these tests goes to a printer of this computer.
    struct NoSpooler : Spooler {
        bool take(const PrintJob &) override { return false; }
    };
    /// The file stands behind the computer's printers.
    static void chooseFile(const QPrintDialog &dialog, const QString &file) {
        auto *printers = dialog.findChild<QComboBox *>("printers");
        printers->setCurrentIndex(printers->count() - 1);
        dialog.findChild<QLineEdit *>("filename")->setText(file);
    }
    /// Chooses a file in the print setup, and leaves it when that was refused.
    void whenSetUp(const QString &file, bool accepted) {
        QTimer::singleShot(0, &owner, [=] {
            auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            chooseFile(*dialog, file);
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
            EXPECT_EQ(dialog->isVisible(), !accepted) << qPrintable(file);
            if (dialog->isVisible())
                dialog->reject();
        });
        ComDlg.ShowPrinter();
    }
    /// Sees the print setup come up with a file and a number of copies, sets others, and presses a key.
    void setUp(const QString &offered, const QString &file, int copies, Qt::Key key) {
        QTimer::singleShot(0, &owner, [=] {
            auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->objectName(), "ComDlg");
            EXPECT_EQ(dialog->windowTitle(), "Print Setup");
            auto *name = dialog->findChild<QLineEdit *>("filename");
            EXPECT_EQ(QFileInfo(name->text()).fileName(), offered);
            chooseFile(*dialog, file);
            dialog->findChild<QSpinBox *>("copies")->setValue(copies);
            EXPECT_EQ(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->text(), "OK");
            QTest::keyClick(name, key);
            EXPECT_FALSE(dialog->isVisible());
            if (dialog->isVisible())
                dialog->reject();
        });
        ComDlg.ShowPrinter();
    }
    /// Prints so many copies; answers the name of the file that these make, empty when a copy fails.
    QString report(int copies = 1, const QByteArray &document = "%PDF-1.4 new") {
        bool good = true;
        ComDlg.beginPrint();
        for (int copy = 0; copy < copies; ++copy)
            good = ComDlg.print(document, "Run 7") && good;
        const QString file = ComDlg.endPrint();
        EXPECT_EQ(file.isEmpty(), !good);
        return QFileInfo(file).fileName();
    }
    void put(const QString &name, const QByteArray &content) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray content(const QString &name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void enter(QFileDialog &dialog, const QString &name) {
        auto *edit = dialog.findChild<QLineEdit *>("fileNameEdit");
        if (!name.isEmpty())
            edit->setText(name);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    /// Enters a name, which is met by a box; presses one of its buttons, then leaves the dialog.
    void enterAndAnswer(QFileDialog &dialog, const QString &name, QMessageBox::StandardButton button) {
        QTimer::singleShot(0, &owner, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            ++boxes;
            box->button(button)->click();
        });
        enter(dialog, name);
        if (dialog.isVisible())
            dialog.reject();
    }

    QTemporaryDir folder;
    QObject owner;
    QtCommonDialog ComDlg{std::make_unique<NoSpooler>()};
    int boxes = 0;
};

TEST_F(QtCommonDialogTest, aCancelLeavesNoNameAndRaisesWhenAsked) {
    whenUp([](QFileDialog &dialog) { dialog.reject(); });
    ComDlg.ShowOpen();
    EXPECT_EQ(ComDlg.FileName, "");
    ComDlg.CancelError = true;
    whenUp([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_EQ(errorNumberOf([this] { ComDlg.ShowSave(); }), RunTimeError::DialogCancelled);
}

TEST_F(QtCommonDialogTest, overwritingAsksAndAMissingFolderIsRefused) {
    const QString existing = folder.filePath("Default.chl");
    QFile file(existing);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ComDlg.Flags = 2054;
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "Default", QMessageBox::No); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    ComDlg.FileName = existing;
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "", QMessageBox::Yes); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, existing);
    ComDlg.FileName = "";
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, folder.filePath("none/x"), QMessageBox::Ok); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    EXPECT_EQ(boxes, 3);

    ComDlg.Flags = 0;
    ComDlg.FileName = existing;
    whenUp([](QFileDialog &dialog) { enter(dialog, ""); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, existing);
}

TEST_F(QtCommonDialogTest, whatCannotBeMeantIsNotTaken) {
    QFile file(folder.filePath("plain"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ComDlg.FileName = folder.filePath("x");
    whenUp([](QFileDialog &dialog) { enter(dialog, "plain"); });
    ComDlg.ShowOpen(); // a file without extension stays what it is
    EXPECT_EQ(ComDlg.FileTitle, "plain");
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "5\" column", QMessageBox::Ok); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    EXPECT_EQ(boxes, 1);

    ComDlg.FileName = "/gone with its drive/run.chl"; // its name alone is offered where the last file was
    whenUp([](QFileDialog &dialog) { enter(dialog, ""); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, folder.filePath("run.chl"));
}

TEST_F(QtCommonDialogTest, aNameToSaveUnderEndsInTheExtension) {
    ComDlg.Flags = 2054;
    const auto saved = [this](const QString &typed, const QString &filter = {}) {
        ComDlg.FileName = "";
        whenUp([=](QFileDialog &dialog) {
            if (!filter.isEmpty())
                dialog.selectNameFilter(filter);
            enter(dialog, typed);
            if (dialog.isVisible())
                dialog.reject();
        });
        ComDlg.ShowSave();
        EXPECT_TRUE(QFileInfo(ComDlg.FileName).fileName() == ComDlg.FileTitle);
        return QDir(folder.path()).relativeFilePath(ComDlg.FileName);
    };
    ASSERT_TRUE(QDir(folder.path()).mkdir("sub.d"));
    saved(folder.filePath("x")); // where the next ones begin
    EXPECT_EQ(saved("SEC 3.1"), "SEC 3.1.chl");
    EXPECT_EQ(saved("SEC 3.1", "All Files(*.*)"), "SEC 3.1.chl");
    EXPECT_EQ(saved("notes.txt", "All Files(*.*)"), "notes.txt.chl");
    EXPECT_EQ(saved("run.CHL"), "run.CHL");
    EXPECT_EQ(saved("runchl"), "runchl.chl");
    EXPECT_EQ(saved("run."), "run.chl");
    EXPECT_EQ(saved("run.chl  "), "run.chl");
    EXPECT_EQ(saved("SEC 3. "), "SEC 3.chl");
    EXPECT_EQ(saved("sub.d/a.b"), "sub.d/a.b.chl");
    saved(folder.filePath("x"));

    whenUp([](QFileDialog &dialog) { // into a folder, and a name there
        enter(dialog, "sub.d");
        EXPECT_TRUE(dialog.isVisible());
        enter(dialog, "c.d");
    });
    ComDlg.FileName = "";
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, folder.filePath("sub.d/c.d.chl"));
}

TEST_F(QtCommonDialogTest, whatIsReplacedOrRefusedIsTheCompletedName) {
    ComDlg.Flags = 2054;
    QFile file(folder.filePath("SEC 3.1.chl"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir(folder.path()).mkdir("box.chl"));
    const auto saved = [this](const QString &typed, QMessageBox::StandardButton button) {
        ComDlg.FileName = folder.filePath("x");
        const int before = boxes;
        whenUp([=, this](QFileDialog &dialog) { enterAndAnswer(dialog, typed, button); });
        ComDlg.ShowSave();
        EXPECT_EQ(boxes, before + 1) << qPrintable(typed);
        return ComDlg.FileTitle;
    };
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::No), "");
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::Yes), "SEC 3.1.chl");
    EXPECT_EQ(saved("box", QMessageBox::Ok), "");
    EXPECT_EQ(saved("none/", QMessageBox::Ok), "");
    EXPECT_EQ(saved("   ", QMessageBox::Ok), "");
    EXPECT_EQ(saved(QString(252, 'x'), QMessageBox::Ok), "");

    QFile picked(folder.filePath("picked"));
    ASSERT_TRUE(picked.open(QIODevice::WriteOnly));
    ComDlg.FileName = picked.fileName();
    ComDlg.Filter = "All Files(*.*)|*.*";
    whenUp([](QFileDialog &dialog) { // the file stands marked in the list
        auto *list = dialog.findChild<QListView *>("listView");
        QTRY_VERIFY(list->model()->rowCount(list->rootIndex()) > 2);
        for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
            if (const auto index = list->model()->index(row, 0, list->rootIndex()); index.data() == "picked")
                list->setCurrentIndex(index);
        }
        EXPECT_EQ(list->selectionModel()->selectedRows().size(), 1);
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileTitle, "picked.chl");
}

TEST_F(QtCommonDialogTest, theSetupDecidesOnTheCopiesAndEachPrintGetsAFileOfItsOwn) {
    EXPECT_EQ(report(), ""); // nothing to print on yet
    ComDlg.Copies = 2;
    setUp("report.pdf", folder.filePath("gone.pdf"), 9, Qt::Key_Escape);
    EXPECT_EQ(ComDlg.Copies, 2);
    EXPECT_EQ(report(), "");

    setUp("report.pdf", folder.filePath("SEC 3.1"), 3, Qt::Key_Return);
    EXPECT_EQ(ComDlg.Copies, 3);
    EXPECT_EQ(ComDlg.printer().copyCount(), 1); // the program prints them one by one
    setUp("SEC 3.1.pdf", folder.filePath("run.pdf"), 1, Qt::Key_Return);
    EXPECT_EQ(report(3), "run.pdf");
    EXPECT_TRUE(ComDlg.print("%PDF-1.4 alone", "")); // outside a print
    EXPECT_EQ(report(), "run-3.pdf");
    EXPECT_EQ(content("run-2.pdf"), "%PDF-1.4 alone");
    setUp("run-4.pdf", "", 1, Qt::Key_Return); // without a name, what was offered goes on
    EXPECT_EQ(report(), "run-4.pdf");
    EXPECT_EQ(report(), "run-5.pdf");
    EXPECT_EQ(QDir(folder.path()).count(), 2U + 5); // no copy made another one

    ComDlg.CancelError = true;
    EXPECT_EQ(errorNumberOf([this] { setUp("run-6.pdf", "x", 1, Qt::Key_Escape); }), RunTimeError::DialogCancelled);
}

TEST_F(QtCommonDialogTest, noFileIsReplacedUnlessTheOperatorAgreedToThatVeryFile) {
    const auto answering = [this](QMessageBox::StandardButton button, const QString &file) {
        QTimer::singleShot(0, &owner, [=, this] { // the box stands over the setup
            QTimer::singleShot(0, &owner, [=, this] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr);
                ++boxes;
                box->button(button)->click();
            });
        });
        whenSetUp(folder.filePath(file), button == QMessageBox::Yes);
    };
    put("free.pdf", "%PDF-1.4 old");
    answering(QMessageBox::No, "free"); // asked of the completed name
    EXPECT_EQ(report(), "");
    answering(QMessageBox::Yes, "free");
    EXPECT_EQ(report(), "free.pdf");
    EXPECT_EQ(content("free.pdf"), "%PDF-1.4 new");
    EXPECT_EQ(report(), "free-2.pdf"); // once

    answering(QMessageBox::Yes, "free");
    put("free.pdf", "%PDF-1.4 another one"); // since then
    EXPECT_EQ(report(), "free-3.pdf");
    EXPECT_EQ(content("free.pdf"), "%PDF-1.4 another one");

    whenSetUp(folder.filePath("late.pdf"), true);
    put("late.pdf", "%PDF-1.4 came in between");
    ASSERT_TRUE(QFile::link(folder.filePath("nowhere"), folder.filePath("late-2.pdf")));
    EXPECT_EQ(report(), "late-3.pdf");

    put("run.pdf", "a run under a wrong name");
    ASSERT_TRUE(QDir(folder.path()).mkdir("box.pdf"));
    ASSERT_EQ(::mkfifo(qPrintable(folder.filePath("pipe.pdf")), 0600), 0);
    for (const char *taken : {"run", "box", "pipe", "none/report", "none/", " "})
        answering(QMessageBox::Ok, taken);
    EXPECT_EQ(boxes, 9);
    EXPECT_EQ(report(), "late-4.pdf"); // what was refused changes nothing
}

TEST(CupsSpoolerTest, aQueueThatIsNotThereTakesNothing) {
    EXPECT_FALSE(CupsSpooler().take({"ostrel-test-no-such-queue", "Run 7", "%PDF-1.4", {{"sides", "one-sided"}}}));
}

TEST_F(QtCommonDialogTest, aReportThatDoesNotFitOnTheDiskLeavesWhatStands) {
    put("report.pdf", "%PDF-1.4 old");
    const QByteArray large(5000, 'x');
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{1000, limit.rlim_max};
    ReportFile replaced(folder.filePath("report.pdf"), true);
    ReportFile fresh(folder.filePath("fresh.pdf"), false);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    EXPECT_EQ(replaced.make(large), "");
    EXPECT_EQ(fresh.make(large), "");
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"report.pdf"});
    EXPECT_EQ(content("report.pdf"), "%PDF-1.4 old");
    EXPECT_EQ(replaced.make(large), folder.filePath("report.pdf")); // still agreed
    EXPECT_EQ(fresh.make(large), folder.filePath("fresh.pdf"));
}

} // namespace
